#include "tools/io/PlyReader.h"
#include "tools/io/PlyWriter.h"
#include "tools/io/TrajectoryFile.h"
#include "tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using Names = std::vector<std::string>;

/// The result line in numbers.
struct Result
{
    explicit Result(std::string const& out)
    {
        std::smatch match;
        std::string const line = lastLine(out);
        std::regex const form(R"(placed (\d+) of (\d+) points, rms (\d+\.\d{4}) m)");
        EXPECT_TRUE(std::regex_match(line, match, form)) << out;
        if (!match.empty()) {
            placed = std::stoull(match[1]);
            all = std::stoull(match[2]);
            rms = std::stod(match[3]);
        }
    }

    unsigned long long placed = 0;
    unsigned long long all = 0;
    double rms = std::numeric_limits<double>::quiet_NaN();
};

class PlaceCommandTest : public ToolFixture
{
protected:
    /// A second of standing still at x = 3, with Device1 two metres above the body, and a small scan of it.
    void writeSmallRecording() const
    {
        TrajectoryData data;
        for (double const time : {100.0, 101.0}) {
            data.nodes.emplace_back(time, TrafoT<double>::Translation({3.0, 0.0, 0.0}));
        }
        data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
        data.devicePositions[Device::Device1] = TrafoT<double>::Translation({0.0, 0.0, 2.0});
        data.devicePositions[Device::Device2] = TrafoT<double>::Translation({0.0, 10.0, 0.0});
        std::ofstream trajectory(file("a.trajectory"), std::ios::binary);
        writeTrajectory(data, trajectory, "a.trajectory");

        std::ofstream points(file("scan.ply"), std::ios::binary);
        PlyWriter writer(points);
        writer.add({1.0F, 0.5F, -1.0F, 77, 100.5});
        writer.add({1.0F, 0.0F, 0.0F, 0, std::nan("")});
        writer.add({1.0F, 0.0F, 0.0F, 0, 99.9});
        writer.add({1.0F, 0.0F, 0.0F, 0, 101.1});
        writer.add({0.0F, 0.0F, 0.0F, 0, 100.5});
        writer.finish();
    }

    [[nodiscard]] ToolRun place(std::vector<std::string> const& more, int from = 1, int to = 0) const
    {
        std::vector<std::string> words{"place",
                                       "--trajectory",
                                       file("a.trajectory"),
                                       "--from",
                                       std::to_string(from),
                                       "--to",
                                       std::to_string(to),
                                       "--points",
                                       file("scan.ply")};
        words.insert(words.end(), more.begin(), more.end());
        return run(words);
    }
};

} // namespace

TEST_F(PlaceCommandTest, ASimulatedWalkComesOutAtItsWalls)
{
    ASSERT_EQ(run({"simulate", file("walk"), "--seconds", "6"}).status, 0);
    ToolRun const placing = run({"place",
                                 "--trajectory",
                                 file("walk/walk.trajectory"),
                                 "--from",
                                 "1",
                                 "--to",
                                 "0",
                                 "--points",
                                 file("walk/scan.ply"),
                                 "--building",
                                 file("walk/building.json"),
                                 "--cloud",
                                 file("cloud.ply"),
                                 "--picture",
                                 file("plan.png")});
    ASSERT_EQ(placing.status, 0) << placing.err;
    EXPECT_EQ(placing.err, "");
    Result const result(placing.out);
    std::size_t const all = readPlyFile(file("walk/scan.ply")).size();
    EXPECT_EQ(result.all, all);
    // 0.4 of 6.4 s lie outside, and one point in 200 has no time.
    EXPECT_NEAR(static_cast<double>(result.placed) / static_cast<double>(all), 6.0 / 6.4 * 0.995, 0.003);
    EXPECT_LT(result.rms, 0.01);
    EXPECT_GT(result.rms, 0.001);
    EXPECT_EQ(readPlyFile(file("cloud.ply")).size(), result.placed);
    EXPECT_EQ(read("plan.png").substr(1, 3), "PNG");
    EXPECT_EQ(names(), (Names{"cloud.ply", "plan.png", "walk"}));
}

TEST_F(PlaceCommandTest, EveryTargetComesOutAtTheWalls)
{
    ASSERT_EQ(run({"simulate", file("walk"), "--seconds", "3"}).status, 0);
    std::filesystem::rename(file("walk/walk.trajectory"), file("a.trajectory"));
    std::filesystem::rename(file("walk/scan.ply"), file("scan.ply"));
    for (int const to : {0, 1, 2, 3}) {
        ToolRun const placing = place({"--building", file("walk/building.json")}, 1, to);
        ASSERT_EQ(placing.status, 0) << placing.err;
        EXPECT_LT(Result(placing.out).rms, 0.01) << "to " << to;
    }
    ToolRun const wrong = place({"--building", file("walk/building.json")}, 2, 0);
    EXPECT_GT(Result(wrong.out).rms, 0.05) << "the scan of one head placed as the other's must not fit";
}

TEST_F(PlaceCommandTest, ARecordingOfYearsOfSecondsComesOutAtItsWalls)
{
    std::string poses;
    for (int i = 0; i < 300; ++i) {
        double const a = 0.02 * i;
        std::ostringstream line;
        line.precision(17);
        line << 1403715524.907143 + 0.05 * i << ' ' << 2.0 * std::sin(a) << ' ' << std::cos(a) << ' ' << 1.0
             << ' ' << std::sin(a / 2.0) << " 0 0 " << std::cos(a / 2.0) << '\n';
        poses += line.str();
    }
    ASSERT_EQ(run({"import", "--format", "tum", write("poses.txt", poses), file("r.trajectory")}).status, 0);
    ASSERT_EQ(run({"simulate", file("walk"), "--along", file("r.trajectory")}).status, 0);
    ToolRun const placing = run({"place",
                                 "--trajectory",
                                 file("walk/walk.trajectory"),
                                 "--from",
                                 "1",
                                 "--to",
                                 "0",
                                 "--points",
                                 file("walk/scan.ply"),
                                 "--building",
                                 file("walk/building.json")});
    ASSERT_EQ(placing.status, 0) << placing.err;
    EXPECT_LT(Result(placing.out).rms, 0.01);
}

TEST_F(PlaceCommandTest, EveryPointIsAccountedForInPlainWords)
{
    writeSmallRecording();
    ToolRun const placing = place({"--cloud", file("cloud.ply")});
    EXPECT_EQ(placing.status, 0) << placing.err;
    EXPECT_EQ(placing.out,
              "5 points in the scan\n"
              "1 points were placed\n"
              "1 points had no time\n"
              "2 points lay outside the trajectory in time\n"
              "1 points had no measured position\n"
              "placed 1 of 5 points\n");
    ScanPoints const cloud = readPlyFile(file("cloud.ply"));
    ASSERT_EQ(cloud.size(), 1U);
    EXPECT_EQ(cloud.points[0].position, (Bv_1_1::Vec3d<float>{4.0F, 0.5F, 1.0F}));
    EXPECT_EQ(cloud.points[0].intensity, 77);
    EXPECT_EQ(cloud.times[0], 100.5);
}

TEST_F(PlaceCommandTest, ErrorsAreDistancesToTheNearestSurface)
{
    writeSmallRecording();
    // The one placed point is (4, 0.5, 1); a floor at z = 0.75 is 0.25 m away, a wall at x = 7 farther.
    write("building.json",
          R"({"format": "roamscan building", "version": 1, "surfaces": [
              {"corner": [0, 0, 0.75], "edges": [[9, 0, 0], [0, 9, 0]]},
              {"corner": [7, 0, 0], "edges": [[0, 9, 0], [0, 0, 9]]}]})");
    ToolRun const placing = place({"--building", file("building.json")});
    EXPECT_EQ(lastLine(placing.out), "placed 1 of 5 points, rms 0.2500 m") << placing.err;
    // In the frame of Device2 the point is at y = -9.5; the building's frame stays that of the nodes.
    ToolRun const other = place({"--building", file("building.json")}, 1, 2);
    EXPECT_EQ(lastLine(other.out), "placed 1 of 5 points, rms 0.2500 m") << other.err;
}

TEST_F(PlaceCommandTest, AMissingDeviceIsTold)
{
    writeSmallRecording();
    ToolRun const placing = place({"--cloud", file("cloud.ply"), "--picture", file("plan.png")}, 3, 0);
    EXPECT_EQ(placing.status, 1);
    EXPECT_EQ(placing.out, "");
    EXPECT_EQ(placing.err,
              "roamscan: " + file("a.trajectory").string() +
                  ": it has no position for device 3; devices with a position: 0, 1 and 2\n");
    EXPECT_EQ(names(), (Names{"a.trajectory", "scan.ply"}));
}

TEST_F(PlaceCommandTest, NothingIsLeftOnFailure)
{
    writeSmallRecording();
    auto const expectFailure = [&](std::string const& reason) {
        ToolRun const placing = place({"--cloud", file("cloud.ply"), "--picture", file("plan.png")});
        EXPECT_EQ(placing.status, 1) << reason;
        EXPECT_EQ(placing.out, "");
        EXPECT_EQ(lineCount(placing.err), 1) << placing.err;
        EXPECT_NE(placing.err.find(reason), std::string::npos) << placing.err;
        EXPECT_EQ(names(), (Names{"a.trajectory", "scan.ply"}));
    };
    std::string const scan = read("scan.ply");
    write("scan.ply", scan.substr(0, scan.size() - 1));
    expectFailure("cut off or damaged");
    std::ostringstream empty;
    PlyWriter(empty).finish();
    write("scan.ply", empty.str());
    expectFailure("there is no point in it");
    std::ostringstream elsewhen;
    PlyWriter writer(elsewhen);
    writer.add({1.0F, 0.0F, 0.0F, 0, 1e9});
    writer.finish();
    write("scan.ply", elsewhen.str());
    expectFailure("none of its 1 points could be placed");
    std::string const trajectory = read("a.trajectory");
    write("a.trajectory", trajectory.substr(0, trajectory.size() - 1));
    expectFailure("ends early");
}

TEST_F(PlaceCommandTest, ATrajectoryWithoutPosesIsTold)
{
    writeSmallRecording();
    std::ofstream stream(file("a.trajectory"), std::ios::binary);
    writeTrajectory(TrajectoryData(), stream, "a.trajectory");
    stream.close();
    EXPECT_NE(place({}).err.find("there is no pose with a time in it"), std::string::npos);
}

TEST_F(PlaceCommandTest, NoFileIsNamedTwice)
{
    writeSmallRecording();
    EXPECT_EQ(place({"--cloud", file("scan.ply")}).status, 1);
    EXPECT_EQ(place({"--cloud", file("x"), "--picture", file("x")}).status, 1);
    EXPECT_EQ(names(), (Names{"a.trajectory", "scan.ply"}));
}

} // namespace oV::Roamscan::tool
