#pragma once

#include <roamscan/frame/formats/ModelOutFormat.h>
#include <roamscan/frame/formats/WriteContextBase.h>
#include <roamscan/frame/platform/Export.h>

#include <iosfwd>
#include <memory>

namespace oV
{

namespace detail
{
template <typename Scope>
class OpenScopes;
} // namespace detail

/// The scope of one write. Scopes nest like those of ReadFromScope: if the same thread already has a scope on
/// the same stream, the new scope shares its output format, including the form and the open blocks.
///
/// The contexts of nested scopes must have the same form. A scope must be used only by the thread that opened
/// it.
class ROAMSCAN_EXPORT WriteToScope
{
public:
    /// @param stream must outlive the scope; if null, nothing is written and ModelOutFormat::good() is false
    /// @param context must outlive the scope; null means the keyed form
    WriteToScope(std::ostream* stream, WriteContextBase* context);
    ~WriteToScope();

    WriteToScope(WriteToScope const&) = delete;
    WriteToScope& operator=(WriteToScope const&) = delete;

    /// The output format, valid as long as the scope.
    [[nodiscard]] ModelOutFormat& getMof() const noexcept { return *output_; }

    /// The context that was given to the constructor.
    [[nodiscard]] WriteContextBase* getWriteContext() const noexcept { return context_; }

private:
    friend class detail::OpenScopes<WriteToScope>;

    std::ostream* stream_;
    WriteContextBase* context_;
    WriteToScope* enclosing_ = nullptr; // the next older one of this thread, on any stream
    std::shared_ptr<ModelOutFormat> output_;
};

} // namespace oV
