/// @file
/// What happens to a store when memory runs out in the middle of an operation.

#include "tests/support/FailingAllocation.h"
#include "tests/support/SensorRecords.h"

#include <roamscan/sensors/SensorData.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

namespace
{

using oV::Roamscan::SensorData;
using namespace support;

SensorData severalSensors()
{
    SensorData data;
    for (int sensor = 0; sensor < 4; ++sensor) {
        std::string const name = "sensor " + std::to_string(sensor);
        for (int i = 0; i < 50; ++i) {
            data.imuData[name][i] = imuSample(secondsOf(i), {1, 0, 0});
        }
        data.sensorPoses[name] = {{0, 0, 0}, {0, 0, 1, 0}};
    }
    return data;
}

TEST(OutOfMemory, InABodyOfApplyPosesReachesTheCallerAndLeavesTheFlagFalse)
{
    {
        SensorData warmUp = severalSensors(); // the scheduler's own threads and memory
        warmUp.applyPoses();
    }
    int failures = 0;
    for (long allocations = 0; allocations < 200; allocations += 20) {
        SensorData data = severalSensors();
        if (runsOutOfMemory(allocations, [&data] { data.applyPoses(); })) {
            ++failures;
            EXPECT_FALSE(data.posesApplied);
            for (auto const& [name, samples] : data.imuData) {
                EXPECT_EQ(samples.size(), 50U) << "the samples keep their places";
                for (auto const& [key, record] : samples) {
                    ASSERT_NE(record, nullptr);
                }
            }
        }
    }
    EXPECT_EQ(failures, 10) << "200 records do not fit into fewer allocations";
}

TEST(OutOfMemory, InCreateTimedDataLeavesTheStore)
{
    SensorData const data = severalSensors();
    EXPECT_TRUE(runsOutOfMemory(20, [&data] { (void)data.createTimedData(); }));
    EXPECT_EQ(data.imuData.size(), 4U);
    EXPECT_EQ(data.createTimedData()->size(), 50U);
}

TEST(OutOfMemory, AFailedReadReturnsNothing)
{
    std::stringstream stream;
    ASSERT_TRUE(severalSensors().write(stream));
    for (long allocations = 1; allocations < 200; allocations += 19) {
        stream.clear();
        stream.seekg(0);
        std::shared_ptr<SensorData> store;
        EXPECT_TRUE(runsOutOfMemory(allocations, [&] { store = SensorData::read(stream); }));
        EXPECT_EQ(store, nullptr);
    }
}

} // namespace
