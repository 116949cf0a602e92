#pragma once

#include <Eigen/Core>

#include <vector>

namespace oV::Roamscan::tool
{

/// The turn that brings a path's frame into plan coordinates: x to the right and y upwards on the plan, z
/// towards the viewer. A proper rotation.
///
/// Usually that is no turn at all, as z is up in most frames. A path that hardly leaves a plane of which z is
/// no normal (one in a camera's frame, say) is turned so that it lies in the plan.
[[nodiscard]] Eigen::Matrix3d planRotation(std::vector<Eigen::Vector3d> const& path);

} // namespace oV::Roamscan::tool
