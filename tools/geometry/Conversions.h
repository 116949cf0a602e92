#pragma once

#include <roamscan/time/EigenConversion.h>
#include <roamscan/time/TrafoT.h>

#include <Eigen/Geometry>

/// Conversions between the pose types of Eigen and those of the library.
namespace oV::Roamscan::tool
{

[[nodiscard]] inline TrafoT<double> toTrafo(Eigen::Isometry3d const& pose)
{
    return {pose.translation(), Eigen::Quaterniond(pose.linear()), true};
}

[[nodiscard]] inline TrafoT<double> toTrafo(mapping::Rigid3<float> const& pose)
{
    return {toEigen(pose.translation).cast<double>(), toEigen(pose.rotation).cast<double>(), true};
}

[[nodiscard]] inline mapping::Rigid3<float> toRigid3(Eigen::Isometry3d const& pose)
{
    return Roamscan::toRigid3(pose.translation().cast<float>(),
                              Eigen::Quaterniond(pose.linear()).cast<float>());
}

} // namespace oV::Roamscan::tool
