#include "tools/io/PoseTextFormats.h"

#include "tests/tools/support/ToolFixture.h"
#include "tools/io/NumberText.h"

#include <roamscan/time/TrafoT.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::failureOf;
using support::ToolFixture;

std::vector<TrajectoryNode> tum(std::string const& text)
{
    std::istringstream stream(text);
    return readPoses(PoseFormat::Tum, stream, "poses.txt").nodes;
}

std::vector<TrajectoryNode> euroc(std::string const& text)
{
    std::istringstream stream(text);
    return readPoses(PoseFormat::Euroc, stream, "data.csv").nodes;
}

std::vector<TrajectoryNode> csv(std::string const& text)
{
    std::istringstream stream(text);
    return readPoses(PoseFormat::Csv, stream, "poses.csv").nodes;
}

std::vector<TrajectoryNode> kitti(std::string const& text, std::vector<double> const& times)
{
    std::istringstream stream(text);
    return readKittiPoses(stream, "00.txt", times, "times.txt").nodes;
}

std::vector<double> timesOf(std::string const& text)
{
    std::istringstream stream(text);
    return readTimes(stream, "times.txt").times;
}

template <typename Read>
std::string failure(Read read, std::string const& text)
{
    return failureOf([&] { static_cast<void>(read(text)); });
}

void expectPose(TrajectoryNode const& node, std::array<double, 7> const& expected)
{
    std::array<double, 7> const found = node.pose.serialize();
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(found[i], expected[i], 1e-12) << "number " << i;
    }
    EXPECT_TRUE(node.pose.valid());
    EXPECT_EQ(node.type, TrajectoryNode::Type::Default);
}

} // namespace

TEST(TumPoses, ColumnsAreTimePositionAndQuaternionWithItsRealPartLast)
{
    auto const nodes = tum("# comment\n\n 10.5 1 2 3 0.5 -0.5 0.5 0.55\n11\t4 5 6\t1 0 0 0");
    ASSERT_EQ(nodes.size(), 2U);
    EXPECT_EQ(nodes[0].time, 10.5);
    double const norm = std::sqrt(3 * 0.25 + 0.3025);
    expectPose(nodes[0], {1, 2, 3, 0.55 / norm, 0.5 / norm, -0.5 / norm, 0.5 / norm});
    EXPECT_EQ(nodes[1].time, 11.0);
    expectPose(nodes[1], {4, 5, 6, 0, 1, 0, 0});
}

TEST(TumPoses, WindowsLinesAreFine)
{
    EXPECT_EQ(tum("1 0 0 0 0 0 0 1\r\n2 0 0 0 0 0 0 1\r\n").size(), 2U);
}

TEST(TumPoses, ALineThatDoesNotParseIsNamed)
{
    std::string const good = "# t\n1 0 0 0 0 0 0 1\n";
    EXPECT_EQ(failure(tum, good + "2 0 0 0 0 0 1\n"),
              "poses.txt:3: 7 columns, but a TUM line (t tx ty tz qx qy qz qw) has 8");
    EXPECT_EQ(failure(tum, good + "2 0 0 0 0 0 0 1 9\n").substr(0, 24), "poses.txt:3: 9 columns, ");
    EXPECT_EQ(failure(tum, good + "2 0 0 x 0 0 0 1"), "poses.txt:3: \"x\" is not a finite number");
    EXPECT_EQ(failure(tum, good + "2 0 0 nan 0 0 0 1"), "poses.txt:3: \"nan\" is not a finite number");
    EXPECT_EQ(failure(tum, good + "inf 0 0 0 0 0 0 1"), "poses.txt:3: \"inf\" is not a finite number");
    EXPECT_EQ(failure(tum, good + "1e300 0 0 0 0 0 0 1").substr(0, 22), "poses.txt:3: the time ");
}

TEST(TumPoses, AQuaternionMayBeOffByATenth)
{
    EXPECT_EQ(tum("1 0 0 0 0 0 0 1.0999").size(), 1U);
    EXPECT_EQ(tum("1 0 0 0 0 0 0 -0.9001").size(), 1U);
    EXPECT_EQ(failure(tum, "1 0 0 0 0 0 0 1.11"),
              "poses.txt:1: the norm of the quaternion is 1.1100 instead of 1; is the order right?");
    EXPECT_EQ(failure(tum, "1 0 0 0 0 0 0 0.89").substr(0, 16), "poses.txt:1: the");
    EXPECT_EQ(failure(tum, "1 0 0 0 0 0 0 0").substr(0, 16), "poses.txt:1: the");
    EXPECT_EQ(failure(tum, "1 0 0 0 1e200 1e200 0 0").substr(0, 16), "poses.txt:1: the");
}

TEST(TumPoses, ATextWithoutAPoseIsRefused)
{
    EXPECT_EQ(failure(tum, ""), "poses.txt: there is no pose in it; check the file and --format");
    EXPECT_EQ(failure(tum, "# only\n\n"), failure(tum, ""));
}

TEST(EurocPoses, ColumnsAreNanosecondsPositionAndQuaternionWithItsRealPartFirst)
{
    auto const nodes = euroc("#timestamp, p_x\n1403715524907143168,1.5,-2,3e0,0.5,0.5,-0.5,0.5,9,more,\r\n"
                             "-5, 1 ,2,3,1,0,0,0");
    ASSERT_EQ(nodes.size(), 2U);
    EXPECT_EQ(nodes[0].time, 1403715524.907143168);
    expectPose(nodes[0], {1.5, -2, 3, 0.5, 0.5, -0.5, 0.5});
    EXPECT_EQ(nodes[1].time, -5e-9);
    expectPose(nodes[1], {1, 2, 3, 1, 0, 0, 0});
}

TEST(EurocPoses, ALineThatDoesNotParseIsNamed)
{
    std::string const good = "1,0,0,0,1,0,0,0\n";
    EXPECT_EQ(failure(euroc, good + "2,0,0,0,1,0,0"),
              "data.csv:2: 7 columns, but an EuRoC line (t,px,py,pz,qw,qx,qy,qz,...) has at least 8");
    EXPECT_EQ(failure(euroc, good + "2.5,0,0,0,1,0,0,0"),
              "data.csv:2: \"2.5\" is not a time in integer nanoseconds");
    EXPECT_EQ(failure(euroc, good + "2,0,,0,1,0,0,0"), "data.csv:2: \"\" is not a finite number");
    EXPECT_EQ(failure(euroc, good + "2,0,0,0,2,0,0,0").substr(0, 15), "data.csv:2: the");
    EXPECT_EQ(failure(euroc, good + "1e9,0,0,0,1,0,0,0").substr(0, 12), "data.csv:2: ");
    EXPECT_EQ(failure(euroc, "#\n"), "data.csv: there is no pose in it; check the file and --format");
}

TEST(KittiPoses, ALineIsAMatrixRowByRow)
{
    // A quarter turn about z: x becomes y.
    auto const nodes = kitti("0 -1 0 7 1 0 0 8 0 0 1 9\n1 0 0 1 0 1 0 2 0 0 1 3\n", {0.5, 0.6});
    ASSERT_EQ(nodes.size(), 2U);
    EXPECT_EQ(nodes[0].time, 0.5);
    double const half = std::sqrt(0.5);
    expectPose(nodes[0], {7, 8, 9, half, 0, 0, half});
    EXPECT_EQ(nodes[1].time, 0.6);
    expectPose(nodes[1], {1, 2, 3, 1, 0, 0, 0});
}

TEST(KittiPoses, RotationsAreTheNearestOnes)
{
    auto const nodes = kitti("1.002 0 0 0 0 1.002 0 0 0 0 1.002 0", {0.0});
    expectPose(nodes.at(0), {0, 0, 0, 1, 0, 0, 0});
}

TEST(KittiPoses, ALineThatDoesNotParseIsNamed)
{
    auto const read = [](std::string const& text) { return kitti(text, {0.0, 1.0, 2.0}); };
    std::string const good = "1 0 0 0 0 1 0 0 0 0 1 0\n";
    EXPECT_EQ(failure(read, good + "1 0 0 0 0 1 0 0 0 0 1"),
              "00.txt:2: 11 columns, but a KITTI line (a 3x4 matrix, row by row) has 12");
    EXPECT_EQ(failure(read, good + "1 0 0 0 0 1 0 0 0 0 y 0"), "00.txt:2: \"y\" is not a finite number");
}

TEST(KittiPoses, AMatrixThatIsNoRotationIsRefusedWithItsLine)
{
    auto const failureOfMatrix = [](std::string const& matrix) {
        return failureOf([&] { static_cast<void>(kitti("1 0 0 0 0 1 0 0 0 0 1 0\n" + matrix, {0.0, 1.0})); });
    };
    std::string const no = "00.txt:2: the matrix is no rotation";
    auto const off = [&](std::string const& number) {
        return no + ": its rows are not of unit length and at right angles (off by " + number +
               "); is the order of the numbers right?";
    };
    EXPECT_EQ(failureOfMatrix("1.2 0 0 0 0 1 0 0 0 0 1 0"), off("0.4400"));
    EXPECT_EQ(failureOfMatrix("2 0 0 0 0 0.5 0 0 0 0 1 0"), off("3.0000"));  // determinant 1
    EXPECT_EQ(failureOfMatrix("1 0.5 0 0 0 1 0 0 0 0 1 0"), off("0.5000"));  // determinant 1, sheared
    EXPECT_EQ(failureOfMatrix("1 0 0 0 0 1 0.02 0 0 0 1 0"), off("0.0200")); // determinant 1, sheared
    EXPECT_EQ(failureOfMatrix("0 0 0 0 0 0 0 0 0 0 0 0"), off("1.0000"));
    EXPECT_EQ(failureOfMatrix("1e200 0 0 0 0 1 0 0 0 0 1 0").substr(0, no.size()), no);
    EXPECT_EQ(failureOfMatrix("-1 0 0 0 0 1 0 0 0 0 1 0"), no + " but a reflection: its determinant is -1");
    EXPECT_EQ(failureOfMatrix("1 0 0 0 0 1 0.005 0 0 0 1 0"), "");
}

TEST(CsvPoses, ColumnsAreSecondsPositionAndQuaternionWithItsRealPartFirst)
{
    for (std::string const header :
         {"", "time,x,y,z,qw,qx,qy,qz\n", "# by hand\n\ntime,x,y,z,qw,qx,qy,qz\r\n"}) {
        auto const nodes = csv(header + "1.25,1,-2,3e0,0.5,0.5,-0.5,0.5\n-1, 0 ,0,0,1,0,0,0");
        ASSERT_EQ(nodes.size(), 2U);
        EXPECT_EQ(nodes[0].time, 1.25);
        expectPose(nodes[0], {1, -2, 3, 0.5, 0.5, -0.5, 0.5});
        EXPECT_EQ(nodes[1].time, -1.0);
    }
    EXPECT_EQ(failure(csv, "1,0,0,0,1,0,0"),
              "poses.csv:1: 7 columns, but a CSV line (time,x,y,z,qw,qx,qy,qz) has 8");
    EXPECT_EQ(failure(csv, "x,0,0,0,1,0,0,0"), "poses.csv:1: \"x\" is not a finite number");
}

TEST(PoseTexts, TheLineOfEachPoseIsKnown)
{
    std::istringstream text("# t\n1 0 0 0 0 0 0 1\n\n2 0 0 0 0 0 0 1\n");
    EXPECT_EQ(readPoses(PoseFormat::Tum, text, "a").lines, (std::vector<std::uint64_t>{2, 4}));
    std::istringstream times("\n5\n# t\n6\n");
    EXPECT_EQ(readTimes(times, "b").lines, (std::vector<std::uint64_t>{2, 4}));
}

TEST(PoseTexts, AUnitQuaternionIsKeptBitForBit)
{
    std::srand(17);
    std::size_t kept = 0;
    for (int i = 0; i < 1000; ++i) {
        Eigen::Quaterniond const q = TrafoT<double>::Random().rotation().normalized();
        std::string line = "1 0 0 0";
        for (double const number : {q.x(), q.y(), q.z(), q.w()}) {
            line += ' ' + shortestText(number);
        }
        Eigen::Quaterniond const read = tum(line).at(0).pose.rotation();
        kept += read.coeffs() == q.coeffs() ? 1 : 0;
    }
    EXPECT_EQ(kept, 1000U);
}

TEST(KittiPoses, ThereAreAsManyTimesAsPoses)
{
    std::string const two = "1 0 0 0 0 1 0 0 0 0 1 0\n1 0 0 0 0 1 0 0 0 0 1 0\n";
    EXPECT_EQ(failureOf([&] { static_cast<void>(kitti(two, {0.0})); }),
              "00.txt:2: there are only 1 times in times.txt");
    EXPECT_EQ(failureOf([&] {
                  static_cast<void>(kitti(two, {0.0, 1.0, 2.0}));
              }),
              "times.txt: 3 times for 2 poses in 00.txt");
}

TEST(KittiTimes, OneInALine)
{
    EXPECT_EQ(timesOf("# s\n0.000000e+00\n\n1.036e-01\r\n"), (std::vector<double>{0.0, 0.1036}));
    EXPECT_EQ(failure(timesOf, "0\n1 2\n"), "times.txt:2: 2 columns, but a line of times has 1");
    EXPECT_EQ(failure(timesOf, "0\nx\n"), "times.txt:2: \"x\" is not a finite number");
}
