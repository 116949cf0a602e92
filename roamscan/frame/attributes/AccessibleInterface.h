#pragma once

#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// Something that may have to be made accessible before it is used. The order of the virtual operations is
/// part of the binary interface.
class ROAMSCAN_EXPORT AccessibleInterface
{
public:
    /// Whether it can be used as it is. Here: true.
    [[nodiscard]] virtual bool isAccessible() const;

    /// Makes it usable. @return whether it is. Here: true
    virtual bool makeAccessible();

protected:
    AccessibleInterface() = default;
    AccessibleInterface(AccessibleInterface const&) = default;
    AccessibleInterface& operator=(AccessibleInterface const&) = default;
    ~AccessibleInterface() = default;
};

} // namespace oV
