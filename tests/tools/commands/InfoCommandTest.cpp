#include "tools/commands/TrajectorySummary.h"
#include "tools/io/TrajectoryFile.h"
#include "tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

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

class InfoCommandTest : public ToolFixture
{
protected:
    void writeHandMade(std::string const& name) const
    {
        std::ofstream stream(file(name), std::ios::binary);
        writeTrajectory(handMade(), stream, name);
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
            "\n"
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
    std::string flat;
    for (char const c : info.out) {
        flat += c == '\n' || c == ' ' ? "" : std::string(1, c);
    }
    EXPECT_EQ(
        flat,
        R"([{"file":")" + file("a.trajectory").string() +
            R"(","nodes":4,"inTimeOrder":false,"repeatedTimes":0,"nodesWithoutTime":0,)"
            R"("from":10.0,"to":16.0,"duration":6.0,"meanStep":2.0,"largestStep":4.0,"pathLength":19.0,)"
            R"("devices":[{"device":0,"translation":[0.0,0.0,0.0],"rotation":[1.0,0.0,0.0,0.0]},)"
            R"({"device":2,"translation":[1.5,0.0,-2.0],"rotation":[0.0,0.0,0.0,1.0]}],"bytesBehind":0}])");
}

TEST_F(InfoCommandTest, OneBadFileDoesNotStopTheOthers)
{
    writeHandMade("a.trajectory");
    auto const bad = write("b.trajectory", "rubbish that is no stream");
    ToolRun const text = run({"info", bad, file("none"), file("a.trajectory")});
    EXPECT_EQ(text.status, 1);
    EXPECT_EQ(lineCount(text.err), 2) << text.err;
    EXPECT_NE(text.out.find("  nodes: 4"), std::string::npos);
    ToolRun const json = run({"info", "--json", bad, file("a.trajectory")});
    EXPECT_EQ(json.status, 1);
    EXPECT_NE(json.out.find("\"error\": "), std::string::npos);
    EXPECT_NE(json.out.find("\"pathLength\": 19.0"), std::string::npos);
}

} // namespace oV::Roamscan::tool
