#pragma once

namespace oV::Roamscan::tool
{

/// A day, in seconds: the longest motion that is simulated.
inline constexpr double longestSimulation = 86'400.0;

} // namespace oV::Roamscan::tool
