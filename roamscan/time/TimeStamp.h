#pragma once

#include <roamscan/frame/mapping/TimeStamp.h>
#include <roamscan/frame/platform/IntegerTypes.h>

namespace oV::Roamscan
{

/// An instant in seconds on the time axis.
using TimeStamp = mapping::TimeStamp;

/// A duration in seconds.
using Duration = mapping::Duration;

/// An instant as a signed number of ticks of 10 ns. The stores use it as the key, because it is exact.
using IntegerTime = int64;

} // namespace oV::Roamscan
