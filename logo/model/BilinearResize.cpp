#include "logo/model/BilinearResize.h"

#include "shell/model/Checked.h"

#include <QRgb>

#include <vector>

namespace quenby {

namespace {

// Where one target column or row reads: the nearer source pixel, the next
// one if it lies inside the picture (else the black border), and the
// fraction towards the next one.
struct Tap
{
    int index;
    bool hasNext;
    double fraction;
};

std::vector<Tap> tapsFor(int sourceSize, int destSize)
{
    // Single precision, as the routine was written.
    const float step = static_cast<float>(sourceSize - 1) / static_cast<float>(destSize);
    std::vector<Tap> taps(static_cast<std::size_t>(destSize));
    for (int d = 0; d < destSize; ++d) {
        const float s = static_cast<float>(d) * step;
        const Int32 i = toInt32(s); // to nearest, halves to even
        const float f = s - static_cast<float>(i);
        taps[static_cast<std::size_t>(d)] = {i, i + 1 < sourceSize, static_cast<double>(f)};
    }
    return taps;
}

int channelValue(double top, double bottom, double fy)
{
    const Int32 v = toInt32((1.0 - fy) * top + fy * bottom);
    return v < 0 ? 0 : (v > 255 ? 255 : v);
}

} // namespace

QImage ResizeImageBilinear(const QImage& source, int destWidth, int destHeight)
{
    if (destWidth <= 0 || destHeight <= 0 || source.isNull())
        return {};
    const QImage src = source.format() == QImage::Format_RGB32
                           ? source
                           : source.convertToFormat(QImage::Format_RGB32);
    const int sw = src.width();
    const int sh = src.height();
    const std::vector<Tap> columns = tapsFor(sw, destWidth);
    const std::vector<Tap> rows = tapsFor(sh, destHeight);
    // The black row under the picture.
    const std::vector<QRgb> border(static_cast<std::size_t>(sw), qRgb(0, 0, 0));

    QImage dest(destWidth, destHeight, QImage::Format_RGB32);
    for (int y = 0; y < destHeight; ++y) {
        const Tap& row = rows[static_cast<std::size_t>(y)];
        const auto* upper = reinterpret_cast<const QRgb*>(src.constScanLine(row.index));
        const auto* lower = row.hasNext
                                ? reinterpret_cast<const QRgb*>(src.constScanLine(row.index + 1))
                                : border.data();
        const double fy = row.fraction;
        auto* out = reinterpret_cast<QRgb*>(dest.scanLine(y));
        for (int x = 0; x < destWidth; ++x) {
            const Tap& col = columns[static_cast<std::size_t>(x)];
            const double fx = col.fraction;
            const QRgb p00 = upper[col.index];
            const QRgb p01 = lower[col.index];
            // The black column right of the picture.
            const QRgb p10 = col.hasNext ? upper[col.index + 1] : 0u;
            const QRgb p11 = col.hasNext ? lower[col.index + 1] : 0u;
            auto channel = [&](int shift) {
                auto get = [shift](QRgb p) { return static_cast<int>((p >> shift) & 255u); };
                const double top = (1.0 - fx) * get(p00) + fx * get(p10);
                const double bottom = (1.0 - fx) * get(p01) + fx * get(p11);
                return channelValue(top, bottom, fy);
            };
            // QRgb holds red at bit 16, green at 8, blue at 0.
            out[x] = qRgb(channel(16), channel(8), channel(0));
        }
    }
    return dest;
}

} // namespace quenby
