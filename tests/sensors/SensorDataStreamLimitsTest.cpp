#include "tests/support/ByteStrings.h"
#include "tests/support/SensorRecords.h"
#include "tests/support/SensorStreams.h"
#include "tests/support/StoreStreams.h"

#include <roamscan/sensors/SensorData.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using oV::Roamscan::SensorData;
using namespace support;

TEST(SensorDataStreamLimits, SampleWithoutARequiredVectorIsRefused)
{
    expectRefusedAfterReading<SensorFormat>(withU16(smallSensorStream(), accelerationEntry, 0));
    expectRefusedAfterReading<SensorFormat>(withU16(smallSensorStream(), velocityEntry, 0));
    expectRefusedAfterReading<SensorFormat>(withU16(smallSensorStream(), originEntry, 0));
}

TEST(SensorDataStreamLimits, PoseTableWithoutItsPoseIsRefused)
{
    expectRefusedAfterReading<SensorFormat>(withU16(smallSensorStream(), sensorPoseEntry, 0));
}

TEST(SensorDataStreamLimits, MisalignedFieldIsRefused)
{
    std::string const valid = smallSensorStream();
    expectRefusedAfterReading<SensorFormat>(withU16(valid, originEntry, 9));
    expectRefusedAfterReading<SensorFormat>(withU16(valid, accelerationEntry, 6));
    expectRefusedAfterReading<SensorFormat>(withU16(valid, 138 + 4, 24)); // a time at a multiple of four only
}

// Contents that share tables and vectors

// One rangefinder sensor whose samples are all one table, with one vector of points.
std::string streamOfSharedSamples(std::uint32_t samples, std::uint32_t points)
{
    std::string buffer = u32(12) + u16(6) + u16(8) + u16(4) + u16(0); // root at 12, its vtable at 4
    buffer += u32(8) + u32(4);                                        // 12 root, rangefinderSensors at 20
    buffer += u32(1) + u32(12);                                       // 20 one sensor, at 36
    buffer += u16(8) + u16(8) + u16(0) + u16(4);                      // 28 its vtable: samples only
    buffer += u32(8) + u32(4);                                        // 36 the sensor, samples at 44
    buffer += u32(samples);                                           // 44
    std::size_t const offsets = buffer.size();
    std::size_t const vtable = offsets + 4 * std::size_t{samples};
    std::size_t const sample = vtable + 12;
    for (std::uint32_t i = 0; i < samples; ++i) {
        buffer += u32(static_cast<std::uint32_t>(sample - (offsets + 4 * std::size_t{i})));
    }
    buffer +=
        u16(10) + u16(20) + u16(0) + u16(4) + u16(8) + u16(0); // vtable of the sample: points and origin
    buffer += u32(12) + u32(16) + f32({1, 2, 3});              // the sample, then its points
    buffer += u32(points);
    std::string const point = f32({1, 2, 3, 4});
    for (std::uint32_t i = 0; i < points; ++i) {
        buffer += point;
    }
    return lengthPrefixed(buffer);
}

TEST(SensorDataStreamLimits, SamplesMayShareATableAndItsPoints)
{
    auto const data = readBack<SensorData>(streamOfSharedSamples(3, 10));
    ASSERT_NE(data, nullptr);
    ASSERT_EQ(data->rangefinderData.at("").size(), 1U) << "all at time 0";
    EXPECT_EQ(data->rangefinderData.at("").at(0)->getRanges().get().size(), 10U);
}

// A point takes 16 bytes in the buffer and 40 in memory.
static_assert(sizeof(mapping::TimedRangefinderPoint) == 40);

TEST(SensorDataStreamLimits, ABurstOf100PointsSharedByEightSamplesIsRead)
{
    auto const data = readBack<SensorData>(streamOfSharedSamples(8, 100));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->rangefinderData.at("").at(0)->getRanges().get().size(), 100U);
}

TEST(SensorDataStreamLimits, ContentsUpTo256MiBAreReadHoweverSmallTheBuffer)
{
    // A burst of 100,000 points is 4,000,000 bytes in memory. 67 of them are 255.6 MiB, 68 are 259.4 MiB.
    EXPECT_NE(readBack<SensorData>(streamOfSharedSamples(67, 100000)), nullptr);
    EXPECT_EQ(readBack<SensorData>(streamOfSharedSamples(68, 100000)), nullptr);
    EXPECT_EQ(readBack<SensorData>(streamOfSharedSamples(100000, 100000)), nullptr) << "400 GB";
}

TEST(SensorDataStreamLimits, ContentsBeyond256MiBAreReadUpToSixteenTimesTheBuffer)
{
    // A burst of 1,200,000 points is 48 MB in memory. Six of them are 288 MB and 15 times the buffer, seven
    // are 17.5 times.
    EXPECT_NE(readBack<SensorData>(streamOfSharedSamples(6, 1200000)), nullptr);
    EXPECT_EQ(readBack<SensorData>(streamOfSharedSamples(7, 1200000)), nullptr);
}

// Size limits

// Two tables more than there are samples: the root and the sensor.
std::string streamOfImuSamples(int samples)
{
    SensorData data;
    auto& map = data.imuData["imu"];
    for (int i = 0; i < samples; ++i) {
        map.emplace_hint(map.end(), i, imuSample(secondsOf(i), {1, 2, 3}));
    }
    return written(data);
}

TEST(SensorDataStreamLimits, OneMillionTablesAreAccepted)
{
    auto const data = readBack<SensorData>(streamOfImuSamples(1000000 - 2));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->imuData.at("imu").size(), 999998U);
}

TEST(SensorDataStreamLimits, MoreThanOneMillionTablesAreRefused)
{
    expectRefusedAfterReading<SensorFormat>(streamOfImuSamples(1000000 - 1));
}

TEST(SensorDataStreamLimits, BufferBeyondTwoGigabytesIsNotWritten)
{
    SensorData data;
    auto const record = rangeSample(0.0, {}, std::vector<mapping::TimedRangefinderPoint>(1U << 16U));
    for (int i = 0; i < 2048; ++i) { // a megabyte each, of one and the same record
        data.rangefinderData["lid"][i] = record;
    }
    std::ostringstream stream;
    EXPECT_FALSE(data.write(stream));
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.str(), "");
}

} // namespace
