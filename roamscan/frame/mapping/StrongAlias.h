#pragma once

#include <type_traits>
#include <utility>

// Microsoft's compiler gives only one of several empty base classes no room, unless it is told otherwise.
#if defined(_MSC_VER)
#define ROAMSCAN_EMPTY_BASES __declspec(empty_bases)
#else
#define ROAMSCAN_EMPTY_BASES
#endif

namespace mapping
{

/// A value of `T` with a distinct type for each `Tag` (strong typedef). For example, an instant cannot be
/// passed where a duration is expected. Each mixin adds a group of operators.
///
/// The conversion to `T` is explicit for arithmetic types and implicit for all others.
template <typename T, typename Tag, template <typename> class... Mixins>
class ROAMSCAN_EMPTY_BASES StrongAlias : public Mixins<StrongAlias<T, Tag, Mixins...>>...
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
    // NOLINTNEXTLINE(google-explicit-constructor): implicit for class types
    [[nodiscard]] constexpr explicit(std::is_arithmetic_v<T>) operator T const&() const noexcept
    {
        return value_;
    }

private:
    T value_{};
};

/// Adds comparisons of the wrapped values, by the operators of `T`. A comparison with NaN is false, except
/// `!=`.
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

#undef ROAMSCAN_EMPTY_BASES
