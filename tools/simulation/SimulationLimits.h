#pragma once

namespace oV::Roamscan::tool
{

/// The longest motion that is simulated: a day, in seconds.
inline constexpr double longestSimulation = 86'400.0;

} // namespace oV::Roamscan::tool
