#pragma once

namespace mapping
{

/// Three consecutive values in the order x, y, z; zero by default.
template <typename T>
struct Vector3
{
    T x{};
    T y{};
    T z{};

    [[nodiscard]] friend constexpr bool operator==(Vector3 const&, Vector3 const&) = default;
};

} // namespace mapping
