#pragma once

#include "tests/support/ByteStrings.h"
#include "tests/support/SensorRecords.h"
#include "tests/support/StoreStreams.h"

#include <roamscan/sensors/SensorData.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

/// A small store of sensor data and the bytes of its stream.
namespace support
{

inline void expectSame(mapping::ImuData const& a, mapping::ImuData const& b)
{
    EXPECT_EQ(a.getTimeStamp(), b.getTimeStamp());
    EXPECT_EQ(a.getLinearAcceleration(), b.getLinearAcceleration());
    EXPECT_EQ(a.getAngularVelocity(), b.getAngularVelocity());
    EXPECT_EQ(a.hasMagneticField(), b.hasMagneticField());
    EXPECT_EQ(a.getMagneticField(), b.getMagneticField());
}

inline void expectSame(mapping::RangefinderData const& a, mapping::RangefinderData const& b)
{
    EXPECT_EQ(a.getTimeStamp(), b.getTimeStamp());
    EXPECT_EQ(a.getOrigin(), b.getOrigin());
    EXPECT_EQ(a.getRanges().get(), b.getRanges().get());
}

template <typename T>
void expectSame(oV::Roamscan::SensorData::Samples<T> const& a, oV::Roamscan::SensorData::Samples<T> const& b)
{
    ASSERT_EQ(a.size(), b.size());
    for (auto const& [name, samples] : a) {
        ASSERT_TRUE(b.contains(name)) << name;
        ASSERT_EQ(samples.size(), b.at(name).size());
        for (auto const& [key, record] : samples) {
            ASSERT_TRUE(b.at(name).contains(key)) << key;
            expectSame(*record, *b.at(name).at(key));
        }
    }
}

inline void expectSame(oV::Roamscan::SensorData const& a, oV::Roamscan::SensorData const& b)
{
    expectSame(a.imuData, b.imuData);
    expectSame(a.rangefinderData, b.rangefinderData);
    EXPECT_EQ(a.sensorPoses, b.sensorPoses);
    EXPECT_EQ(a.posesApplied, b.posesApplied);
}

inline oV::Roamscan::SensorData smallSensorStore()
{
    oV::Roamscan::SensorData data;
    store(data.rangefinderData["lid"], rangeSample(1.5, {0, 0, 0.5}, {{{1, 2, 3}, 0.25F, {}}}));
    store(data.imuData["imu"], imuSample(1.5, {0, 0, 9.75}, {0.5, 0, 0}));
    data.sensorPoses["imu"] = {{0, 0, 0}, {0, 0, 0, 1}};
    data.posesApplied = true;
    return data;
}

/// The stream of smallSensorStore(). Offsets count from the beginning of the stream.
inline std::string smallSensorStream()
{
    return u64(296)                                                  //   0 296 bytes follow
           + u32(20) + u32(0)                                        //   8 root at 8 + 20, padding
           + u16(12) + u16(20) + u16(8) + u16(12) + u16(16) + u16(7) //  16 vtable of the root
           + u32(12)                                                 //  28 the root
           + bytes({0, 0, 0, 1})                                     //  32 padding, posesApplied
           + u32(0xA0) + u32(0x44) + u32(4)                 //  36 rangefinderSensors, imuSensors, poses
           + u32(1) + u32(12)                               //  48 one pose table
           + u16(8) + u16(36) + u16(4) + u16(8)             //  56 its vtable
           + u32(8) + u32(0x20)                             //  64 the pose table, name
           + f32({0, 0, 0, 1, 0, 0, 0})                     //  72 translation, rotation w, x, y, z
           + u32(3) + "imu" + bytes({0})                    // 100 the name
           + u32(1) + u32(4)                                // 108 one IMU sensor
           + u32(0xFFFFFFA8) + u32(0x44) + u32(4)           // 116 its vtable at 204, name, samples
           + u32(1) + u32(16)                               // 128 one sample
           + u16(0)                                         // 136 padding
           + u16(10) + u16(40) + u16(28) + u16(4) + u16(16) // 138 its vtable
           + u32(10)                                        // 148 the sample
           + f32({0, 0, 9.75F})                             // 152 linearAcceleration
           + f32({0.5F, 0, 0})                              // 164 angularVelocity
           + f64({1.5})                                     // 176 time
           + u32(0)                                         // 184 padding
           + u32(3) + "imu" + bytes({0})                    // 188 the name
           + u32(1) + u32(12)                               // 196 one rangefinder sensor
           + u16(8) + u16(12) + u16(4) + u16(8)             // 204 its vtable, the IMU sensor's too
           + u32(8) + u32(0x50) + u32(4)                    // 212 the sensor, name, samples
           + u32(1) + u32(16)                               // 224 one sample
           + u16(0)                                         // 232 padding
           + u16(10) + u16(32) + u16(20) + u16(4) + u16(8)  // 234 its vtable
           + u32(10) + u32(28)                              // 244 the sample, points
           + f32({0, 0, 0.5F})                              // 252 origin
           + f64({1.5})                                     // 264 time
           + u32(0)                                         // 272 padding
           + u32(1) + f32({1, 2, 3, 0.25F})                 // 276 one point
           + u32(3) + "lid" + bytes({0});                   // 296 the name
}

/// Entries of the vtables in smallSensorStream().
inline constexpr std::size_t accelerationEntry = 138 + 6;
inline constexpr std::size_t velocityEntry = 138 + 8;
inline constexpr std::size_t originEntry = 234 + 8;
inline constexpr std::size_t sensorPoseEntry = 56 + 6;

struct SensorFormat
{
    using Store = oV::Roamscan::SensorData;

    static Store smallStore() { return smallSensorStore(); }
    static std::string smallStream() { return smallSensorStream(); }

    /// smallStream() with one number damaged in each.
    static std::vector<std::string> invalidStreams()
    {
        std::string const valid = smallStream();
        return {
            withU32(valid, 8, 0x7FFFFFFF),   // root's offset
            withU32(valid, 36, 0x40000000),  // sensors outside
            withU32(valid, 276, 1000),       // more points than the buffer holds
            withU32(valid, 296, 4),          // a name without terminator
            withU16(valid, originEntry, 60), // an origin outside its sample
        };
    }
};

} // namespace support
