#pragma once

#include <roamscan/frame/bvbase/String.h>

#include <array>

/// @file
/// The load-time objects that no other code of the library uses. They exist for compatibility: the objects of
/// the library, their order and their exit actions are fixed. All others are declared by the classes and
/// functions that use them.

namespace oV::Roamscan::startup
{

/// "ROAM".
extern Bv_1_1::String const roamText;

/// For index i with a = i % 128 and b = i / 128: 1 / sqrt(x^2 + y^2 + z^2), where (x, y) is (a, b) if
/// a + b < 127 and (127 - a, 127 - b) otherwise, and z = 126 - x - y.
extern std::array<double, 8192> const scaleTable;

} // namespace oV::Roamscan::startup
