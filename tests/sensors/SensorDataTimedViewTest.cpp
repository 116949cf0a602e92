#include "tests/support/SensorRecords.h"

#include <roamscan/sensors/SensorData.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace
{

using oV::Roamscan::SensorData;
using namespace support;

TEST(TimedView, OfAnEmptyStoreIsAnEmptyMap)
{
    auto const view = SensorData().createTimedData();
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(view->empty());
}

TEST(TimedView, SamplesOfTwoSensorsAtOneTickShareAnEntry)
{
    SensorData data;
    data.imuData["a"][7] = imuSample(0, {1, 0, 0});
    data.imuData["b"][7] = imuSample(0, {2, 0, 0});
    auto const view = data.createTimedData();
    ASSERT_EQ(view->size(), 1U);
    EXPECT_EQ(view->at(7).imuData.size(), 2U);
    EXPECT_EQ(view->at(7).imuData.at("a"), data.imuData["a"][7]);
    EXPECT_EQ(view->at(7).imuData.at("b"), data.imuData["b"][7]);
}

TEST(TimedView, SamplesOfTwoKindsAtOneTickAreInSeparateMaps)
{
    SensorData data;
    data.imuData["a"][7] = imuSample(0, {});
    data.rangefinderData["a"][7] = rangeSample(0, {}, {});
    auto const view = data.createTimedData();
    ASSERT_EQ(view->size(), 1U);
    EXPECT_EQ(view->at(7).imuData.size(), 1U);
    EXPECT_EQ(view->at(7).rangefinderData.size(), 1U);
    EXPECT_TRUE(view->at(7).secondRangefinderData.empty());
}

TEST(TimedView, EveryKindHasItsOwnMapIncludingTheTwoRangeSets)
{
    SensorData data = oneSampleOfEachKind(1.0);
    data.secondRangefinderData["lid"][100000000] = rangeSample(1.0, {}, {});
    auto const view = data.createTimedData();
    ASSERT_EQ(view->size(), 1U);
    auto const& entry = view->at(100000000);
    EXPECT_EQ(entry.imuData.at("imu"), data.imuData["imu"].begin()->second);
    EXPECT_EQ(entry.absolutePoseData.at("gps"), data.absolutePoseData["gps"].begin()->second);
    EXPECT_EQ(entry.rangefinderData.at("lid"), data.rangefinderData["lid"].begin()->second);
    EXPECT_EQ(entry.secondRangefinderData.at("lid"), data.secondRangefinderData["lid"].begin()->second);
    EXPECT_EQ(entry.secondRangefinderData.at("lid2"), data.secondRangefinderData["lid2"].begin()->second);
    EXPECT_EQ(entry.scanningStatusData.at("status"), data.scanningStatusData["status"].begin()->second);
    EXPECT_EQ(entry.imuData.size(), 1U);
    EXPECT_EQ(entry.rangefinderData.size(), 1U);
}

TEST(TimedView, SamplesOneTickApartAreInSeparateEntries)
{
    SensorData data;
    data.imuData["a"][7] = imuSample(0, {});
    data.imuData["b"][8] = imuSample(0, {});
    EXPECT_EQ(data.createTimedData()->size(), 2U);
}

TEST(TimedView, SensorWithoutSamplesIsAbsent)
{
    SensorData data;
    data.imuData["a"];
    data.imuData["b"][8] = imuSample(0, {});
    auto const view = data.createTimedData();
    EXPECT_EQ(view->size(), 1U);
    EXPECT_FALSE(view->at(8).imuData.contains("a"));
}

TEST(TimedView, UsesTheKeysOfTheStoreNotTheTimesOfTheRecords)
{
    SensorData data;
    data.imuData["a"][-5] = imuSample(1.0, {});
    EXPECT_EQ(data.createTimedData()->begin()->first, -5);
}

TEST(TimedView, OutlivesTheStoreAndItsChanges)
{
    std::shared_ptr<std::map<int64, SensorData::TimedData>> before;
    std::shared_ptr<mapping::ImuData const> record;
    {
        SensorData data = oneSampleOfEachKind(1.0);
        record = data.imuData["imu"].begin()->second;
        before = data.createTimedData();
        data.applyPoses();
        data.modifyTime([](int64 time) { return time + 1; });
        auto const after = data.createTimedData();
        EXPECT_EQ(after->begin()->first, 100000001);
        EXPECT_NE(after->begin()->second.imuData.at("imu"), record);
    }
    EXPECT_EQ(before->begin()->first, 100000000);
    EXPECT_EQ(before->begin()->second.imuData.at("imu"), record);
}

TEST(TimedView, IsTheSameAsInsertingEverySampleByItsKey)
{
    std::mt19937_64 generator(100);
    for (int round = 0; round < 50; ++round) {
        SensorData data;
        std::map<int64, SensorData::TimedData> expected;
        for (int i = 0; i < 300; ++i) {
            auto const key = static_cast<int64>(generator() % 100) - 50;
            std::string const name(1, static_cast<char>('a' + generator() % 5));
            if (generator() % 2 == 0) {
                data.imuData[name][key] = imuSample(0, {});
                expected[key].imuData[name] = data.imuData[name][key];
            } else {
                data.rangefinderData[name][key] = rangeSample(0, {}, {});
                expected[key].rangefinderData[name] = data.rangefinderData[name][key];
            }
        }
        auto const view = data.createTimedData();
        ASSERT_EQ(view->size(), expected.size());
        for (auto const& [key, entry] : expected) {
            ASSERT_EQ(view->at(key).imuData, entry.imuData);
            ASSERT_EQ(view->at(key).rangefinderData, entry.rangefinderData);
        }
    }
}

TEST(TimedView, EachCallMakesANewOne)
{
    SensorData const data = oneSampleOfEachKind(1.0);
    auto const first = data.createTimedData();
    auto const second = data.createTimedData();
    EXPECT_NE(first, second);
    first->clear();
    EXPECT_EQ(second->size(), 1U);
}

TEST(TimedView, PosesAndTheirFlagAreIgnored)
{
    SensorData data = oneSampleOfEachKind(1.0);
    data.sensorPoses["nobody"] = {};
    data.posesApplied = true;
    auto const view = data.createTimedData();
    ASSERT_EQ(view->size(), 1U);
    EXPECT_EQ(view->at(100000000).imuData.at("imu"), data.imuData["imu"].begin()->second);
    EXPECT_FALSE(view->at(100000000).imuData.contains("nobody"));
}

TEST(TimedView, OnlyTheMapsOfKindsThatHaveASampleAtTheTickAreFilled)
{
    SensorData data;
    data.imuData["a"][1] = imuSample(0, {});
    data.absolutePoseData["a"][2] = absoluteSample(0);
    data.rangefinderData["a"][3] = rangeSample(0, {}, {});
    data.secondRangefinderData["a"][4] = rangeSample(0, {}, {});
    data.scanningStatusData["a"][5] = statusSample(0);
    auto const view = data.createTimedData();
    ASSERT_EQ(view->size(), 5U);
    for (auto const& [key, entry] : *view) {
        EXPECT_EQ(entry.imuData.size(), key == 1 ? 1U : 0U);
        EXPECT_EQ(entry.absolutePoseData.size(), key == 2 ? 1U : 0U);
        EXPECT_EQ(entry.rangefinderData.size(), key == 3 ? 1U : 0U);
        EXPECT_EQ(entry.secondRangefinderData.size(), key == 4 ? 1U : 0U);
        EXPECT_EQ(entry.scanningStatusData.size(), key == 5 ? 1U : 0U);
    }
}

TEST(TimedView, ManyThreadsMayMakeTheirOwnFromOneStore)
{
    SensorData data;
    for (int64 key = 0; key < 200; ++key) {
        data.imuData["a"][key] = imuSample(0, {});
        data.rangefinderData["b"][key * 3] = rangeSample(0, {}, {});
    }
    std::vector<std::size_t> sizes(4, 0);
    std::vector<std::thread> threads;
    for (std::size_t& size : sizes) {
        threads.emplace_back([&data, &size] { size = data.createTimedData()->size(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    // 0 to 199, and of the multiples of 3 up to 597 those from 201 on.
    EXPECT_EQ(sizes, std::vector<std::size_t>(4, 333));
}

} // namespace
