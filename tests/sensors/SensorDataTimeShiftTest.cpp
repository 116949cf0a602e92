#include "tests/support/SensorRecords.h"

#include <roamscan/sensors/SensorData.h>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <vector>

namespace
{

using oV::Roamscan::SensorData;
using namespace support;

int64 same(int64 time)
{
    return time;
}

TEST(ModifyTime, TheIdentityKeepsKeysAndTimesAndMakesNewRecords)
{
    SensorData data = oneSampleOfEachKind(1.5);
    SensorData const before(data);
    data.modifyTime(same);
    EXPECT_EQ(data.imuData.at("imu").begin()->first, 150000000);
    auto const& record = data.imuData.at("imu").begin()->second;
    EXPECT_NE(record, before.imuData.at("imu").begin()->second);
    EXPECT_EQ(record->getTimeStamp(), mapping::TimeStamp(1.5));
    EXPECT_EQ(before.imuData.at("imu").begin()->second->getTimeStamp(), mapping::TimeStamp(1.5));
}

TEST(ModifyTime, AConstantMovesEveryKindAndLeavesTheRestOfTheRecords)
{
    SensorData data = oneSampleOfEachKind(1.5);
    data.modifyTime([](int64 time) { return time + 50000000; });

    auto const& [imuKey, imu] = *data.imuData.at("imu").begin();
    EXPECT_EQ(imuKey, 200000000);
    EXPECT_EQ(imu->getTimeStamp(), mapping::TimeStamp(2.0));
    EXPECT_EQ(imu->getLinearAcceleration(), (MappingVector{1, 2, 3}));
    EXPECT_EQ(imu->getAngularVelocity(), (MappingVector{4, 5, 6}));
    ASSERT_TRUE(imu->hasMagneticField());
    EXPECT_EQ(imu->getMagneticField(), (MappingVector{7, 8, 9}));

    auto const& [rangeKey, range] = *data.rangefinderData.at("lid").begin();
    EXPECT_EQ(rangeKey, 200000000);
    EXPECT_EQ(range->getTimeStamp(), mapping::TimeStamp(2.0));
    EXPECT_EQ(range->getOrigin(), (MappingVector{1, 2, 3}));
    EXPECT_EQ(range->getRanges().get(),
              (std::vector<mapping::TimedRangefinderPoint>{{{1, 2, 3}, 0.25F, {{1, 2, 3}}}}));

    auto const& [secondKey, second] = *data.secondRangefinderData.at("lid2").begin();
    EXPECT_EQ(secondKey, 200000000);
    EXPECT_EQ(second->getTimeStamp(), mapping::TimeStamp(2.0));
    EXPECT_EQ(second->getOrigin(), (MappingVector{4, 5, 6}));
    EXPECT_EQ(second->getRanges().get(),
              (std::vector<mapping::TimedRangefinderPoint>{{{4, 5, 6}, 0.5F, {{4, 5, 6}}}}));

    auto const& [absoluteKey, absolute] = *data.absolutePoseData.at("gps").begin();
    EXPECT_EQ(absoluteKey, 200000000);
    EXPECT_EQ(absolute->getTimeStamp(), mapping::TimeStamp(2.0));
    EXPECT_EQ(absolute->getPose(), absoluteSample(0)->getPose());
    EXPECT_EQ(absolute->getTranslationUncertainty(), absoluteSample(0)->getTranslationUncertainty());
    EXPECT_EQ(absolute->getRotationUncertainty(), absoluteSample(0)->getRotationUncertainty());

    auto const& [statusKey, status] = *data.scanningStatusData.at("status").begin();
    EXPECT_EQ(statusKey, 200000000);
    EXPECT_EQ(status->getTimeStamp(), mapping::TimeStamp(2.0));
    EXPECT_TRUE(status->getStationary());
    EXPECT_FALSE(status->getStartNewSubmap());
}

TEST(ModifyTime, ASampleWithoutMagneticFieldGetsNone)
{
    SensorData data;
    store(data.imuData["imu"], imuSample(1.0, {}));
    data.modifyTime(same);
    EXPECT_FALSE(data.imuData.at("imu").begin()->second->hasMagneticField());
}

TEST(ModifyTime, PosesAndTheirFlagStay)
{
    SensorData data = oneSampleOfEachKind(1.5);
    data.posesApplied = true;
    auto const poses = data.sensorPoses;
    data.modifyTime(same);
    EXPECT_EQ(data.sensorPoses, poses);
    EXPECT_TRUE(data.posesApplied);
}

TEST(ModifyTime, KeyAndTimeStampAreMappedIndependently)
{
    SensorData data;
    data.imuData["imu"][5] = imuSample(1.0, {});
    data.modifyTime([](int64 time) { return 2 * time; });
    auto const& [key, record] = *data.imuData.at("imu").begin();
    EXPECT_EQ(key, 10);
    EXPECT_EQ(record->getTimeStamp(), mapping::TimeStamp(2.0));
}

TEST(ModifyTime, TimeStampsGoThroughTicks)
{
    SensorData data;
    store(data.imuData["imu"], imuSample(1.0000000049, {}));
    data.modifyTime(same);
    EXPECT_EQ(data.imuData.at("imu").begin()->second->getTimeStamp(), mapping::TimeStamp(1.0));
}

TEST(ModifyTime, SensorsWithoutSamplesVanish)
{
    SensorData data;
    data.imuData["empty"];
    data.rangefinderData["empty"];
    data.secondRangefinderData["empty"];
    data.absolutePoseData["empty"];
    data.scanningStatusData["empty"];
    data.modifyTime(same);
    EXPECT_TRUE(data.imuData.empty() && data.rangefinderData.empty() && data.secondRangefinderData.empty());
    EXPECT_TRUE(data.absolutePoseData.empty() && data.scanningStatusData.empty());
}

TEST(ModifyTime, OfSamplesAtOneNewTickTheOneWithTheGreatestOldKeyIsKept)
{
    SensorData data;
    for (int i = 0; i < 3000; ++i) {
        data.imuData["imu"][i] = imuSample(secondsOf(i), {static_cast<double>(i), 0, 0});
    }
    data.modifyTime([](int64 time) { return time / 1000; });
    auto const& samples = data.imuData.at("imu");
    ASSERT_EQ(samples.size(), 3U);
    for (auto const& [key, record] : samples) {
        EXPECT_EQ(record->getLinearAcceleration().x, static_cast<double>(1000 * key + 999));
    }
}

TEST(ModifyTime, FunctionThatReversesTimeReordersTheSamples)
{
    SensorData data;
    for (int i = 0; i < 10; ++i) {
        data.imuData["imu"][i] = imuSample(secondsOf(i), {static_cast<double>(i), 0, 0});
    }
    data.modifyTime([](int64 time) { return -time; });
    EXPECT_EQ(data.imuData.at("imu").begin()->first, -9);
    EXPECT_EQ(data.imuData.at("imu").begin()->second->getLinearAcceleration().x, 9);
    EXPECT_EQ(data.imuData.at("imu").rbegin()->first, 0);
}

TEST(ModifyTime, AnEmptyFunctionOnAStoreWithoutSamplesDoesNothing)
{
    SensorData data;
    EXPECT_NO_THROW(data.modifyTime(std::function<int64(int64)>()));
    data.imuData["empty"];
    EXPECT_NO_THROW(data.modifyTime(std::function<int64(int64)>()));
    EXPECT_TRUE(data.imuData.empty());
}

TEST(ModifyTime, EmptyFunctionThrowsAtTheFirstSample)
{
    SensorData data;
    data.imuData["empty"];
    store(data.rangefinderData["lid"], rangeSample(1.0, {}, {}));
    data.absolutePoseData["empty"];
    EXPECT_THROW(data.modifyTime(std::function<int64(int64)>()), std::bad_function_call);
    EXPECT_TRUE(data.imuData.empty()) << "what comes before is done";
    EXPECT_EQ(data.rangefinderData.at("lid").size(), 1U);
    EXPECT_TRUE(data.absolutePoseData.contains("empty")) << "what comes after is as before";
}

TEST(ModifyTime, FunctionThatThrowsLeavesItsMemberAndLaterOnesUnchanged)
{
    // The members come in the order imu, rangefinder, second rangefinder, absolute pose, scanning status.
    for (int failing = 0; failing < 5; ++failing) {
        SensorData data = oneSampleOfEachKind(1.0);
        SensorData const before(data);
        int calls = 0;
        EXPECT_THROW(data.modifyTime([&](int64 time) {
            if (calls++ >= 2 * failing) // two calls a sample
            {
                throw std::runtime_error("broken");
            }
            return time + 1;
        }),
                     std::runtime_error);
        auto const done = [failing](int member, auto const& samples) {
            EXPECT_EQ(samples.begin()->first, 100000000 + (member < failing ? 1 : 0))
                << member << " of " << failing;
        };
        done(0, data.imuData.at("imu"));
        done(1, data.rangefinderData.at("lid"));
        done(2, data.secondRangefinderData.at("lid2"));
        done(3, data.absolutePoseData.at("gps"));
        done(4, data.scanningStatusData.at("status"));
        if (failing == 0) {
            EXPECT_EQ(data.imuData.at("imu").begin()->second, before.imuData.at("imu").begin()->second);
        }
    }
}

TEST(ModifyTime, EveryKindGetsNewRecordsAndCopiesKeepTheOldOnes)
{
    SensorData data = oneSampleOfEachKind(1.5);
    SensorData const before(data);
    data.modifyTime([](int64 time) { return time + 1; });
    auto const expectReplaced = [](auto const& now, auto const& then) {
        EXPECT_NE(now.begin()->second, then.begin()->second);
        EXPECT_EQ(then.begin()->first, 150000000);
        EXPECT_EQ(then.begin()->second->getTimeStamp(), mapping::TimeStamp(1.5));
    };
    expectReplaced(data.imuData.at("imu"), before.imuData.at("imu"));
    expectReplaced(data.rangefinderData.at("lid"), before.rangefinderData.at("lid"));
    expectReplaced(data.secondRangefinderData.at("lid2"), before.secondRangefinderData.at("lid2"));
    expectReplaced(data.absolutePoseData.at("gps"), before.absolutePoseData.at("gps"));
    expectReplaced(data.scanningStatusData.at("status"), before.scanningStatusData.at("status"));
}

} // namespace
