#pragma once

#include <roamscan/trajectory/TrajectoryNode.h>

#include <vector>

namespace oV::Roamscan::tool
{

/// The nodes in order of their times; of several at the same time only the one that came last. Their times
/// must be finite.
[[nodiscard]] std::vector<TrajectoryNode const*> inOrderOfTime(std::vector<TrajectoryNode const*> nodes);

} // namespace oV::Roamscan::tool
