#pragma once

#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// Something that may have to be made valid before it is used. The order of the virtual operations is part of
/// the binary interface.
class ROAMSCAN_EXPORT ValidationInterface
{
public:
    /// Whether it is valid. Here: true.
    [[nodiscard]] virtual bool isValid() const;

    /// Makes it valid. @return whether it is. Here: true
    virtual bool makeValid();

protected:
    ValidationInterface() = default;
    ValidationInterface(ValidationInterface const&) = default;
    ValidationInterface& operator=(ValidationInterface const&) = default;
    ~ValidationInterface() = default;
};

} // namespace oV
