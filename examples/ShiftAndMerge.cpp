/// @file
/// Corrects the clock offset of a recording and merges it into another one.

#include <roamscan/sensors/SensorData.h>
#include <roamscan/time/TimeConversion.h>

#include <cstdio>
#include <memory>

using oV::Roamscan::SensorData;
using oV::Roamscan::TimeConversion::convertToIntegerTime;
using oV::Roamscan::TimeConversion::convertToSeconds;

namespace
{

SensorData recordingFrom(double start)
{
    SensorData store;
    for (int i = 0; i < 100; ++i) {
        mapping::TimeStamp const time(start + 0.01 * i);
        store.imuData["imu"][convertToIntegerTime(time.get())] = std::make_shared<mapping::ImuData const>(
            time, mapping::Vector3<double>{0, 0, 9.81}, mapping::Vector3<double>{});
    }
    return store;
}

} // namespace

int main()
{
    SensorData recording = recordingFrom(0.0);
    SensorData continuation = recordingFrom(500.0); // its clock is 499 s ahead

    int64 const ahead = convertToIntegerTime(499.0);
    continuation.modifyTime([ahead](int64 time) { return time - ahead; });
    recording += continuation;

    auto const& samples = recording.imuData.at("imu");
    std::printf("%zu samples from %.2f s to %.2f s\n",
                samples.size(),
                convertToSeconds(samples.begin()->first),
                convertToSeconds(samples.rbegin()->first));
    return 0;
}
