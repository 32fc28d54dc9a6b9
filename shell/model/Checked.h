// Integer and boolean types of the system, with the platform's overflow rule.
//
// Counts are 16-bit signed and their overflow is the run-time failure
// "Overflow" (6); booleans are 16 bits wide, 0 false and all ones true.
// Conversions from a double round halves to the even neighbour, as the
// platform's integer conversion does.
#pragma once

#include <cstdint>

namespace quenby {

using Int16 = std::int16_t;
using Int32 = std::int32_t;
using Bool16 = std::int16_t;

inline constexpr Bool16 True16 = -1;
inline constexpr Bool16 False16 = 0;

inline constexpr Bool16 toBool16(bool b)
{
    return b ? True16 : False16;
}

// A double to a 16-bit or 32-bit integer, halves to even; out of range, or
// not a number, raises Overflow.
Int16 toInt16(double value);
Int32 toInt32(double value);

// Checked 16-bit and 32-bit arithmetic: a result out of range raises Overflow.
Int16 add16(Int16 a, Int16 b);
Int16 sub16(Int16 a, Int16 b);
Int16 mul16(Int16 a, Int16 b);
Int32 add32(Int32 a, Int32 b);
Int32 sub32(Int32 a, Int32 b);
Int32 mul32(Int32 a, Int32 b);

// Floating division as the platform does it: a zero divisor ends the program,
// with Overflow (6) for 0 / 0 and Division by zero (11) otherwise.
double divide(double a, double b);

} // namespace quenby
