#include "tests/support/ByteStrings.h"
#include "tests/support/SensorRecords.h"

#include <roamscan/frame/values/Endianness.h>
#include <roamscan/sensors/SensorData.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using oV::Roamscan::SensorData;
using namespace support;

std::string written(SensorData const& data)
{
    std::ostringstream stream(std::ios::binary);
    EXPECT_TRUE(data.write(stream));
    return stream.str();
}

std::shared_ptr<SensorData> readBack(std::string const& frame)
{
    std::istringstream stream(frame, std::ios::binary);
    return SensorData::read(stream);
}

void expectSame(mapping::ImuData const& a, mapping::ImuData const& b)
{
    EXPECT_EQ(a.getTimeStamp(), b.getTimeStamp());
    EXPECT_EQ(a.getLinearAcceleration(), b.getLinearAcceleration());
    EXPECT_EQ(a.getAngularVelocity(), b.getAngularVelocity());
    EXPECT_EQ(a.hasMagneticField(), b.hasMagneticField());
    EXPECT_EQ(a.getMagneticField(), b.getMagneticField());
}

void expectSame(mapping::RangefinderData const& a, mapping::RangefinderData const& b)
{
    EXPECT_EQ(a.getTimeStamp(), b.getTimeStamp());
    EXPECT_EQ(a.getOrigin(), b.getOrigin());
    EXPECT_EQ(a.getRanges().get(), b.getRanges().get());
}

template <typename T>
void expectSame(SensorData::Samples<T> const& a, SensorData::Samples<T> const& b)
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

void expectSame(SensorData const& a, SensorData const& b)
{
    expectSame(a.imuData, b.imuData);
    expectSame(a.rangefinderData, b.rangefinderData);
    EXPECT_EQ(a.sensorPoses, b.sensorPoses);
    EXPECT_EQ(a.posesApplied, b.posesApplied);
}

SensorData smallStore()
{
    SensorData data;
    store(data.rangefinderData["lid"], rangeSample(1.5, {0, 0, 0.5}, {{{1, 2, 3}, 0.25F, {}}}));
    store(data.imuData["imu"], imuSample(1.5, {0, 0, 9.75}, {0.5, 0, 0}));
    data.sensorPoses["imu"] = {{0, 0, 0}, {0, 0, 0, 1}};
    data.posesApplied = true;
    return data;
}

// Literal bytes

std::string const emptyFrame = u64(12) // 12 bytes follow
                               + u32(8) + u16(4) + u16(4) +
                               u32(4); // root at 8, its vtable without fields at 4

// The frame of smallStore(), by its places in the frame.
std::string frameOfSmallStore()
{
    return u64(296)                                                  //   0
           + u32(20) + u32(0)                                        //   8 root at 8 + 20, padding
           + u16(12) + u16(20) + u16(8) + u16(12) + u16(16) + u16(7) //  16 vtable of the root
           + u32(12)                                                 //  28 the root
           + bytes({0, 0, 0, 1})                                     //  32 padding, posesApplied
           + u32(0xA0) + u32(0x44) + u32(4)                 //  36 rangefinderSensors, imuSensors, poses
           + u32(1) + u32(12)                               //  48 one pose table
           + u16(8) + u16(36) + u16(4) + u16(8)             //  56 its vtable
           + u32(8) + u32(0x20)                             //  64 the pose table, name
           + f32({0, 0, 0, 1, 0, 0, 0})                     //  72 translation, rotation w, x, y, z
           + u32(3) + "imu" + bytes({0})                    // 100
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
           + u32(3) + "imu" + bytes({0})                    // 188
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
           + u32(3) + "lid" + bytes({0});                   // 296
}

constexpr std::size_t accelerationEntry = 138 + 6;
constexpr std::size_t velocityEntry = 138 + 8;
constexpr std::size_t originEntry = 234 + 8;
constexpr std::size_t poseEntry = 56 + 6;

TEST(SensorDataStream, AnEmptyStoreIsAFrameOfTwentyBytes)
{
    EXPECT_EQ(emptyFrame.size(), 20U);
    EXPECT_EQ(written(SensorData()), emptyFrame);
}

TEST(SensorDataStream, TheEmptyFrameReadsAsAnEmptyStore)
{
    auto const data = readBack(emptyFrame);
    ASSERT_NE(data, nullptr);
    expectSame(*data, SensorData());
}

TEST(SensorDataStream, ASmallStoreIsThese304Bytes)
{
    EXPECT_EQ(frameOfSmallStore().size(), 304U);
    EXPECT_EQ(written(smallStore()), frameOfSmallStore());
}

TEST(SensorDataStream, These304BytesReadAsTheSmallStore)
{
    auto const data = readBack(frameOfSmallStore());
    ASSERT_NE(data, nullptr);
    expectSame(*data, smallStore());
    EXPECT_EQ(data->imuData.at("imu").begin()->first, 150000000);
    EXPECT_EQ(data->rangefinderData.at("lid").begin()->second->getOrigin(), (Vector{0, 0, 0.5}));
}

TEST(SensorDataStream, PosesTurnTheirScalarPartRoundOnTheWayAndBack)
{
    SensorData data;
    data.sensorPoses["imu"] = {{1, 2, 3}, {4, 5, 6, 7}};
    std::string const frame = written(data);
    EXPECT_NE(frame.find(f32({1, 2, 3, 7, 4, 5, 6})), std::string::npos);
    EXPECT_EQ(readBack(frame)->sensorPoses, data.sensorPoses);
}

// Round trips, and where writer and reader disagree

TEST(SensorDataStream, WhatTheFileKeepsSurvivesARoundTrip)
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
    auto const back = readBack(written(data));
    ASSERT_NE(back, nullptr);
    expectSame(*back, data);
}

TEST(SensorDataStream, OtherKindsAreNotKept)
{
    SensorData const data = oneSampleOfEachKind(1.0);
    auto const back = readBack(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(back->absolutePoseData.empty());
    EXPECT_TRUE(back->secondRangefinderData.empty());
    EXPECT_TRUE(back->scanningStatusData.empty());
    EXPECT_EQ(back->imuData.size(), 1U);
    EXPECT_EQ(back->rangefinderData.size(), 1U);
}

TEST(SensorDataStream, ASensorWithoutSamplesIsInTheFileAndLeavesNoEntry)
{
    SensorData data;
    data.imuData["empty imu"];
    data.rangefinderData["empty lid"];
    std::string const frame = written(data);
    EXPECT_NE(frame.find("empty imu"), std::string::npos);
    EXPECT_NE(frame.find("empty lid"), std::string::npos);
    auto const back = readBack(frame);
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(back->imuData.empty());
    EXPECT_TRUE(back->rangefinderData.empty());
}

TEST(SensorDataStream, DoublesAreRoundedToFloat)
{
    SensorData data;
    store(data.imuData["imu"], imuSampleWithField(1.0, {0.1, 1e300, -1e-300}, {1.0 / 3, 0, 0}, {0.7, 0, 0}));
    store(data.rangefinderData["lid"], rangeSample(1.0, {0.1, 0.2, 0.3}, {}));
    auto const back = readBack(written(data));
    ASSERT_NE(back, nullptr);
    auto const& imu = *back->imuData.at("imu").begin()->second;
    EXPECT_EQ(imu.getLinearAcceleration(),
              (Vector{double{0.1F}, std::numeric_limits<double>::infinity(), -0.0}));
    EXPECT_EQ(imu.getAngularVelocity().x, double{1.0F / 3.0F});
    EXPECT_EQ(imu.getMagneticField().x, double{0.7F});
    EXPECT_EQ(back->rangefinderData.at("lid").begin()->second->getOrigin(),
              (Vector{double{0.1F}, double{0.2F}, double{0.3F}}));
}

TEST(SensorDataStream, AuxiliariesAreNotKept)
{
    SensorData data;
    store(data.rangefinderData["lid"], rangeSample(1.0, {}, {{{1, 2, 3}, 0.5F, {{7, 8, 9}}}}));
    auto const back = readBack(written(data));
    ASSERT_NE(back, nullptr);
    auto const& point = back->rangefinderData.at("lid").begin()->second->getRanges().get().at(0);
    EXPECT_TRUE(point.auxiliaries.empty());
    EXPECT_EQ(point.time, 0.5F);
}

TEST(SensorDataStream, TheKeyComesFromTheRecordsTime)
{
    SensorData data;
    data.imuData["imu"][77] = imuSample(1.0, {});
    auto const back = readBack(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->imuData.at("imu").begin()->first, 100000000);
}

TEST(SensorDataStream, OfTwoSamplesAtOneTimeTheLaterInTheFileStays)
{
    SensorData data;
    data.imuData["imu"][1] = imuSample(1.0, {1, 0, 0});
    data.imuData["imu"][2] = imuSample(1.0, {2, 0, 0});
    data.imuData["imu"][3] = imuSample(0.5, {3, 0, 0});
    auto const back = readBack(written(data));
    ASSERT_NE(back, nullptr);
    ASSERT_EQ(back->imuData.at("imu").size(), 2U);
    EXPECT_EQ(back->imuData.at("imu").at(100000000)->getLinearAcceleration().x, 2);
    EXPECT_EQ(back->imuData.at("imu").at(50000000)->getLinearAcceleration().x, 3);
}

TEST(SensorDataStream, ATimeOfZeroHasNoFieldAndReadsBackAtKeyZero)
{
    SensorData data;
    store(data.imuData["imu"], imuSample(0.0, {1, 2, 3}));
    SensorData later;
    store(later.imuData["imu"], imuSample(1.0, {1, 2, 3}));
    EXPECT_LT(written(data).size(), written(later).size());
    auto const back = readBack(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->imuData.at("imu").begin()->first, 0);
    EXPECT_EQ(back->imuData.at("imu").begin()->second->getTimeStamp(), mapping::TimeStamp(0.0));
}

TEST(SensorDataStream, PosesAppliedHasAFieldOnlyIfSet)
{
    SensorData data;
    data.posesApplied = true;
    EXPECT_GT(written(data).size(), emptyFrame.size());
    EXPECT_TRUE(readBack(written(data))->posesApplied);
    data.posesApplied = false;
    EXPECT_EQ(written(data), emptyFrame);
    EXPECT_FALSE(readBack(written(data))->posesApplied);
}

TEST(SensorDataStream, TheEmptyNameHasNoFieldAndReadsBack)
{
    SensorData data;
    store(data.imuData[""], imuSample(1.0, {1, 2, 3}));
    store(data.rangefinderData[""], rangeSample(1.0, {}, {}));
    data.sensorPoses[""] = {{1, 2, 3}, {}};
    auto const back = readBack(written(data));
    ASSERT_NE(back, nullptr);
    expectSame(*back, data);
}

TEST(SensorDataStream, NamesAreArbitraryBytes)
{
    SensorData data;
    std::string const name("a\0b\xFF", 4);
    store(data.imuData[name], imuSample(1.0, {1, 2, 3}));
    auto const back = readBack(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(back->imuData.contains(name));
}

TEST(SensorDataStream, AMagneticFieldReadsBackOnlyWhereThereWasOne)
{
    SensorData data;
    store(data.imuData["imu"], imuSample(1.0, {}));
    store(data.imuData["imu"], imuSampleWithField(2.0, {}, {}, {}));
    auto const back = readBack(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_FALSE(back->imuData.at("imu").at(100000000)->hasMagneticField());
    EXPECT_TRUE(back->imuData.at("imu").at(200000000)->hasMagneticField());
}

TEST(SensorDataStream, TwoFramesInOneStreamAreReadByTwoCalls)
{
    std::stringstream stream;
    ASSERT_TRUE(smallStore().write(stream));
    ASSERT_TRUE(SensorData().write(stream));
    stream << "x";
    auto const first = SensorData::read(stream);
    auto const second = SensorData::read(stream);
    ASSERT_TRUE(first && second);
    expectSame(*first, smallStore());
    expectSame(*second, SensorData());
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.get(), 'x');
}

TEST(SensorDataStream, ATimeThatIsNaNHarmsNothing)
{
    SensorData data;
    data.imuData["imu"][0] = imuSample(std::numeric_limits<double>::quiet_NaN(), {1, 2, 3});
    auto const back = readBack(written(data));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(std::isnan(back->imuData.at("imu").begin()->second->getTimeStamp().get()));
}

// Failures

bool isRefusedWithAGoodStream(std::string const& frame)
{
    std::istringstream stream(frame + "rest");
    EXPECT_EQ(SensorData::read(stream), nullptr);
    EXPECT_EQ(stream.good() ? stream.tellg() : std::streampos(-1), static_cast<std::streamoff>(frame.size()));
    return stream.good();
}

TEST(SensorDataStream, AStreamThatIsNotGoodIsNotRead)
{
    for (auto const state : {std::ios::eofbit, std::ios::failbit, std::ios::badbit}) {
        std::istringstream stream(emptyFrame);
        stream.setstate(state);
        EXPECT_EQ(SensorData::read(stream), nullptr);
        EXPECT_EQ(stream.rdstate(), state);
        stream.clear();
        EXPECT_EQ(stream.tellg(), 0);
    }
}

TEST(SensorDataStream, AStreamThatEndsAnywhereIsRefused)
{
    std::string const frame = frameOfSmallStore();
    for (std::size_t length = 0; length < frame.size(); ++length) {
        std::istringstream stream(frame.substr(0, length));
        EXPECT_EQ(SensorData::read(stream), nullptr);
        EXPECT_FALSE(stream.good());
    }
}

TEST(SensorDataStream, ACountBelowFiveIsRefusedWithTheStreamStillGood)
{
    for (std::uint64_t count = 0; count < 5; ++count) {
        EXPECT_TRUE(isRefusedWithAGoodStream(u64(count) + std::string(count, '\0')));
    }
}

TEST(SensorDataStream, ABufferThatIsNotSoundIsRefusedWithTheStreamBehindIt)
{
    std::string const sound = frameOfSmallStore();
    EXPECT_TRUE(isRefusedWithAGoodStream(withU32(sound, 8, 0x7FFFFFFF)));  // root offset
    EXPECT_TRUE(isRefusedWithAGoodStream(withU32(sound, 36, 0x40000000))); // sensors outside
    EXPECT_TRUE(isRefusedWithAGoodStream(withU32(sound, 276, 1000))); // more points than there is room for
    EXPECT_TRUE(isRefusedWithAGoodStream(withU32(sound, 296, 4)));    // a name without terminator
    EXPECT_TRUE(isRefusedWithAGoodStream(withU16(sound, originEntry, 60))); // an origin outside its sample
}

TEST(SensorDataStream, EveryDamagedByteIsReadOrRefusedWithoutHarm)
{
    std::string const sound = frameOfSmallStore();
    for (std::size_t position = 8; position < sound.size(); ++position) {
        for (int const value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            std::string frame = sound;
            frame[position] = static_cast<char>(value);
            (void)readBack(frame);
        }
    }
}

TEST(SensorDataStream, ASampleWithoutOneOfItsVectorsIsRefused)
{
    EXPECT_TRUE(isRefusedWithAGoodStream(withU16(frameOfSmallStore(), accelerationEntry, 0)));
    EXPECT_TRUE(isRefusedWithAGoodStream(withU16(frameOfSmallStore(), velocityEntry, 0)));
    EXPECT_TRUE(isRefusedWithAGoodStream(withU16(frameOfSmallStore(), originEntry, 0)));
}

TEST(SensorDataStream, APoseTableWithoutItsPoseIsRefused)
{
    EXPECT_TRUE(isRefusedWithAGoodStream(withU16(frameOfSmallStore(), poseEntry, 0)));
}

TEST(SensorDataStream, ACountThatLiesIsRefusedOnceTheStreamEnds)
{
    for (std::uint64_t const count : {std::uint64_t{297}, std::uint64_t{1} << 20, std::uint64_t{1} << 31}) {
        std::istringstream stream(frameOfSmallStore().replace(0, 8, u64(count)));
        EXPECT_EQ(SensorData::read(stream), nullptr);
        EXPECT_FALSE(stream.good());
    }
}

TEST(SensorDataStream, ACountBeyondAnyBufferPassesTheFailureThroughWithTheStreamBehindTheCount)
{
    std::istringstream stream(frameOfSmallStore().replace(0, 8, u64(std::uint64_t{1} << 63)));
    EXPECT_THROW((void)SensorData::read(stream), std::length_error);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.tellg(), 8);
}

TEST(SensorDataStream, WhatTheStreamThrowsPassesThrough)
{
    std::istringstream input(frameOfSmallStore().substr(0, 100));
    input.exceptions(std::ios::failbit);
    EXPECT_THROW((void)SensorData::read(input), std::ios::failure);
    LimitedBuffer buffer(100);
    std::ostream output(&buffer);
    output.exceptions(std::ios::badbit);
    EXPECT_THROW((void)smallStore().write(output), std::ios::failure);
}

// One rangefinder sensor whose samples are all one table, with one vector of points.
std::string framedSharedSamples(std::uint32_t samples, std::uint32_t points)
{
    std::string buffer = u32(12) + u16(6) + u16(8) + u16(4) + u16(0); // root at 12, its vtable at 4
    buffer += u32(8) + u32(4);                                        // 12 root, rangefinderSensors at 20
    buffer += u32(1) + u32(12);                                       // 20 one sensor, at 36
    buffer += u16(8) + u16(8) + u16(0) + u16(4);                      // 28 its vtable: samples alone
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
    buffer += u32(12) + u32(16) + f32({1, 2, 3});              // the sample, points behind it
    buffer += u32(points);
    for (std::uint32_t i = 0; i < points; ++i) {
        buffer += f32({1, 2, 3, 4});
    }
    return framed(buffer);
}

TEST(SensorDataStream, SamplesMayShareATableAndItsPoints)
{
    auto const data = readBack(framedSharedSamples(3, 10));
    ASSERT_NE(data, nullptr);
    ASSERT_EQ(data->rangefinderData.at("").size(), 1U) << "all at time 0";
    EXPECT_EQ(data->rangefinderData.at("").at(0)->getRanges().get().size(), 10U);
}

TEST(SensorDataStream, ASharedVectorThatWouldUnpackToMoreThanSixteenTimesTheBufferIsRefused)
{
    // A point takes 16 bytes in the buffer and 40 in memory, so six samples that share the points are 15
    // times the buffer, and seven are 17.5 times.
    static_assert(sizeof(mapping::TimedRangefinderPoint) == 40);
    EXPECT_NE(readBack(framedSharedSamples(6, 100000)), nullptr);
    EXPECT_EQ(readBack(framedSharedSamples(7, 100000)), nullptr);
    EXPECT_EQ(readBack(framedSharedSamples(100000, 100000)), nullptr) << "400 GB";
}

// The limit of tables: the root, one sensor and the samples.
std::string frameOfImuSamples(int samples)
{
    SensorData data;
    auto& map = data.imuData["imu"];
    for (int i = 0; i < samples; ++i) {
        map.emplace_hint(map.end(), i, imuSample(secondsOf(i), {1, 2, 3}));
    }
    return written(data);
}

TEST(SensorDataStream, AMillionTablesAreAccepted)
{
    auto const data = readBack(frameOfImuSamples(1000000 - 2));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->imuData.at("imu").size(), 999998U);
}

TEST(SensorDataStream, OneTableMoreIsRefused)
{
    EXPECT_TRUE(isRefusedWithAGoodStream(frameOfImuSamples(1000000 - 1)));
}

// Writing

TEST(SensorDataStream, AStreamThatIsNotGoodGetsNothingAndKeepsItsFlags)
{
    for (auto const state : {std::ios::eofbit, std::ios::failbit, std::ios::badbit}) {
        std::ostringstream stream;
        stream.setstate(state);
        EXPECT_FALSE(smallStore().write(stream));
        EXPECT_EQ(stream.rdstate(), state);
        EXPECT_EQ(stream.str(), "");
    }
}

TEST(SensorDataStream, AStreamThatFailsOnTheWayGivesFalse)
{
    for (std::size_t const room : {0U, 4U, 8U, 100U, 303U}) {
        LimitedBuffer buffer(room);
        std::ostream stream(&buffer);
        EXPECT_FALSE(smallStore().write(stream));
        EXPECT_FALSE(stream.good());
    }
}

TEST(SensorDataStream, AWriteFlushesNothingAndBeginsWhereTheStreamStands)
{
    LimitedBuffer buffer(304);
    std::ostream limited(&buffer);
    EXPECT_TRUE(smallStore().write(limited));
    EXPECT_EQ(buffer.flushes(), 0);
    std::ostringstream stream;
    stream << "before";
    EXPECT_TRUE(SensorData().write(stream));
    EXPECT_EQ(stream.str(), "before" + emptyFrame);
}

TEST(SensorDataStream, ReadsAndWritesClearTheGlobalByteOrderFlag)
{
    oV::Endianness::bigEndian = true;
    std::string const frame = written(smallStore());
    EXPECT_FALSE(oV::Endianness::bigEndian);
    oV::Endianness::bigEndian = true;
    EXPECT_NE(readBack(frame), nullptr);
    EXPECT_FALSE(oV::Endianness::bigEndian);
}

// More literal bytes: what is left out, and the fields of a sample with magnetic field. By places in the
// buffer.

TEST(SensorDataStream, WhatIsEmptyOrZeroHasNoFieldInTheseBytes)
{
    SensorData data;
    store(data.rangefinderData[""], rangeSample(0.0, {1, 2, 3}, {}));
    std::string const frame = u64(80)                                        //
                              + u32(12) + u16(0)                             //  0 root at 12, padding
                              + u16(6) + u16(8) + u16(4)                     //  6 vtable of the root
                              + u32(6) + u32(4)                              // 12 the root, sensors
                              + u32(1) + u32(12)                             // 20 one sensor, at 36
                              + u16(8) + u16(8) + u16(0) + u16(4)            // 28 its vtable: no name
                              + u32(8) + u32(4)                              // 36 the sensor, samples
                              + u32(1) + u32(16)                             // 44 one sample, at 64
                              + u16(0)                                       // 52 padding
                              + u16(10) + u16(16) + u16(0) + u16(0) + u16(4) // 54 its vtable: origin alone
                              + u32(10) + f32({1, 2, 3});                    // 64 the sample, origin
    EXPECT_EQ(written(data), frame);
    auto const back = readBack(frame);
    ASSERT_NE(back, nullptr);
    expectSame(*back, data);
}

TEST(SensorDataStream, ASensorWithoutNameAndSamplesIsATableWithoutFields)
{
    SensorData data;
    data.rangefinderData[""];
    std::string const frame = u64(36) + u32(12) + u16(0) // root at 12, padding
                              + u16(6) + u16(8) + u16(4) // its vtable
                              + u32(6) + u32(4)          // 12 the root, rangefinderSensors
                              + u32(1) + u32(8)          // 20 one sensor, at 32
                              + u16(4) + u16(4)          // 28 its vtable
                              + u32(4);                  // 32 the sensor
    EXPECT_EQ(written(data), frame);
    auto const back = readBack(frame);
    ASSERT_NE(back, nullptr);
    expectSame(*back, SensorData());
}

TEST(SensorDataStream, ASampleWithMagneticFieldIsTheseBytes)
{
    SensorData data;
    store(data.imuData[""], imuSampleWithField(1.5, {1, 2, 3}, {4, 5, 6}, {7, 8, 9}));
    std::string const frame = u64(104)                            //
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
    EXPECT_EQ(written(data), frame);
    auto const back = readBack(frame);
    ASSERT_NE(back, nullptr);
    expectSame(*back, data);
}

TEST(SensorDataStream, AFieldOfANewerFileIsSkipped)
{
    auto const data = readBack(u64(32) + u32(20)                              // root at 20
                               + u16(14) + u16(12) + u16(0) + u16(0) + u16(0) //  4 its vtable: no vectors,
                               + u16(4) + u16(8) + u16(0) //    posesApplied, a fifth field; padding
                               + u32(16) + bytes({1, 0, 0, 0}) + u32(77)); // 20 the root
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(data->posesApplied);
    EXPECT_TRUE(data->imuData.empty() && data->rangefinderData.empty() && data->sensorPoses.empty());
}

// Two names become one, as no store writes them.
std::string withOneName(std::string frame)
{
    return frame.replace(frame.find("name b"), 6, "name a");
}

TEST(SensorDataStream, OfTwoPosesOfOneNameTheLaterInTheFileStays)
{
    SensorData data;
    data.sensorPoses["name a"] = {{1, 0, 0}, {}};
    data.sensorPoses["name b"] = {{2, 0, 0}, {}};
    auto const later = std::next(data.sensorPoses.begin())->second;
    auto const back = readBack(withOneName(written(data)));
    ASSERT_NE(back, nullptr);
    ASSERT_EQ(back->sensorPoses.size(), 1U);
    EXPECT_EQ(back->sensorPoses.at("name a"), later);
}

TEST(SensorDataStream, TwoSensorTablesOfOneNameFillOneSensorAndTheLaterInTheFileWins)
{
    SensorData data;
    store(data.imuData["name a"], imuSample(1.0, {1, 0, 0}));
    store(data.imuData["name a"], imuSample(2.0, {1, 0, 0}));
    store(data.imuData["name b"], imuSample(2.0, {2, 0, 0}));
    store(data.imuData["name b"], imuSample(3.0, {2, 0, 0}));
    auto const later = std::next(data.imuData.begin())->second.at(200000000);
    auto const back = readBack(withOneName(written(data)));
    ASSERT_NE(back, nullptr);
    ASSERT_EQ(back->imuData.size(), 1U);
    auto const& samples = back->imuData.at("name a");
    ASSERT_EQ(samples.size(), 3U);
    EXPECT_EQ(samples.at(200000000)->getLinearAcceleration(), later->getLinearAcceleration());
}

TEST(SensorDataStream, PointsKeepTheirOrderOnTheWayAndBack)
{
    SensorData data;
    store(data.rangefinderData["lid"],
          rangeSample(1.0, {}, {{{1, 2, 3}, 4, {}}, {{5, 6, 7}, 8, {}}, {{9, 10, 11}, 12, {}}}));
    std::string const frame = written(data);
    EXPECT_NE(frame.find(u32(3) + f32({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12})), std::string::npos);
    auto const back = readBack(frame);
    ASSERT_NE(back, nullptr);
    expectSame(*back, data);
}

TEST(SensorDataStream, AMisalignedFieldIsRefused)
{
    std::string const sound = frameOfSmallStore();
    EXPECT_TRUE(isRefusedWithAGoodStream(withU16(sound, originEntry, 9)));
    EXPECT_TRUE(isRefusedWithAGoodStream(withU16(sound, accelerationEntry, 6)));
    EXPECT_TRUE(isRefusedWithAGoodStream(withU16(sound, 138 + 4, 24)))
        << "a time at a multiple of four alone";
}

TEST(SensorDataStream, AStoreWhoseBufferWouldPassTwoGigabytesIsNotWritten)
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
