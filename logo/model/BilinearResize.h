// The pixel routine of the logo: a picture resampled to a target size with
// the logo's own bilinear arithmetic, kept exactly so that a converted logo
// has the same pixels on every platform.
//
// The steps are (SW - 1) / DW and (SH - 1) / DH in single precision: the
// divisor is the target size itself, so the last target pixel stops short of
// the last source pixel. The source is read into a store one pixel wider and
// higher than the picture; that extra column and row stay black and are read
// when ix + 1 == SW or iy + 1 == SH. The source position is rounded to the
// nearest pixel, halves to even, so the fractions lie in -0.5 .. 0.5 and a
// negative one extrapolates: a channel may overshoot and is clamped to 0..255.
#pragma once

#include <QImage>

namespace quenby {

// `source` in any format, read as opaque RGB; the result is Format_RGB32 of
// destWidth x destHeight. A non-positive target size gives a null image.
QImage ResizeImageBilinear(const QImage& source, int destWidth, int destHeight);

} // namespace quenby
