#pragma once

namespace Bv_1_1
{

/// Two consecutive values in the order x, y; zero by default.
template <typename T>
struct SVec2d
{
    T x{};
    T y{};

    [[nodiscard]] friend constexpr bool operator==(SVec2d const&, SVec2d const&) = default;
};

} // namespace Bv_1_1
