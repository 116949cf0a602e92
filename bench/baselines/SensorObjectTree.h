#pragma once

#include <roamscan/sensors/SensorData.h>

#include <iosfwd>
#include <memory>

namespace bench
{

/// The sensor stream by way of the tree of objects that flatc generates for the schema; compare
/// TrajectoryObjectTree.h.

[[nodiscard]] bool writeSensorsThroughObjectTree(oV::Roamscan::SensorData const& store, std::ostream& stream);

/// @return null if the stream is truncated or not valid
[[nodiscard]] std::shared_ptr<oV::Roamscan::SensorData> readSensorsThroughObjectTree(std::istream& stream);

} // namespace bench
