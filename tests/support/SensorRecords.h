#pragma once

#include <roamscan/sensors/SensorData.h>
#include <roamscan/time/TimeConversion.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Short constructors for sensor samples.
namespace support
{

using MappingVector = mapping::Vector3<double>;

inline double secondsOf(int64 ticks)
{
    return oV::Roamscan::TimeConversion::convertToSeconds(ticks);
}

inline std::shared_ptr<mapping::ImuData const>
imuSample(double seconds, MappingVector acceleration, MappingVector velocity = {})
{
    return std::make_shared<mapping::ImuData const>(mapping::TimeStamp(seconds), acceleration, velocity);
}

inline std::shared_ptr<mapping::ImuData const>
imuSampleWithField(double seconds, MappingVector acceleration, MappingVector velocity, MappingVector field)
{
    return std::make_shared<mapping::ImuData const>(
        mapping::TimeStamp(seconds), acceleration, velocity, field);
}

inline std::shared_ptr<mapping::RangefinderData const>
rangeSample(double seconds, MappingVector origin, std::vector<mapping::TimedRangefinderPoint> points)
{
    return std::make_shared<mapping::RangefinderData const>(
        mapping::TimeStamp(seconds), origin, mapping::TimedPointCloud(std::move(points)));
}

inline std::shared_ptr<mapping::AbsolutePose2DData const> absoluteSample(double seconds)
{
    return std::make_shared<mapping::AbsolutePose2DData const>(
        mapping::TimeStamp(seconds),
        mapping::Rigid3<double>{{1, 2, 3}, {4, 5, 6, 7}},
        std::array<MappingVector, 3>{MappingVector{1, 2, 3}, MappingVector{4, 5, 6}, MappingVector{7, 8, 9}},
        std::array<MappingVector, 3>{
            MappingVector{11, 12, 13}, MappingVector{14, 15, 16}, MappingVector{17, 18, 19}});
}

inline std::shared_ptr<mapping::ScanningStatusData const>
statusSample(double seconds, bool stationary = true, bool startNewSubmap = false)
{
    return std::make_shared<mapping::ScanningStatusData const>(
        mapping::TimeStamp(seconds), stationary, startNewSubmap);
}

/// Inserts a record under the key of its time.
template <typename T>
void store(oV::Roamscan::SampleMap<T>& samples, std::shared_ptr<T const> record)
{
    int64 const key = oV::Roamscan::TimeConversion::convertToIntegerTime(record->getTimeStamp().get());
    samples[key] = std::move(record);
}

/// One sample of each kind, all at the same time.
inline oV::Roamscan::SensorData oneSampleOfEachKind(double seconds)
{
    oV::Roamscan::SensorData data;
    store(data.imuData["imu"], imuSampleWithField(seconds, {1, 2, 3}, {4, 5, 6}, {7, 8, 9}));
    store(data.absolutePoseData["gps"], absoluteSample(seconds));
    store(data.rangefinderData["lid"], rangeSample(seconds, {1, 2, 3}, {{{1, 2, 3}, 0.25F, {{1, 2, 3}}}}));
    store(data.secondRangefinderData["lid2"],
          rangeSample(seconds, {4, 5, 6}, {{{4, 5, 6}, 0.5F, {{4, 5, 6}}}}));
    store(data.scanningStatusData["status"], statusSample(seconds));
    data.sensorPoses["imu"] = {{1, 2, 3}, {0, 0, 0, 1}};
    return data;
}

} // namespace support
