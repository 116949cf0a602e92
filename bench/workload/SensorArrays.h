#pragma once

#include <roamscan/sensors/SensorData.h>

#include <cstddef>
#include <vector>

namespace bench
{

/// The samples of a recording as a recording program holds them in memory: of an inertial unit, and of a
/// range sensor, which gives bursts of points.
struct SensorArrays
{
    struct ImuSample
    {
        double time;
        mapping::Vector3<double> acceleration;
        mapping::Vector3<double> velocity;
    };
    struct Burst
    {
        double time;
        mapping::Vector3<double> origin;
        std::vector<mapping::TimedRangefinderPoint> points;
    };

    std::vector<ImuSample> imu;
    std::vector<Burst> lidar;
};

[[nodiscard]] SensorArrays
recordedArrays(std::size_t imuSamples, std::size_t bursts, std::size_t pointsPerBurst);

/// The store of these samples, made as fast as the store allows: each record is made once, and each sample is
/// inserted at the end of its map. No reader can be faster.
[[nodiscard]] oV::Roamscan::SensorData storeFromArrays(SensorArrays const& arrays);

} // namespace bench
