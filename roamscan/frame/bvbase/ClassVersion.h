#pragma once

#include <cstdint>

namespace Bv_1_1
{

/// The version of a class, as stored in its class record.
struct ClassVersion
{
    /// The version number.
    std::uint32_t number = 0;

    [[nodiscard]] friend constexpr bool operator==(ClassVersion const&, ClassVersion const&) = default;
};

} // namespace Bv_1_1
