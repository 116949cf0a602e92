#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryNode.h>

#include <vector>

namespace oV::Roamscan
{

/// Builds a trajectory that interpolates between the poses of `nodes`.
///
/// @param nodes in any order; of two at the same time, the later one in the vector is used
/// @return the trajectory from the smallest to the largest time; it owns a copy of the poses
/// @note Nodes whose pose is not `valid()` are used as well; the trajectory's pose is then not valid either.
/// Without nodes the result is that of an InterpolatedTrajectoryPathBuilder without poses.
[[nodiscard]] ROAMSCAN_EXPORT Trajectory
buildTrajectoryFromTrajectoryNodes(std::vector<TrajectoryNode> const& nodes);

/// The same with the poses `(leftTransform * pose) * rightTransform`, multiplied in this order.
[[nodiscard]] ROAMSCAN_EXPORT Trajectory
buildTrajectoryFromTrajectoryNodes(std::vector<TrajectoryNode> const& nodes,
                                   TrafoT<double> const& rightTransform,
                                   TrafoT<double> const& leftTransform);

} // namespace oV::Roamscan
