#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/IntegerTypes.h>

#include <limits>

/// Conversions between the four forms of time. All four share one zero, which is whatever the recording's
/// time source calls zero; there is no epoch.
///
/// | form            | unit  | carrier                                                        |
/// |-----------------|-------|----------------------------------------------------------------|
/// | integer time    | 10 ns | signed 64-bit                                                  |
/// | seconds         | 1 s   | `double`                                                       |
/// | Txm time        | 1 us  | unsigned 64-bit                                                |
/// | automation time | 1 us  | unsigned 64-bit, with a signed offset that the caller supplies |
///
/// All functions are pure, never throw and never report a failure: a value that does not fit wraps, and
/// callers own their range.
namespace oV::Roamscan::TimeConversion
{

/// Ticks of integer time in a second: 100000000.
extern ROAMSCAN_EXPORT double const timeResolution;

/// Ticks of Txm and automation time in a second: 1000000.
extern ROAMSCAN_EXPORT double const automationTimeResolution;

/// The last whole second on either side of zero that integer time can count: 92233720368, some 2,900 years.
/// `convertToIntegerTime(s)` is defined for each s with `std::abs(s) <= largestSeconds`.
inline constexpr double largestSeconds = std::numeric_limits<int64>::max() / 100'000'000;

/// Seconds to integer time, to the nearest tick; halves go away from zero.
[[nodiscard]] ROAMSCAN_EXPORT int64 convertToIntegerTime(double const& seconds);

/// Integer time to seconds: the tick count times 1e-8, not divided by `timeResolution`.
[[nodiscard]] ROAMSCAN_EXPORT double convertToSeconds(int64 const& time);

/// Seconds to Txm time by way of integer time: rounded to 10 ns, then truncated to 1 us.
[[nodiscard]] ROAMSCAN_EXPORT _ULARGE_INTEGER convertToTxmTime(double const& seconds);

/// Integer time to Txm time: the tick count as a `double` times 0.01, truncated towards zero. Above 2^53
/// ticks the lower digits are lost; a negative time wraps to the two's complement bits of the truncated
/// value.
[[nodiscard]] ROAMSCAN_EXPORT _ULARGE_INTEGER convertToTxmTime(int64 const& time);

/// Txm time to integer time: times 100, wrapping.
[[nodiscard]] ROAMSCAN_EXPORT int64 convertTxmTimeToIntegerTime(_ULARGE_INTEGER const& txm);

/// Txm time to seconds: the unsigned value times 1e-6.
[[nodiscard]] ROAMSCAN_EXPORT double convertTxmTimeToSeconds(_ULARGE_INTEGER const& txm);

/// Automation time to integer time: (time + offset) * 100, sum and product both wrapping. A negative result
/// is valid.
[[nodiscard]] ROAMSCAN_EXPORT int64 convertAutomationTimeToIntegerTime(_ULARGE_INTEGER const& time,
                                                                       _LARGE_INTEGER const& offset);

/// Where `time` lies between `first` and `last`: 0 at `first`, 1 at `last`, below 0 or above 1 outside. The
/// differences are taken as wrapping 64-bit integers.
///
/// Callers may rely on 0.0 when all three are equal. That is the only guard: with `first == last` and another
/// `time` the division gives an infinity.
[[nodiscard]] ROAMSCAN_EXPORT double
getInterpolationFraction(int64 const& first, int64 const& last, int64 const& time);

} // namespace oV::Roamscan::TimeConversion
