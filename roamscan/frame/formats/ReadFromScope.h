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

/// The scope of one read. An object that reads itself from a stream opens a scope and iterates over the
/// keywords of its input format.
///
/// Scopes nest: if the same thread already has a scope on the same stream, the new scope shares its input
/// format, including the position and the current keyword. So a container can read a keyword, and the
/// attribute that it calls continues from there. The outermost scope creates the input format, in the form of
/// its context. When it closes, the stream is positioned directly after the last byte that was used. The
/// state flags of the stream are not changed.
///
/// The contexts of nested scopes must have the same form. A scope must be used only by the thread that opened
/// it.
class ROAMSCAN_EXPORT ReadFromScope
{
public:
    /// @param stream must outlive the scope; null or a failed stream is a failure (StatusCode::readFailed)
    /// @param context must outlive the scope; null means the keyed form
    ReadFromScope(std::istream* stream, ReadContextBase* context);

    /// Passes a keyword to the enclosing scope if ModelInFormat::setPropagateKeyword() was called in this
    /// one. Otherwise, an end of block that was read in this scope is finished, and the enclosing scope
    /// continues after it.
    ~ReadFromScope();

    ReadFromScope(ReadFromScope const&) = delete;
    ReadFromScope& operator=(ReadFromScope const&) = delete;

    /// The input format, valid as long as the scope.
    [[nodiscard]] ModelInFormat& getImf() const noexcept { return *input_; }

    /// The context that was given to the constructor.
    [[nodiscard]] ReadContextBase* getReadContext() const noexcept { return context_; }

private:
    friend class detail::OpenScopes<ReadFromScope>;

    std::istream* stream_;
    ReadContextBase* context_;
    ReadFromScope* enclosing_ = nullptr; // the next older one of this thread, on any stream
    std::shared_ptr<ModelInFormat> input_;
    bool isNested_ = false;
    ModelInFormat::ScopeState outerState_; // of the enclosing scope, if nested
};

} // namespace oV
