#include "tests/tools/support/ToolFixture.h"
#include "tools/io/RecordingFile.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::failureOf;
using support::ToolFixture;

class TrajectoryFileTest : public ToolFixture
{
protected:
    [[nodiscard]] std::string refusal(std::string const& bytes) const
    {
        auto const path = write("a.trajectory", bytes);
        std::string const why = failureOf([&] { static_cast<void>(readTrajectoryFile(path)); });
        auto const name = why.find("a.trajectory");
        return name == std::string::npos ? why : why.substr(name);
    }
};

std::string trajectoryBytes()
{
    TrajectoryData data;
    data.nodes.emplace_back(1.0);
    data.devicePositions[Device::Device2] = TrafoT<double>::Identity();
    std::ostringstream stream;
    writeTrajectory(data, stream, "memory");
    return stream.str();
}

} // namespace

TEST_F(TrajectoryFileTest, TheFirstFrameIsReadAndTheRestCounted)
{
    TrajectoryFile const one = readTrajectoryFile(write("a.trajectory", trajectoryBytes()));
    EXPECT_EQ(one.data->nodes.size(), 1U);
    EXPECT_EQ(one.bytesAfter, 0U);
    TrajectoryFile const two =
        readTrajectoryFile(write("a.trajectory", trajectoryBytes() + trajectoryBytes() + "x"));
    EXPECT_EQ(two.data->nodes.size(), 1U);
    EXPECT_EQ(two.bytesAfter, trajectoryBytes().size() + 1);
}

TEST_F(TrajectoryFileTest, DamageIsReported)
{
    EXPECT_EQ(refusal(""), "a.trajectory: is too short for a trajectory stream (0 bytes)");
    EXPECT_EQ(refusal(trajectoryBytes().substr(0, 7)),
              "a.trajectory: is too short for a trajectory stream (7 bytes)");
    std::string const cut = trajectoryBytes().substr(0, trajectoryBytes().size() - 1);
    EXPECT_EQ(refusal(cut).substr(0, 46), "a.trajectory: ends early or is no trajectory s");
    EXPECT_EQ(refusal(std::string(8, '\xff') + "x").substr(0, 46),
              "a.trajectory: ends early or is no trajectory s");
    std::string const zeros(100, '\0');
    EXPECT_EQ(refusal(zeros).substr(0, 45), "a.trajectory: is damaged or no trajectory str");
}

TEST_F(TrajectoryFileTest, AMissingFileIsReported)
{
    EXPECT_NE(
        failureOf([&] { static_cast<void>(readTrajectoryFile(file("none"))); }).find("there is no such file"),
        std::string::npos);
    EXPECT_NE(failureOf([&] { static_cast<void>(readTrajectoryFile(file("."))); }).find("is a folder"),
              std::string::npos);
}

TEST_F(TrajectoryFileTest, MoreNodesThanCanBeReadBackAreNotWritten)
{
    TrajectoryData data;
    data.nodes.resize(largestNodeCount + 1);
    std::ostringstream stream;
    EXPECT_EQ(failureOf([&] { writeTrajectory(data, stream, "long"); }),
              "long: 1000000 poses are more than the 999999 with which a trajectory stream can be read back");
    EXPECT_EQ(stream.str(), "");
}

TEST_F(TrajectoryFileTest, DevicesAreListedInOrder)
{
    TrajectoryData data;
    EXPECT_EQ(listDevices(data), "none");
    data.devicePositions[Device::Device3] = TrafoT<double>::Identity();
    EXPECT_EQ(listDevices(data), "3");
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    EXPECT_EQ(listDevices(data), "0 and 3");
    data.devicePositions[Device::Device1] = TrafoT<double>::Identity();
    EXPECT_EQ(listDevices(data), "0, 1 and 3");
}
