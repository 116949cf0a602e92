#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/IntegerTypes.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace oV::Roamscan
{

/// A half-open interval of integer time (ticks of 10 ns, see TimeConversion): `start` is its first instant,
/// `end` the first one after it.
///
/// A plain pair without an invariant: `end` may be at or before `start`, and either may be unset. No
/// operation throws.
struct ROAMSCAN_EXPORT TimeWindow
{
    /// The marker of an unset time.
    static constexpr int64 unsetTime = (std::numeric_limits<int64>::max)();

    int64 start = unsetTime; ///< First instant inside the window.
    int64 end = unsetTime;   ///< First instant after the window.

    /// Both times are unset.
    constexpr TimeWindow() noexcept = default;
    /// A window with these times, which are not checked.
    constexpr TimeWindow(int64 startTime, int64 endTime) noexcept : start(startTime), end(endTime) {}

    [[nodiscard]] constexpr bool operator==(TimeWindow const& other) const noexcept = default;

    /// Whether both times are set and `start` is before `end`.
    [[nodiscard]] constexpr bool valid() const noexcept
    {
        return start != unsetTime && end != unsetTime && start < end;
    }

    /// Whether start <= time < end.
    /// @note Does not test valid(). An empty or reversed window contains nothing. A window with an unset end
    /// contains every later time except `unsetTime`.
    [[nodiscard]] constexpr bool contains(int64 const& time) const noexcept
    {
        return time >= start && time < end;
    }

    /// Whether the whole window lies before the time: end <= time.
    [[nodiscard]] constexpr bool isBefore(int64 const& time) const noexcept { return time >= end; }

    /// @return the window from the greater start to the lesser end; it is not valid() if there is no overlap
    [[nodiscard]] constexpr TimeWindow overlap(TimeWindow const& other) const noexcept
    {
        return {(std::max)(start, other.start), (std::min)(end, other.end)};
    }

    /// Whether overlap() is valid(). Windows that only touch each other do not overlap.
    [[nodiscard]] constexpr bool overlaps(TimeWindow const& other) const noexcept
    {
        return overlap(other).valid();
    }

    /// @return the greater start minus the lesser end: positive for separate windows, zero for touching ones,
    ///         negative for overlapping ones; wraps around on overflow
    [[nodiscard]] constexpr int64 distance(TimeWindow const& other) const noexcept
    {
        TimeWindow const common = overlap(other);
        return static_cast<int64>(static_cast<std::uint64_t>(common.start) -
                                  static_cast<std::uint64_t>(common.end));
    }
};

} // namespace oV::Roamscan
