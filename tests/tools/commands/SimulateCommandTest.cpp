#include "tools/io/PlyReader.h"
#include "tools/io/SensorFile.h"
#include "tools/io/TrajectoryFile.h"
#include "tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using Names = std::vector<std::string>;

class SimulateCommandTest : public ToolFixture
{};

} // namespace

TEST_F(SimulateCommandTest, WritesAWalkItsSensorsAScanAndABuilding)
{
    ToolRun const simulate = run({"simulate", file("new/walk"), "--seconds", "0.5"});
    EXPECT_EQ(simulate.status, 0) << simulate.err;
    auto const data = readTrajectoryFile(file("new/walk/walk.trajectory")).data;
    EXPECT_EQ(data->nodes.size(), 51U);
    EXPECT_EQ(data->nodes.back().time - data->nodes.front().time, 0.5);
    EXPECT_EQ(listDevices(*data), "0, 1, 2 and 3");
    EXPECT_EQ(data->devicePositions.at(Device::Device0), TrafoT<double>::Identity());
    EXPECT_GT(readPlyFile(file("new/walk/scan.ply")).size(), 17'500U); // 20,000 a second for 0.9 s
    auto const sensors = readSensorFile(file("new/walk/walk.sensors")).data;
    EXPECT_EQ(sensors->imuData.at("imu1").size(), 101U);
    EXPECT_EQ(sensors->imuData.at("imu2").size(), 101U);
    EXPECT_GT(sensors->rangefinderData.at("scanner1").size(), 400U); // 500 a second for 0.9 s
    EXPECT_GT(sensors->rangefinderData.at("scanner2").size(), 400U);
    EXPECT_EQ(sensors->sensorPoses.size(), 4U);
    EXPECT_FALSE(sensors->posesApplied);
    EXPECT_NE(simulate.out.find(std::to_string(tableCount(*sensors)) + " of 1000000 tables"),
              std::string::npos)
        << simulate.out;
    EXPECT_NE(read("new/walk/building.json").find("\"name\": \"floor\""), std::string::npos);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file("new/walk")), {}), 4);
}

TEST_F(SimulateCommandTest, SameSeedSameFiles)
{
    for (std::string const name : {"a", "b"}) {
        ASSERT_EQ(run({"simulate", file(name), "--seconds", "0.1", "--seed", "7"}).status, 0);
    }
    ASSERT_EQ(run({"simulate", file("c"), "--seconds", "0.1", "--seed", "8"}).status, 0);
    for (std::string const name : {"walk.trajectory", "walk.sensors", "scan.ply", "building.json"}) {
        EXPECT_TRUE(read("a/" + name) == read("b/" + name)) << name;
    }
    EXPECT_FALSE(read("a/scan.ply") == read("c/scan.ply"));
    EXPECT_FALSE(read("a/walk.sensors") == read("c/walk.sensors"));
    EXPECT_FALSE(read("a/walk.trajectory") == read("c/walk.trajectory"));
}

TEST_F(SimulateCommandTest, TheDurationIsBounded)
{
    for (std::string const seconds : {"0", "-1", "86401", "nan", "inf", "x"}) {
        ToolRun const simulate = run({"simulate", file("a"), "--seconds", seconds});
        EXPECT_EQ(simulate.status, 1) << seconds;
        EXPECT_EQ(lineCount(simulate.err), 1) << simulate.err;
    }
    EXPECT_EQ(names(), Names{});
}

TEST_F(SimulateCommandTest, TheShortestWalkHasTwoPoses)
{
    ASSERT_EQ(run({"simulate", file("a"), "--seconds", "0.001"}).status, 0);
    EXPECT_EQ(readTrajectoryFile(file("a/walk.trajectory")).data->nodes.size(), 2U);
}

TEST_F(SimulateCommandTest, FollowsARecordingPoseByPose)
{
    auto const poses = write(
        "poses.txt",
        "1400000000.5 2 1 1 0 0 0.6 0.8\n1400000000 0 0 1 0 0 0 1\n1400000000.25 1 0 1.2 0 0.6 0 0.8\n");
    ASSERT_EQ(run({"import", "--format", "tum", poses, file("r.trajectory")}).status, 0);
    ToolRun const simulate = run({"simulate", file("a"), "--along", file("r.trajectory")});
    ASSERT_EQ(simulate.status, 0) << simulate.err;
    auto const data = readTrajectoryFile(file("a/walk.trajectory")).data;
    ASSERT_EQ(data->nodes.size(), 3U);
    EXPECT_EQ(data->nodes[0].time, 1400000000.0);
    EXPECT_EQ(data->nodes[1].time, 1400000000.25);
    EXPECT_EQ(data->nodes[2].time, 1400000000.5);
    EXPECT_TRUE(data->nodes[2].pose.isApprox(TrafoT<double>({2, 1, 1}, {0.8, 0, 0, 0.6}, true), 1e-12));
    EXPECT_EQ(listDevices(*data), "0, 1, 2 and 3");
    auto const samples = readSensorFile(file("a/walk.sensors")).data->imuData.at("imu1");
    EXPECT_EQ(samples.begin()->first, 140000000000000000);
    EXPECT_EQ(samples.rbegin()->first, 140000000050000000);
}

TEST_F(SimulateCommandTest, NothingIsLeftOnFailure)
{
    auto const poses = write("poses.txt", "1 0 0 1 0 0 0 1\n");
    ASSERT_EQ(run({"import", "--format", "tum", poses, file("r.trajectory")}).status, 0);
    ToolRun const one = run({"simulate", file("a"), "--along", file("r.trajectory")});
    EXPECT_EQ(one.status, 1);
    EXPECT_NE(one.err.find("two different times"), std::string::npos);
    EXPECT_EQ(run({"simulate", file("a"), "--along", file("none")}).status, 1);
    EXPECT_EQ(run({"simulate", file("poses.txt"), "--seconds", "1"}).status, 1);
    for (std::string const taken : {"walk.sensors", "scan.ply"})
    { // neither the first nor the last of the files
        std::filesystem::create_directories(file("b/" + taken));
        EXPECT_EQ(run({"simulate", file("b"), "--seconds", "1"}).status, 1);
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file("b")), {}), 1);
        std::filesystem::remove(file("b/" + taken));
    }
    EXPECT_EQ(names(), (Names{"b", "poses.txt", "r.trajectory"}));
}

TEST_F(SimulateCommandTest, TheRecordingIsNotOverwritten)
{
    ASSERT_EQ(run({"simulate", file("a"), "--seconds", "0.05"}).status, 0);
    std::string const before = read("a/walk.trajectory");
    EXPECT_EQ(run({"simulate", file("a"), "--along", file("a/walk.trajectory")}).status, 1);
    EXPECT_TRUE(read("a/walk.trajectory") == before);
}

} // namespace oV::Roamscan::tool
