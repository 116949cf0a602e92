#pragma once

#include <limits>

namespace support
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace support
