#pragma once

#include <roamscan/sensors/SensorData.h>

#include <cstddef>
#include <vector>

namespace bench
{

/// The samples of a recording as plain arrays, as a recorder would have them in memory: an inertial unit, and
/// a range sensor with bursts of a fixed number of points.
struct SensorArrays
{
    std::vector<double> imuTimes;
    std::vector<mapping::Vector3<double>> accelerations;
    std::vector<mapping::Vector3<double>> velocities;
    std::vector<double> burstTimes;
    std::vector<mapping::Vector3<double>> origins;
    std::size_t pointsPerBurst = 0;
    std::vector<mapping::Vector3<float>> positions; ///< Burst after burst.
    std::vector<float> pointTimes;                  ///< Likewise.

    [[nodiscard]] std::size_t samples() const { return imuTimes.size() + burstTimes.size(); }
};

/// The samples of the stream measurements: 600,000 inertial ones and 300,000 bursts of 20 points.
[[nodiscard]] SensorArrays recordedArrays();

/// The same with other numbers of samples.
[[nodiscard]] SensorArrays
recordedArrays(std::size_t imuSamples, std::size_t bursts, std::size_t pointsPerBurst);

/// The store of these samples, as fast as a store can be made: each record once, each sample at the end of
/// its map. It is the floor for whatever reads one.
[[nodiscard]] oV::Roamscan::SensorData storeFromArrays(SensorArrays const& arrays);

} // namespace bench
