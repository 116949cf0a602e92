#pragma once

#include <roamscan/frame/mapping/Vector3.h>

namespace mapping
{

/// Four consecutive values in the order x, y, z, w: the vector part before the scalar part.
template <typename T>
struct Quaternion
{
    T x{};
    T y{};
    T z{};
    T w{1};

    [[nodiscard]] friend constexpr bool operator==(Quaternion const&, Quaternion const&) = default;
};

/// A rigid transform as seven consecutive values: translation x, y, z, then rotation x, y, z, w.
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
