/// @file
/// Fills a sensor store and writes it to a stream.

#include <roamscan/sensors/SensorData.h>
#include <roamscan/time/TimeConversion.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <utility>
#include <vector>

using oV::Roamscan::SensorData;
using oV::Roamscan::TimeConversion::convertToIntegerTime;

int main()
{
    SensorData store;
    for (int i = 0; i < 200; ++i) {
        mapping::TimeStamp const time(0.005 * i);
        // The key of a sample is its own time in ticks of 10 ns.
        store.imuData["imu"][convertToIntegerTime(time.get())] = std::make_shared<mapping::ImuData const>(
            time, mapping::Vector3<double>{0, 0, 9.81}, mapping::Vector3<double>{0, 0, 0.1});
    }
    mapping::TimeStamp const time(0.5);
    std::vector<mapping::TimedRangefinderPoint> burst{{{1, 2, 3}, 0.0F, {}}, {{1, 2, 4}, 0.0001F, {}}};
    store.rangefinderData["lidar"][convertToIntegerTime(time.get())] =
        std::make_shared<mapping::RangefinderData const>(
            time, mapping::Vector3<double>{}, mapping::TimedPointCloud(std::move(burst)));
    store.sensorPoses["imu"] = {{0, 0, 0.1F}, {0, 0, 0, 1}};

    std::stringstream stream(std::ios::in | std::ios::out | std::ios::binary);
    if (!store.write(stream)) {
        std::fprintf(stderr, "cannot write the store\n");
        return 1;
    }
    std::printf("%zu bytes\n", stream.str().size());
    return 0;
}
