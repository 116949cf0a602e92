#pragma once

#include <roamscan/frame/formats/FormatScope.h>
#include <roamscan/frame/formats/ModelOutFormat.h>
#include <roamscan/frame/formats/WriteContextBase.h>
#include <roamscan/frame/platform/Export.h>

#include <iosfwd>

namespace oV
{

/// The scope of one write. Scopes nest like those of ReadFromScope: if the same thread already has a scope on
/// the same stream, the new scope shares its output format, including the form and the open blocks.
///
/// The contexts of nested scopes must have the same form. A scope must be used only by the thread that opened
/// it.
class ROAMSCAN_EXPORT WriteToScope : private FormatScope<std::ostream, WriteContextBase, ModelOutFormat>
{
public:
    /// @param stream must outlive the scope; if null, nothing is written and ModelOutFormat::good() is false
    /// @param context must outlive the scope; null means the keyed form
    WriteToScope(std::ostream* stream, WriteContextBase* context);
    ~WriteToScope();

    /// The output format, valid as long as the scope.
    [[nodiscard]] ModelOutFormat& getMof() const noexcept { return format(); }

    /// The context that was given to the constructor.
    [[nodiscard]] WriteContextBase* getWriteContext() const noexcept { return context(); }
};

} // namespace oV
