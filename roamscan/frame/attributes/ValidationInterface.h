#pragma once

#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// Something that may have to be made valid before it is used. The order of the virtual operations is part of
/// the binary interface.
class ROAMSCAN_EXPORT ValidationInterface
{
public:
    /// Whether it is valid.
    [[nodiscard]] virtual bool isValid() const = 0;

    /// Makes it valid. @return whether it is
    virtual bool makeValid() = 0;

protected:
    ValidationInterface() = default;
    ValidationInterface(ValidationInterface const&) = default;
    ValidationInterface& operator=(ValidationInterface const&) = default;
    ~ValidationInterface() = default;
};

} // namespace oV
