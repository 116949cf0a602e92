#include "tests/tools/support/ToolFixture.h"
#include "tools/io/RecordingFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::lineCount;
using support::ToolFixture;
using support::ToolRun;
using testing::ElementsAre;
using testing::HasSubstr;

class MountCommandTest : public ToolFixture
{
protected:
    [[nodiscard]] support::TestPath trajectory() const
    {
        TrajectoryData data;
        data.nodes.emplace_back(1.0);
        data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
        data.devicePositions[Device::Device1] = TrafoT<double>::Translation({0.1, 0.0, 0.25});
        std::ofstream stream(file("a.trajectory"), std::ios::binary);
        writeTrajectory(data, stream, "a.trajectory");
        return file("a.trajectory");
    }

    [[nodiscard]] TrajectoryData data() const { return *readTrajectoryFile(file("a.trajectory")).data; }

    support::TestPath sensors(double x) const
    {
        SensorData data;
        data.rangefinderData["head"][0] = std::make_shared<mapping::RangefinderData const>(
            mapping::TimeStamp(0.0), mapping::Vector3<double>{}, mapping::TimedPointCloud());
        data.sensorPoses["head"] = {{static_cast<float>(x), 0.0F, 0.25F}, {0.0F, 0.0F, 0.0F, 1.0F}};
        std::ofstream stream(file("a.sensors"), std::ios::binary);
        writeSensors(data, stream, "a.sensors");
        return file("a.sensors");
    }
};

} // namespace

TEST_F(MountCommandTest, ShowsThePositions)
{
    auto const path = trajectory();
    std::string const before = read("a.trajectory");
    ToolRun const mount = run({"mount", path});
    EXPECT_EQ(mount.status, 0) << mount.err;
    EXPECT_EQ(mount.out,
              path.string() + ": 2 device positions (device=x,y,z,qw,qx,qy,qz in metres)\n"
                              "  0=0,0,0,1,0,0,0\n"
                              "  1=0.1,0,0.25,1,0,0,0\n");
    EXPECT_TRUE(read("a.trajectory") == before);
    auto const json = nlohmann::json::parse(run({"mount", path, "--json"}).out);
    EXPECT_EQ(json.at("file"), path.string());
    EXPECT_EQ(json.at("devices").size(), 2U);
    EXPECT_EQ(json.at("devices")[1].at("device"), 1);
    EXPECT_EQ(json.at("devices")[1].at("translation"), nlohmann::json::array({0.1, 0.0, 0.25}));
    EXPECT_EQ(json.at("devices")[1].at("rotation"), nlohmann::json::array({1.0, 0.0, 0.0, 0.0}));
}

TEST_F(MountCommandTest, SetsAndRemovesPositions)
{
    ToolRun const mount = run(
        {"mount", trajectory(), "--set", "2=1,-2,3,0,0,0,1", "--set", "1=0.5,0,0,1,0,0,0", "--remove", "0"});
    EXPECT_EQ(mount.status, 0) << mount.err;
    EXPECT_THAT(mount.out, HasSubstr(": 2 device positions"));
    EXPECT_THAT(mount.out, HasSubstr("  1=0.5,0,0,1,0,0,0\n  2=1,-2,3,0,0,0,1\n"));
    EXPECT_EQ(listDevices(data()), "1 and 2");
    EXPECT_EQ(data().devicePositions.at(Device::Device2).translation(), Eigen::Vector3d(1, -2, 3));
    EXPECT_EQ(data().devicePositions.at(Device::Device2).rotation().z(), 1.0);
    EXPECT_EQ(data().nodes.size(), 1U);
    EXPECT_THAT(names(), ElementsAre("a.trajectory"));
    EXPECT_EQ(run({"mount", file("a.trajectory"), "--remove", "1", "--remove", "2"}).out,
              file("a.trajectory").string() + ": 0 device positions\n");
}

TEST_F(MountCommandTest, KeepsWhatFollowsTheStreamAndTheMode)
{
    auto const path = trajectory();
    std::ofstream(path, std::ios::binary | std::ios::app) << "what follows";
    std::filesystem::permissions(path, std::filesystem::perms(0640));
    auto const mode = std::filesystem::status(path).permissions(); // Windows only knows "read-only"
    ASSERT_EQ(run({"mount", path, "--remove", "1"}).status, 0);
    EXPECT_THAT(read("a.trajectory"), testing::EndsWith("what follows"));
    EXPECT_EQ(readTrajectoryFile(path).bytesAfter, 12U);
    EXPECT_EQ(std::filesystem::status(path).permissions(), mode);
}

TEST_F(MountCommandTest, NothingChangesOnFailure)
{
    auto const path = trajectory();
    std::string const before = read("a.trajectory");
    for (std::vector<std::string> const& options : std::vector<std::vector<std::string>>{
             {"--set", "1=0,0,0"},
             {"--set", "5=0,0,0,1,0,0,0"},
             {"--set", "2=0,0,0,1,0,0,0", "--set", "2=0,0,0,1,0,0,0"},
             {"--set", "2=0,0,0,1,0,0,0", "--remove", "3"},
             {"--remove", "4"},
             {"--remove", "x"},
             {"--set"},
             {"--set", "2=0,0,0,1,0,0,0", "--sensors", path},
         })
    {
        std::vector<std::string> words{"mount", path};
        words.insert(words.end(), options.begin(), options.end());
        ToolRun const wrong = run(words);
        EXPECT_EQ(wrong.status, 1) << wrong.out;
        EXPECT_EQ(wrong.out, "");
        EXPECT_EQ(lineCount(wrong.err), 1) << wrong.err;
        EXPECT_TRUE(read("a.trajectory") == before);
    }
    EXPECT_THAT(run({"mount", path, "--remove", "3"}).err,
                HasSubstr("it has no position for device 3; devices with a position: 0 and 1"));
    std::filesystem::permissions(path, std::filesystem::perms(0444));
    EXPECT_THAT(run({"mount", path, "--remove", "1"}).err, HasSubstr("is read-only"));
    EXPECT_TRUE(read("a.trajectory") == before);
}

TEST_F(MountCommandTest, RecognisesTheRangefinders)
{
    EXPECT_THAT(run({"mount", trajectory(), "--sensors", sensors(0.1)}).out,
                HasSubstr("  \"head\" is device 1\n"));
    EXPECT_THAT(run({"mount", trajectory(), "--sensors", sensors(0.2)}).out,
                HasSubstr("  \"head\" is at the position of no device\n"));
    auto const json =
        nlohmann::json::parse(run({"mount", trajectory(), "--sensors", sensors(0.1), "--json"}).out);
    EXPECT_EQ(json.at("rangefinders")[0].at("name"), "head");
    EXPECT_EQ(json.at("rangefinders")[0].at("devices"), nlohmann::json{1});
}

TEST_F(MountCommandTest, ShowsATrajectoryFromAPipeButDoesNotChangeIt)
{
    (void)trajectory();
    ToolRun const shown = runInPipe({"mount", "-"}, read("a.trajectory"));
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_THAT(shown.out, HasSubstr("1=0.1,0,0.25,1,0,0,0"));
    EXPECT_EQ(runInPipe({"mount", "-", "--remove", "1"}, read("a.trajectory")).err,
              "roamscan: --set and --remove change a file and not a pipe; name a file\n");
}
