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

/// The scope of one write. Scopes nest as those of ReadFromScope do: a scope that is opened while the same
/// thread has one open on the same stream shares its output format, with the form and the open blocks.
///
/// The contexts of nested scopes must have the same form. A scope is for the thread that opened it.
class ROAMSCAN_EXPORT WriteToScope
{
public:
    /// @param stream where to write; if it is null, nothing is written and ModelOutFormat::good() is false
    /// @param context may be null, which stands for the keyed form; both must outlive the scope
    WriteToScope(std::ostream* stream, WriteContextBase* context);
    ~WriteToScope();

    WriteToScope(WriteToScope const&) = delete;
    WriteToScope& operator=(WriteToScope const&) = delete;

    /// The output format, valid as long as the scope.
    [[nodiscard]] ModelOutFormat& getMof() const noexcept { return *output_; }

    /// The context that this scope was opened with.
    [[nodiscard]] WriteContextBase* getWriteContext() const noexcept { return context_; }

private:
    friend class detail::OpenScopes<WriteToScope>;

    std::ostream* stream_;
    WriteContextBase* context_;
    WriteToScope* enclosing_; // the next older one of this thread, on any stream
    std::shared_ptr<ModelOutFormat> output_;
};

} // namespace oV
