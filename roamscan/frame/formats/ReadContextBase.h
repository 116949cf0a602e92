#pragma once

#include <roamscan/frame/formats/ModelFormat.h>
#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// What the host settles for a read. It may derive from this class to pass more to its own readers.
///
/// A null context is allowed wherever a reader takes one; it stands for the keyed form.
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
