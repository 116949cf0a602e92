#pragma once

#include <cstdint>

namespace oV
{

/// The type of an attribute. Other values than those of the enumerators are not supported.
enum class AttrType : std::uint32_t
{
    Bool = 1,     ///< Attr<bool>
    Int = 2,      ///< Attr<int>
    Double = 3,   ///< Attr<double>
    String = 4,   ///< Attr<Bv_1_1::String>
    Strings = 21, ///< Attr<std::vector<Bv_1_1::String>>
    End = 54      ///< no type: ends a definition table; also the result for an unknown type key
};

} // namespace oV
