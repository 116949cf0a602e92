#include "tests/tools/support/ToolFixture.h"
#include "tools/commands/SensorSummary.h"
#include "tools/commands/TrajectorySummary.h"
#include "tools/io/SensorFile.h"
#include "tools/io/TrajectoryFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
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

TEST(TrajectorySummary, MeasuresInOrderOfTime)
{
    TrajectorySummary const summary = summarise(handMade());
    EXPECT_EQ(summary.nodes, 4U);
    EXPECT_FALSE(summary.inOrder);
    EXPECT_EQ(summary.repeatedTimes, 0U);
    ASSERT_TRUE(summary.span);
    EXPECT_EQ(summary.span->from, 10.0);
    EXPECT_EQ(summary.span->to, 16.0);
    EXPECT_EQ(summary.span->meanStep, 2.0);
    EXPECT_EQ(summary.span->largestStep, 4.0);
    EXPECT_EQ(summary.span->pathLength, 19.0);
}

TEST(TrajectorySummary, TheLaterOfTwoAtOneTimeCounts)
{
    TrajectoryData data;
    data.nodes = {node(1.0, {0, 0, 0}), node(2.0, {100, 0, 0}), node(2.0, {1, 0, 0}), node(3.0, {2, 0, 0})};
    TrajectorySummary const summary = summarise(data);
    EXPECT_TRUE(summary.inOrder);
    EXPECT_EQ(summary.repeatedTimes, 1U);
    EXPECT_EQ(summary.span->pathLength, 2.0);
    EXPECT_EQ(summary.span->meanStep, 1.0);
}

TEST(TrajectorySummary, NodesWithoutTimeAreCountedApart)
{
    TrajectoryData data;
    EXPECT_FALSE(summarise(data).span);
    data.nodes = {node(std::numeric_limits<double>::quiet_NaN(), {0, 0, 0})};
    EXPECT_EQ(summarise(data).nodesWithoutTime, 1U);
    EXPECT_FALSE(summarise(data).span);
    data.nodes.push_back(node(5.0, {0, 0, 0}));
    ASSERT_TRUE(summarise(data).span);
    EXPECT_EQ(summarise(data).span->meanStep, 0.0);
    EXPECT_EQ(summarise(data).span->to, 5.0);
}

TEST_F(InfoCommandTest, SaysItInWords)
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
            "  device 0: translation 0.000000 0.000000 0.000000 m, rotation (w x y z) 1.000000 0.000000 "
            "0.000000 0.000000\n"
            "  device 2: translation 1.500000 0.000000 -2.000000 m, rotation (w x y z) 0.000000 0.000000 "
            "0.000000 1.000000\n"
            "  4 bytes follow the first frame\n");
}

TEST_F(InfoCommandTest, SaysItInJson)
{
    writeHandMade("a.trajectory");
    ToolRun const info = run({"info", "--json", file("a.trajectory")});
    EXPECT_EQ(info.status, 0) << info.err;
    EXPECT_EQ(
        packed(info.out),
        R"([{"file":")" + file("a.trajectory").string() +
            R"(","kind":"trajectory","nodes":4,"inTimeOrder":false,"repeatedTimes":0,"nodesWithoutTime":0,)"
            R"("from":10.0,"to":16.0,"duration":6.0,"meanStep":2.0,"largestStep":4.0,"pathLength":19.0,)"
            R"("devices":[{"device":0,"translation":[0.0,0.0,0.0],"rotation":[1.0,0.0,0.0,0.0]},)"
            R"({"device":2,"translation":[1.5,0.0,-2.0],"rotation":[0.0,0.0,0.0,1.0]}],"bytesBehind":0}])");
}

TEST(SensorSummary, MeasuresEverySensor)
{
    SensorSummary const summary = summarise(handMadeSensors());
    ASSERT_EQ(summary.inertialUnits.size(), 1U);
    auto const& unit = summary.inertialUnits[0];
    EXPECT_EQ(unit.name, "imu");
    EXPECT_EQ(unit.withMagneticField, 1U);
    EXPECT_EQ(unit.times.samples, 4U);
    EXPECT_EQ(unit.times.from, 10.0);
    EXPECT_EQ(unit.times.to, 10.125);
    EXPECT_EQ(unit.times.duration, 0.125);
    EXPECT_EQ(unit.times.rate, 24.0);
    EXPECT_EQ(unit.times.largestGap, 0.075);
    ASSERT_EQ(summary.rangefinders.size(), 2U);
    EXPECT_EQ(summary.rangefinders[0].name, "base");
    EXPECT_EQ(summary.rangefinders[0].points, 11U);
    EXPECT_EQ(summary.rangefinders[0].times.rate, 0.5);
    EXPECT_EQ(summary.rangefinders[1].name, "top");
    EXPECT_EQ(summary.rangefinders[1].points, 7U);
    EXPECT_EQ(summary.rangefinders[1].times.rate, 0.0);
    EXPECT_EQ(summary.rangefinders[1].times.largestGap, 0.0);
    EXPECT_EQ(summary.poses.at("top").translation(), Eigen::Vector3d(1.5, 0.0, -2.0));
    EXPECT_EQ(summary.poses.at("top").rotation().z(), 1.0);
    EXPECT_FALSE(summary.posesApplied);
    EXPECT_EQ(summary.tables, 12U); // the root, three sensors, seven samples, one pose
}

TEST(SensorSummary, AnySpanCanBeMeasured)
{
    SensorData data;
    data.imuData["empty"];
    auto const sample = std::make_shared<mapping::ImuData const>(
        mapping::TimeStamp(0.0), mapping::Vector3<double>(), mapping::Vector3<double>());
    // As far apart as ticks can be, and a tick apart where seconds have no digits for it.
    data.imuData["wide"] = {{std::numeric_limits<int64>::min(), sample},
                            {std::numeric_limits<int64>::max(), sample}};
    data.imuData["dense"] = {{140'000'000'000'000'000, sample}, {140'000'000'000'000'001, sample}};
    auto const units = summarise(data).inertialUnits;
    ASSERT_EQ(units.size(), 3U);
    EXPECT_EQ(units[0].times.duration, 1e-8);
    EXPECT_NEAR(units[0].times.rate, 1e8, 1.0);
    EXPECT_EQ(units[1].times.samples, 0U);
    EXPECT_EQ(units[1].times.rate, 0.0);
    EXPECT_NEAR(units[2].times.largestGap, 184467440737.1, 0.1);
}

TEST_F(InfoCommandTest, SaysWhatIsInASensorStream)
{
    writeHandMadeSensors("a.sensors");
    ToolRun const info = run({"info", file("a.sensors")});
    EXPECT_EQ(info.status, 0) << info.err;
    EXPECT_EQ(info.out,
              file("a.sensors").string() +
                  ": sensor stream\n"
                  "  inertial unit \"imu\": 4 samples, 1 of them with magnetic field\n"
                  "    time: 10.000000 s to 10.125000 s, 0.125000 s long\n"
                  "    24.000 samples a second, largest gap 0.075000 s\n"
                  "  rangefinder \"base\": 2 samples with 11 points\n"
                  "    time: 1.000000 s to 3.000000 s, 2.000000 s long\n"
                  "    0.500 samples a second, largest gap 2.000000 s\n"
                  "  rangefinder \"top\": 1 samples with 7 points\n"
                  "    time: 2.000000 s to 2.000000 s, 0.000000 s long\n"
                  "    0.000 samples a second, largest gap 0.000000 s\n"
                  "  pose of \"top\": translation 1.500000 0.000000 -2.000000 m, rotation (w x y z) 0.000000 "
                  "0.000000 0.000000 1.000000\n"
                  "  the samples are as recorded, not rotated by the poses\n"
                  "  tables: 12 of the 1000000 that a reader accepts\n");
}

TEST_F(InfoCommandTest, SaysWhetherThePosesAreApplied)
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

TEST_F(InfoCommandTest, SaysWhatIsInASensorStreamInJson)
{
    writeHandMadeSensors("a.sensors");
    ToolRun const info = run({"info", "--json", file("a.sensors")});
    EXPECT_EQ(info.status, 0) << info.err;
    EXPECT_EQ(
        packed(info.out),
        R"([{"file":")" + file("a.sensors").string() +
            R"(","kind":"sensor",)"
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
