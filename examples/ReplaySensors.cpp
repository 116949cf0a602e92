/// @file
/// Reads a sensor store from a stream and replays the samples of all sensors in time order.

#include <roamscan/sensors/SensorData.h>
#include <roamscan/time/TimeConversion.h>

#include <cstdio>
#include <memory>
#include <sstream>

using oV::Roamscan::SensorData;
using oV::Roamscan::TimeConversion::convertToIntegerTime;
using oV::Roamscan::TimeConversion::convertToSeconds;

namespace
{

SensorData twoSensorsAtDifferentRates()
{
    SensorData store;
    for (int i = 0; i < 6; ++i) {
        mapping::TimeStamp const time(0.1 * i);
        store.imuData[i % 2 == 0 ? "front" : "back"][convertToIntegerTime(time.get())] =
            std::make_shared<mapping::ImuData const>(
                time, mapping::Vector3<double>{0, 0, 9.81}, mapping::Vector3<double>{});
    }
    mapping::TimeStamp const time(0.2);
    store.rangefinderData["lidar"][convertToIntegerTime(time.get())] =
        std::make_shared<mapping::RangefinderData const>(
            time, mapping::Vector3<double>{}, mapping::TimedPointCloud({{{1, 2, 3}, 0.0F, {}}}));
    return store;
}

} // namespace

int main()
{
    std::stringstream stream(std::ios::in | std::ios::out | std::ios::binary);
    if (!twoSensorsAtDifferentRates().write(stream)) {
        return 1;
    }
    auto const store = SensorData::read(stream);
    if (!store) {
        std::fprintf(stderr, "the stream is damaged\n");
        return 1;
    }
    auto const view = store->createTimedData();
    for (auto const& [tick, samples] : *view) {
        std::printf("%.1f s:", convertToSeconds(tick));
        for (auto const& [name, record] : samples.imuData) {
            std::printf(" %s", name.c_str());
        }
        for (auto const& [name, record] : samples.rangefinderData) {
            std::printf(" %s (%zu points)", name.c_str(), record->getRanges().get().size());
        }
        std::printf("\n");
    }
    return 0;
}
