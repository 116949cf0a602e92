#pragma once

#include <roamscan/frame/mapping/Vector3.h>

namespace mapping
{

/// A quaternion as four consecutive values in the order x, y, z, w: the vector part before the scalar part.
/// The identity by default.
template <typename T>
struct Quaternion
{
    T x{};
    T y{};
    T z{};
    T w{1};

    [[nodiscard]] friend constexpr bool operator==(Quaternion const&, Quaternion const&) = default;
};

/// A rigid transform as seven consecutive values: translation x, y, z, then rotation x, y, z, w. The identity
/// by default. It maps a point p to `rotation * p + translation`.
template <typename T>
struct Rigid3
{
    /// x, y, z.
    Vector3<T> translation;
    /// x, y, z, w.
    Quaternion<T> rotation;

    [[nodiscard]] friend constexpr bool operator==(Rigid3 const&, Rigid3 const&) = default;
};

} // namespace mapping
