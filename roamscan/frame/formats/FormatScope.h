#pragma once

#include <memory>

namespace oV
{

/// The common part of ReadFromScope and WriteToScope: which format a scope uses. Scopes of the same thread on
/// the same stream share one format, which the outermost of them creates. They usually close in reverse
/// order, but any order works.
/// @tparam Stream the stream of the scope
/// @tparam Context the settings, which name the form of the text
/// @tparam Format reads or writes the text
template <typename Stream, typename Context, typename Format>
class FormatScope
{
public:
    FormatScope(FormatScope const&) = delete;
    FormatScope& operator=(FormatScope const&) = delete;

protected:
    /// Opens the scope. A null stream is shared with no other scope; a null context means the keyed form.
    FormatScope(Stream* stream, Context* context);

    /// Closes the scope.
    ~FormatScope();

    /// The format, valid as long as the scope.
    [[nodiscard]] Format& format() const noexcept { return *format_; }

    /// The context that was given to the constructor.
    [[nodiscard]] Context* context() const noexcept { return context_; }

    /// Whether the format is that of an enclosing scope.
    [[nodiscard]] bool isNested() const noexcept { return isNested_; }

private:
    static FormatScope*& newest() noexcept;
    [[nodiscard]] static FormatScope const* newestOn(Stream const* stream) noexcept;

    Stream* stream_;
    Context* context_;
    FormatScope* enclosing_; // the next older one of this thread, on any stream
    std::shared_ptr<Format> format_;
    bool isNested_ = false;
};

} // namespace oV
