#pragma once

#include <cmath>

namespace oV::detail
{

// std::round() and std::llround(), to the nearest integer and halves away from zero. With the C library of
// MinGW-w64, the largest number below 0.5 is rounded up, and so are others.

[[nodiscard]] inline double roundHalfAway(double value)
{
#if defined(__MINGW32__)
    double const whole = std::trunc(value);
    return std::abs(value - whole) >= 0.5 ? whole + std::copysign(1.0, value) : whole;
#else
    return std::round(value);
#endif
}

/// For a value outside the range of the result, the result is that of std::llround().
[[nodiscard]] inline long long roundToInteger(double value)
{
#if defined(__MINGW32__)
    return std::llround(roundHalfAway(value)); // exact for integers
#else
    return std::llround(value);
#endif
}

} // namespace oV::detail
