#pragma once

#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// The settings of a read. A host may derive from this class to pass further settings to its own readers.
///
/// A reader also accepts a null context, which means the keyed form.
class ROAMSCAN_EXPORT ReadContextBase
{
public:
    ReadContextBase(ReadContextBase const&) = delete;
    ReadContextBase& operator=(ReadContextBase const&) = delete;
    virtual ~ReadContextBase();

    /// The form of the text to read.
    [[nodiscard]] virtual ModelFormat::Format getFormat() const = 0;

protected:
    ReadContextBase() = default;
};

} // namespace oV
