#pragma once

#include <roamscan/frame/attributes/AttrType.h>
#include <roamscan/frame/attributes/Attribute.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

#include <cstdint>

namespace oV
{

/// A row of a definition table: one attribute of a class of containers. A table ends at the row whose name is
/// NIL.
struct ROAMSCAN_EXPORT AttrDefinition
{
    /// Bit of `flags`: createAttr() makes a custom attribute (CustAttr) rather than a plain one.
    static constexpr std::uint32_t customFlag = 1;

    std::uint32_t token; ///< the place in the container's block
    Bv_1_1::String name; ///< NIL ends the table
    AttrType type;       ///< the type of the value
    std::uint32_t flags; ///< customFlag; other bits mean nothing here

    /// Makes an attribute of this row's type.
    /// @param source where value and flag word come from, unless it is null or the type is NoSource
    /// @param place where to make it; null for the heap. Room and alignment are those of the class
    /// @return without a reference; null for a type that no attribute is made of
    [[nodiscard]] Attribute*
    createAttr(Bv_1_1::BaseNode::CreateType createType, Attribute const* source, void* place) const;
};

} // namespace oV
