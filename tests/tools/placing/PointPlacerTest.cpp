#include "tools/placing/PointPlacer.h"

#include "tests/tools/support/CloudTable.h"
#include "tests/tools/support/ToolFixture.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Numbers = std::vector<double>;
using Names = std::vector<std::string>;
using support::CloudTable;

/// From x = 0 at 10 s to x = 10 at 20 s, and on to x = 11 at 21 s. `turned` turns the device by 90 degrees
/// about z.
Trajectory straightAhead(bool turned = false)
{
    TrafoT<double>::Quaternion const rotation(
        Eigen::AngleAxisd(turned ? std::numbers::pi / 2.0 : 0.0, Eigen::Vector3d::UnitZ()));
    TrajectoryData data;
    data.nodes.emplace_back(10.0, TrafoT<double>({0.0, 0.0, 0.0}, rotation, true));
    data.nodes.emplace_back(20.0, TrafoT<double>({10.0, 0.0, 0.0}, rotation, true));
    data.nodes.emplace_back(21.0, TrafoT<double>({11.0, 0.0, 0.0}, rotation, true));
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    return data.buildTrajectoryFromTrajectoryNodes(Device::Device0);
}

/// The points of a PLY text with these properties.
CloudTable cloud(std::vector<std::string> const& properties, std::vector<std::string> const& lines)
{
    std::string text = "ply\nformat ascii 1.0\nelement vertex " + std::to_string(lines.size()) + '\n';
    for (std::string const& property : properties) {
        text += "property " + property + '\n';
    }
    text += "end_header\n";
    for (std::string const& line : lines) {
        text += line + '\n';
    }
    return support::parseCloud(text, "scan.ply");
}

Names const plainScan{"float x", "float y", "float z", "double time"};

struct Result
{
    CloudTable cloud;
    PlacedBlock block;
};

Result place(CloudTable const& scan,
             PlacingSettings const& settings = {},
             Trajectory const& trajectory = straightAhead())
{
    PointPlacer const placer(
        scan.layout, TimeOfPoints(scan.layout, {}, "scan.ply"), trajectory, settings, "scan.ply");
    Result result;
    placer.place(scan.points, result.block);
    result.cloud = {placer.placedLayout(), result.block.points};
    return result;
}

} // namespace

TEST(PointPlacer, MovesPointsToWhereTheDeviceWas)
{
    Result const result = place(cloud(plainScan, {"0 1 2 10", "1 1 1 12.5", "0 0 1 21"}));
    EXPECT_EQ(result.cloud.fields(), (Names{"x double", "y double", "z double", "time double"}));
    ASSERT_EQ(result.cloud.size(), 3U);
    EXPECT_EQ(result.cloud.row(0), (Numbers{0.0, 1.0, 2.0, 10.0}));
    EXPECT_EQ(result.cloud.row(1), (Numbers{3.5, 1.0, 1.0, 12.5}));
    EXPECT_EQ(result.cloud.row(2), (Numbers{11.0, 0.0, 1.0, 21.0})) << "at exactly the time of the last pose";
    EXPECT_EQ(result.block.counts.placed, 3U);
    EXPECT_EQ(result.block.counts.earliest, 10.0);
    EXPECT_EQ(result.block.counts.latest, 21.0);
}

TEST(PointPlacer, EveryPointIsAccountedFor)
{
    Result const result = place(cloud(plainScan,
                                      {"1 0 0 15",
                                       "1 0 0 nan",
                                       "1 0 0 nan",
                                       "1 0 0 9.99",
                                       "1 0 0 21.01",
                                       "1 0 0 -15",
                                       "0 0 0 15",
                                       "nan 0 0 15"}));
    PlacingCounts const& counts = result.block.counts;
    EXPECT_EQ(counts.points, 8U);
    EXPECT_EQ(counts.placed, 1U);
    EXPECT_EQ(counts.withoutTime, 2U);
    EXPECT_EQ(counts.outside, 3U);
    EXPECT_EQ(counts.withoutPosition, 2U);
    EXPECT_EQ(counts.inGaps, 0U);
    EXPECT_EQ(counts.earliest, -15.0);
    EXPECT_EQ(counts.latest, 21.01);
    EXPECT_EQ(result.cloud.size(), 1U);
}

TEST(PointPlacer, TimesOutOfTheRangeOfIntegerTimeAreOutside)
{
    // 2^64 ticks later is the same instant to a count that wraps around.
    CloudTable const scan = cloud(
        plainScan,
        {"1 0 0 1e11", "1 0 0 -1e11", "1 0 0 1e300", "1 0 0 inf", "1 0 0 -inf", "1 0 0 184467440752.09552"});
    EXPECT_EQ(place(scan).block.counts.outside, scan.size());
}

TEST(PointPlacer, PointsInGapsAreLeftOutOrPlacedAcross)
{
    CloudTable const scan = cloud(plainScan, {"1 0 0 10", "1 0 0 15", "1 0 0 20.5", "1 0 0 30"});
    Result const without = place(scan, {5.0, false, {}});
    EXPECT_EQ(without.cloud.column("time"), (Numbers{10.0, 20.5}));
    EXPECT_EQ(without.block.counts.inGaps, 1U);
    EXPECT_EQ(without.block.counts.placed, 2U);
    Result const across = place(scan, {5.0, true, {}});
    EXPECT_EQ(across.cloud.column("x"), (Numbers{1.0, 6.0, 11.5}));
    EXPECT_EQ(across.block.counts.inGaps, 1U);
    EXPECT_EQ(across.block.counts.placed, 3U);
    EXPECT_EQ(across.block.counts.outside, 1U);
}

TEST(PointPlacer, EveryPropertyKeepsItsTypeAndValue)
{
    CloudTable const scan =
        cloud({"uchar red",
               "short Y",
               "float intensity",
               "double GPS_Time",
               "char label",
               "double X",
               "ushort id",
               "int Z",
               "uint code"},
              {"200 2 0.1 11 -7 0.5 65535 3 4294967295", "1 1 0.2 9 1 1 1 1 1", "7 4 nan 12 8 0 9 5 6"});
    Result const result = place(scan);
    EXPECT_EQ(result.cloud.fields(),
              (Names{"red uchar",
                     "y double",
                     "intensity float",
                     "GPS_Time double",
                     "label char",
                     "x double",
                     "id ushort",
                     "z double",
                     "code uint"}));
    ASSERT_EQ(result.cloud.size(), 2U);
    EXPECT_EQ(result.cloud.row(0),
              (Numbers{200.0, 2.0, static_cast<double>(0.1F), 11.0, -7.0, 1.5, 65535.0, 3.0, 4294967295.0}));
    EXPECT_TRUE(std::isnan(result.cloud.column("intensity")[1]));
    EXPECT_EQ(result.cloud.column("code")[1], 6.0);
}

TEST(PointPlacer, NormalsAreRotated)
{
    CloudTable const scan =
        cloud({"float x", "float y", "float z", "float nx", "float ny", "float nz", "double time"},
              {"1 0 0 1 0 0 15"});
    Result const result = place(scan, {}, straightAhead(true));
    EXPECT_NEAR(result.cloud.column("x")[0], 5.0, 1e-12);
    EXPECT_NEAR(result.cloud.column("y")[0], 1.0, 1e-12);
    EXPECT_NEAR(result.cloud.column("nx")[0], 0.0, 1e-12);
    EXPECT_NEAR(result.cloud.column("ny")[0], 1.0, 1e-7);
    EXPECT_NEAR(result.cloud.column("nz")[0], 0.0, 1e-12);
    CloudTable const whole =
        cloud({"float x", "float y", "float z", "char nx", "char ny", "char nz", "double time"},
              {"1 0 0 1 0 0 15"});
    EXPECT_EQ(support::failureOf([&] { place(whole); }),
              "scan.ply: the directions nx, ny and nz are integers, which cannot be rotated; store them as "
              "floats, or "
              "leave them out");
}

TEST(PointPlacer, AnOriginGivesFloatsAndSaysWhatTheyLose)
{
    Result const result =
        place(cloud({"double x", "double y", "double z", "double t"}, {"1000.00001 2 3 10"}),
              {100.0, false, Eigen::Vector3d(1000.0, 0.0, 3.0)});
    EXPECT_EQ(result.cloud.fields(), (Names{"x float", "y float", "z float", "t double"}));
    EXPECT_EQ(result.cloud.column("x")[0], static_cast<double>(static_cast<float>(1000.00001 - 1000.0)));
    EXPECT_EQ(result.cloud.column("z")[0], 0.0);
    EXPECT_GT(result.block.counts.largestRounding, 0.0);
    EXPECT_LT(result.block.counts.largestRounding, 1e-12);
    // 16777217 is the first integer that a float cannot hold.
    Result const far = place(cloud({"double x", "double y", "double z", "double t"}, {"16777217 2 3 10"}),
                             {100.0, false, Eigen::Vector3d(0.0, 0.0, 0.0)});
    EXPECT_EQ(far.block.counts.largestRounding, 1.0);
}

TEST(PointPlacer, MissingCoordinatesAreNamed)
{
    CloudTable const scan = cloud({"float x", "float y", "double time"}, {"1 2 3"});
    EXPECT_EQ(
        support::failureOf([&] { place(scan); }),
        "scan.ply: its points lack x, y or z; the properties are: x (float), y (float) and time (double)");
}
