#pragma once

namespace oV::Roamscan::tool
{

/// The largest distance of a time from zero, in seconds, that integer time can count.
inline constexpr double farthestTime = 9.2e10;

} // namespace oV::Roamscan::tool
