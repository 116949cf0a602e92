#include "tests/support/SensorRecords.h"

#include <roamscan/sensors/SensorData.h>

#include <gtest/gtest.h>

#include <thread>
#include <type_traits>
#include <utility>

namespace
{

using oV::Roamscan::SampleMap;
using oV::Roamscan::SensorData;
using namespace support;

TEST(ImuData, KeepsItsReadingsAndWhetherItHasAMagneticField)
{
    mapping::ImuData const plain(mapping::TimeStamp(1.5), {1, 2, 3}, {4, 5, 6});
    EXPECT_EQ(plain.getTimeStamp(), mapping::TimeStamp(1.5));
    EXPECT_EQ(plain.getLinearAcceleration(), (MappingVector{1, 2, 3}));
    EXPECT_EQ(plain.getAngularVelocity(), (MappingVector{4, 5, 6}));
    EXPECT_FALSE(plain.hasMagneticField());
    mapping::ImuData const magnetic(mapping::TimeStamp(1.5), {1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    EXPECT_TRUE(magnetic.hasMagneticField());
    EXPECT_EQ(magnetic.getMagneticField(), (MappingVector{7, 8, 9}));
    EXPECT_EQ(magnetic.getLinearAcceleration(), (MappingVector{1, 2, 3}));
    EXPECT_EQ(magnetic.getAngularVelocity(), (MappingVector{4, 5, 6}));
}

TEST(RangefinderData, KeepsItsOriginAndPoints)
{
    auto const record = rangeSample(1.5, {1, 2, 3}, {{{1, 2, 3}, 0.25F, {{7, 8, 9}}}});
    EXPECT_EQ(record->getTimeStamp(), mapping::TimeStamp(1.5));
    EXPECT_EQ(record->getOrigin(), (MappingVector{1, 2, 3}));
    std::vector<mapping::TimedRangefinderPoint> const& points = record->getRanges();
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(points[0].position, (mapping::Vector3<float>{1, 2, 3}));
    EXPECT_EQ(points[0].time, 0.25F);
    EXPECT_EQ(points[0].auxiliaries, (std::vector<mapping::PointAuxiliary>{{7, 8, 9}}));
    static_assert(sizeof(mapping::PointAuxiliary) == 12);
}

TEST(AbsolutePose2DData, KeepsItsPoseAndUncertainties)
{
    auto const record = absoluteSample(1.5);
    EXPECT_EQ(record->getTimeStamp(), mapping::TimeStamp(1.5));
    EXPECT_EQ(record->getPose(), (mapping::Rigid3<double>{{1, 2, 3}, {4, 5, 6, 7}}));
    EXPECT_EQ(record->getTranslationUncertainty()[1], (MappingVector{4, 5, 6}));
    EXPECT_EQ(record->getRotationUncertainty()[2], (MappingVector{17, 18, 19}));
}

TEST(ScanningStatusData, KeepsItsFlagsApart)
{
    EXPECT_TRUE(statusSample(1.5, true, false)->getStationary());
    EXPECT_FALSE(statusSample(1.5, true, false)->getStartNewSubmap());
    EXPECT_FALSE(statusSample(1.5, false, true)->getStationary());
    EXPECT_TRUE(statusSample(1.5, false, true)->getStartNewSubmap());
    EXPECT_EQ(statusSample(1.5)->getTimeStamp(), mapping::TimeStamp(1.5));
}

TEST(SensorData, DefaultConstructedIsEmptyAndNotRotated)
{
    SensorData const data;
    EXPECT_TRUE(data.imuData.empty() && data.absolutePoseData.empty() && data.rangefinderData.empty());
    EXPECT_TRUE(data.secondRangefinderData.empty() && data.scanningStatusData.empty() &&
                data.sensorPoses.empty());
    EXPECT_FALSE(data.posesApplied);
}

TEST(SensorData, DefaultConstructedCanBeCopiedAssignedAndMerged)
{
    SensorData const empty;
    SensorData copy(empty);
    copy = empty;
    copy += empty;
    EXPECT_TRUE(copy.imuData.empty());
    EXPECT_TRUE(copy.createTimedData()->empty());
}

void expectSharedRecords(SensorData const& a, SensorData const& b)
{
    EXPECT_EQ(a.imuData.at("imu").begin()->second, b.imuData.at("imu").begin()->second);
    EXPECT_EQ(a.absolutePoseData.at("gps").begin()->second, b.absolutePoseData.at("gps").begin()->second);
    EXPECT_EQ(a.rangefinderData.at("lid").begin()->second, b.rangefinderData.at("lid").begin()->second);
    EXPECT_EQ(a.secondRangefinderData.at("lid2").begin()->second,
              b.secondRangefinderData.at("lid2").begin()->second);
    EXPECT_EQ(a.scanningStatusData.at("status").begin()->second,
              b.scanningStatusData.at("status").begin()->second);
    EXPECT_EQ(a.sensorPoses, b.sensorPoses);
    EXPECT_EQ(a.posesApplied, b.posesApplied);
}

TEST(SensorData, CopiesShareTheirRecords)
{
    SensorData a = oneSampleOfEachKind(1.0);
    a.posesApplied = true;
    SensorData const b(a);
    expectSharedRecords(a, b);
    SensorData c = oneSampleOfEachKind(9.0);
    c.imuData["other"];
    c = a;
    expectSharedRecords(a, c);
    EXPECT_FALSE(c.imuData.contains("other"));
}

TEST(SensorData, CopiesHaveContainersOfTheirOwn)
{
    SensorData a = oneSampleOfEachKind(1.0);
    SensorData b(a);
    b.imuData["imu"].clear();
    b.sensorPoses.clear();
    EXPECT_EQ(a.imuData["imu"].size(), 1U);
    EXPECT_EQ(a.sensorPoses.size(), 1U);
}

TEST(SensorData, RotatingACopyLeavesTheOriginalAndItsRecords)
{
    SensorData const a = oneSampleOfEachKind(1.0);
    auto const record = a.imuData.at("imu").begin()->second;
    SensorData b(a);
    b.applyPoses();
    EXPECT_EQ(a.imuData.at("imu").begin()->second, record);
    EXPECT_NE(b.imuData.at("imu").begin()->second, record);
    EXPECT_FALSE(a.posesApplied);
    EXPECT_TRUE(b.posesApplied);
}

TEST(SensorData, AssignmentToItselfChangesNothing)
{
    SensorData data = oneSampleOfEachKind(1.0);
    SensorData const before(data);
    SensorData const& same = data;
    data = same;
    expectSharedRecords(data, before);
}

// The moved-from state is part of the contract.
// NOLINTBEGIN(bugprone-use-after-move,performance-move-const-arg)
TEST(SensorData, MovedFromIsCopied)
{
    SensorData source = oneSampleOfEachKind(1.0);
    SensorData const copy(std::move(source));
    expectSharedRecords(source, copy);
    static_assert(!std::is_polymorphic_v<SensorData>);
}
// NOLINTEND(bugprone-use-after-move,performance-move-const-arg)

TEST(SensorData, OneNameMayStandInSeveralFields)
{
    SensorData data;
    support::store(data.imuData["same"], imuSample(1.0, {1, 2, 3}));
    support::store(data.rangefinderData["same"], rangeSample(1.0, {}, {}));
    EXPECT_EQ(data.createTimedData()->at(100000000).imuData.size(), 1U);
    EXPECT_EQ(data.createTimedData()->at(100000000).rangefinderData.size(), 1U);
}

TEST(SensorData, FieldsHaveTheFixedOrder)
{
    SensorData data;
    auto& [imu, absolute, range, secondRange, status, poses, applied] = data;
    EXPECT_TRUE(&imu == &data.imuData && &absolute == &data.absolutePoseData);
    EXPECT_TRUE(&range == &data.rangefinderData && &secondRange == &data.secondRangefinderData);
    EXPECT_TRUE(&status == &data.scanningStatusData && &poses == &data.sensorPoses);
    EXPECT_TRUE(&applied == &data.posesApplied);
    SensorData::TimedData entry;
    auto& [imuAt, absoluteAt, rangeAt, secondRangeAt, statusAt] = entry;
    EXPECT_TRUE(&imuAt == &entry.imuData && &absoluteAt == &entry.absolutePoseData);
    EXPECT_TRUE(&rangeAt == &entry.rangefinderData && &secondRangeAt == &entry.secondRangefinderData);
    EXPECT_TRUE(&statusAt == &entry.scanningStatusData);
}

TEST(SensorData, StoresThatShareRecordsMayBeUsedFromDifferentThreads)
{
    SensorData rotated;
    for (int i = 0; i < 500; ++i) {
        rotated.imuData["imu"][i] = imuSample(secondsOf(i), {1, 0, 0});
    }
    rotated.sensorPoses["imu"] = {{0, 0, 0}, {0, 0, 1, 0}};
    SensorData moved(rotated);
    SensorData const kept(rotated);
    std::thread first([&] { rotated.applyPoses(); });
    std::thread second([&] { moved.modifyTime([](int64 time) { return time + 1000; }); });
    auto const view = kept.createTimedData();
    first.join();
    second.join();
    EXPECT_EQ(view->size(), 500U);
    EXPECT_EQ(view->at(7).imuData.at("imu")->getLinearAcceleration(), (MappingVector{1, 0, 0}));
    EXPECT_NEAR(rotated.imuData.at("imu").at(7)->getLinearAcceleration().x, -1, 1e-6);
    EXPECT_EQ(moved.imuData.at("imu").begin()->first, 1000);
}

} // namespace
