#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryNode.h>

#include <vector>

namespace oV::Roamscan
{

/// The trajectory through the poses of `nodes`, from the smallest to the largest time. The nodes need no
/// order; of two at exactly the same time, the later one in the vector decides. Nodes that are not valid are
/// not skipped: their poses come out not valid. The result owns its poses.
///
/// Without nodes the result is that of an InterpolatedTrajectoryPathBuilder without poses.
[[nodiscard]] ROAMSCAN_EXPORT Trajectory
buildTrajectoryFromTrajectoryNodes(std::vector<TrajectoryNode> const& nodes);

/// The same through the poses `(leftTransform * pose) * rightTransform`, the inner product formed first.
[[nodiscard]] ROAMSCAN_EXPORT Trajectory
buildTrajectoryFromTrajectoryNodes(std::vector<TrajectoryNode> const& nodes,
                                   TrafoT<double> const& rightTransform,
                                   TrafoT<double> const& leftTransform);

} // namespace oV::Roamscan
