#pragma once

#include <roamscan/frame/formats/FormatScope.h>
#include <roamscan/frame/formats/ModelInFormat.h>
#include <roamscan/frame/formats/ReadContextBase.h>
#include <roamscan/frame/platform/Export.h>

#include <iosfwd>

namespace oV
{

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
class ROAMSCAN_EXPORT ReadFromScope : private FormatScope<std::istream, ReadContextBase, ModelInFormat>
{
public:
    /// @param stream must outlive the scope; null or a failed stream is a failure (StatusCode::readFailed)
    /// @param context must outlive the scope; null means the keyed form
    ReadFromScope(std::istream* stream, ReadContextBase* context);

    /// Passes a keyword to the enclosing scope if ModelInFormat::setPropagateKeyword() was called in this
    /// one. Otherwise, an end of block that was read in this scope is finished, and the enclosing scope
    /// continues after it.
    ~ReadFromScope();

    /// The input format, valid as long as the scope.
    [[nodiscard]] ModelInFormat& getImf() const noexcept { return format(); }

    /// The context that was given to the constructor.
    [[nodiscard]] ReadContextBase* getReadContext() const noexcept { return context(); }

private:
    ModelInFormat::ScopeState outerState_; // of the enclosing scope, if nested
};

} // namespace oV
