#pragma once

#include <roamscan/frame/formats/ModelInFormat.h>
#include <roamscan/frame/formats/ReadContextBase.h>
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

/// The scope of one read. Each object that reads itself opens one and walks the keywords of its input format.
///
/// Scopes nest: a scope that is opened while the same thread has one open on the same stream shares its input
/// format, with the position and the current keyword. So a container can read a keyword, and the attribute
/// that it calls goes on from there. The outermost scope makes the input format in the form of its context.
/// When it closes, the stream stands just after the last byte that was used. The state flags of the stream
/// are not changed.
///
/// The contexts of nested scopes must have the same form. A scope is for the thread that opened it.
class ROAMSCAN_EXPORT ReadFromScope
{
public:
    /// @param stream what to read; if it is null or has failed, so has the input format
    /// @param context may be null, which stands for the keyed form; both must outlive the scope
    ReadFromScope(std::istream* stream, ReadContextBase* context);

    /// Hands a keyword to the enclosing scope if ModelInFormat::setPropagateKeyword() was called in this one.
    /// Otherwise an end of block that was read in this scope is done with, and the enclosing scope goes on
    /// after it.
    ~ReadFromScope();

    ReadFromScope(ReadFromScope const&) = delete;
    ReadFromScope& operator=(ReadFromScope const&) = delete;

    /// The input format, valid as long as the scope.
    [[nodiscard]] ModelInFormat& getImf() const noexcept { return *input_; }

    /// The context that this scope was opened with.
    [[nodiscard]] ReadContextBase* getReadContext() const noexcept { return context_; }

private:
    friend class detail::OpenScopes<ReadFromScope>;

    std::istream* stream_;
    ReadContextBase* context_;
    ReadFromScope* enclosing_; // the next older one of this thread, on any stream
    std::shared_ptr<ModelInFormat> input_;
    bool isNested_ = false;
    ModelInFormat::ScopeState outerState_; // of the enclosing scope, if nested
};

} // namespace oV
