#pragma once

#include <roamscan/frame/mapping/StrongAlias.h>

namespace mapping
{

struct DurationTag;
struct TimeStampTag;

/// A duration in seconds.
using Duration = StrongAlias<double, DurationTag, MixinTotallyOrdered, MixinPlusAssignOperator>;

/// Adds the arithmetic of instants: instant plus or minus duration, and instant minus instant.
template <typename Alias>
struct MixinTimeStampPlusMinusDuration
{
    [[nodiscard]] friend constexpr Alias operator+(Alias const& time, Duration const& span)
    {
        return Alias(time.get() + span.get());
    }
    [[nodiscard]] friend constexpr Alias operator-(Alias const& time, Duration const& span)
    {
        return Alias(time.get() - span.get());
    }
    [[nodiscard]] friend constexpr Duration operator-(Alias const& to, Alias const& from)
    {
        return Duration(to.get() - from.get());
    }
};

/// An instant in seconds on the time axis of the recording. The axis has no fixed epoch.
using TimeStamp = StrongAlias<double, TimeStampTag, MixinTotallyOrdered, MixinTimeStampPlusMinusDuration>;

} // namespace mapping
