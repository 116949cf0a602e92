#pragma once

#include <cstdint>

namespace oV
{

/// The codes of the types of attributes, as definition rows hold them. Codes without an enumerator stand for
/// no type here; no attribute is made of them.
enum class AttrType : std::uint32_t
{
    Bool = 1,     ///< Attr<bool>
    Int = 2,      ///< Attr<int>
    Double = 3,   ///< Attr<double>
    String = 4,   ///< Attr<Bv_1_1::String>
    Strings = 21, ///< Attr<std::vector<Bv_1_1::String>>
    End = 54      ///< the end of a definition table; also what an unknown type key gives
};

} // namespace oV
