#pragma once

#include <cstdint>

namespace Bv_1_1
{

/// A scan point: a position, then six bytes of payload. All zero by default.
template <typename V>
struct ScanPtColor
{
    /// The coordinates.
    V position{};
    /// The intensity of the reflected signal.
    std::uint16_t intensity = 0;
    /// Red.
    std::uint8_t r = 0;
    /// Green.
    std::uint8_t g = 0;
    /// Blue.
    std::uint8_t b = 0;
    /// Opacity.
    std::uint8_t a = 0;

    [[nodiscard]] friend constexpr bool operator==(ScanPtColor const&, ScanPtColor const&) = default;
};

} // namespace Bv_1_1
