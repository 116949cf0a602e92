#pragma once

#include <Eigen/Core>
#include <Eigen/Geometry>

namespace oV::Roamscan::detail
{

/// Rotates without building a matrix: exact for a unit quaternion, and the one form used everywhere, because
/// for any other quaternion it rounds differently from a matrix product.
template <typename T>
[[nodiscard]] Eigen::Matrix<T, 3, 1> rotateVector(Eigen::Quaternion<T> const& rotation,
                                                  Eigen::Matrix<T, 3, 1> const& vector)
{
    Eigen::Matrix<T, 3, 1> c = rotation.vec().cross(vector);
    c += c;
    return vector + rotation.w() * c + rotation.vec().cross(c);
}

} // namespace oV::Roamscan::detail
