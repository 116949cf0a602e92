#include "tests/tools/support/ToolFixture.h"
#include "tools/commands/SensorInfo.h"
#include "tools/commands/TrajectoryInfo.h"
#include "tools/io/RecordingFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::lineCount;
using support::quoted;
using support::ToolFixture;
using support::ToolRun;

TrajectoryNode node(double time, Eigen::Vector3d const& place)
{
    return {time, TrafoT<double>::Translation(place)};
}

/// Out of order: from 10 s to 16 s, 3 m and 4 m and 12 m long.
TrajectoryData handMade()
{
    TrajectoryData data;
    data.nodes = {
        node(11.0, {3, 0, 0}), node(10.0, {0, 0, 0}), node(16.0, {3, 4, 12}), node(12.0, {3, 4, 0})};
    data.devicePositions[Device::Device2] = TrafoT<double>({1.5, 0, -2}, {0, 0, 0, 1}, true);
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    return data;
}

/// A unit whose second sample has a magnetic field, and two rangefinders.
SensorData handMadeSensors()
{
    mapping::Vector3<double> const v{1.0, 2.0, 3.0};
    SensorData data;
    auto& imu = data.imuData["imu"];
    for (int i = 0; i < 4; ++i) {
        mapping::TimeStamp const time(i == 3 ? 10.125 : 10.0 + 0.025 * i);
        imu[1'000'000'000 + (i == 3 ? 12'500'000 : 2'500'000 * i)] =
            i == 1 ? std::make_shared<mapping::ImuData const>(time, v, v, v)
                   : std::make_shared<mapping::ImuData const>(time, v, v);
    }
    auto const burst = [&](double time, std::size_t points) {
        return std::make_shared<mapping::RangefinderData const>(
            mapping::TimeStamp(time),
            v,
            mapping::TimedPointCloud(std::vector<mapping::TimedRangefinderPoint>(points)));
    };
    data.rangefinderData["top"] = {{200'000'000, burst(2.0, 7)}};
    data.rangefinderData["base"] = {{100'000'000, burst(1.0, 5)}, {300'000'000, burst(3.0, 6)}};
    data.sensorPoses["top"] = {{1.5F, 0.0F, -2.0F}, {0.0F, 0.0F, 1.0F, 0.0F}};
    return data;
}

/// Without spaces and line ends.
std::string packed(std::string const& text)
{
    std::string flat;
    for (char const c : text) {
        flat += c == '\n' || c == ' ' ? "" : std::string(1, c);
    }
    return flat;
}

class InfoCommandTest : public ToolFixture
{
protected:
    void writeHandMade(std::string const& name) const
    {
        std::ofstream stream(file(name), std::ios::binary);
        writeTrajectory(handMade(), stream, name);
    }

    void writeHandMadeSensors(std::string const& name) const
    {
        std::ofstream stream(file(name), std::ios::binary);
        writeSensors(handMadeSensors(), stream, name);
    }
};

} // namespace

TEST(TrajectoryInfo, MeasuresInOrderOfTime)
{
    Json const info = describe(handMade());
    EXPECT_EQ(info.at("nodes"), 4);
    EXPECT_EQ(info.at("inTimeOrder"), false);
    EXPECT_EQ(info.at("repeatedTimes"), 0);
    ASSERT_TRUE(info.contains("from"));
    EXPECT_EQ(info.at("from"), 10.0);
    EXPECT_EQ(info.at("to"), 16.0);
    EXPECT_EQ(info.at("meanStep"), 2.0);
    EXPECT_EQ(info.at("largestStep"), 4.0);
    EXPECT_EQ(info.at("pathLength"), 19.0);
}

TEST(TrajectoryInfo, ListsTheGaps)
{
    TrajectoryData data;
    for (int i = 0; i < 40; ++i) { // a gap of 11 s after each third pose
        int const gaps = i / 3;
        data.nodes.push_back(node(i + 10.0 * gaps, {0, 0, 0}));
    }
    Json const info = describe(data);
    EXPECT_EQ(info.at("usualStep"), 1.0);
    ASSERT_EQ(info.at("gaps").size(), 13U);
    EXPECT_EQ(info.at("gaps")[0], (Json{{"from", 2.0}, {"to", 13.0}, {"duration", 11.0}}));
    std::ostringstream text;
    printTrajectory(info, text);
    EXPECT_NE(text.str().find("  gaps: 13 longer than 10.000000 s (ten usual steps)\n"
                              "    2.000000 s to 13.000000 s, 11.000000 s long\n"),
              std::string::npos)
        << text.str();
    EXPECT_NE(text.str().find("    and 3 more; --json lists all\n"), std::string::npos);
}

TEST(TrajectoryInfo, TheLaterOfTwoAtOneTimeCounts)
{
    TrajectoryData data;
    data.nodes = {node(1.0, {0, 0, 0}), node(2.0, {100, 0, 0}), node(2.0, {1, 0, 0}), node(3.0, {2, 0, 0})};
    Json const info = describe(data);
    EXPECT_EQ(info.at("inTimeOrder"), true);
    EXPECT_EQ(info.at("repeatedTimes"), 1);
    EXPECT_EQ(info.at("pathLength"), 2.0);
    EXPECT_EQ(info.at("meanStep"), 1.0);
}

TEST(TrajectoryInfo, NodesWithoutTimeAreCountedApart)
{
    TrajectoryData data;
    EXPECT_FALSE(describe(data).contains("from"));
    data.nodes = {node(std::numeric_limits<double>::quiet_NaN(), {0, 0, 0})};
    EXPECT_EQ(describe(data).at("nodesWithoutTime"), 1);
    EXPECT_FALSE(describe(data).contains("from"));
    data.nodes.push_back(node(5.0, {0, 0, 0}));
    ASSERT_TRUE(describe(data).contains("from"));
    EXPECT_EQ(describe(data).at("meanStep"), 0.0);
    EXPECT_EQ(describe(data).at("to"), 5.0);
}

TEST_F(InfoCommandTest, PrintsText)
{
    writeHandMade("a.trajectory");
    std::ofstream(file("a.trajectory"), std::ios::binary | std::ios::app) << "tail";
    ToolRun const info = run({"info", file("a.trajectory")});
    EXPECT_EQ(info.status, 0) << info.err;
    EXPECT_EQ(
        info.out,
        file("a.trajectory").string() +
            ": trajectory stream\n"
            "  nodes: 4, not in order of time (measured in order)\n"
            "  time: 10.000000 s to 16.000000 s, 6.000000 s long\n"
            "  steps in time: 2.000000 s on average, 4.000000 s at most\n"
            "  path: 19.000 m\n"
            "  gaps: 0 longer than 10.000000 s (ten usual steps)\n"
            "  device 0: translation 0.000000 0.000000 0.000000 m, rotation (w x y z) 1.000000 0.000000 "
            "0.000000 0.000000\n"
            "  device 2: translation 1.500000 0.000000 -2.000000 m, rotation (w x y z) 0.000000 0.000000 "
            "0.000000 1.000000\n"
            "  4 bytes follow the stream\n");
}

TEST_F(InfoCommandTest, PrintsJson)
{
    writeHandMade("a.trajectory");
    ToolRun const info = run({"info", "--json", file("a.trajectory")});
    EXPECT_EQ(info.status, 0) << info.err;
    EXPECT_EQ(
        packed(info.out),
        R"([{"file":)" + packed(quoted(file("a.trajectory"))) +
            R"(,"kind":"trajectory","nodes":4,"inTimeOrder":false,"repeatedTimes":0,"nodesWithoutTime":0,)"
            R"("from":10.0,"to":16.0,"duration":6.0,"meanStep":2.0,"largestStep":4.0,"pathLength":19.0,)"
            R"("usualStep":1.0,"longestStepWithoutGap":10.0,"gaps":[],)"
            R"("devices":[{"device":0,"translation":[0.0,0.0,0.0],"rotation":[1.0,0.0,0.0,0.0]},)"
            R"({"device":2,"translation":[1.5,0.0,-2.0],"rotation":[0.0,0.0,0.0,1.0]}],"bytesBehind":0}])");
}

TEST(SensorInfo, MeasuresEverySensor)
{
    Json const info = describe(handMadeSensors());
    ASSERT_EQ(info.at("inertialUnits").size(), 1U);
    Json const& unit = info.at("inertialUnits")[0];
    EXPECT_EQ(unit.at("name"), "imu");
    EXPECT_EQ(unit.at("withMagneticField"), 1);
    EXPECT_EQ(unit.at("samples"), 4);
    EXPECT_EQ(unit.at("from"), 10.0);
    EXPECT_EQ(unit.at("to"), 10.125);
    EXPECT_EQ(unit.at("duration"), 0.125);
    EXPECT_EQ(unit.at("rate"), 24.0);
    EXPECT_EQ(unit.at("largestGap"), 0.075);
    ASSERT_EQ(info.at("rangefinders").size(), 2U);
    EXPECT_EQ(info.at("rangefinders")[0].at("name"), "base");
    EXPECT_EQ(info.at("rangefinders")[0].at("points"), 11);
    EXPECT_EQ(info.at("rangefinders")[0].at("rate"), 0.5);
    EXPECT_EQ(info.at("rangefinders")[1].at("name"), "top");
    EXPECT_EQ(info.at("rangefinders")[1].at("points"), 7);
    EXPECT_EQ(info.at("rangefinders")[1].at("rate"), 0.0);
    EXPECT_EQ(info.at("rangefinders")[1].at("largestGap"), 0.0);
    EXPECT_EQ(info.at("poses")[0].at("translation"), (Json{1.5, 0.0, -2.0}));
    EXPECT_EQ(info.at("poses")[0].at("rotation"), (Json{0.0, 0.0, 0.0, 1.0}));
    EXPECT_EQ(info.at("posesApplied"), false);
    EXPECT_EQ(info.at("tables"), 12); // the root, three sensors, seven samples, one pose
}

TEST(SensorInfo, AnySpanCanBeMeasured)
{
    SensorData data;
    data.imuData["empty"];
    auto const sample = std::make_shared<mapping::ImuData const>(
        mapping::TimeStamp(0.0), mapping::Vector3<double>(), mapping::Vector3<double>());
    // As far apart as ticks can be, and a tick apart where seconds have no digits for it.
    data.imuData["wide"] = {{std::numeric_limits<int64>::min(), sample},
                            {std::numeric_limits<int64>::max(), sample}};
    data.imuData["dense"] = {{140'000'000'000'000'000, sample}, {140'000'000'000'000'001, sample}};
    Json const units = describe(data).at("inertialUnits");
    ASSERT_EQ(units.size(), 3U);
    EXPECT_EQ(units[0].at("duration"), 1e-8);
    EXPECT_NEAR(units[0].at("rate"), 1e8, 1.0);
    EXPECT_EQ(units[1].at("samples"), 0);
    EXPECT_EQ(units[1].at("rate"), 0.0);
    EXPECT_NEAR(units[2].at("largestGap"), 184467440737.1, 0.1);
}

TEST_F(InfoCommandTest, PrintsASensorStreamAsText)
{
    writeHandMadeSensors("a.sensors");
    ToolRun const info = run({"info", file("a.sensors")});
    EXPECT_EQ(info.status, 0) << info.err;
    EXPECT_EQ(info.out,
              file("a.sensors").string() +
                  ": sensor stream\n"
                  "  inertial unit \"imu\": 4 samples, 1 of them with magnetic field\n"
                  "    time: 10.000000 s to 10.125000 s, 0.125000 s long\n"
                  "    24.000 samples per second, largest gap 0.075000 s\n"
                  "  rangefinder \"base\": 2 samples with 11 points\n"
                  "    time: 1.000000 s to 3.000000 s, 2.000000 s long\n"
                  "    0.500 samples per second, largest gap 2.000000 s\n"
                  "  rangefinder \"top\": 1 samples with 7 points\n"
                  "    time: 2.000000 s to 2.000000 s, 0.000000 s long\n"
                  "    0.000 samples per second, largest gap 0.000000 s\n"
                  "  pose of \"top\": translation 1.500000 0.000000 -2.000000 m, rotation (w x y z) 0.000000 "
                  "0.000000 0.000000 1.000000\n"
                  "  the samples are as recorded, not rotated by the poses\n"
                  "  tables: 12 of the 1000000 that a reader accepts\n");
}

TEST_F(InfoCommandTest, PrintsWhetherThePosesAreApplied)
{
    SensorData data = handMadeSensors();
    data.applyPoses();
    std::ofstream stream(file("a.sensors"), std::ios::binary);
    writeSensors(data, stream, "a.sensors");
    stream.close();
    EXPECT_NE(run({"info", file("a.sensors")}).out.find("  the samples are rotated by the poses\n"),
              std::string::npos);
    EXPECT_NE(run({"info", "--json", file("a.sensors")}).out.find("\"posesApplied\": true"),
              std::string::npos);
}

TEST_F(InfoCommandTest, PrintsASensorStreamAsJson)
{
    writeHandMadeSensors("a.sensors");
    ToolRun const info = run({"info", "--json", file("a.sensors")});
    EXPECT_EQ(info.status, 0) << info.err;
    EXPECT_EQ(
        packed(info.out),
        R"([{"file":)" + packed(quoted(file("a.sensors"))) +
            R"(,"kind":"sensor",)"
            R"("inertialUnits":[{"name":"imu","samples":4,"from":10.0,"to":10.125,"duration":0.125,"rate":24.0,)"
            R"("largestGap":0.075,"withMagneticField":1}],)"
            R"("rangefinders":[{"name":"base","samples":2,"from":1.0,"to":3.0,"duration":2.0,"rate":0.5,)"
            R"("largestGap":2.0,"points":11},)"
            R"({"name":"top","samples":1,"from":2.0,"to":2.0,"duration":0.0,"rate":0.0,"largestGap":0.0,"points":7}],)"
            R"("poses":[{"name":"top","translation":[1.5,0.0,-2.0],"rotation":[0.0,0.0,0.0,1.0]}],)"
            R"("posesApplied":false,"tables":12,"largestTableCount":1000000,"bytesBehind":0}])");
}

TEST_F(InfoCommandTest, SensorNamesCannotBreakTheLine)
{
    SensorData data;
    data.sensorPoses["a\nb\xff"] = {};
    std::ofstream stream(file("a.sensors"), std::ios::binary);
    writeSensors(data, stream, "a.sensors");
    stream.close();
    EXPECT_NE(run({"info", file("a.sensors")}).out.find("  pose of \"a?b?\": "), std::string::npos);
    EXPECT_EQ(run({"info", "--json", file("a.sensors")}).status, 0);
}

TEST_F(InfoCommandTest, OneBadFileDoesNotStopTheOthers)
{
    writeHandMade("a.trajectory");
    auto const bad = write("b.trajectory", "rubbish that is no stream");
    auto const neither = write("c", std::string(100, '\0'));
    EXPECT_NE(run({"info", neither}).err.find("is damaged, or neither a trajectory nor a sensor stream"),
              std::string::npos);
    ToolRun const text = run({"info", bad, file("none"), file("a.trajectory")});
    EXPECT_EQ(text.status, 1);
    EXPECT_EQ(lineCount(text.err), 2) << text.err;
    EXPECT_NE(text.out.find("  nodes: 4"), std::string::npos);
    ToolRun const json = run({"info", "--json", bad, file("a.trajectory")});
    EXPECT_EQ(json.status, 1);
    EXPECT_NE(json.out.find("\"error\": "), std::string::npos);
    EXPECT_NE(json.out.find("\"pathLength\": 19.0"), std::string::npos);
}
