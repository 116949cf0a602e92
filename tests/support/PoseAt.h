#pragma once

#include <roamscan/time/TrafoT.h>

#include <Eigen/Core>
#include <Eigen/Geometry>

namespace support
{

/// A pose at (x, 0, 0) without a rotation.
inline oV::Roamscan::TrafoT<double> at(double x, bool valid = true)
{
    return {Eigen::Vector3d(x, 0, 0), Eigen::Quaterniond::Identity(), valid};
}

} // namespace support
