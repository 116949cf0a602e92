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
/// A plain pair without any invariant: `end` may be at or before `start`, and either may be unset. Nothing
/// throws, and many threads may read it; writing needs the caller's own exclusion.
struct ROAMSCAN_EXPORT TimeWindow
{
    /// The marker of an unset time.
    static constexpr int64 unsetTime = std::numeric_limits<int64>::max();

    int64 start = unsetTime; ///< First instant inside the window.
    int64 end = unsetTime;   ///< First instant after the window.

    /// Both times unset.
    constexpr TimeWindow() noexcept = default;
    /// From the first instant inside the window to the first one after it.
    constexpr TimeWindow(int64 startTime, int64 endTime) noexcept : start(startTime), end(endTime) {}

    [[nodiscard]] constexpr bool operator==(TimeWindow const& other) const noexcept = default;

    /// Whether both times are set and `start` comes before `end`.
    [[nodiscard]] constexpr bool valid() const noexcept
    {
        return start != unsetTime && end != unsetTime && start < end;
    }

    /// Whether the time is at `start` or later, and before `end`. Looks at nothing else: a window without a
    /// set end goes on for good, and an empty or reversed one contains nothing.
    [[nodiscard]] constexpr bool contains(int64 const& time) const noexcept
    {
        return time >= start && time < end;
    }

    /// Whether the whole window lies before the time: the time is at `end` or later.
    [[nodiscard]] constexpr bool isBefore(int64 const& time) const noexcept { return time >= end; }

    /// From the greater start to the lesser end. A result that is not valid() says that there is no overlap.
    [[nodiscard]] constexpr TimeWindow overlap(TimeWindow const& other) const noexcept
    {
        return {std::max(start, other.start), std::min(end, other.end)};
    }

    /// Whether overlap() is valid(). Windows that only touch do not overlap.
    [[nodiscard]] constexpr bool overlaps(TimeWindow const& other) const noexcept
    {
        return overlap(other).valid();
    }

    /// The greater start minus the lesser end: the gap between separate windows, zero for touching ones,
    /// negative for overlapping ones. A difference beyond 64 bits wraps around.
    [[nodiscard]] constexpr int64 distance(TimeWindow const& other) const noexcept
    {
        TimeWindow const common = overlap(other);
        return static_cast<int64>(static_cast<std::uint64_t>(common.start) -
                                  static_cast<std::uint64_t>(common.end));
    }
};

} // namespace oV::Roamscan
