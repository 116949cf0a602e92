#pragma once

#include <roamscan/frame/bvbase/String.h>

#include <cstddef>

namespace oV::detail
{

/// Hashes the text of a string, for tables with strings as keys.
///
/// Not `noexcept`, although it does not throw: libstdc++ then keeps the hash beside each key, so a lookup
/// compares hashes before texts.
struct StringHash
{
    [[nodiscard]] std::size_t operator()(Bv_1_1::String const& string) const
    {
        return string.isNil() ? 0 : string.value()->hash();
    }
};

} // namespace oV::detail
