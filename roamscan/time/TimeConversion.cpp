#include <roamscan/frame/platform/detail/Rounding.h>
#include <roamscan/time/TimeConversion.h>
#include <roamscan/time/detail/TickRatio.h>

#include <cmath>
#include <cstdint>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace oV::Roamscan::TimeConversion
{

namespace
{

// Time wraps around on overflow. Signed overflow is undefined, so the arithmetic is unsigned.
std::uint64_t bits(int64 value)
{
    return static_cast<std::uint64_t>(value);
}

int64 ticksFromTxmTicks(std::uint64_t txmTicks)
{
    return static_cast<int64>(txmTicks * bits(int64{detail::integerTicksPerTxmTick}));
}

} // namespace

constinit double const timeResolution = 100000000.0;
constinit double const automationTimeResolution = 1000000.0;

int64 convertToIntegerTime(double const& seconds)
{
    return oV::detail::roundToInteger(seconds * timeResolution);
}

double convertToSeconds(int64 const& time)
{
    return static_cast<double>(time) * 1e-8;
}

_ULARGE_INTEGER convertToTxmTime(double const& seconds)
{
    return convertToTxmTime(convertToIntegerTime(seconds));
}

_ULARGE_INTEGER convertToTxmTime(int64 const& time)
{
    // The product is always in the signed range. A signed truncation is therefore exact, and gives a negative
    // time its two's complement bits.
    auto const txmTicks = static_cast<int64>(static_cast<double>(time) * 0.01);
    _ULARGE_INTEGER result;
    result.QuadPart = bits(txmTicks);
    return result;
}

int64 convertTxmTimeToIntegerTime(_ULARGE_INTEGER const& txm)
{
    return ticksFromTxmTicks(txm.QuadPart);
}

double convertTxmTimeToSeconds(_ULARGE_INTEGER const& txm)
{
    return static_cast<double>(txm.QuadPart) * 1e-6;
}

int64 convertAutomationTimeToIntegerTime(_ULARGE_INTEGER const& time, _LARGE_INTEGER const& offset)
{
    return ticksFromTxmTicks(time.QuadPart + bits(offset.QuadPart));
}

double getInterpolationFraction(int64 const& first, int64 const& last, int64 const& time)
{
    if (first == last && time == first) {
        return 0.0;
    }
    auto const elapsed = static_cast<int64>(bits(time) - bits(first));
    auto const span = static_cast<int64>(bits(last) - bits(first));
    return static_cast<double>(elapsed) / static_cast<double>(span);
}

} // namespace oV::Roamscan::TimeConversion
