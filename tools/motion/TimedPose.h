#pragma once

#include <roamscan/trajectory/TrajectoryNode.h>

#include <Eigen/Geometry>

#include <vector>

namespace oV::Roamscan::tool
{

/// A pose of a recording.
struct TimedPose
{
    double time = 0.0; ///< Seconds.
    Eigen::Vector3d position;
    Eigen::Quaterniond rotation; ///< Of unit length.
};

/// The poses of nodes, sorted by time. Of several nodes at the same time only the last one counts. The times
/// must be finite.
[[nodiscard]] std::vector<TimedPose> posesInOrderOfTime(std::vector<TrajectoryNode const*> nodes);

} // namespace oV::Roamscan::tool
