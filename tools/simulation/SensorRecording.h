#pragma once

#include "tools/simulation/Scanner.h"

#include <roamscan/sensors/SensorData.h>

#include <Eigen/Core>

#include <cstdint>

namespace oV::Roamscan::tool
{

/// The measurement rates of the sensors.
struct SensorRates
{
    double pointsPerSecond = 20'000.0; ///< Of each rangefinder.
    double burst = 0.002;              ///< Seconds per sample of a rangefinder.
    double inertialPerSecond = 200.0;  ///< Samples of each inertial unit.
};

/// The rates for a motion of this duration in seconds. Long motions have longer samples of rangefinders, and
/// the longest ones fewer measurements, so that the sensor stream can be read back, and written in less than
/// two gigabytes of memory.
[[nodiscard]] SensorRates sensorRates(double duration);

/// The samples of the instrument's sensors during the motion, and their mounting poses. `planFromBuilding`
/// rotates the building's frame so that z is up. The same seed gives the same samples.
///
/// `firstHead` receives the points of "scanner1", including those without a time, which are in no sample.
[[nodiscard]] SensorData recordSensors(Motion const& motion,
                                       Building const& building,
                                       Eigen::Matrix3d const& planFromBuilding,
                                       std::uint64_t seed,
                                       PointSink const& firstHead);

} // namespace oV::Roamscan::tool
