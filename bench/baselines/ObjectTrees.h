#pragma once

#include <roamscan/sensors/SensorData.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <iosfwd>
#include <memory>

namespace bench
{

/// The streams by way of the tree of objects that flatc generates for a schema, as a simple program would do
/// it: from the store to the tree to the builder to the stream, and back. Reading gives null if the stream is
/// truncated or not valid.

[[nodiscard]] bool writeThroughObjectTree(oV::Roamscan::TrajectoryData const& store, std::ostream& stream);
[[nodiscard]] bool writeThroughObjectTree(oV::Roamscan::SensorData const& store, std::ostream& stream);

[[nodiscard]] std::shared_ptr<oV::Roamscan::TrajectoryData>
readTrajectoryThroughObjectTree(std::istream& stream);
[[nodiscard]] std::shared_ptr<oV::Roamscan::SensorData> readSensorsThroughObjectTree(std::istream& stream);

} // namespace bench
