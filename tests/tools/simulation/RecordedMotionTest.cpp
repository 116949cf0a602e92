#include "tools/simulation/RecordedMotion.h"

#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Eigen::Quaterniond;
using Eigen::Vector3d;
using support::failureOf;
using support::ToolFixture;

TrajectoryNode node(double time, Vector3d const& place, double yaw = 0.0)
{
    return {time, {place, Quaterniond(Eigen::AngleAxisd(yaw, Vector3d::UnitZ())), true}};
}

std::string refusalOfNodes(std::vector<TrajectoryNode> const& nodes)
{
    return failureOf([&] { RecordedMotion const motion(nodes, "a.trajectory"); });
}

} // namespace

TEST(RecordedMotion, InterpolatesLinearlyBetweenPoses)
{
    RecordedMotion const motion({node(10.0, {0, 0, 0}, 0.0), node(12.0, {4, 2, 0}, 1.0)}, "a");
    EXPECT_EQ(motion.startTime(), 10.0);
    EXPECT_EQ(motion.stopTime(), 12.0);
    Eigen::Isometry3d const quarter = motion.at(10.5);
    EXPECT_LT((quarter.translation() - Vector3d(1.0, 0.5, 0.0)).norm(), 1e-12);
    EXPECT_LT((quarter.linear() * Vector3d::UnitX() - Vector3d(std::cos(0.25), std::sin(0.25), 0)).norm(),
              1e-12);
}

TEST(RecordedMotion, TurnsTheShorterWay)
{
    TrajectoryNode last = node(1.0, {0, 0, 0}, 1.0);
    last.pose.rotation().coeffs() *= -1.0;
    RecordedMotion const motion({node(0.0, {0, 0, 0}, 0.0), last}, "a");
    EXPECT_LT((motion.at(0.5).linear().col(0) - Vector3d(std::cos(0.5), std::sin(0.5), 0)).norm(), 1e-12);
}

TEST(RecordedMotion, RestsOutsideItsTimes)
{
    RecordedMotion const motion({node(0.0, {1, 0, 0}), node(1.0, {2, 0, 0}), node(2.0, {4, 0, 0})}, "a");
    EXPECT_EQ(motion.at(-5.0).translation(), Vector3d(1, 0, 0));
    EXPECT_EQ(motion.at(1.0).translation(), Vector3d(2, 0, 0));
    EXPECT_EQ(motion.at(2.0).translation(), Vector3d(4, 0, 0));
    EXPECT_EQ(motion.at(7.0).translation(), Vector3d(4, 0, 0));
}

TEST(RecordedMotion, SortsTheNodesAndKeepsTheLastOfEqualTimes)
{
    RecordedMotion const motion(
        {node(2.0, {4, 0, 0}), node(1.0, {9, 9, 9}), node(0.0, {1, 0, 0}), node(1.0, {2, 0, 0})}, "a");
    std::vector<double> times;
    for (TimedPose const& pose : motion.poses()) {
        times.push_back(pose.time);
    }
    EXPECT_EQ(times, (std::vector<double>{0.0, 1.0, 2.0}));
    EXPECT_EQ(motion.at(1.0).translation(), Vector3d(2, 0, 0));
}

TEST(RecordedMotion, InvalidRecordingsAreRefused)
{
    TrajectoryNode const good = node(0.0, {0, 0, 0});
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(refusalOfNodes({}).find("two different times"), std::string::npos);
    EXPECT_NE(refusalOfNodes({good, good}).find("two different times"), std::string::npos);
    EXPECT_NE(refusalOfNodes({good, node(nan, {0, 0, 0})}).find("not finite"), std::string::npos);
    EXPECT_NE(refusalOfNodes({good, node(1.0, {0, nan, 0})}).find("not finite"), std::string::npos);
    EXPECT_NE(refusalOfNodes({good, node(1.0, {0, 20'000, 0})}).find("10 km"), std::string::npos);
    EXPECT_NE(refusalOfNodes({good, node(90'000.0, {0, 0, 0})}).find("longer than a day"), std::string::npos);
    EXPECT_NE(refusalOfNodes({node(1e11, {0, 0, 0}), node(1e11 + 1.0, {1, 0, 0})}).find("2900 years"),
              std::string::npos);
    EXPECT_NE(refusalOfNodes({node(-1e11, {0, 0, 0}), node(1.0 - 1e11, {1, 0, 0})}).find("2900 years"),
              std::string::npos);
    TrajectoryNode stretched = node(1.0, {0, 0, 0});
    stretched.pose.rotation().coeffs() *= 1.1;
    EXPECT_NE(refusalOfNodes({good, stretched}).find("unit length"), std::string::npos);
    EXPECT_EQ(refusalOfNodes({good, node(1.0, {0, 0, 0})}), "");
}
