#pragma once

#include <Eigen/Core>
#include <Eigen/Geometry>

namespace oV::Roamscan::detail
{

/// Rotates a vector by a quaternion (u, w) without a matrix: c = 2 (u x v), v' = v + w c + u x c.
///
/// The library uses only this form. For a quaternion that is not of unit length, a rotation matrix would give
/// a different result.
template <typename T>
[[nodiscard]] Eigen::Matrix<T, 3, 1> rotateVector(Eigen::Quaternion<T> const& rotation,
                                                  Eigen::Matrix<T, 3, 1> const& vector)
{
    Eigen::Matrix<T, 3, 1> c = rotation.vec().cross(vector);
    c += c;
    return vector + rotation.w() * c + rotation.vec().cross(c);
}

} // namespace oV::Roamscan::detail
