#include "tests/support/SharedData.h"
#include "tests/tools/support/ToolFixture.h"
#include "tools/io/RecordingFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::ToolFixture;
using support::ToolRun;
using Names = std::vector<std::string>;

class ImportCommandTest : public ToolFixture
{};

std::string const identityMatrix = "1 0 0 0 0 1 0 0 0 0 1 0\n";

} // namespace

TEST_F(ImportCommandTest, MakesATrajectoryWithTheTrackedBodyAsDevice0)
{
    auto const poses = write("poses.txt", "5 1 2 3 0 0 0 1\n6 4 5 6 0 0 0.6 0.8\n");
    ToolRun const import = run({"import", "--format", "tum", poses, file("a.trajectory")});
    EXPECT_EQ(import.status, 0) << import.err;
    EXPECT_EQ(import.out, "2 poses imported\n");
    EXPECT_EQ(names(), (Names{"a.trajectory", "poses.txt"}));

    auto const data = readTrajectoryFile(file("a.trajectory")).data;
    ASSERT_EQ(data->nodes.size(), 2U);
    EXPECT_EQ(data->nodes[1].time, 6.0);
    EXPECT_EQ(data->nodes[1].type, TrajectoryNode::Type::Default);
    EXPECT_EQ(data->nodes[1].pose.translation(), Eigen::Vector3d(4, 5, 6));
    EXPECT_NEAR(data->nodes[1].pose.rotation().z(), 0.6, 1e-15);
    ASSERT_EQ(data->devicePositions.size(), 1U);
    EXPECT_EQ(data->devicePositions.at(Device::Device0), TrafoT<double>::Identity());
}

TEST_F(ImportCommandTest, NothingIsWrittenOnFailure)
{
    auto const poses = write("poses.csv", "1,0,0,0,1,0,0,0\n2,0,0,0,1,0,0\n");
    ToolRun const import = run({"import", "--format", "euroc", poses, file("a.trajectory")});
    EXPECT_EQ(import.status, 1);
    EXPECT_EQ(import.out, "");
    EXPECT_EQ(import.err,
              "roamscan: " + poses.string() +
                  ":2: 7 columns, but an EuRoC line (t,px,py,pz,qw,qx,qy,qz,...) has at least 8\n");
    EXPECT_EQ(names(), Names{"poses.csv"});
}

TEST_F(ImportCommandTest, ThePreviousOutputIsKeptOnFailure)
{
    auto const poses = write("poses.txt", "x\n");
    write("a.trajectory", "before");
    EXPECT_EQ(run({"import", "--format", "tum", poses, file("a.trajectory")}).status, 1);
    EXPECT_EQ(read("a.trajectory"), "before");
    EXPECT_EQ(names(), (Names{"a.trajectory", "poses.txt"}));
}

TEST_F(ImportCommandTest, KittiTakesItsTimesFromAFile)
{
    auto const poses = write("00.txt", identityMatrix + identityMatrix);
    auto const times = write("times.txt", "0\n0.1\n");
    ToolRun const import =
        run({"import", "--format", "kitti", "--times", times, poses, file("a.trajectory")});
    EXPECT_EQ(import.status, 0) << import.err;
    EXPECT_EQ(readTrajectoryFile(file("a.trajectory")).data->nodes.at(1).time, 0.1);
}

TEST_F(ImportCommandTest, TimesGoWithKittiAndKittiWithTimes)
{
    auto const poses = write("00.txt", identityMatrix);
    auto const times = write("times.txt", "0\n");
    ToolRun const without = run({"import", "--format", "kitti", poses, file("a.trajectory")});
    EXPECT_EQ(without.status, 1);
    EXPECT_NE(without.err.find("--times"), std::string::npos);
    ToolRun const with = run({"import", "--format", "tum", "--times", times, poses, file("a.trajectory")});
    EXPECT_EQ(with.status, 1);
    EXPECT_NE(with.err.find("--format kitti only"), std::string::npos);
    EXPECT_EQ(names(), (Names{"00.txt", "times.txt"}));
}

TEST_F(ImportCommandTest, TheInputIsNotOverwritten)
{
    auto const poses = write("poses.txt", "5 1 2 3 0 0 0 1\n");
    EXPECT_EQ(run({"import", "--format", "tum", poses, poses}).status, 1);
    EXPECT_EQ(read("poses.txt"), "5 1 2 3 0 0 0 1\n");
}

TEST_F(ImportCommandTest, RepeatedAndUnorderedTimesAreReported)
{
    auto const poses =
        write("poses.txt", "# t\n1 0 0 0 0 0 0 1\n3 0 0 0 0 0 0 1\n2 0 0 0 0 0 0 1\n3 1 0 0 0 0 0 1\n");
    ToolRun const import = run({"import", "--format", "tum", poses, file("a.trajectory")});
    EXPECT_EQ(import.status, 0) << import.err;
    EXPECT_EQ(import.out,
              "4 poses imported\n  1 pose has the time of an earlier one, first in " + poses.string() +
                  ":5; of the poses at one time, the last one counts\n"
                  "  1 pose is before the previous one in time, first in " +
                  poses.string() + ":4; a trajectory puts them in order\n");
    EXPECT_EQ(readTrajectoryFile(file("a.trajectory")).data->nodes.size(), 4U);
}

TEST_F(ImportCommandTest, TheTimesOfKittiPosesAreReportedByTheirFile)
{
    auto const poses = write("00.txt", identityMatrix + identityMatrix);
    auto const times = write("times.txt", "1\n\n1\n");
    ToolRun const import =
        run({"import", "--format", "kitti", "--times", times, poses, file("a.trajectory")});
    EXPECT_EQ(import.out,
              "2 poses imported\n  1 pose has the time of an earlier one, first in " + times.string() +
                  ":3; of the poses at one time, the last one counts\n");
}

TEST_F(ImportCommandTest, MountsDevices)
{
    auto const poses = write("poses.txt", "5 1 2 3 0 0 0 1\n");
    ToolRun const import = run({"import",
                                "--format",
                                "tum",
                                "--mount",
                                "1=0.1,0,0.25,1,0,0,0",
                                "--mount",
                                "0=1,0,0,1,0,0,0",
                                poses,
                                file("a.trajectory")});
    EXPECT_EQ(import.status, 0) << import.err;
    auto const data = readTrajectoryFile(file("a.trajectory")).data;
    EXPECT_EQ(data->devicePositions.size(), 2U);
    EXPECT_EQ(data->devicePositions.at(Device::Device1).translation(), Eigen::Vector3d(0.1, 0.0, 0.25));
    EXPECT_EQ(data->devicePositions.at(Device::Device0).translation(), Eigen::Vector3d(1.0, 0.0, 0.0));
    ToolRun const wrong = run({"import", "--format", "tum", "--mount", "1=x", poses, file("b.trajectory")});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_NE(wrong.err.find("--mount \"1=x\": 1 number instead of 7"), std::string::npos) << wrong.err;
    EXPECT_EQ(names(), (Names{"a.trajectory", "poses.txt"}));
}

TEST_F(ImportCommandTest, ReadsFromAPipeAndWritesToOne)
{
    ToolRun const import = runInPipe({"import", "--format", "tum", "-", "-"}, "5 1 2 3 0 0 0 1\n");
    EXPECT_EQ(import.status, 0) << import.err;
    EXPECT_EQ(import.out, "");
    EXPECT_EQ(import.err, "1 pose imported\n");
    auto const path = write("a.trajectory", import.piped);
    EXPECT_EQ(readTrajectoryFile(path).data->nodes.at(0).time, 5.0);
    ToolRun const both = runInPipe({"import", "--format", "kitti", "--times", "-", "-", file("b")});
    EXPECT_EQ(both.status, 1);
    EXPECT_NE(both.err.find("cannot both be read from the standard input"), std::string::npos) << both.err;
}

TEST_F(ImportCommandTest, SaysWhatTheInputIs)
{
    auto const import = [&](std::string const& format, std::string const& bytes) {
        auto const path = write("in", bytes);
        ToolRun const result = run({"import", "--format", format, path, file("a.trajectory")});
        EXPECT_EQ(result.status, 1);
        return result.err.substr(std::string("roamscan: " + path.string()).size());
    };
    EXPECT_EQ(import("tum", "ply\nformat ascii 1.0\n"), ": this is a PLY cloud; see roamscan place\n");
    EXPECT_EQ(import("euroc", "5 1 2 3 0 0 0 1\n"),
              ": this is a text of TUM poses; see roamscan import --format tum\n");
    EXPECT_EQ(import("tum", "5,1,2,3,0,0,0,1\n"),
              ": this is a text of EuRoC poses; see roamscan import --format euroc\n");
    EXPECT_EQ(import("tum", "5 1 2 3 0 0 0 1\n6\n"),
              ":2: 1 columns, but a TUM line (t tx ty tz qx qy qz qw) has 8\n");
}

TEST_F(ImportCommandTest, RealRecordingsAreImportedCompletely)
{
    auto const tum = support::sharedData("trajectories/fr2_desk_groundtruth.txt");
    auto const euroc = support::sharedData("trajectories/V102_groundtruth.csv");
    if (!std::filesystem::exists(tum) || !std::filesystem::exists(euroc)) {
        GTEST_SKIP() << "missing: " << tum << " or " << euroc;
    }
    EXPECT_EQ(run({"import", "--format", "tum", tum, file("desk.trajectory")}).out,
              "20957 poses imported\n  1 pose has the time of an earlier one, first in " + tum.string() +
                  ":10863; of the poses at one time, the last one counts\n");
    EXPECT_EQ(run({"import", "--format", "euroc", euroc, file("v.trajectory")}).out,
              "16702 poses imported\n");
    auto const first = readTrajectoryFile(file("v.trajectory")).data->nodes.front();
    EXPECT_EQ(first.time, 1403715524.907143168);
    EXPECT_EQ(first.pose.translation(), Eigen::Vector3d(0.515356, 1.996773, 0.971104));
    EXPECT_NEAR(first.pose.rotation().norm(), 1.0, 1e-15);
    EXPECT_NEAR(first.pose.rotation().w(), 0.161996, 1e-5);
    EXPECT_EQ(run({"import", "--format", "tum", euroc, file("x.trajectory")}).status, 1);
}
