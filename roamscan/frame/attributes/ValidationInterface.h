#pragma once

#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// Interface of an object that may need to be made valid before use. The order of the virtual operations is
/// part of the binary interface.
class ROAMSCAN_EXPORT ValidationInterface
{
public:
    /// Whether the object is valid. The base class returns true.
    [[nodiscard]] virtual bool isValid() const;

    /// Makes the object valid. The base class does nothing and returns true.
    /// @return whether the object is valid
    virtual bool makeValid();

protected:
    ValidationInterface() = default;
    ValidationInterface(ValidationInterface const&) = default;
    ValidationInterface& operator=(ValidationInterface const&) = default;
    ~ValidationInterface() = default;
};

} // namespace oV
