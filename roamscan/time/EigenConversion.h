#pragma once

#include <roamscan/frame/bvbase/Vec3d.h>
#include <roamscan/frame/mapping/Rigid3.h>
#include <roamscan/frame/mapping/Vector3.h>
#include <roamscan/frame/platform/EigenAlignment.h>

#include <Eigen/Core>
#include <Eigen/Geometry>

/// @file
/// Conversions between Eigen's vectors and quaternions and the plain value types of the interface. Every
/// component is copied unchanged. To convert a whole pose to a TrafoT, use TrafoT's own constructor.
///
/// @code
/// Eigen::Vector3d const acceleration = toEigen(record.getLinearAcceleration());
/// point.position = toVec3d((worldFromDevice * toEigen(point.position).cast<double>()).cast<float>());
/// @endcode

namespace oV::Roamscan
{

/// The components x, y, z.
template <typename T>
[[nodiscard]] Eigen::Matrix<T, 3, 1> toEigen(Bv_1_1::Vec3d<T> const& vector)
{
    return {vector.x, vector.y, vector.z};
}

/// @overload
template <typename T>
[[nodiscard]] Eigen::Matrix<T, 3, 1> toEigen(mapping::Vector3<T> const& vector)
{
    return {vector.x, vector.y, vector.z};
}

/// The components by name: Eigen's constructor takes w first, mapping::Quaternion stores it last.
template <typename T>
[[nodiscard]] Eigen::Quaternion<T> toEigen(mapping::Quaternion<T> const& rotation)
{
    return {rotation.w, rotation.x, rotation.y, rotation.z};
}

/// The components x, y, z.
/// @param vector any expression of three rows and one column
template <typename Derived>
[[nodiscard]] Bv_1_1::Vec3d<typename Derived::Scalar> toVec3d(Eigen::MatrixBase<Derived> const& vector)
{
    Eigen::Matrix<typename Derived::Scalar, 3, 1> const value = vector;
    return {value.x(), value.y(), value.z()};
}

/// The components x, y, z.
/// @param vector any expression of three rows and one column
template <typename Derived>
[[nodiscard]] mapping::Vector3<typename Derived::Scalar> toVector3(Eigen::MatrixBase<Derived> const& vector)
{
    Eigen::Matrix<typename Derived::Scalar, 3, 1> const value = vector;
    return {value.x(), value.y(), value.z()};
}

/// The seven components of a pose.
/// @param translation any expression of three rows and one column
/// @param rotation copied unchanged, not normalised
template <typename Derived>
[[nodiscard]] mapping::Rigid3<typename Derived::Scalar>
toRigid3(Eigen::MatrixBase<Derived> const& translation,
         Eigen::Quaternion<typename Derived::Scalar> const& rotation)
{
    return {toVector3(translation), {rotation.x(), rotation.y(), rotation.z(), rotation.w()}};
}

} // namespace oV::Roamscan
