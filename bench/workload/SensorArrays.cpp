#include "bench/workload/SensorArrays.h"

#include "tests/support/SensorRecords.h"

#include <roamscan/time/TimeConversion.h>

#include <utility>

namespace bench
{

using oV::Roamscan::SensorData;
using oV::Roamscan::TimeConversion::convertToIntegerTime;

SensorArrays recordedArrays(std::size_t imuSamples, std::size_t bursts, std::size_t pointsPerBurst)
{
    // All numbers are representable in single precision, so that a stream preserves them.
    SensorArrays arrays;
    arrays.pointsPerBurst = pointsPerBurst;
    for (std::size_t i = 0; i < imuSamples; ++i) {
        auto const wave = static_cast<double>(i % 1000) / 1024;
        arrays.imuTimes.push_back(0.005 * static_cast<double>(i));
        arrays.accelerations.push_back({wave, -wave, 9.8125});
        arrays.velocities.push_back({0.25, wave, -0.5});
    }
    for (std::size_t i = 0; i < bursts; ++i) {
        arrays.burstTimes.push_back(0.01 * static_cast<double>(i));
        arrays.origins.push_back({0, 0, 0.5});
        for (std::size_t j = 0; j < pointsPerBurst; ++j) {
            arrays.positions.push_back({static_cast<float>(j), static_cast<float>(i % 100), 1.5F});
            arrays.pointTimes.push_back(0.0001F * static_cast<float>(j));
        }
    }
    return arrays;
}

SensorData storeFromArrays(SensorArrays const& arrays)
{
    SensorData store;
    auto& imu = store.imuData["imu"];
    for (std::size_t i = 0; i < arrays.imuTimes.size(); ++i) {
        double const time = arrays.imuTimes[i];
        imu.emplace_hint(imu.end(),
                         convertToIntegerTime(time),
                         support::imuSample(time, arrays.accelerations[i], arrays.velocities[i]));
    }
    auto& lidar = store.rangefinderData["lidar"];
    std::size_t next = 0;
    for (std::size_t i = 0; i < arrays.burstTimes.size(); ++i) {
        double const time = arrays.burstTimes[i];
        std::vector<mapping::TimedRangefinderPoint> points;
        points.reserve(arrays.pointsPerBurst);
        for (std::size_t j = 0; j < arrays.pointsPerBurst; ++j, ++next) {
            points.push_back({arrays.positions[next], arrays.pointTimes[next], {}});
        }
        lidar.emplace_hint(lidar.end(),
                           convertToIntegerTime(time),
                           support::rangeSample(time, arrays.origins[i], std::move(points)));
    }
    store.sensorPoses["imu"] = {{0, 0, 0.25F}, {0, 0, 0.5F, 0.75F}};
    store.sensorPoses["lidar"] = {{0, 0, 0.5F}, {0.5F, 0, 0, 0.75F}};
    return store;
}

} // namespace bench
