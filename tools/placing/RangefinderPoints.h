#pragma once

#include "tools/points/CloudPoint.h"

#include <roamscan/sensors/SensorData.h>

#include <vector>

namespace oV::Roamscan::tool
{

/// The points of a rangefinder in the order of its samples, without intensity and colour. The time of a point
/// is the time stamp of its sample plus its own time within the sample.
[[nodiscard]] std::vector<CloudPoint> scanPointsOf(SampleMap<mapping::RangefinderData> const& samples);

} // namespace oV::Roamscan::tool
