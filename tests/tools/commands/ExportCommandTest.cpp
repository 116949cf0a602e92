#include "tests/support/SharedData.h"
#include "tests/tools/support/ToolFixture.h"
#include "tools/io/RecordingFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <utility>
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

class ExportCommandTest : public ToolFixture
{
protected:
    support::TestPath writeNodes(std::string const& name, TrajectoryData const& data) const
    {
        std::ofstream stream(file(name), std::ios::binary);
        writeTrajectory(data, stream, name);
        return file(name);
    }

    [[nodiscard]] std::vector<TrajectoryNode> nodes(std::filesystem::path const& path) const
    {
        return readTrajectoryFile(path).data->nodes;
    }

    /// Exports the trajectory, imports the text and exports that. @return the last two texts
    [[nodiscard]] std::pair<std::string, std::string> twice(std::string const& format,
                                                            std::string const& trajectory) const
    {
        std::vector<std::string> const times =
            format == "kitti" ? std::vector<std::string>{"--times", file("times.txt").string()}
                              : std::vector<std::string>{};
        auto const call = [&](std::string const& command, std::string const& in, std::string const& out) {
            std::vector<std::string> words{command, "--format", format};
            words.insert(words.end(), times.begin(), times.end());
            words.insert(words.end(), {in, out});
            ToolRun const result = run(words);
            EXPECT_EQ(result.status, 0) << result.err;
        };
        call("export", trajectory, file("first.txt").string());
        call("import", file("first.txt").string(), file("second.trajectory").string());
        call("export", file("second.trajectory").string(), file("second.txt").string());
        return {read("first.txt"), read("second.txt")};
    }
};

TrajectoryData randomTrajectory(std::size_t count, double firstTime)
{
    std::srand(23);
    std::mt19937_64 random(23);
    std::uniform_real_distribution<double> step(0.001, 0.02);
    TrajectoryData data;
    double time = firstTime;
    for (std::size_t i = 0; i < count; ++i) {
        TrafoT<double> pose = TrafoT<double>::Random();
        pose.translation() *= 5.4e6;
        pose.rotation().normalize();
        data.nodes.emplace_back(time, pose);
        time += step(random);
    }
    return data;
}

bool haveEqualBits(TrajectoryNode const& a, TrajectoryNode const& b)
{
    return a.time == b.time && a.pose.serialize() == b.pose.serialize();
}

} // namespace

TEST_F(ExportCommandTest, WritesTheNodesInTheirOrder)
{
    TrajectoryData data;
    data.nodes.emplace_back(2.5, TrafoT<double>::Translation({1, 2, 3}));
    data.nodes.emplace_back(1.0, TrafoT<double>({4, 5, 6}, {0.8, 0, 0, 0.6}, true));
    ToolRun const result =
        run({"export", "--format", "csv", writeNodes("a.trajectory", data), file("a.csv")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "2 poses exported\n");
    EXPECT_EQ(read("a.csv"), "time,x,y,z,qw,qx,qy,qz\n2.5,1,2,3,1,0,0,0\n1,4,5,6,0.8,0,0,0.6\n");
    EXPECT_THAT(names(), ElementsAre("a.csv", "a.trajectory"));
}

TEST_F(ExportCommandTest, GivesTheSameNumbersBack)
{
    for (double const firstTime : {-3.0, 1311868163.8696}) {
        TrajectoryData const data = randomTrajectory(500, firstTime);
        auto const path = writeNodes("a.trajectory", data);
        for (std::string const format : {"tum", "csv"}) {
            auto const [first, second] = twice(format, path);
            EXPECT_EQ(first, second) << format;
            auto const found = nodes(file("second.trajectory"));
            ASSERT_EQ(found.size(), data.nodes.size());
            for (std::size_t i = 0; i < found.size(); ++i) {
                EXPECT_TRUE(haveEqualBits(found[i], data.nodes[i])) << format << ", pose " << i;
            }
        }
    }
}

TEST_F(ExportCommandTest, EurocKeepsPosesAndRoundsTimesToNanoseconds)
{
    TrajectoryData const data = randomTrajectory(500, 1403715524.907143168);
    auto const [first, second] = twice("euroc", writeNodes("a.trajectory", data));
    EXPECT_EQ(first, second);
    auto const found = nodes(file("second.trajectory"));
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_TRUE(haveEqualBits(found[i], data.nodes[i])) << i; // seconds since 1970 are coarser than 1 ns
    }
}

TEST_F(ExportCommandTest, KittiKeepsTimesAndPlacesAndRotationsUpToRounding)
{
    TrajectoryData const data = randomTrajectory(500, 7.0);
    (void)twice("kitti", writeNodes("a.trajectory", data));
    EXPECT_EQ(lineCount(read("times.txt")), 500);
    auto const found = nodes(file("second.trajectory"));
    ASSERT_EQ(found.size(), data.nodes.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i].time, data.nodes[i].time);
        EXPECT_EQ(found[i].pose.translation(), data.nodes[i].pose.translation());
        EXPECT_LT(found[i].pose.rotation().angularDistance(data.nodes[i].pose.rotation()), 1e-7);
    }
}

TEST_F(ExportCommandTest, TakesDevices)
{
    auto const poses = write("poses.txt", "1 10 0 0 0 0 0.7071067811865476 0.7071067811865475\n");
    ASSERT_EQ(run({"import",
                   "--format",
                   "tum",
                   "--mount",
                   "1=0,2,0,1,0,0,0",
                   "--mount",
                   "2=1,0,0,1,0,0,0",
                   poses,
                   file("a.trajectory")})
                  .status,
              0);
    auto const csv = [&](std::vector<std::string> const& devices) {
        std::vector<std::string> words{"export", "--format", "csv"};
        words.insert(words.end(), devices.begin(), devices.end());
        words.insert(words.end(), {file("a.trajectory").string(), "-"});
        ToolRun const result = runInPipe(words);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "1 pose exported\n");
        return result.piped.substr(result.piped.find("\n1,") + 3);
    };
    // The body is a quarter turn to the left at x = 10: device 1, 2 m to its left, is at x = 8.
    EXPECT_EQ(csv({}).substr(0, 7), "10,0,0,");
    EXPECT_EQ(csv({"--from", "1"}).substr(0, 2), "8,");
    EXPECT_EQ(csv({"--to", "2"}).substr(0, 6), "9,0,0,");
    EXPECT_EQ(csv({"--from", "1", "--to", "2"}).substr(0, 2), "7,");
    ToolRun const without =
        run({"export", "--format", "csv", "--from", "3", file("a.trajectory"), file("a.csv")});
    EXPECT_EQ(without.status, 1);
    EXPECT_THAT(without.err,
                HasSubstr("it has no position for device 3; devices with a position: 0, 1 and 2"));
}

TEST_F(ExportCommandTest, LeavesOutWhatIsNotFinite)
{
    TrajectoryData data;
    double const nan = std::numeric_limits<double>::quiet_NaN();
    data.nodes.emplace_back(nan);
    auto const onlyNan = writeNodes("b.trajectory", data);
    data.nodes.emplace_back(1.0);
    data.nodes.emplace_back(2.0, TrafoT<double>::Translation({nan, 0, 0}));
    data.nodes.emplace_back(3.0, TrafoT<double>::Invalid());
    ToolRun const result =
        run({"export", "--format", "tum", writeNodes("a.trajectory", data), file("a.txt")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out,
              "1 pose exported\n  3 nodes left out: the time or the pose is not finite or not valid\n");
    EXPECT_EQ(lineCount(read("a.txt")), 2);
    ToolRun const none = run({"export", "--format", "tum", onlyNan, file("none.txt")});
    EXPECT_EQ(none.status, 1);
    EXPECT_THAT(none.err, HasSubstr("b.trajectory: there is no usable pose with a time in it"));
}

TEST_F(ExportCommandTest, AFailureLeavesNothing)
{
    TrajectoryData data;
    data.nodes.emplace_back(1e10);
    auto const path = writeNodes("a.trajectory", data);
    ToolRun const tooLate = run({"export", "--format", "euroc", path, file("a.csv")});
    EXPECT_EQ(tooLate.status, 1);
    EXPECT_THAT(tooLate.err, HasSubstr("too large for the nanoseconds of EuRoC"));
    EXPECT_EQ(run({"export", "--format", "tum", "--times", file("t"), path, file("a.txt")}).status, 1);
    EXPECT_EQ(run({"export", "--format", "kitti", "--times", "-", path, "-"}).status, 1);
    EXPECT_EQ(run({"export", "--format", "tum", path, path}).status, 1);
    EXPECT_EQ(run({"export", "--format", "tum", file("none"), file("a.txt")}).status, 1);
    EXPECT_EQ(run({"export", "--format", "ply", path, file("a.txt")}).status, 1);
    EXPECT_THAT(names(), ElementsAre("a.trajectory"));
}

TEST_F(ExportCommandTest, RealRecordingsGiveTheirNumbersBack)
{
    auto const tum = support::sharedData("trajectories/fr2_desk_groundtruth.txt");
    auto const euroc = support::sharedData("trajectories/V102_groundtruth.csv");
    if (!std::filesystem::exists(tum) || !std::filesystem::exists(euroc)) {
        GTEST_SKIP() << "missing: " << tum << " or " << euroc;
    }
    for (auto const& [format, recording] : {std::pair("tum", tum), std::pair("euroc", euroc)}) {
        ASSERT_EQ(run({"import", "--format", format, recording, file("a.trajectory")}).status, 0);
        auto const imported = nodes(file("a.trajectory"));
        auto const [first, second] = twice(format, file("a.trajectory").string());
        EXPECT_TRUE(first == second) << format;
        auto const found = nodes(file("second.trajectory"));
        ASSERT_EQ(found.size(), imported.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            ASSERT_TRUE(haveEqualBits(found[i], imported[i])) << format << ", pose " << i;
        }
    }
    // Times and places are those of the recording, digit by digit: "1311868163.8696 -0.2867 ..."
    std::ifstream recording(tum);
    ASSERT_EQ(run({"import", "--format", "tum", tum, file("a.trajectory")}).status, 0);
    ASSERT_EQ(run({"export", "--format", "tum", file("a.trajectory"), file("a.txt")}).status, 0);
    std::ifstream exported(file("a.txt"));
    std::size_t compared = 0;
    for (std::string expected; std::getline(recording, expected);) {
        std::string found;
        if (expected.empty() || expected.front() == '#') {
            continue;
        }
        do {
            ASSERT_TRUE(std::getline(exported, found));
        } while (found.front() == '#');
        std::istringstream a(expected);
        std::istringstream b(found);
        for (int column = 0; column < 8; ++column) {
            double x = 0.0;
            double y = 0.0;
            a >> x;
            b >> y;
            if (column < 4) {
                ASSERT_EQ(x, y) << expected;
            } else {
                ASSERT_NEAR(x, y, 1e-4) << expected; // normalized
            }
        }
        ++compared;
    }
    EXPECT_EQ(compared, 20957U);
}
