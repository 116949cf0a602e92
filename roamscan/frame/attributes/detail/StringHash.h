#pragma once

#include <roamscan/frame/bvbase/String.h>

#include <cstddef>
#include <functional>
#include <string_view>

namespace oV::detail
{

/// Hashes the text of a string, for tables with strings as keys.
struct StringHash
{
    [[nodiscard]] std::size_t operator()(Bv_1_1::String const& string) const noexcept
    {
        return std::hash<std::u16string_view>{}(string.text());
    }
};

} // namespace oV::detail
