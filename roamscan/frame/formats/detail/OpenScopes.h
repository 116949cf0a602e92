#pragma once

namespace oV::detail
{

/// The scopes that a thread has open, linked by their `enclosing_`, the newest first. A scope has a
/// `stream_`. They usually close in the reverse order; any other order works, too.
template <typename Scope>
class OpenScopes
{
public:
    /// The newest open scope of this thread on the stream, null if there is none.
    template <typename Stream>
    [[nodiscard]] static Scope* find(Stream const* stream) noexcept
    {
        Scope* scope = newest;
        while (scope != nullptr && scope->stream_ != stream) {
            scope = scope->enclosing_;
        }
        return scope;
    }

    static void add(Scope& scope) noexcept
    {
        scope.enclosing_ = newest;
        newest = &scope;
    }

    static void remove(Scope& scope) noexcept
    {
        Scope** link = &newest;
        while (*link != &scope) {
            link = &(*link)->enclosing_;
        }
        *link = scope.enclosing_;
    }

private:
    static constinit inline thread_local Scope* newest = nullptr;
};

} // namespace oV::detail
