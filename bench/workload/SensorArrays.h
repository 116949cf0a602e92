#pragma once

#include <roamscan/sensors/SensorData.h>

#include <cstddef>
#include <vector>

namespace bench
{

/// The samples of a recording as plain arrays, as a recording program holds them in memory: of an inertial
/// unit, and of a range sensor with bursts of a fixed number of points.
struct SensorArrays
{
    std::vector<double> imuTimes;
    std::vector<mapping::Vector3<double>> accelerations;
    std::vector<mapping::Vector3<double>> velocities;
    std::vector<double> burstTimes;
    std::vector<mapping::Vector3<double>> origins;
    std::size_t pointsPerBurst = 0;
    std::vector<mapping::Vector3<float>> positions; ///< In the order of the bursts.
    std::vector<float> pointTimes;                  ///< Likewise.
};

[[nodiscard]] SensorArrays
recordedArrays(std::size_t imuSamples, std::size_t bursts, std::size_t pointsPerBurst);

/// The store of these samples, created as fast as the store allows: each record is created once, and each
/// sample is inserted at the end of its map. It is a lower bound for the time of a reader.
[[nodiscard]] oV::Roamscan::SensorData storeFromArrays(SensorArrays const& arrays);

} // namespace bench
