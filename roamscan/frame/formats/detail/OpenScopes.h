#pragma once

namespace oV::detail
{

/// The open scopes of a thread: a list linked by their `enclosing_`, newest first. Scopes usually close in
/// reverse order, but any order works.
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
