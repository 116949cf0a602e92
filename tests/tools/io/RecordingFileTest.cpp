#include "tools/io/RecordingFile.h"

#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <variant>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::failureOf;
using support::ToolFixture;

class RecordingFileTest : public ToolFixture
{
protected:
    [[nodiscard]] bool isTrajectory(TrajectoryData const& data) const
    {
        std::ostringstream stream;
        writeTrajectory(data, stream, "memory");
        return std::holds_alternative<TrajectoryFile>(readRecordingFile(write("a", stream.str())));
    }

    [[nodiscard]] bool isSensors(SensorData const& data) const
    {
        std::ostringstream stream;
        writeSensors(data, stream, "memory");
        return std::holds_alternative<SensorFile>(readRecordingFile(write("a", stream.str())));
    }
};

} // namespace

TEST_F(RecordingFileTest, RecognisesATrajectoryByItsContent)
{
    TrajectoryData nodes;
    nodes.nodes.emplace_back(0.0);
    EXPECT_TRUE(isTrajectory(nodes));
    nodes.nodes.emplace_back(1400000000.25, TrafoT<double>::Translation({1.25, -3.1, 1e-300}));
    EXPECT_TRUE(isTrajectory(nodes));
    for (Device const device : {Device::Device0, Device::Device1, Device::Device2, Device::Device3}) {
        TrajectoryData positions;
        positions.devicePositions[device] = TrafoT<double>::Identity();
        EXPECT_TRUE(isTrajectory(positions));
    }
}

TEST_F(RecordingFileTest, RecognisesASensorStreamByAnyContent)
{
    mapping::Vector3<double> const zero;
    SensorData inertial;
    for (int i = 0; i < 100; ++i) {
        inertial.imuData["imu"][i] =
            std::make_shared<mapping::ImuData const>(mapping::TimeStamp(1e-8 * i), zero, zero);
    }
    EXPECT_TRUE(isSensors(inertial));
    inertial.imuData["other"] = inertial.imuData["imu"]; // enough bytes to pass for device positions
    EXPECT_TRUE(isSensors(inertial));
    SensorData ranges;
    ranges.rangefinderData["head"][0] = std::make_shared<mapping::RangefinderData const>(
        mapping::TimeStamp(0.0), zero, mapping::TimedPointCloud());
    EXPECT_TRUE(isSensors(ranges));
    SensorData poses;
    poses.sensorPoses["head"] = {};
    EXPECT_TRUE(isSensors(poses));
    SensorData silent; // a sensor that recorded nothing is in the stream, but not in the store read back
    silent.rangefinderData["head"];
    EXPECT_TRUE(isSensors(silent));
}

TEST_F(RecordingFileTest, NothingAtAllCountsAsATrajectory)
{
    EXPECT_TRUE(isTrajectory(TrajectoryData()));
    EXPECT_FALSE(isSensors(SensorData()));
}

TEST_F(RecordingFileTest, AFileOfNeitherKindIsReported)
{
    auto const path = write("a", std::string(100, '\0'));
    EXPECT_EQ(failureOf([&] { static_cast<void>(readRecordingFile(path)); }),
              path.string() + ": is damaged, or neither a trajectory nor a sensor stream");
}
