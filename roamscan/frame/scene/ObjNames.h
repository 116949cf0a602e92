#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The names of the predefined object types.
class ROAMSCAN_EXPORT ObjNames
{
public:
    /// The number of the type for a polyline.
    static constexpr unsigned int line = 16;

    /// The name of a type, or NIL for a number without one. Only `line` has a name here: "Line".
    [[nodiscard]] static Bv_1_1::String const& key(unsigned int number);
};

} // namespace oV
