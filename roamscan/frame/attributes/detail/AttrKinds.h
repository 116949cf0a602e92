#pragma once

#include <roamscan/frame/attributes/AttrType.h>
#include <roamscan/frame/attributes/Attribute.h>

#include <cstddef>

namespace oV::detail
{

/// A type of attributes: how its attributes are named and made.
struct AttrKind
{
    using Make = Attribute* (*)(Bv_1_1::BaseNode::CreateType type, Attribute const* source, void* place);

    AttrType type;
    wchar_t const* key; ///< the name of the class record
    std::size_t size;   ///< room for an attribute at a given place, a multiple of the largest alignment
    Make makePlain;
    Make makeCustom;
};

/// The kind with this code; null if there is none.
[[nodiscard]] AttrKind const* attrKind(AttrType type) noexcept;

/// The kind with this type key; null if there is none.
[[nodiscard]] AttrKind const* attrKind(Bv_1_1::String const& key);

} // namespace oV::detail
