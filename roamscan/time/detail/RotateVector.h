#pragma once

#include <Eigen/Core>
#include <Eigen/Geometry>

namespace oV::Roamscan::detail
{

/// Rotates a vector by a quaternion (u, w) without a matrix: c = 2 (u x v), v' = v + w c + u x c.
///
/// The library uses only this form. For a quaternion that is not of unit length, a rotation matrix would give
/// a different result. Everything is a scalar, which the compiler keeps in registers: Eigen's vectors would
/// be stored in parts and loaded as a whole at once, and the processor would have to wait for these stores.
template <typename T>
[[nodiscard]] inline Eigen::Matrix<T, 3, 1>
rotateVector(T ux, T uy, T uz, T w, Eigen::Matrix<T, 3, 1> const& vector)
{
    T const x = vector.x();
    T const y = vector.y();
    T const z = vector.z();
    T const cx = T(2) * (uy * z - uz * y);
    T const cy = T(2) * (uz * x - ux * z);
    T const cz = T(2) * (ux * y - uy * x);
    return {
        x + w * cx + (uy * cz - uz * cy), y + w * cy + (uz * cx - ux * cz), z + w * cz + (ux * cy - uy * cx)};
}

/// The same with the quaternion as one object.
template <typename T>
[[nodiscard]] inline Eigen::Matrix<T, 3, 1> rotateVector(Eigen::Quaternion<T> const& rotation,
                                                         Eigen::Matrix<T, 3, 1> const& vector)
{
    return rotateVector<T>(rotation.x(), rotation.y(), rotation.z(), rotation.w(), vector);
}

} // namespace oV::Roamscan::detail
