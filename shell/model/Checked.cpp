#include "shell/model/Checked.h"

#include "shell/model/RuntimeError.h"

#include <cmath>
#include <limits>

namespace quenby {

namespace {
template <typename T> T toChecked(double value)
{
    if (std::isnan(value))
        raiseRuntimeError(err::Overflow);
    // nearbyint rounds halves to even in the default rounding mode.
    const double r = std::nearbyint(value);
    if (r < static_cast<double>(std::numeric_limits<T>::min()) ||
        r > static_cast<double>(std::numeric_limits<T>::max()))
        raiseRuntimeError(err::Overflow);
    return static_cast<T>(r);
}

template <typename T> T narrow(long long wide)
{
    if (wide < std::numeric_limits<T>::min() || wide > std::numeric_limits<T>::max())
        raiseRuntimeError(err::Overflow);
    return static_cast<T>(wide);
}
} // namespace

Int16 toInt16(double value)
{
    return toChecked<Int16>(value);
}
Int32 toInt32(double value)
{
    return toChecked<Int32>(value);
}

Int16 add16(Int16 a, Int16 b)
{
    return narrow<Int16>(static_cast<long long>(a) + b);
}
Int16 sub16(Int16 a, Int16 b)
{
    return narrow<Int16>(static_cast<long long>(a) - b);
}
Int16 mul16(Int16 a, Int16 b)
{
    return narrow<Int16>(static_cast<long long>(a) * b);
}
Int32 add32(Int32 a, Int32 b)
{
    return narrow<Int32>(static_cast<long long>(a) + b);
}
Int32 sub32(Int32 a, Int32 b)
{
    return narrow<Int32>(static_cast<long long>(a) - b);
}
Int32 mul32(Int32 a, Int32 b)
{
    return narrow<Int32>(static_cast<long long>(a) * b);
}

double divide(double a, double b)
{
    // 0 / 0 is an overflow on the platform; anything else over 0 is a
    // division by zero.
    if (b == 0.0)
        raiseRuntimeError(a == 0.0 ? err::Overflow : err::DivisionByZero);
    return a / b;
}

} // namespace quenby
