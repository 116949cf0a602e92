#pragma once

#include <array>
#include <cstddef>

namespace Bv_1_1
{

/// A 4x4 matrix of sixteen consecutive values in column-major order: the element at (row, column) has the
/// index 4 * column + row. Zero by default.
template <typename T>
struct Mat4d
{
    /// In storage order.
    std::array<T, 16> elements{};

    /// The element at a storage index from 0 to 15. The index is not checked.
    [[nodiscard]] constexpr T& operator[](std::size_t index) { return elements[index]; }
    [[nodiscard]] constexpr T const& operator[](std::size_t index) const { return elements[index]; }

    /// A pointer to the sixteen elements in storage order.
    [[nodiscard]] constexpr T* data() { return elements.data(); }
    /// @overload
    [[nodiscard]] constexpr T const* data() const { return elements.data(); }

    [[nodiscard]] friend constexpr bool operator==(Mat4d const&, Mat4d const&) = default;
};

} // namespace Bv_1_1
