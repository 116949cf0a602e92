#include "tests/tools/support/ToolFixture.h"
#include "tools/io/RecordingFile.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::failureOf;
using support::ToolFixture;

class SensorFileTest : public ToolFixture
{
protected:
    [[nodiscard]] std::string refusal(std::string const& bytes) const
    {
        auto const path = write("a.sensors", bytes);
        std::string const why = failureOf([&] { static_cast<void>(readSensorFile(path)); });
        auto const name = why.find("a.sensors");
        return name == std::string::npos ? why : why.substr(name);
    }
};

SensorData store()
{
    mapping::TimeStamp const time(1.5);
    mapping::Vector3<double> const zero;
    SensorData data;
    data.imuData["imu"][150'000'000] = std::make_shared<mapping::ImuData const>(time, zero, zero);
    data.rangefinderData["head"][150'000'000] =
        std::make_shared<mapping::RangefinderData const>(time, zero, mapping::TimedPointCloud());
    data.sensorPoses["head"] = {};
    return data;
}

std::string sensorBytes()
{
    std::ostringstream stream;
    writeSensors(store(), stream, "memory");
    return stream.str();
}

/// With as many samples as it takes for that many tables.
SensorData withTables(std::size_t count)
{
    SensorData data = store();
    auto& samples = data.imuData["imu"];
    auto const sample = samples.begin()->second;
    int64 tick = samples.begin()->first;
    for (std::size_t i = tableCount(data); i < count; ++i) {
        samples.emplace_hint(samples.end(), ++tick, sample);
    }
    return data;
}

} // namespace

TEST_F(SensorFileTest, TheFirstFrameIsReadAndTheRestCounted)
{
    SensorFile const one = readSensorFile(write("a.sensors", sensorBytes()));
    EXPECT_EQ(one.data->imuData.at("imu").count(150'000'000), 1U);
    EXPECT_EQ(one.bytesAfter, 0U);
    SensorFile const two = readSensorFile(write("a.sensors", sensorBytes() + sensorBytes() + "x"));
    EXPECT_EQ(two.data->rangefinderData.size(), 1U);
    EXPECT_EQ(two.bytesAfter, sensorBytes().size() + 1);
}

TEST_F(SensorFileTest, DamageIsReported)
{
    EXPECT_EQ(refusal("1234567"), "a.sensors: is too short for a sensor stream (7 bytes)");
    std::string const cut = sensorBytes().substr(0, sensorBytes().size() - 1);
    EXPECT_EQ(refusal(cut).substr(0, 43), "a.sensors: ends early or is no sensor strea");
    std::string const zeros(100, '\0');
    EXPECT_EQ(refusal(zeros).substr(0, 41), "a.sensors: is damaged or no sensor stream");
}

TEST_F(SensorFileTest, EverySensorSampleAndPoseIsATable)
{
    EXPECT_EQ(tableCount(SensorData()), 1U);
    SensorData data = store();
    EXPECT_EQ(tableCount(data), 6U);
    // These are not kept in a stream.
    data.secondRangefinderData = data.rangefinderData;
    data.scanningStatusData["status"];
    EXPECT_EQ(tableCount(data), 6U);
}

TEST_F(SensorFileTest, AFullDiskIsReported)
{
    std::ostringstream stream;
    stream.setstate(std::ios::badbit);
    EXPECT_EQ(failureOf([&] { writeSensors(store(), stream, "a"); }),
              "a: could not be written; is the disk full?");
}

TEST_F(SensorFileTest, MoreTablesThanCanBeReadBackAreNotWritten)
{
    std::ostringstream stream;
    EXPECT_EQ(failureOf([&] { writeSensors(withTables(largestTableCount + 1), stream, "long"); }),
              "long: 1000001 tables are more than the 1000000 with which a sensor stream can be read back");
    EXPECT_EQ(stream.str(), "");
    // One fewer is no matter of tables any more; the stream that fails spares the writing of all of them.
    stream.setstate(std::ios::badbit);
    EXPECT_EQ(failureOf([&] { writeSensors(withTables(largestTableCount), stream, "long"); }),
              "long: could not be written; is the disk full?");
}
