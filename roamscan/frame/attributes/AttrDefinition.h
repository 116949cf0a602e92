#pragma once

#include <roamscan/frame/attributes/AttrType.h>
#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

#include <cstdint>

namespace oV
{

/// A row of a definition table: one static attribute of a container class. A row with the name NIL ends the
/// table.
struct ROAMSCAN_EXPORT AttrDefinition
{
    /// Bit of `flags`: createAttr() makes a custom attribute (CustAttr) rather than a plain one.
    static constexpr std::uint32_t customFlag = 1;

    std::uint32_t token; ///< the index in the container's block
    Bv_1_1::String name; ///< NIL ends the table
    AttrType type;       ///< the type of the value
    std::uint32_t flags; ///< customFlag; other bits are ignored

    /// Creates an attribute of this row's type.
    /// @param createType if it is NoSource, `source` is ignored
    /// @param source the value and the flags are copied from it; may be null
    /// @param place the memory to construct the attribute in, with the size and alignment of its class; null
    ///     to allocate it on the heap
    /// @return the attribute, with a reference count of 0; null if `type` is not supported
    [[nodiscard]] Attribute*
    createAttr(Bv_1_1::BaseNode::CreateType createType, Attribute const* source, void* place) const;
};

} // namespace oV
