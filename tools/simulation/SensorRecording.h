#pragma once

#include "tools/simulation/Scanner.h"

#include <roamscan/sensors/SensorData.h>

#include <Eigen/Core>

#include <cstdint>

namespace oV::Roamscan::tool
{

/// How often the sensors measure.
struct SensorRates
{
    double pointsPerSecond = 20'000.0; ///< Of each rangefinder.
    double burst = 0.002;              ///< Seconds that a sample of a rangefinder lasts.
    double inertialPerSecond = 200.0;  ///< Samples of each inertial unit.
};

/// Longer bursts in long motions, and at last fewer measurements, so that a sensor stream with all of them
/// can be read back, and written in less than two gigabytes of memory.
[[nodiscard]] SensorRates sensorRates(double duration);

/// What the sensors of the instrument measure on the way, and how they are mounted. `planFromBuilding` turns
/// the building's frame so that z is up. The same seed gives the same samples.
///
/// `firstHead` takes the points of "scanner1", also those whose times got lost, which no sample has.
[[nodiscard]] SensorData recordSensors(Motion const& motion,
                                       Building const& building,
                                       Eigen::Matrix3d const& planFromBuilding,
                                       std::uint64_t seed,
                                       PointSink const& firstHead);

} // namespace oV::Roamscan::tool
