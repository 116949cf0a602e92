#pragma once

#include <roamscan/frame/attributes/AttrType.h>
#include <roamscan/frame/attributes/Attribute.h>

#include <cstddef>

namespace oV::detail
{

/// A type of attributes: its name, and the functions that create its attributes.
struct AttrKind
{
    using Make = Attribute* (*)(Bv_1_1::BaseNode::CreateType type, Attribute const* source, void* place);

    AttrType type;
    wchar_t const* key; ///< the name of the class record
    std::size_t size;   ///< bytes for an attribute in given memory, a multiple of the largest alignment
    Make makePlain;
    Make makeCustom;
};

/// The kind with this code; null if there is none.
[[nodiscard]] AttrKind const* attrKind(AttrType type) noexcept;

/// The kind with this type key; null if there is none.
[[nodiscard]] AttrKind const* attrKind(Bv_1_1::String const& key);

} // namespace oV::detail
