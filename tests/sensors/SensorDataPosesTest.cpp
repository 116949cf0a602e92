#include "tests/support/SensorRecords.h"

#include <roamscan/sensors/SensorData.h>
#include <roamscan/time/TrafoT.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace
{

using oV::Roamscan::SensorData;
using namespace support;

mapping::Rigid3<float> quarterTurn()
{
    float const half = std::sqrt(0.5F);
    return {{1, 2, 3}, {0, 0, half, half}};
}

// Of length two, half a turn about z: x = 0, y = 0, z = 2, w = 0.
mapping::Rigid3<float> longHalfTurn()
{
    return {{0, 0, 0}, {0, 0, 2, 0}};
}

std::vector<mapping::TimedRangefinderPoint> const onePoint{{{1, 0, 0}, 0.25F, {{1, 2, 3}}}};

void expectNear(mapping::Vector3<double> const& actual, double x, double y, double z)
{
    EXPECT_NEAR(actual.x, x, 1e-6);
    EXPECT_NEAR(actual.y, y, 1e-6);
    EXPECT_NEAR(actual.z, z, 1e-6);
}

void expectNear(mapping::Vector3<float> const& actual, double x, double y, double z)
{
    expectNear(mapping::Vector3<double>{actual.x, actual.y, actual.z}, x, y, z);
}

TEST(ApplyPoses, WithoutPosesSetsTheFlagAndTouchesNothing)
{
    SensorData data = oneSampleOfEachKind(1.0);
    data.sensorPoses.clear();
    SensorData const before(data);
    data.applyPoses();
    EXPECT_TRUE(data.posesApplied);
    EXPECT_EQ(data.imuData.at("imu").begin()->second, before.imuData.at("imu").begin()->second);
    EXPECT_EQ(data.rangefinderData.at("lid").begin()->second,
              before.rangefinderData.at("lid").begin()->second);
}

TEST(ApplyPoses, RotatesRangefinderPointsAndLeavesTheOrigin)
{
    SensorData data;
    store(data.rangefinderData["lid"], rangeSample(1.0, {4, 5, 6}, onePoint));
    data.sensorPoses["lid"] = quarterTurn();
    data.applyPoses();
    auto const& [key, record] = *data.rangefinderData.at("lid").begin();
    EXPECT_EQ(key, 100000000);
    EXPECT_EQ(record->getTimeStamp(), mapping::TimeStamp(1.0));
    EXPECT_EQ(record->getOrigin(), (MappingVector{4, 5, 6}));
    auto const& point = record->getRanges().get().at(0);
    expectNear(point.position, 0, 1, 0);
    EXPECT_EQ(point.time, 0.25F);
    EXPECT_TRUE(point.auxiliaries.empty()) << "auxiliaries are dropped";
}

TEST(ApplyPoses, RotatesInertialReadingsAndDropsTheMagneticField)
{
    SensorData data;
    store(data.imuData["imu"], imuSampleWithField(1.0, {1, 0, 0}, {0, 1, 0}, {7, 8, 9}));
    data.sensorPoses["imu"] = quarterTurn();
    data.applyPoses();
    auto const& [key, record] = *data.imuData.at("imu").begin();
    EXPECT_EQ(key, 100000000);
    EXPECT_EQ(record->getTimeStamp(), mapping::TimeStamp(1.0));
    expectNear(record->getLinearAcceleration(), 0, 1, 0);
    expectNear(record->getAngularVelocity(), -1, 0, 0);
    EXPECT_FALSE(record->hasMagneticField());
}

TEST(ApplyPoses, ReplacesRecordsAndLeavesTheOldOnes)
{
    SensorData data;
    store(data.imuData["imu"], imuSample(1.0, {1, 0, 0}));
    auto const old = data.imuData["imu"].begin()->second;
    data.sensorPoses["imu"] = quarterTurn();
    data.applyPoses();
    EXPECT_NE(data.imuData["imu"].begin()->second, old);
    EXPECT_EQ(old->getLinearAcceleration(), (MappingVector{1, 0, 0}));
}

TEST(ApplyPoses, TheSecondCallDoesNothing)
{
    SensorData data;
    store(data.imuData["imu"], imuSample(1.0, {1, 0, 0}));
    data.sensorPoses["imu"] = quarterTurn();
    data.applyPoses();
    auto const once = data.imuData["imu"].begin()->second;
    data.applyPoses();
    EXPECT_EQ(data.imuData["imu"].begin()->second, once);
}

TEST(ApplyPoses, DoesNothingWhereTheFlagIsSetAlready)
{
    SensorData data = oneSampleOfEachKind(1.0);
    data.posesApplied = true;
    auto const record = data.imuData["imu"].begin()->second;
    data.applyPoses();
    EXPECT_EQ(data.imuData["imu"].begin()->second, record);
}

TEST(ApplyPoses, OnlyTheFirstMemberThatHasTheNameIsRotated)
{
    SensorData data;
    for (auto const& name : {"in all", "in both ranges", "in the second"}) {
        store(data.secondRangefinderData[name], rangeSample(1.0, {}, onePoint));
        data.sensorPoses[name] = quarterTurn();
    }
    store(data.rangefinderData["in all"], rangeSample(1.0, {}, onePoint));
    store(data.rangefinderData["in both ranges"], rangeSample(1.0, {}, onePoint));
    store(data.imuData["in all"], imuSample(1.0, {1, 0, 0}));
    SensorData const before(data);
    data.applyPoses();

    auto const rotated = [](auto const& now, auto const& then, char const* name) {
        return now.at(name).begin()->second != then.at(name).begin()->second;
    };
    EXPECT_TRUE(rotated(data.imuData, before.imuData, "in all"));
    EXPECT_FALSE(rotated(data.rangefinderData, before.rangefinderData, "in all"));
    EXPECT_FALSE(rotated(data.secondRangefinderData, before.secondRangefinderData, "in all"));
    EXPECT_TRUE(rotated(data.rangefinderData, before.rangefinderData, "in both ranges"));
    EXPECT_FALSE(rotated(data.secondRangefinderData, before.secondRangefinderData, "in both ranges"));
    EXPECT_TRUE(rotated(data.secondRangefinderData, before.secondRangefinderData, "in the second"));
}

TEST(ApplyPoses, NameWithoutSamplesStillHidesTheMembersAfterIt)
{
    SensorData data;
    data.imuData["same"];
    store(data.rangefinderData["same"], rangeSample(1.0, {}, onePoint));
    data.sensorPoses["same"] = quarterTurn();
    auto const record = data.rangefinderData["same"].begin()->second;
    data.applyPoses();
    EXPECT_EQ(data.rangefinderData["same"].begin()->second, record);
}

TEST(ApplyPoses, PoseOfAnUnknownSensorIsIgnored)
{
    SensorData data;
    data.sensorPoses["nobody"] = quarterTurn();
    data.applyPoses();
    EXPECT_TRUE(data.posesApplied);
    EXPECT_TRUE(data.imuData.empty());
    EXPECT_EQ(data.sensorPoses.size(), 1U);
}

TEST(ApplyPoses, SensorWithoutPoseIsUnchanged)
{
    SensorData data = oneSampleOfEachKind(1.0);
    auto const record = data.rangefinderData["lid"].begin()->second;
    data.applyPoses();
    EXPECT_EQ(data.rangefinderData["lid"].begin()->second, record);
    EXPECT_TRUE(data.posesApplied);
}

TEST(ApplyPoses, AbsolutePosesAndScanningStatusAreNeverRotated)
{
    SensorData data = oneSampleOfEachKind(1.0);
    SensorData const before(data);
    data.sensorPoses["gps"] = quarterTurn();
    data.sensorPoses["status"] = quarterTurn();
    data.applyPoses();
    EXPECT_EQ(data.absolutePoseData["gps"].begin()->second,
              before.absolutePoseData.at("gps").begin()->second);
    EXPECT_EQ(data.scanningStatusData["status"].begin()->second,
              before.scanningStatusData.at("status").begin()->second);
}

TEST(ApplyPoses, NonUnitQuaternionScalesPointsButNotInertialReadings)
{
    SensorData data;
    store(data.rangefinderData["lid"], rangeSample(1.0, {}, onePoint));
    store(data.imuData["imu"], imuSample(1.0, {1, 0, 0}));
    data.sensorPoses["lid"] = longHalfTurn();
    data.sensorPoses["imu"] = longHalfTurn();
    data.applyPoses();
    auto const& position = data.rangefinderData["lid"].begin()->second->getRanges().get().at(0).position;
    EXPECT_EQ(position, (mapping::Vector3<float>{-7, 0, 0}));
    expectNear(data.imuData["imu"].begin()->second->getLinearAcceleration(), -1, 0, 0);
}

TEST(ApplyPoses, PointsAreRotatedInSinglePrecisionByTheCrossProductForm)
{
    SensorData data;
    mapping::Rigid3<float> const pose{{0, 0, 0}, {0.1F, -0.2F, 0.3F, 0.9F}};
    mapping::Vector3<float> const p{1.1F, -2.2F, 3.3F};
    store(data.rangefinderData["lid"], rangeSample(1.0, {}, {{p, 0, {}}}));
    data.sensorPoses["lid"] = pose;
    data.applyPoses();

    auto const& v = pose.rotation;
    auto const cross = [&v](mapping::Vector3<float> const& b) {
        return mapping::Vector3<float>{v.y * b.z - v.z * b.y, v.z * b.x - v.x * b.z, v.x * b.y - v.y * b.x};
    };
    auto t = cross(p);
    t = {t.x + t.x, t.y + t.y, t.z + t.z};
    auto const u = cross(t);
    mapping::Vector3<float> const expected{
        p.x + v.w * t.x + u.x, p.y + v.w * t.y + u.y, p.z + v.w * t.z + u.z};
    EXPECT_EQ(data.rangefinderData["lid"].begin()->second->getRanges().get().at(0).position, expected);
}

TEST(ApplyPoses, TheInertialRotationIsComputedInSinglePrecision)
{
    SensorData data;
    double const large = 1e8;
    store(data.imuData["imu"], imuSample(1.0, {large, 0, 0}));
    double const angle = 0.123456789;
    data.sensorPoses["imu"] = {
        {0, 0, 0}, {0, 0, static_cast<float>(std::sin(angle / 2)), static_cast<float>(std::cos(angle / 2))}};
    data.applyPoses();
    auto const& rotated = data.imuData["imu"].begin()->second->getLinearAcceleration();
    EXPECT_NE(rotated.x, large * std::cos(angle));
    EXPECT_NEAR(rotated.x, large * std::cos(angle), 1e-6 * large);
    EXPECT_EQ(rotated.x / large, static_cast<double>(static_cast<float>(rotated.x / large)))
        << "an element of a single precision matrix, widened";
}

TEST(ApplyPoses, ManySensorsAreRotatedAtOnce)
{
    SensorData data;
    for (int sensor = 0; sensor < 16; ++sensor) {
        std::string const name = "sensor " + std::to_string(sensor);
        for (int i = 0; i < 200; ++i) {
            if (sensor % 2 == 0) {
                data.imuData[name][i] = imuSample(secondsOf(i), {1, 0, 0});
            } else {
                data.rangefinderData[name][i] = rangeSample(secondsOf(i), {}, onePoint);
            }
        }
        data.sensorPoses[name] = quarterTurn();
    }
    SensorData const before(data);
    data.applyPoses();
    for (auto const& [name, samples] : data.imuData) {
        ASSERT_EQ(samples.size(), 200U);
        for (auto const& [key, record] : samples) {
            expectNear(record->getLinearAcceleration(), 0, 1, 0);
        }
    }
    for (auto const& [name, samples] : data.rangefinderData) {
        for (auto const& [key, record] : samples) {
            expectNear(record->getRanges().get().at(0).position, 0, 1, 0);
        }
    }
    EXPECT_EQ(before.imuData.at("sensor 0").at(0)->getLinearAcceleration(), (MappingVector{1, 0, 0}));
}

TEST(ApplyPoses, InertialRotationIsTheNearestToTheUnnormalisedQuaternionsMatrix)
{
    // Of x = 0, y = 0, z = 2, w = 2 the matrix has the columns (-7, 8) and (-8, -7). Brought to unit length
    // first, the quaternion would give a quarter turn.
    SensorData data;
    store(data.imuData["imu"], imuSample(1.0, {1, 0, 0}, {0, 1, 0}));
    data.sensorPoses["imu"] = {{0, 0, 0}, {0, 0, 2, 2}};
    data.applyPoses();
    auto const& record = *data.imuData["imu"].begin()->second;
    double const length = std::sqrt(113.0);
    expectNear(record.getLinearAcceleration(), -7 / length, 8 / length, 0);
    expectNear(record.getAngularVelocity(), -8 / length, -7 / length, 0);
}

TEST(ApplyPoses, InertialReadingsAreRotatedInDoublePrecision)
{
    SensorData data;
    store(data.imuData["imu"], imuSample(1.0, {0.1, 0.2, 0.3}, {0.4, 0.5, 0.6}));
    data.sensorPoses["imu"] = {{1, 2, 3}, {0, 0, 0, 1}};
    data.applyPoses();
    auto const& record = *data.imuData["imu"].begin()->second;
    EXPECT_EQ(record.getLinearAcceleration(), (MappingVector{0.1, 0.2, 0.3}));
    EXPECT_EQ(record.getAngularVelocity(), (MappingVector{0.4, 0.5, 0.6}));
}

TEST(ApplyPoses, TheSecondRangeSetIsRotatedLikeTheFirstAndPointsKeepTheirOrder)
{
    SensorData data;
    store(data.secondRangefinderData["lid"],
          rangeSample(1.0, {4, 5, 6}, {{{1, 0, 0}, 1, {{1, 2, 3}}}, {{0, 1, 0}, 2, {}}, {{0, 0, 1}, 3, {}}}));
    data.sensorPoses["lid"] = quarterTurn();
    data.applyPoses();
    auto const& [key, record] = *data.secondRangefinderData["lid"].begin();
    EXPECT_EQ(key, 100000000);
    EXPECT_EQ(record->getOrigin(), (MappingVector{4, 5, 6}));
    auto const& points = record->getRanges().get();
    ASSERT_EQ(points.size(), 3U);
    expectNear(points[0].position, 0, 1, 0);
    expectNear(points[1].position, -1, 0, 0);
    expectNear(points[2].position, 0, 0, 1);
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(points[i].time, static_cast<float>(i + 1));
        EXPECT_TRUE(points[i].auxiliaries.empty());
    }
}

} // namespace
