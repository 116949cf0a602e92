#include "bench/workload/SensorArrays.h"

#include "tests/support/SensorRecords.h"

namespace bench
{

using oV::Roamscan::TimeConversion::convertToIntegerTime;

SensorArrays recordedArrays(std::size_t imuSamples, std::size_t bursts, std::size_t pointsPerBurst)
{
    // All numbers are representable in single precision, so that a stream preserves them.
    SensorArrays arrays;
    for (std::size_t i = 0; i < imuSamples; ++i) {
        auto const wave = static_cast<double>(i % 1000) / 1024;
        arrays.imu.push_back({0.005 * static_cast<double>(i), {wave, -wave, 9.8125}, {0.25, wave, -0.5}});
    }
    for (std::size_t i = 0; i < bursts; ++i) {
        auto& burst = arrays.lidar.emplace_back();
        burst = {0.01 * static_cast<double>(i), {0, 0, 0.5}, {}};
        burst.points.reserve(pointsPerBurst);
        for (std::size_t j = 0; j < pointsPerBurst; ++j) {
            auto const x = static_cast<float>(j);
            burst.points.push_back({{x, static_cast<float>(i % 100), 1.5F}, 0.0001F * x, {}});
        }
    }
    return arrays;
}

oV::Roamscan::SensorData storeFromArrays(SensorArrays const& arrays)
{
    oV::Roamscan::SensorData store;
    auto& imu = store.imuData["imu"];
    for (auto const& [time, acceleration, velocity] : arrays.imu) {
        imu.emplace_hint(
            imu.end(), convertToIntegerTime(time), support::imuSample(time, acceleration, velocity));
    }
    auto& lidar = store.rangefinderData["lidar"];
    for (auto const& [time, origin, points] : arrays.lidar) {
        lidar.emplace_hint(
            lidar.end(), convertToIntegerTime(time), support::rangeSample(time, origin, points));
    }
    store.sensorPoses["imu"] = {{0, 0, 0.25F}, {0, 0, 0.5F, 0.75F}};
    store.sensorPoses["lidar"] = {{0, 0, 0.5F}, {0.5F, 0, 0, 0.75F}};
    return store;
}

} // namespace bench
