#include "tests/tools/support/CloudTable.h"
#include "tests/tools/support/PlaceFixture.h"
#include "tools/io/RecordingFile.h"
#include "tools/simulation/CloudPointWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::CloudTable;
using support::lastLine;
using support::lineCount;
using support::readCloud;
using support::ToolRun;
using Names = std::vector<std::string>;
using Numbers = std::vector<double>;

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

class PlaceCommandTest : public support::PlaceFixture
{};

} // namespace

TEST_F(PlaceCommandTest, ASimulatedWalkIsPlacedOnItsWalls)
{
    simulate({"--seconds", "1"});
    ToolRun const placing = place(
        {"--building", file("building.json"), "--cloud", file("cloud.ply"), "--picture", file("plan.png")});
    ASSERT_EQ(placing.status, 0) << placing.err;
    EXPECT_EQ(placing.err, "");
    Result const result(placing.out);
    std::size_t const all = readCloud(file("scan.ply")).size();
    EXPECT_EQ(result.all, all);
    // 0.4 of 1.4 s lie outside, and one point in 200 has no time.
    EXPECT_NEAR(static_cast<double>(result.placed) / static_cast<double>(all), 1.0 / 1.4 * 0.995, 0.003);
    EXPECT_LT(result.rms, 0.01);
    EXPECT_GT(result.rms, 0.001);
    EXPECT_EQ(readCloud(file("cloud.ply")).size(), result.placed);
    EXPECT_EQ(read("plan.png").substr(1, 3), "PNG");

    // The sensor stream has the same points but for those without a time.
    ToolRun const other = placeSensors({"--building", file("building.json"), "--cloud", file("other.ply")});
    ASSERT_EQ(other.status, 0) << other.err;
    Result const ofSensors(other.out);
    EXPECT_EQ(ofSensors.placed, result.placed);
    EXPECT_NEAR(static_cast<double>(ofSensors.placed) / static_cast<double>(ofSensors.all), 1.0 / 1.4, 0.003);
    EXPECT_EQ(ofSensors.rms, result.rms);
    CloudTable const cloud = readCloud(file("cloud.ply"));
    CloudTable const otherCloud = readCloud(file("other.ply"));
    ASSERT_EQ(otherCloud.size(), cloud.size());
    for (auto const& [name, tolerance] : {std::pair("time", 1e-9), {"x", 1e-5}, {"y", 1e-5}}) {
        Numbers const ours = cloud.column(name);
        Numbers const others = otherCloud.column(name);
        for (std::size_t i = 0; i < ours.size(); ++i) {
            ASSERT_NEAR(others[i], ours[i], tolerance) << name << ' ' << i;
        }
    }
}

TEST_F(PlaceCommandTest, EveryTargetIsPlacedOnTheWalls)
{
    simulate({"--seconds", "0.3"});
    for (int const to : {0, 1, 2, 3}) {
        ToolRun const placing = place({"--building", file("building.json")}, 1, to);
        ASSERT_EQ(placing.status, 0) << placing.err;
        EXPECT_LT(Result(placing.out).rms, 0.01) << "to " << to;
    }
    ToolRun const wrong = place({"--building", file("building.json")}, 2, 0);
    EXPECT_GT(Result(wrong.out).rms, 0.05) << "the scan of one head placed as the other's must not fit";
}

TEST_F(PlaceCommandTest, EveryRangefinderBelongsToItsDevice)
{
    simulate({"--seconds", "0.3"});
    for (int const head : {1, 2}) {
        std::vector<std::string> const more{
            "--rangefinder", "scanner" + std::to_string(head), "--building", file("building.json")};
        EXPECT_LT(Result(placeSensors(more, head, 0).out).rms, 0.01) << head;
        EXPECT_GT(Result(placeSensors(more, 3 - head, 0).out).rms, 0.05) << head;
    }
}

TEST_F(PlaceCommandTest, ARecordingFarFromTimeZeroIsPlacedOnItsWalls)
{
    std::string poses;
    for (int i = 0; i < 20; ++i) {
        double const a = 0.1 * i;
        std::ostringstream line;
        line.precision(17);
        line << 1403715524.907143 + 0.05 * i << ' ' << 2.0 * std::sin(a) << ' ' << std::cos(a) << ' ' << 1.0
             << ' ' << std::sin(a / 2.0) << " 0 0 " << std::cos(a / 2.0) << '\n';
        poses += line.str();
    }
    ASSERT_EQ(run({"import", "--format", "tum", write("poses.txt", poses), file("r.trajectory")}).status, 0);
    simulate({"--along", file("r.trajectory")});
    for (ToolRun const& placing :
         {place({"--building", file("building.json")}), placeSensors({"--building", file("building.json")})})
    {
        ASSERT_EQ(placing.status, 0) << placing.err;
        EXPECT_LT(Result(placing.out).rms, 0.01);
    }
}

TEST_F(PlaceCommandTest, APointOfABurstIsPlacedAtItsOwnTime)
{
    writeSmallRecording();
    TrajectoryData data;
    data.nodes.emplace_back(100.0, TrafoT<double>::Translation({0.0, 0.0, 0.0}));
    data.nodes.emplace_back(101.0, TrafoT<double>::Translation({0.0, 8.0, 0.0}));
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    data.devicePositions[Device::Device1] = TrafoT<double>::Translation({0.0, 0.0, 2.0});
    std::ofstream trajectory(file("a.trajectory"), std::ios::binary);
    writeTrajectory(data, trajectory, "a.trajectory");
    trajectory.close();
    writeSensorStream(smallSensors());

    ToolRun const first = placeSensors({"--cloud", file("cloud.ply")});
    EXPECT_EQ(lastLine(first.out), "placed 2 of 2 points") << first.err;
    CloudTable const cloud = readCloud(file("cloud.ply"));
    ASSERT_EQ(cloud.size(), 2U);
    EXPECT_EQ(cloud.row(0), (Numbers{1.0, 2.0, 2.0, 100.25}));
    EXPECT_EQ(cloud.row(1), (Numbers{2.0, 6.0, 2.0, 100.75}));

    ToolRun const named = placeSensors({"--rangefinder", "under", "--cloud", file("cloud.ply")});
    EXPECT_EQ(lastLine(named.out), "placed 1 of 1 points") << named.err;
    EXPECT_EQ(readCloud(file("cloud.ply")).row(0), (Numbers{5.0, 4.0, 2.0, 100.5}));
}

TEST_F(PlaceCommandTest, AnUnsuitableSensorStreamIsReported)
{
    writeSmallRecording();
    auto const reason = [&](SensorData const& data, std::vector<std::string> const& more = {}) {
        writeSensorStream(data);
        ToolRun const placing = placeSensors(more);
        EXPECT_EQ(placing.status, 1);
        EXPECT_EQ(lineCount(placing.err), 1) << placing.err;
        std::string const begin = "roamscan: " + file("a.sensors").string() + ": ";
        EXPECT_EQ(placing.err.substr(0, begin.size()), begin);
        return placing.err.substr(std::min(begin.size(), placing.err.size()));
    };
    EXPECT_EQ(reason(smallSensors(), {"--rangefinder", "imu"}),
              "it has no rangefinder \"imu\"; there are: \"top\" and \"under\"\n");
    SensorData rotated = smallSensors();
    rotated.applyPoses();
    EXPECT_EQ(reason(rotated),
              "the samples of \"top\" are already rotated by its pose; give the stream as it was recorded\n");
    writeSensorStream(rotated); // "under" has no pose
    EXPECT_EQ(placeSensors({"--rangefinder", "under"}).status, 0);
    SensorData poses;
    poses.sensorPoses["top"] = {};
    EXPECT_EQ(reason(poses), "there is no rangefinder in it\n");
    SensorData pointless;
    pointless.rangefinderData["top"][0] = std::make_shared<mapping::RangefinderData const>(
        mapping::TimeStamp(0.0), mapping::Vector3<double>(), mapping::TimedPointCloud());
    EXPECT_EQ(reason(pointless), "there is no point in it\n");
    SensorData elsewhen = smallSensors();
    elsewhen.modifyTime([](int64 tick) { return tick + 100'000'000'000; });
    EXPECT_EQ(reason(elsewhen).substr(0, 36), "none of its 2 points could be placed");
    write("a.sensors", "rubbish that is no stream");
    EXPECT_NE(placeSensors({}).err.find("is no sensor stream"), std::string::npos);
}

TEST_F(PlaceCommandTest, EveryPointIsAccountedForInPlainWords)
{
    writeSmallRecording();
    ToolRun const placing = place({"--cloud", file("cloud.ply")});
    EXPECT_EQ(placing.status, 0) << placing.err;
    EXPECT_EQ(
        placing.out,
        "5 points in the scan\n"
        "1 points were placed\n"
        "1 points had no time\n"
        "2 points lay outside the trajectory in time\n"
        "0 points lay in gaps of the trajectory longer than 10.000000 s (ten usual steps) and were left out\n"
        "1 points had no measured position\n"
        "placed 1 of 5 points\n");
    CloudTable const cloud = readCloud(file("cloud.ply"));
    EXPECT_EQ(cloud.fields(), (Names{"x double", "y double", "z double", "intensity ushort", "time double"}));
    ASSERT_EQ(cloud.size(), 1U);
    EXPECT_EQ(cloud.row(0), (Numbers{4.0, 0.5, 1.0, 77.0, 100.5}));
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

TEST_F(PlaceCommandTest, AMissingDeviceIsReported)
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
    auto const expectFailure = [&](std::string const& reason, std::string const& lastLineOfOutput) {
        ToolRun const placing = place({"--cloud", file("cloud.ply"), "--picture", file("plan.png")});
        EXPECT_EQ(placing.status, 1) << reason;
        EXPECT_EQ(placing.out.empty() ? placing.out : lastLine(placing.out), lastLineOfOutput);
        EXPECT_EQ(lineCount(placing.err), 1) << placing.err;
        EXPECT_NE(placing.err.find(reason), std::string::npos) << placing.err;
        EXPECT_EQ(names(), (Names{"a.trajectory", "scan.ply"}));
    };
    std::string const scan = read("scan.ply");
    write("scan.ply", scan.substr(0, scan.size() - 1));
    expectFailure("cut off or damaged", "");
    std::ostringstream empty;
    CloudPointWriter(empty, "scan.ply").finish();
    write("scan.ply", empty.str());
    expectFailure("there is no point in it", "placed 0 of 0 points");
    std::ostringstream elsewhen;
    CloudPointWriter writer(elsewhen, "scan.ply");
    writer.add({{{1.0F, 0.0F, 0.0F}, 0}, 1e9});
    writer.finish();
    write("scan.ply", elsewhen.str());
    expectFailure(
        "none of its 1 points could be placed: 1 outside the trajectory in time (points with a time are from "
        "1000000000.000 s to 1000000000.000 s, the trajectory from 100.000 s to 101.000 s",
        "placed 0 of 1 points");
    std::string const trajectory = read("a.trajectory");
    write("a.trajectory", trajectory.substr(0, trajectory.size() - 1));
    expectFailure("ends early", "");
}

TEST_F(PlaceCommandTest, ATrajectoryWithoutPosesIsReported)
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
    writeSensorStream(smallSensors());
    EXPECT_NE(placeSensors({"--cloud", file("a.sensors")}).err.find("is named twice"), std::string::npos);
    EXPECT_EQ(names(), (Names{"a.sensors", "a.trajectory", "scan.ply"}));
}

TEST_F(PlaceCommandTest, WhyNothingWasPlacedIsSaid)
{
    writeSmallRecording();
    auto const reason = [&](std::vector<std::string> const& lines,
                            std::vector<std::string> const& more = {}) {
        writeTextScan("double time", lines);
        ToolRun const placing = place(more);
        EXPECT_EQ(placing.status, 1);
        EXPECT_EQ(lastLine(placing.out), "placed 0 of " + std::to_string(lines.size()) + " points");
        auto const begin = placing.err.find("placed: ");
        return begin == std::string::npos ? placing.err : placing.err.substr(begin + 8);
    };
    EXPECT_EQ(reason({"1 0 0 nan", "1 0 0 nan"}), "2 without a time (NaN)\n");
    EXPECT_EQ(reason({"0 0 0 100.5"}), "1 without a measured position (zero or not finite)\n");
    EXPECT_EQ(
        reason({"1 0 0 100.5"}, {"--max-gap", "0.5"}),
        "1 in gaps of the trajectory longer than 0.500000 s (--max-gap sets the longest gap, --across-gaps "
        "places them)\n");
    EXPECT_EQ(reason({"1 0 0 nan", "0 0 0 100.5"}),
              "1 without a time (NaN) and 1 without a measured position (zero or not finite)\n");
}

TEST_F(PlaceCommandTest, GapsAreLeftOutOrPlacedAcross)
{
    writeSmallRecording();
    writeTextScan("double time", {"1 0 0 100", "2 0 0 100.5", "3 0 0 101"});
    ToolRun const without = place({"--max-gap", "0.5", "--cloud", file("cloud.ply")});
    EXPECT_EQ(lastLine(without.out), "placed 2 of 3 points") << without.err;
    EXPECT_NE(
        without.out.find("1 points lay in gaps of the trajectory longer than 0.500000 s and were left out\n"),
        std::string::npos)
        << without.out;
    EXPECT_EQ(readCloud(file("cloud.ply")).column("time"), (Numbers{100.0, 101.0}));
    ToolRun const across = place({"--max-gap", "0.5", "--across-gaps", "--json"});
    EXPECT_NE(across.out.find("\"inGaps\": 1"), std::string::npos) << across.out;
    EXPECT_NE(across.out.find("\"placed\": 3"), std::string::npos) << across.out;
}

TEST_F(PlaceCommandTest, OtherClocksAndUnitsAreConverted)
{
    writeSmallRecording();
    writeTextScan("uint stamp", {"1 0 0 500000", "1 0 0 1500000"});
    EXPECT_NE(place({}).err.find("--time-property"), std::string::npos);
    ToolRun const placing = place({"--time-property",
                                   "stamp",
                                   "--time-scale",
                                   "1e-6",
                                   "--time-offset",
                                   "100",
                                   "--cloud",
                                   file("cloud.ply")});
    EXPECT_EQ(lastLine(placing.out), "placed 1 of 2 points") << placing.err;
    CloudTable const cloud = readCloud(file("cloud.ply"));
    EXPECT_EQ(cloud.column("stamp"), (Numbers{500000.0})) << "the property itself is unchanged";
}

TEST_F(PlaceCommandTest, TimesThatCannotTellTheStepsApartAreRefused)
{
    TrajectoryData data;
    for (int i = 0; i < 100; ++i) {
        data.nodes.emplace_back(1.4e9 + 0.01 * i, TrafoT<double>::Translation({3.0, 0.0, 0.0}));
    }
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    std::ofstream trajectory(file("a.trajectory"), std::ios::binary);
    writeTrajectory(data, trajectory, "a.trajectory");
    trajectory.close();
    writeTextScan("float time", {"1 0 0 1.4e9"});
    ToolRun const floats = place({}, 0, 0);
    EXPECT_EQ(floats.status, 1);
    EXPECT_NE(floats.err.find(
                  "the time property \"time\" of type float has steps of 128.000000 s at the times of the "
                  "trajectory, whose poses are 0.010000 s apart"),
              std::string::npos)
        << floats.err;
    writeTextScan("float time", {"1 0 0 0.5"});
    EXPECT_EQ(place({"--time-offset", "1.4e9"}, 0, 0).status, 0);
}

TEST_F(PlaceCommandTest, CoordinatesAreDoublesOrFloatsRelativeToAnOffset)
{
    TrajectoryData data;
    for (double const time : {100.0, 101.0}) {
        data.nodes.emplace_back(time, TrafoT<double>::Translation({5400123.456789, 400.0, 10.0}));
    }
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    std::ofstream trajectory(file("a.trajectory"), std::ios::binary);
    writeTrajectory(data, trajectory, "a.trajectory");
    trajectory.close();
    writeTextScan("double time", {"0.125 0 0 100.5"});
    EXPECT_EQ(place({"--cloud", file("cloud.ply")}, 0, 0).status, 0);
    EXPECT_EQ(readCloud(file("cloud.ply")).column("x"), (Numbers{5400123.456789 + 0.125}));
    ToolRun const automatic = place({"--cloud", file("cloud.ply"), "--offset", "auto"}, 0, 0);
    EXPECT_NE(
        automatic.out.find(
            "coordinates are floats relative to 5400100.000, 400.000, 0.000, rounded by at most 0.00000"),
        std::string::npos)
        << automatic.out << automatic.err;
    EXPECT_EQ(readCloud(file("cloud.ply")).column("x"),
              (Numbers{static_cast<double>(static_cast<float>(5400123.456789 + 0.125 - 5400100.0))}));
    EXPECT_NE(
        read("cloud.ply").find("comment offset 5400100.000000 400.000000 0.000000 is to be added to x y z\n"),
        std::string::npos);
    EXPECT_EQ(place({"--cloud", file("cloud.ply"), "--offset", "5400000,0,10"}, 0, 0).status, 0);
    EXPECT_EQ(readCloud(file("cloud.ply")).column("z"), (Numbers{0.0}));
    EXPECT_NE(place({"--offset", "1,2"}, 0, 0).err.find("give X,Y,Z in metres, or auto"), std::string::npos);
    EXPECT_NE(place({"--offset", "1,2,x"}, 0, 0).err.find("give X,Y,Z in metres, or auto"),
              std::string::npos);
}

TEST_F(PlaceCommandTest, AnUnknownEndingIsRefused)
{
    writeSmallRecording();
    ToolRun const placing = place({"--cloud", file("cloud.xls")});
    EXPECT_EQ(placing.status, 1);
    EXPECT_NE(placing.err.find("cloud.xls: the ending of a cloud must be .ply, .pcd, .csv or .las"),
              std::string::npos)
        << placing.err;
}

TEST_F(PlaceCommandTest, ADeviceThatIsNotTheRangefinderIsWarnedAbout)
{
    ASSERT_EQ(run({"simulate", file("a"), "--seconds", "0.5", "--panorama", "0"}).status, 0);
    auto const place = [&](std::string const& device) {
        return run({"place",
                    "--trajectory",
                    file("a/walk.trajectory"),
                    "--sensors",
                    file("a/walk.sensors"),
                    "--from",
                    device,
                    "--to",
                    "0"});
    };
    EXPECT_EQ(place("1").err, "");
    ToolRun const other = place("2");
    EXPECT_EQ(other.status, 0) << other.err;
    EXPECT_EQ(other.err.find("roamscan: warning: the pose of \"scanner1\" in the sensor stream is "), 0U)
        << other.err;
    EXPECT_NE(other.err.find("from the position of device 2; it is that of device 1\n"), std::string::npos)
        << other.err;
}
