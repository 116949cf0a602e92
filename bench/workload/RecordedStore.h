#pragma once

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <cstddef>

namespace bench
{

/// The nodes of an hour and a quarter.
inline constexpr std::size_t recordedNodes = 900'000;

/// More than a frame of the store takes.
inline constexpr std::size_t roomForFrame = recordedNodes * 256;

/// The result of a walk, all four devices in place. Making it takes no memory but its own.
[[nodiscard]] oV::Roamscan::TrajectoryData recordedStore(std::size_t nodes = recordedNodes);

} // namespace bench
