#pragma once

#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The settings of a write. A host may derive from this class to pass further settings to its own writers.
class ROAMSCAN_EXPORT WriteContextBase
{
public:
    WriteContextBase(WriteContextBase const&) = delete;
    WriteContextBase& operator=(WriteContextBase const&) = delete;
    virtual ~WriteContextBase();

    /// The form of the text to write.
    [[nodiscard]] virtual ModelFormat::Format getFormat() const = 0;

    /// Whether values that equal the default of their type are written in the keyed form. The bare form
    /// always contains them.
    [[nodiscard]] virtual bool writeDefaultValues() const = 0;

protected:
    WriteContextBase() = default;
};

} // namespace oV
