#pragma once

namespace Bv_1_1
{

/// Three consecutive values in the order x, y, z; zero by default.
template <typename T>
struct Vec3d
{
    T x{};
    T y{};
    T z{};

    [[nodiscard]] friend constexpr bool operator==(Vec3d const&, Vec3d const&) = default;
};

} // namespace Bv_1_1
