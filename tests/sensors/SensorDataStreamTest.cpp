#include "tests/support/ByteStrings.h"
#include "tests/support/SensorRecords.h"
#include "tests/support/SensorStreams.h"
#include "tests/support/StoreStreams.h"

#include <roamscan/sensors/SensorData.h>

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using oV::Roamscan::SensorData;
using namespace support;

// Literal bytes

TEST(SensorDataStream, SmallStoreReadsBackFromItsLiteralBytes)
{
    auto const data = readBack<SensorData>(smallSensorStream());
    ASSERT_NE(data, nullptr);
    expectSame(*data, smallSensorStore());
    EXPECT_EQ(data->imuData.at("imu").begin()->first, 150000000);
    EXPECT_EQ(data->rangefinderData.at("lid").begin()->second->getOrigin(), (MappingVector{0, 0, 0.5}));
}

TEST(SensorDataStream, EmptyAndZeroFieldsAreOmittedFromTheseBytes)
{
    SensorData data;
    store(data.rangefinderData[""], rangeSample(0.0, {1, 2, 3}, {}));
    std::string const bytes = u64(80)                                        //
                              + u32(12) + u16(0)                             //  0 root at 12, padding
                              + u16(6) + u16(8) + u16(4)                     //  6 vtable of the root
                              + u32(6) + u32(4)                              // 12 the root, sensors
                              + u32(1) + u32(12)                             // 20 one sensor, at 36
                              + u16(8) + u16(8) + u16(0) + u16(4)            // 28 its vtable: no name
                              + u32(8) + u32(4)                              // 36 the sensor, samples
                              + u32(1) + u32(16)                             // 44 one sample, at 64
                              + u16(0)                                       // 52 padding
                              + u16(10) + u16(16) + u16(0) + u16(0) + u16(4) // 54 its vtable: origin only
                              + u32(10) + f32({1, 2, 3});                    // 64 the sample, origin
    EXPECT_EQ(written(data), bytes);
    auto const back = readBack<SensorData>(bytes);
    ASSERT_NE(back, nullptr);
    expectSame(*back, data);
}

TEST(SensorDataStream, SensorWithoutNameAndSamplesIsATableWithoutFields)
{
    SensorData data;
    data.rangefinderData[""];
    std::string const bytes = u64(36) + u32(12) + u16(0) // root at 12, padding
                              + u16(6) + u16(8) + u16(4) // its vtable
                              + u32(6) + u32(4)          // 12 the root, rangefinderSensors
                              + u32(1) + u32(8)          // 20 one sensor, at 32
                              + u16(4) + u16(4)          // 28 its vtable
                              + u32(4);                  // 32 the sensor
    EXPECT_EQ(written(data), bytes);
    auto const back = readBack<SensorData>(bytes);
    ASSERT_NE(back, nullptr);
    expectSame(*back, SensorData());
}

TEST(SensorDataStream, SampleWithMagneticFieldWritesTheseBytes)
{
    SensorData data;
    store(data.imuData[""], imuSampleWithField(1.5, {1, 2, 3}, {4, 5, 6}, {7, 8, 9}));
    std::string const bytes = u64(104)                            //
                              + u32(4)                            //  0 root at 4
                              + u32(0xFFFFFFF0) + u32(4)          //  4 vtable at 20, imuSensors
                              + u32(1) + u32(12)                  // 12 one sensor, at 28
                              + u16(8) + u16(8) + u16(0) + u16(4) // 20 its vtable, the root's too
                              + u32(8) + u32(4)                   // 28 the sensor, samples
                              + u32(1) + u32(16)                  // 36 one sample, at 56
                              + u16(12) + u16(48) + u16(40) + u16(4) + u16(16) + u16(28) // 44 its vtable
                              + u32(12)                                                  // 56 the sample
                              + f32({1, 2, 3}) // 60 linearAcceleration
                              + f32({4, 5, 6}) // 72 angularVelocity
                              + f32({7, 8, 9}) // 84 magneticField
                              + f64({1.5});    // 96 time
    EXPECT_EQ(written(data), bytes);
    auto const back = readBack<SensorData>(bytes);
    ASSERT_NE(back, nullptr);
    expectSame(*back, data);
}

TEST(SensorDataStream, PosesAreStoredWithTheScalarPartFirst)
{
    SensorData data;
    data.sensorPoses["imu"] = {{1, 2, 3}, {4, 5, 6, 7}};
    std::string const bytes = written(data);
    EXPECT_NE(bytes.find(f32({1, 2, 3, 7, 4, 5, 6})), std::string::npos);
    EXPECT_EQ(readBack<SensorData>(bytes)->sensorPoses, data.sensorPoses);
}

TEST(SensorDataStream, PointsKeepTheirOrder)
{
    SensorData data;
    store(data.rangefinderData["lid"],
          rangeSample(1.0, {}, {{{1, 2, 3}, 4, {}}, {{5, 6, 7}, 8, {}}, {{9, 10, 11}, 12, {}}}));
    std::string const bytes = written(data);
    EXPECT_NE(bytes.find(u32(3) + f32({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12})), std::string::npos);
    auto const back = readBack<SensorData>(bytes);
    ASSERT_NE(back, nullptr);
    expectSame(*back, data);
}

TEST(SensorDataStream, TimeOfZeroHasNoFieldAndReadsBackAtKeyZero)
{
    SensorData data;
    store(data.imuData["imu"], imuSample(0.0, {1, 2, 3}));
    SensorData later;
    store(later.imuData["imu"], imuSample(1.0, {1, 2, 3}));
    EXPECT_LT(written(data).size(), written(later).size());
    auto const back = readBack<SensorData>(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->imuData.at("imu").begin()->first, 0);
    EXPECT_EQ(back->imuData.at("imu").begin()->second->getTimeStamp(), mapping::TimeStamp(0.0));
}

TEST(SensorDataStream, PosesAppliedHasAFieldOnlyIfTrue)
{
    SensorData data;
    data.posesApplied = true;
    EXPECT_GT(written(data).size(), emptyStoreStream().size());
    EXPECT_TRUE(readBack<SensorData>(written(data))->posesApplied);
    data.posesApplied = false;
    EXPECT_EQ(written(data), emptyStoreStream());
    EXPECT_FALSE(readBack<SensorData>(written(data))->posesApplied);
}

TEST(SensorDataStream, UnknownFieldIsSkipped)
{
    auto const data =
        readBack<SensorData>(u64(32) + u32(20)                              // root at 20
                             + u16(14) + u16(12) + u16(0) + u16(0) + u16(0) //  4 its vtable: no vectors,
                             + u16(4) + u16(8) + u16(0) //    posesApplied, a fifth field; padding
                             + u32(16) + bytes({1, 0, 0, 0}) + u32(77)); // 20 the root
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(data->posesApplied);
    EXPECT_TRUE(data->imuData.empty() && data->rangefinderData.empty() && data->sensorPoses.empty());
}

TEST(SensorDataStream, WriteBeginsAtTheCurrentPosition)
{
    std::ostringstream stream;
    stream << "before";
    EXPECT_TRUE(SensorData().write(stream));
    EXPECT_EQ(stream.str(), "before" + emptyStoreStream());
}

// Round trips

TEST(SensorDataStream, RoundTripKeepsSamplesAndPoses)
{
    SensorData data;
    for (int i = 0; i < 100; ++i) {
        auto const value = static_cast<double>(i);
        store(data.imuData["a"], imuSample(0.01 * i, {value, 0.5, -value}, {0.25, value, 8}));
        store(data.imuData["b"], imuSampleWithField(0.01 * i, {value, 1, 2}, {3, 4, 5}, {6, 7, value}));
        std::vector<mapping::TimedRangefinderPoint> const points(
            static_cast<std::size_t>(i % 5), {{0.1F, 0.2F, static_cast<float>(i)}, 0.125F, {}});
        store(data.rangefinderData["c"], rangeSample(-0.01 * i, {value, 0, 0.5}, points));
    }
    data.sensorPoses["a"] = {{0.1F, 0.2F, 0.3F}, {0.4F, 0.5F, 0.6F, 0.7F}};
    data.sensorPoses["nobody"] = {{1, 2, 3}, {4, 5, 6, 7}};
    auto const back = readBack<SensorData>(written(data));
    ASSERT_NE(back, nullptr);
    expectSame(*back, data);
}

TEST(SensorDataStream, OtherKindsOfSamplesAreNotStored)
{
    SensorData const data = oneSampleOfEachKind(1.0);
    auto const back = readBack<SensorData>(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(back->absolutePoseData.empty());
    EXPECT_TRUE(back->secondRangefinderData.empty());
    EXPECT_TRUE(back->scanningStatusData.empty());
    EXPECT_EQ(back->imuData.size(), 1U);
    EXPECT_EQ(back->rangefinderData.size(), 1U);
}

TEST(SensorDataStream, SensorWithoutSamplesIsWrittenButNotReadBack)
{
    SensorData data;
    data.imuData["empty imu"];
    data.rangefinderData["empty lid"];
    std::string const bytes = written(data);
    EXPECT_NE(bytes.find("empty imu"), std::string::npos);
    EXPECT_NE(bytes.find("empty lid"), std::string::npos);
    auto const back = readBack<SensorData>(bytes);
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(back->imuData.empty());
    EXPECT_TRUE(back->rangefinderData.empty());
}

TEST(SensorDataStream, DoublesAreRoundedToFloat)
{
    SensorData data;
    store(data.imuData["imu"], imuSampleWithField(1.0, {0.1, 1e300, -1e-300}, {1.0 / 3, 0, 0}, {0.7, 0, 0}));
    store(data.rangefinderData["lid"], rangeSample(1.0, {0.1, 0.2, 0.3}, {}));
    auto const back = readBack<SensorData>(written(data));
    ASSERT_NE(back, nullptr);
    auto const& imu = *back->imuData.at("imu").begin()->second;
    EXPECT_EQ(imu.getLinearAcceleration(),
              (MappingVector{double{0.1F}, std::numeric_limits<double>::infinity(), -0.0}));
    EXPECT_EQ(imu.getAngularVelocity().x, double{1.0F / 3.0F});
    EXPECT_EQ(imu.getMagneticField().x, double{0.7F});
    EXPECT_EQ(back->rangefinderData.at("lid").begin()->second->getOrigin(),
              (MappingVector{double{0.1F}, double{0.2F}, double{0.3F}}));
}

TEST(SensorDataStream, AuxiliariesAreNotStored)
{
    SensorData data;
    store(data.rangefinderData["lid"], rangeSample(1.0, {}, {{{1, 2, 3}, 0.5F, {{7, 8, 9}}}}));
    auto const back = readBack<SensorData>(written(data));
    ASSERT_NE(back, nullptr);
    auto const& point = back->rangefinderData.at("lid").begin()->second->getRanges().get().at(0);
    EXPECT_TRUE(point.auxiliaries.empty());
    EXPECT_EQ(point.time, 0.5F);
}

TEST(SensorDataStream, KeyIsComputedFromTheTimeOfTheRecord)
{
    SensorData data;
    data.imuData["imu"][77] = imuSample(1.0, {});
    auto const back = readBack<SensorData>(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->imuData.at("imu").begin()->first, 100000000);
}

TEST(SensorDataStream, OfTwoSamplesAtOneTimeTheLaterInTheStreamWins)
{
    SensorData data;
    data.imuData["imu"][1] = imuSample(1.0, {1, 0, 0});
    data.imuData["imu"][2] = imuSample(1.0, {2, 0, 0});
    data.imuData["imu"][3] = imuSample(0.5, {3, 0, 0});
    auto const back = readBack<SensorData>(written(data));
    ASSERT_NE(back, nullptr);
    ASSERT_EQ(back->imuData.at("imu").size(), 2U);
    EXPECT_EQ(back->imuData.at("imu").at(100000000)->getLinearAcceleration().x, 2);
    EXPECT_EQ(back->imuData.at("imu").at(50000000)->getLinearAcceleration().x, 3);
}

TEST(SensorDataStream, EmptyNameHasNoFieldAndReadsBack)
{
    SensorData data;
    store(data.imuData[""], imuSample(1.0, {1, 2, 3}));
    store(data.rangefinderData[""], rangeSample(1.0, {}, {}));
    data.sensorPoses[""] = {{1, 2, 3}, {}};
    auto const back = readBack<SensorData>(written(data));
    ASSERT_NE(back, nullptr);
    expectSame(*back, data);
}

TEST(SensorDataStream, NamesAreArbitraryBytes)
{
    SensorData data;
    std::string const name("a\0b\xFF", 4);
    store(data.imuData[name], imuSample(1.0, {1, 2, 3}));
    auto const back = readBack<SensorData>(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(back->imuData.contains(name));
}

TEST(SensorDataStream, MagneticFieldReadsBackOnlyWhereThereWasOne)
{
    SensorData data;
    store(data.imuData["imu"], imuSample(1.0, {}));
    store(data.imuData["imu"], imuSampleWithField(2.0, {}, {}, {}));
    auto const back = readBack<SensorData>(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_FALSE(back->imuData.at("imu").at(100000000)->hasMagneticField());
    EXPECT_TRUE(back->imuData.at("imu").at(200000000)->hasMagneticField());
}

TEST(SensorDataStream, TimeOfNaNReadsBack)
{
    SensorData data;
    data.imuData["imu"][0] = imuSample(std::numeric_limits<double>::quiet_NaN(), {1, 2, 3});
    auto const back = readBack<SensorData>(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(std::isnan(back->imuData.at("imu").begin()->second->getTimeStamp().get()));
}

// Makes two names equal, which no store writes.
std::string withOneName(std::string bytes)
{
    return bytes.replace(bytes.find("name b"), 6, "name a");
}

TEST(SensorDataStream, OfTwoPosesOfOneNameTheLaterInTheStreamWins)
{
    SensorData data;
    data.sensorPoses["name a"] = {{1, 0, 0}, {}};
    data.sensorPoses["name b"] = {{2, 0, 0}, {}};
    auto const later = std::next(data.sensorPoses.begin())->second;
    auto const back = readBack<SensorData>(withOneName(written(data)));
    ASSERT_NE(back, nullptr);
    ASSERT_EQ(back->sensorPoses.size(), 1U);
    EXPECT_EQ(back->sensorPoses.at("name a"), later);
}

TEST(SensorDataStream, TwoSensorTablesOfOneNameFillOneSensorAndTheLaterWins)
{
    SensorData data;
    store(data.imuData["name a"], imuSample(1.0, {1, 0, 0}));
    store(data.imuData["name a"], imuSample(2.0, {1, 0, 0}));
    store(data.imuData["name b"], imuSample(2.0, {2, 0, 0}));
    store(data.imuData["name b"], imuSample(3.0, {2, 0, 0}));
    auto const later = std::next(data.imuData.begin())->second.at(200000000);
    auto const back = readBack<SensorData>(withOneName(written(data)));
    ASSERT_NE(back, nullptr);
    ASSERT_EQ(back->imuData.size(), 1U);
    auto const& samples = back->imuData.at("name a");
    ASSERT_EQ(samples.size(), 3U);
    EXPECT_EQ(samples.at(200000000)->getLinearAcceleration(), later->getLinearAcceleration());
}

} // namespace
