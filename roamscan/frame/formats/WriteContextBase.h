#pragma once

#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// What the host settles for a write. It may derive from this class to pass more to its own writers.
class ROAMSCAN_EXPORT WriteContextBase
{
public:
    WriteContextBase(WriteContextBase const&) = delete;
    WriteContextBase& operator=(WriteContextBase const&) = delete;
    virtual ~WriteContextBase();

    /// The form of the text to write.
    [[nodiscard]] virtual ModelFormat::Format getFormat() const = 0;

    /// Whether the keyed form also has the values that equal the default of their type. The bare form always
    /// has them.
    [[nodiscard]] virtual bool writeDefaultValues() const = 0;

protected:
    WriteContextBase() = default;
};

} // namespace oV
