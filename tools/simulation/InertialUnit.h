#pragma once

#include "tools/simulation/Motion.h"

#include <roamscan/sensors/SensorData.h>

#include <Eigen/Geometry>

#include <cstdint>

namespace oV::Roamscan::tool
{

/// Measures, in its own frame, the specific force in m/s^2 (at rest 9.81 upwards), the angular velocity in
/// rad/s and, if it has a compass, the magnetic field in microtesla. The noise is normally distributed.
struct InertialUnit
{
    Eigen::Isometry3d bodyFromUnit = Eigen::Isometry3d::Identity();
    double samplesPerSecond = 200.0;
    bool hasCompass = false;
    double forceDeviation = 0.02;    ///< m/s^2, as the other two along each axis.
    double turningDeviation = 0.002; ///< rad/s
    double magneticDeviation = 0.3;  ///< Microtesla.
};

/// The samples from the start of the motion to its stop. `planFromBuilding` rotates the building's frame so
/// that z is up and y north. Velocities are differences over 5 ms, so a jump in velocity becomes a pulse of
/// that length. The same seed gives the same samples.
[[nodiscard]] SampleMap<mapping::ImuData> measure(InertialUnit const& unit,
                                                  Motion const& motion,
                                                  Eigen::Matrix3d const& planFromBuilding,
                                                  std::uint64_t seed);

} // namespace oV::Roamscan::tool
