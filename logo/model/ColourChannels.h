// The channels of a colour in the system's 32-bit form: red in the low byte,
// then green, then blue (0x00BBGGRR), the opposite order of a QRgb.
#pragma once

#include "shell/model/Checked.h"

#include <QRgb>

#include <cstdint>

namespace quenby {

// The channels are taken with the integer division, which truncates toward
// zero: for a negative colour GetGreen and GetBlue are not the bytes of its
// two's complement (GetGreen(-1) is 0).
constexpr std::uint8_t GetRed(Int32 c)
{
    return static_cast<std::uint8_t>(c & 255);
}
constexpr std::uint8_t GetGreen(Int32 c)
{
    return static_cast<std::uint8_t>((c / 256) & 255);
}
constexpr std::uint8_t GetBlue(Int32 c)
{
    return static_cast<std::uint8_t>((c / 65536) & 255);
}

// A Qt colour in the system's form, and back (opaque).
constexpr Int32 systemColour(QRgb rgb)
{
    return static_cast<Int32>(qRed(rgb) | (qGreen(rgb) << 8) | (qBlue(rgb) << 16));
}
constexpr QRgb fromSystemColour(Int32 c)
{
    return qRgb(GetRed(c), GetGreen(c), GetBlue(c));
}

} // namespace quenby
