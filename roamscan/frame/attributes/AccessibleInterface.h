#pragma once

#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// Interface of an object that may need to be made accessible before use. The order of the virtual operations
/// is part of the binary interface.
class ROAMSCAN_EXPORT AccessibleInterface
{
public:
    /// Whether the object can be used now. The base class returns true.
    [[nodiscard]] virtual bool isAccessible() const;

    /// Makes the object accessible. The base class does nothing and returns true.
    /// @return whether the object can be used now
    virtual bool makeAccessible();

protected:
    AccessibleInterface() = default;
    AccessibleInterface(AccessibleInterface const&) = default;
    AccessibleInterface& operator=(AccessibleInterface const&) = default;
    ~AccessibleInterface() = default;
};

} // namespace oV
