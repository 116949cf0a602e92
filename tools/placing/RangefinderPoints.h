#pragma once

#include "tools/points/ScanPoints.h"

#include <roamscan/sensors/SensorData.h>

namespace oV::Roamscan::tool
{

/// The points of a rangefinder in the order of its samples, without intensity and colour. A point's time is
/// its sample's time stamp plus its own time within the burst in seconds.
[[nodiscard]] ScanPoints scanPointsOf(SampleMap<mapping::RangefinderData> const& samples);

} // namespace oV::Roamscan::tool
