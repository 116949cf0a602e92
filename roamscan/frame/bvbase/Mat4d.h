#pragma once

#include <array>
#include <cstddef>

namespace Bv_1_1
{

/// A 4x4 matrix as sixteen consecutive values, column by column: element 4 * column + row. Zero unless given.
template <typename T>
struct Mat4d
{
    /// In storage order.
    std::array<T, 16> elements{};

    /// Element by its place in storage, 0 to 15; not checked.
    [[nodiscard]] constexpr T& operator[](std::size_t index) { return elements[index]; }
    [[nodiscard]] constexpr T const& operator[](std::size_t index) const { return elements[index]; }

    /// The first of the sixteen values.
    [[nodiscard]] constexpr T* data() { return elements.data(); }
    /// The sixteen elements in storage order.
    [[nodiscard]] constexpr T const* data() const { return elements.data(); }

    [[nodiscard]] friend constexpr bool operator==(Mat4d const&, Mat4d const&) = default;
};

} // namespace Bv_1_1
