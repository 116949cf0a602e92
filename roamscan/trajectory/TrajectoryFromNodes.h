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
/// @param nodes in any order; of two nodes at the same time, the later one in the vector is used
/// @return the trajectory from the smallest to the largest time; it owns a copy of the poses
/// @note Without nodes, the interval is 0 to 0 and sampling throws `std::out_of_range`.
/// @warning Nodes whose pose is not `valid()` are used as well. Interpolated poses next to them are `valid()`
///     all the same; see Trajectory::sample().
[[nodiscard]] ROAMSCAN_EXPORT Trajectory
buildTrajectoryFromTrajectoryNodes(std::vector<TrajectoryNode> const& nodes);

/// The same with the poses `(leftTransform * pose) * rightTransform`, multiplied in this order: from the
/// source frame of `rightTransform` to the target frame of `leftTransform`.
[[nodiscard]] ROAMSCAN_EXPORT Trajectory
buildTrajectoryFromTrajectoryNodes(std::vector<TrajectoryNode> const& nodes,
                                   TrafoT<double> const& rightTransform,
                                   TrafoT<double> const& leftTransform);

} // namespace oV::Roamscan
