#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/IntegerTypes.h>

#include <limits>

/// Conversions between the four forms of time. All four share the zero of the recording's time source. There
/// is no fixed epoch.
///
/// | form            | unit  | carrier                                                        |
/// |-----------------|-------|----------------------------------------------------------------|
/// | integer time    | 10 ns | signed 64-bit                                                  |
/// | seconds         | 1 s   | `double`                                                       |
/// | Txm time        | 1 us  | unsigned 64-bit                                                |
/// | automation time | 1 us  | unsigned 64-bit, with a signed offset that the caller supplies |
///
/// All functions are pure and thread-safe. They neither throw nor report failures. Integer arithmetic wraps
/// around on overflow; the caller ensures that the values are in range.
namespace oV::Roamscan::TimeConversion
{

/// Ticks of integer time per second: 100000000.
extern ROAMSCAN_EXPORT double const timeResolution;

/// Ticks of Txm time and automation time per second: 1000000.
extern ROAMSCAN_EXPORT double const automationTimeResolution;

/// The largest whole number of seconds that integer time can represent: 92233720368, about 2,900 years.
inline constexpr double largestSeconds = 92'233'720'368.0;
static_assert((std::numeric_limits<int64>::max)() / 100'000'000 == static_cast<int64>(largestSeconds));

/// Converts seconds to integer time, rounded to the nearest tick. Halves round away from zero. The result is
/// unspecified for NaN and outside [-largestSeconds, largestSeconds].
[[nodiscard]] ROAMSCAN_EXPORT int64 convertToIntegerTime(double const& seconds);

/// Converts integer time to seconds.
/// @note Multiplies the tick count by 1e-8. A division by `timeResolution` would round differently.
[[nodiscard]] ROAMSCAN_EXPORT double convertToSeconds(int64 const& time);

/// Converts seconds to Txm time through integer time: rounds to 10 ns, then truncates to 1 us.
[[nodiscard]] ROAMSCAN_EXPORT _ULARGE_INTEGER convertToTxmTime(double const& seconds);

/// Converts integer time to Txm time: multiplies the tick count as a `double` by 0.01 and truncates towards
/// zero.
/// @note Above 2^53 ticks the lower digits are lost. A negative time gives the two's complement bits of the
///     truncated value.
[[nodiscard]] ROAMSCAN_EXPORT _ULARGE_INTEGER convertToTxmTime(int64 const& time);

/// Converts Txm time to integer time: multiplies by 100. Wraps around on overflow.
[[nodiscard]] ROAMSCAN_EXPORT int64 convertTxmTimeToIntegerTime(_ULARGE_INTEGER const& txm);

/// Converts Txm time to seconds: multiplies the unsigned value by 1e-6.
[[nodiscard]] ROAMSCAN_EXPORT double convertTxmTimeToSeconds(_ULARGE_INTEGER const& txm);

/// Converts automation time to integer time: (time + offset) * 100. Sum and product wrap around on overflow.
/// A negative result is valid.
[[nodiscard]] ROAMSCAN_EXPORT int64 convertAutomationTimeToIntegerTime(_ULARGE_INTEGER const& time,
                                                                       _LARGE_INTEGER const& offset);

/// The position of `time` between `first` and `last`: (time - first) / (last - first), so 0 at `first` and 1
/// at `last`. Times outside extrapolate. The differences are 64-bit integers that wrap around on overflow.
/// @note If `first` and `last` are equal, the result is 0.0 for the same `time` and an infinity otherwise.
[[nodiscard]] ROAMSCAN_EXPORT double
getInterpolationFraction(int64 const& first, int64 const& last, int64 const& time);

} // namespace oV::Roamscan::TimeConversion
