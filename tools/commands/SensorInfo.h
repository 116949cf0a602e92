#pragma once

#include "tools/console/JsonText.h"

#include <roamscan/sensors/SensorData.h>

#include <iosfwd>

namespace oV::Roamscan::tool
{

/// Describes a store of sensor samples as a JSON object, each list in order of the sensors' names. Times are
/// in seconds. The "rate" is that between the first and the last sample, 0 for fewer than two samples;
/// "largestGap" is the largest time between successive samples.
[[nodiscard]] Json describe(SensorData const& data);

/// Prints such an object as text.
void printSensors(Json const& sensors, std::ostream& out);

} // namespace oV::Roamscan::tool
