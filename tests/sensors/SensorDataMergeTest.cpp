#include "tests/support/SensorRecords.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/sensors/SensorData.h>

#include <gtest/gtest.h>

#include <random>

namespace
{

using oV::Roamscan::SampleMap;
using oV::Roamscan::SensorData;
using namespace support;

TEST(Merge, StoresThatDifferInPosesAppliedThrow)
{
    SensorData a = oneSampleOfEachKind(1.0);
    SensorData b = oneSampleOfEachKind(2.0);
    b.posesApplied = true;
    try {
        a += b;
        FAIL() << "nothing was thrown";
    } catch (oV::InternalErrorException const& failure) {
        EXPECT_EQ(failure.getDesc().compare(L"Cannot combine sensor data because posesApplied differs."), 0);
        EXPECT_EQ(failure.getFunction().compare(L"oV::Roamscan::SensorData::operator +="), 0);
        EXPECT_EQ(failure.getFile().compare(L"SensorData"), 0);
        EXPECT_GT(failure.getLine(), 0U);
    }
    EXPECT_EQ(a.imuData.at("imu").size(), 1U);
    EXPECT_FALSE(a.posesApplied);
}

TEST(Merge, OfRotatedStoresStaysRotated)
{
    SensorData a = oneSampleOfEachKind(1.0);
    SensorData b = oneSampleOfEachKind(2.0);
    a.posesApplied = true;
    b.posesApplied = true;
    EXPECT_EQ(&(a += b), &a);
    EXPECT_TRUE(a.posesApplied);
    EXPECT_EQ(a.imuData.at("imu").size(), 2U);
}

TEST(Merge, CopiesEveryKind)
{
    SensorData a;
    SensorData const b = oneSampleOfEachKind(1.0);
    a += b;
    EXPECT_EQ(a.imuData, b.imuData);
    EXPECT_EQ(a.absolutePoseData, b.absolutePoseData);
    EXPECT_EQ(a.rangefinderData, b.rangefinderData);
    EXPECT_EQ(a.secondRangefinderData, b.secondRangefinderData);
    EXPECT_EQ(a.scanningStatusData, b.scanningStatusData);
    EXPECT_EQ(a.sensorPoses, b.sensorPoses);
}

TEST(Merge, WithItselfChangesNothing)
{
    SensorData a = oneSampleOfEachKind(1.0);
    SensorData const before(a);
    SensorData const& same = a;
    a += same;
    EXPECT_EQ(a.imuData, before.imuData);
    EXPECT_EQ(a.absolutePoseData, before.absolutePoseData);
    EXPECT_EQ(a.secondRangefinderData, before.secondRangefinderData);
    EXPECT_EQ(a.scanningStatusData, before.scanningStatusData);
    EXPECT_EQ(a.posesApplied, before.posesApplied);
    EXPECT_EQ(a.rangefinderData, before.rangefinderData);
    EXPECT_EQ(a.sensorPoses, before.sensorPoses);
}

TEST(Merge, AtOneTickTheReceiversRecordIsKeptAndNewTicksShareRecords)
{
    SensorData a;
    SensorData b;
    a.imuData["imu"][1] = imuSample(0, {1, 0, 0});
    b.imuData["imu"][1] = imuSample(0, {2, 0, 0});
    b.imuData["imu"][2] = imuSample(0, {3, 0, 0});
    auto const own = a.imuData["imu"][1];
    a += b;
    EXPECT_EQ(a.imuData["imu"].size(), 2U);
    EXPECT_EQ(a.imuData["imu"][1], own);
    EXPECT_EQ(a.imuData["imu"][2], b.imuData["imu"][2]);
}

TEST(Merge, ReceiversPoseIsKept)
{
    SensorData a;
    SensorData b;
    a.sensorPoses["imu"] = {{1, 0, 0}, {}};
    b.sensorPoses["imu"] = {{2, 0, 0}, {}};
    b.sensorPoses["lid"] = {{3, 0, 0}, {}};
    a += b;
    EXPECT_EQ(a.sensorPoses.at("imu").translation.x, 1);
    EXPECT_EQ(a.sensorPoses.at("lid").translation.x, 3);
}

TEST(Merge, SensorWithoutSamplesIsAddedAsAnEmptySensor)
{
    SensorData a;
    SensorData b;
    b.imuData["empty"];
    a += b;
    ASSERT_TRUE(a.imuData.contains("empty"));
    EXPECT_TRUE(a.imuData["empty"].empty());
    a.imuData["imu"][1] = imuSample(0, {});
    b.imuData["imu"];
    a += b;
    EXPECT_EQ(a.imuData["imu"].size(), 1U);
}

TEST(Merge, DoesNotChangeTheOtherStore)
{
    SensorData a;
    a.imuData["imu"][1] = imuSample(0, {});
    SensorData b;
    b.imuData["imu"][2] = imuSample(0, {});
    a += b;
    EXPECT_EQ(b.imuData["imu"].size(), 1U);
    EXPECT_EQ(b.imuData["imu"].begin()->first, 2);
}

TEST(Merge, IsTheUnionWithTheReceiverWinningOverRandomRecordings)
{
    std::mt19937_64 generator(200);
    for (int round = 0; round < 200; ++round) {
        auto const range = static_cast<int64>(5 + generator() % 1000);
        auto const shift = static_cast<int64>(generator() % 1500) - 700;
        auto const fill = [&](SampleMap<mapping::ImuData>& samples, int64 origin) {
            auto const count = generator() % 100;
            for (std::size_t i = 0; i < count; ++i) {
                samples[origin + static_cast<int64>(generator() % static_cast<std::uint64_t>(range))] =
                    imuSample(0, {});
            }
        };
        SensorData a;
        SensorData b;
        fill(a.imuData["imu"], 0);
        fill(b.imuData["imu"], shift);
        SampleMap<mapping::ImuData> expected = a.imuData["imu"];
        expected.insert(b.imuData["imu"].begin(), b.imuData["imu"].end());
        a += b;
        ASSERT_EQ(a.imuData["imu"], expected);
    }
}

template <typename T>
void expectMerged(SampleMap<T> const& merged, SampleMap<T> const& own, SampleMap<T> const& others)
{
    ASSERT_EQ(merged.size(), 2U);
    EXPECT_EQ(merged.at(100000000), own.at(100000000)) << "the receiver's own at the tick of both";
    EXPECT_EQ(merged.at(200000000), others.at(200000000)) << "the very record of the other";
}

TEST(Merge, JoinsTheSamplesOfASensorInEveryKind)
{
    SensorData a = oneSampleOfEachKind(1.0);
    SensorData const own(a);
    SensorData b = oneSampleOfEachKind(1.0);
    SensorData const later = oneSampleOfEachKind(2.0);
    b += later;
    a += b;
    expectMerged(a.imuData.at("imu"), own.imuData.at("imu"), later.imuData.at("imu"));
    expectMerged(
        a.absolutePoseData.at("gps"), own.absolutePoseData.at("gps"), later.absolutePoseData.at("gps"));
    expectMerged(a.rangefinderData.at("lid"), own.rangefinderData.at("lid"), later.rangefinderData.at("lid"));
    expectMerged(a.secondRangefinderData.at("lid2"),
                 own.secondRangefinderData.at("lid2"),
                 later.secondRangefinderData.at("lid2"));
    expectMerged(a.scanningStatusData.at("status"),
                 own.scanningStatusData.at("status"),
                 later.scanningStatusData.at("status"));
}

TEST(Merge, ThatIsRefusedChangesNeitherStore)
{
    for (bool const rotated : {false, true}) {
        SensorData a = oneSampleOfEachKind(1.0);
        a.posesApplied = rotated;
        SensorData const before(a);
        SensorData b = oneSampleOfEachKind(2.0);
        b.imuData["new"][1] = imuSample(0, {});
        b.sensorPoses["new"] = {};
        b.posesApplied = !rotated;
        EXPECT_THROW(a += b, oV::InternalErrorException);
        EXPECT_EQ(a.imuData, before.imuData);
        EXPECT_EQ(a.absolutePoseData, before.absolutePoseData);
        EXPECT_EQ(a.rangefinderData, before.rangefinderData);
        EXPECT_EQ(a.secondRangefinderData, before.secondRangefinderData);
        EXPECT_EQ(a.scanningStatusData, before.scanningStatusData);
        EXPECT_EQ(a.sensorPoses, before.sensorPoses);
        EXPECT_EQ(a.posesApplied, rotated);
    }
}

} // namespace
