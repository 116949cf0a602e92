#pragma once

#include <roamscan/trajectory/TrajectoryNode.h>

#include <vector>

namespace oV::Roamscan::tool
{

/// Sorts nodes by time. Of several nodes at the same time only the last one remains. The times must be
/// finite.
[[nodiscard]] std::vector<TrajectoryNode const*> inOrderOfTime(std::vector<TrajectoryNode const*> nodes);

} // namespace oV::Roamscan::tool
