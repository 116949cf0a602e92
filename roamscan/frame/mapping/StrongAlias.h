#pragma once

#include <type_traits>
#include <utility>

namespace mapping
{

/// A value of `T` that is a type of its own for every `Tag`, so that, say, an instant cannot be passed where
/// a span is asked for. It holds the value and nothing else; each mixin adds a group of operators.
///
/// Reading the value back is explicit for arithmetic `T`, where an implicit conversion would undo the
/// distinction, and implicit otherwise.
template <typename T, typename Tag, template <typename> class... Mixins>
class StrongAlias : public Mixins<StrongAlias<T, Tag, Mixins...>>...
{
public:
    /// The type of the wrapped value.
    using ValueType = T;

    /// The value-initialised `T`; zero for numbers.
    constexpr StrongAlias() = default;
    /// Wraps a value.
    constexpr explicit StrongAlias(T value) noexcept(std::is_nothrow_move_constructible_v<T>)
        : value_(std::move(value))
    {}

    /// The wrapped value.
    [[nodiscard]] constexpr T const& get() const noexcept { return value_; }
    // NOLINTNEXTLINE(google-explicit-constructor): implicit where it loses nothing
    [[nodiscard]] constexpr explicit(std::is_arithmetic_v<T>) operator T const&() const noexcept
    {
        return value_;
    }

private:
    T value_{};
};

/// Comparison by the wrapped value, with the rules of `T`: a NaN is neither equal to nor ordered against
/// anything.
template <typename Alias>
struct MixinTotallyOrdered
{
    [[nodiscard]] friend constexpr bool operator==(Alias const& a, Alias const& b)
    {
        return a.get() == b.get();
    }
    [[nodiscard]] friend constexpr bool operator!=(Alias const& a, Alias const& b)
    {
        return a.get() != b.get();
    }
    [[nodiscard]] friend constexpr bool operator<(Alias const& a, Alias const& b)
    {
        return a.get() < b.get();
    }
    [[nodiscard]] friend constexpr bool operator<=(Alias const& a, Alias const& b)
    {
        return a.get() <= b.get();
    }
    [[nodiscard]] friend constexpr bool operator>(Alias const& a, Alias const& b)
    {
        return a.get() > b.get();
    }
    [[nodiscard]] friend constexpr bool operator>=(Alias const& a, Alias const& b)
    {
        return a.get() >= b.get();
    }
};

/// Adds `a += b` for two values of the alias.
template <typename Alias>
struct MixinPlusAssignOperator
{
    friend constexpr Alias& operator+=(Alias& a, Alias const& b)
    {
        a = Alias(a.get() + b.get());
        return a;
    }
};

} // namespace mapping
