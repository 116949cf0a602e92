#include "tests/support/Bits.h"
#include "tests/support/RandomPoses.h"

#include <roamscan/trajectory/TrajectoryFromNodes.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

namespace
{

using oV::Roamscan::buildTrajectoryFromTrajectoryNodes;
using oV::Roamscan::Duration;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;
using oV::Roamscan::TrajectoryNode;
using support::sameBits;

std::vector<TrajectoryNode> randomNodes(int count, support::RandomPoses& random)
{
    std::vector<TrajectoryNode> nodes;
    for (int i = 0; i < count; ++i) {
        nodes.emplace_back(0.1 * i, random.pose());
    }
    return nodes;
}

void expectSameTrajectory(Trajectory const& a, Trajectory const& b)
{
    EXPECT_EQ(a.getStartTime(), b.getStartTime());
    EXPECT_EQ(a.getStopTime(), b.getStopTime());
    for (auto const& node : a.sampled(Duration(0.013))) {
        ASSERT_TRUE(sameBits(node.pose, b.sample(node.time)));
    }
}

TEST(TrajectoryFromNodes, RunsFromTheSmallestToTheLargestTime)
{
    support::RandomPoses random(50);
    auto const nodes = randomNodes(20, random);
    Trajectory const trajectory = buildTrajectoryFromTrajectoryNodes(nodes);
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(nodes.front().time));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(nodes.back().time));
    EXPECT_FALSE(trajectory.hasGlobalAccelerations());
    for (auto const& node : nodes) {
        EXPECT_TRUE(trajectory.sample(node.time) == node.pose);
    }
}

TEST(TrajectoryFromNodes, DescendingAndShuffledNodesGiveTheSameTrajectory)
{
    support::RandomPoses random(51);
    auto nodes = randomNodes(5000, random);
    Trajectory const ascending = buildTrajectoryFromTrajectoryNodes(nodes);
    std::reverse(nodes.begin(), nodes.end());
    expectSameTrajectory(ascending, buildTrajectoryFromTrajectoryNodes(nodes));
    std::shuffle(nodes.begin(), nodes.end(), random.generator());
    expectSameTrajectory(ascending, buildTrajectoryFromTrajectoryNodes(nodes));
}

TEST(TrajectoryFromNodes, OfTwoNodesAtOneTimeTheLaterInTheVectorIsUsed)
{
    auto const at = [](double time, double x) {
        return TrajectoryNode(time, TrafoT<double>::Translation(Eigen::Vector3d(x, 0, 0)));
    };
    auto const middle = [&](std::vector<TrajectoryNode> const& nodes) {
        return buildTrajectoryFromTrajectoryNodes(nodes).sample(1.0).translation().x();
    };
    EXPECT_EQ(middle({at(0, 0), at(1, 10), at(1, 20), at(2, 0)}), 20);
    EXPECT_EQ(middle({at(1, 10), at(2, 0), at(0, 0), at(1, 20)}), 20);
    EXPECT_EQ(middle({at(2, 0), at(1, 20), at(1, 10), at(0, 0)}), 10);
}

TEST(TrajectoryFromNodes, TransformsMultiplyFromLeftAndRight)
{
    support::RandomPoses random(52);
    auto const pose = random.pose();
    auto const left = random.pose();
    auto const right = random.pose();
    Trajectory const trajectory =
        buildTrajectoryFromTrajectoryNodes({TrajectoryNode(3.0, pose)}, right, left);
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(3.0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(3.0));
    EXPECT_TRUE(sameBits(trajectory.sample(3.0), (left * pose) * right));
    EXPECT_FALSE(trajectory.sample(3.0) == (right * pose) * left);
}

TEST(TrajectoryFromNodes, LeftTransformIsMultipliedFirst)
{
    // Over random poses the two ways of bracketing differ in the last bits somewhere.
    support::RandomPoses random(53);
    bool differs = false;
    for (int i = 0; i < 100; ++i) {
        auto const pose = random.pose();
        auto const left = random.pose();
        auto const right = random.pose();
        auto const result =
            buildTrajectoryFromTrajectoryNodes({TrajectoryNode(0.0, pose)}, right, left).sample(0.0);
        ASSERT_TRUE(sameBits(result, (left * pose) * right));
        differs = differs || !sameBits(result, left * (pose * right));
    }
    EXPECT_TRUE(differs);
}

TEST(TrajectoryFromNodes, WithoutTransformsTheProductsWithTheIdentityAreStillComputed)
{
    // They show in the sign of a zero: 0.0 + -0.0 is 0.0.
    TrafoT<double> const pose(Eigen::Vector3d(-0.0, 1, 2), Eigen::Quaterniond::Identity(), true);
    auto const result = buildTrajectoryFromTrajectoryNodes({TrajectoryNode(0.0, pose)}).sample(0.0);
    EXPECT_FALSE(std::signbit(result.translation().x()));
    EXPECT_TRUE(sameBits(result, (TrafoT<double>() * pose) * TrafoT<double>()));
}

TEST(TrajectoryFromNodes, InvalidPoseIsKept)
{
    TrajectoryNode const good(0.0);
    TrajectoryNode const bad(1.0, TrafoT<double>::Invalid());
    Trajectory const trajectory = buildTrajectoryFromTrajectoryNodes({good, bad});
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(1.0));
    EXPECT_FALSE(trajectory.sample(1.0).valid());
    EXPECT_FALSE(trajectory.sample(1.0).allFinite());
}

TEST(TrajectoryFromNodes, WithoutNodesItIsTheTrajectoryOfAnEmptyBuilder)
{
    Trajectory const trajectory = buildTrajectoryFromTrajectoryNodes({});
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(0.0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(0.0));
    try {
        (void)trajectory.sample(0.0);
        FAIL() << "nothing was thrown";
    } catch (std::out_of_range const& failure) {
        EXPECT_STREQ(failure.what(), "Cannot query transformation from an empty trajectory");
    }
}

TEST(TrajectoryFromNodes, OwnsItsPoses)
{
    std::vector<TrajectoryNode> nodes{TrajectoryNode(0.0), TrajectoryNode(1.0)};
    Trajectory const trajectory = buildTrajectoryFromTrajectoryNodes(nodes);
    nodes.clear();
    nodes.shrink_to_fit();
    EXPECT_TRUE(trajectory.sample(0.5) == TrafoT<double>::Identity());
}

TEST(TrajectoryFromNodes, NodesAtNaNAreLeftOut)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    Trajectory const trajectory = buildTrajectoryFromTrajectoryNodes(
        {TrajectoryNode(nan), TrajectoryNode(1.0), TrajectoryNode(nan), TrajectoryNode(2.0)});
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(1.0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(2.0));
}

} // namespace
