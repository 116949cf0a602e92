#pragma once

#include <Eigen/Core>

#include <vector>

namespace oV::Roamscan::tool
{

/// The rotation from the frame of a path to plan coordinates: x to the right and y upwards on the plan, z
/// towards the viewer.
///
/// Usually the identity, because z is up in most frames. A path whose smallest extent by far is along x or y,
/// as in the frame of a camera, is rotated so that this axis becomes the vertical one.
[[nodiscard]] Eigen::Matrix3d planRotation(std::vector<Eigen::Vector3d> const& path);

} // namespace oV::Roamscan::tool
