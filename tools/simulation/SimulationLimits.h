#pragma once

namespace oV::Roamscan::tool
{

/// A day, in seconds: the longest motion that is simulated.
inline constexpr double longestSimulation = 86'400.0;

/// In seconds, from zero: beyond it integer time ends.
inline constexpr double farthestTime = 9.2e10;

} // namespace oV::Roamscan::tool
