#include "tests/support/SpecialNumbers.h"
#include "tests/tools/support/MotionNodes.h"
#include "tools/motion/StillStretches.h"
#include "tools/simulation/RandomNumbers.h"

#include <Eigen/Geometry>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Eigen::Vector3d;
using namespace support;

} // namespace
TEST(StillStretches, SinglePosesFarOffAreNoMotion)
{
    Nodes nodes = standing(0.0, 10.0);
    for (std::size_t i = 7; i < nodes.size(); i += 10) {
        nodes[i] = nodeAt(nodes[i].time, {50, -20, 3}, 2.0);
    }
    for (std::size_t i = 3; i < nodes.size(); i += 10) { // as far as a rotation can be
        nodes[i] = nodeAt(nodes[i].time, {1, 2, 3}, std::numbers::pi);
    }
    addNoise(nodes, 51);
    EXPECT_EQ(secondsOf(findStillStretches(nodes, {})), (Stretches{{0.0, 10.0}}));
}

TEST(StillStretches, AQuaternionAndItsNegativeAreNoMotion)
{
    Nodes nodes = standing(0.0, 10.0);
    for (std::size_t i = 0; i < nodes.size(); i += 2) {
        nodes[i].pose.rotation().coeffs() *= -1.0;
    }
    EXPECT_EQ(secondsOf(findStillStretches(nodes, {})), (Stretches{{0.0, 10.0}}));
}

TEST(StillStretches, AQuaternionWithAlternatingSignIsNotMotion)
{
    // w and z are equally large and of opposite signs, so noise decides which of the two is made positive.
    Nodes nodes = recorded(0.0, 10.0, 100.0, [](double time) {
        return nodeAt(time, {1, 2, 3}, -std::numbers::pi / 2.0);
    });
    addNoise(nodes, 61);
    EXPECT_EQ(secondsOf(findStillStretches(nodes, {})), (Stretches{{0.0, 10.0}}));
}

TEST(StillStretches, AStretchDoesNotCrossAGap)
{
    StillStretches const found = findStillStretches(joined(standing(0.0, 5.0), standing(17.0, 20.0)), {});
    EXPECT_EQ(secondsOf(found), (Stretches{{0.0, 5.0}, {17.0, 20.0}}));
    EXPECT_EQ(found.gaps, 1U);
    EXPECT_EQ(found.largestGap, 12.0);
    EXPECT_EQ(found.measured, 8.0);
}

TEST(StillStretches, AQuarterOfASecondWithoutPosesIsNotAGap)
{
    StillStretches const bridged = findStillStretches(joined(standing(0.0, 5.0), standing(5.25, 10.0)), {});
    EXPECT_EQ(secondsOf(bridged), (Stretches{{0.0, 10.0}}));
    EXPECT_EQ(bridged.gaps, 0U);
    StillStretches const parted = findStillStretches(joined(standing(0.0, 5.0), standing(5.26, 10.0)), {});
    EXPECT_EQ(parted.sections.size(), 2U);
    EXPECT_EQ(parted.gaps, 1U);
}

TEST(StillStretches, MotionDuringAGapIsNotStill)
{
    Nodes moved = standing(5.25, 10.0);
    for (TrajectoryNode& node : moved) {
        node.pose.translation().x() += 1.0;
    }
    Stretches const found = secondsOf(findStillStretches(joined(standing(0.0, 5.0), moved), {}));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_LE(found[0].second, 5.0);
    EXPECT_GE(found[1].first, 5.25);
}

TEST(StillStretches, APieceBetweenGapsThatIsShorterThanTheWindowIsNotMeasured)
{
    Nodes const nodes =
        joined(joined(standing(0.0, 5.0), standing(7.0, 7.49)), joined(standing(9.0, 9.5), {}));
    StillStretches const found = findStillStretches(nodes, {0.05, 3.0, 0.1});
    EXPECT_EQ(secondsOf(found), (Stretches{{0.0, 5.0}, {9.0, 9.5}}));
    EXPECT_EQ(found.gaps, 2U);
    EXPECT_EQ(found.measured, 5.5);
}

TEST(StillStretches, FewPosesPerSecondWidenTheWindow)
{
    auto const nodes = recorded(0.0, 120.0, 1.0, [](double time) {
        return nodeAt(time, {std::max(time - 60.0, 0.0), 0, 0});
    });
    StillStretches const found = findStillStretches(nodes, {});
    EXPECT_EQ(found.window, 8.0);
    EXPECT_EQ(found.gaps, 0U);
    Stretches const stretches = secondsOf(found);
    ASSERT_EQ(stretches.size(), 1U);
    EXPECT_EQ(stretches[0].first, 0.0);
    EXPECT_GE(stretches[0].second, 57.0);
    EXPECT_LE(stretches[0].second, 60.0);
}

TEST(StillStretches, TheOrderOfTheNodesDoesNotMatter)
{
    StopAndGo const motion(31, 4);
    Nodes nodes = recorded(0.0, motion.end(), 100.0, [&](double time) { return motion.at(time); });
    Stretches const inOrder = secondsOf(findStillStretches(nodes, {}));
    ASSERT_EQ(inOrder.size(), 4U);
    std::ranges::reverse(nodes);
    EXPECT_EQ(secondsOf(findStillStretches(nodes, {})), inOrder);
    std::stable_partition(nodes.begin(), nodes.end(), [](TrajectoryNode const& node) {
        return std::fmod(node.time, 1.0) < 0.3;
    });
    EXPECT_EQ(secondsOf(findStillStretches(nodes, {})), inOrder);
}

TEST(StillStretches, OfSeveralNodesAtOneTimeTheLastCounts)
{
    RandomNumbers const random(41);
    Nodes nodes;
    for (TrajectoryNode const& node : standing(0.0, 5.0)) {
        double const place = random.between(-100.0, 100.0, nodes.size(), 0);
        nodes.push_back(nodeAt(node.time, {place, 0, 0}));
        nodes.push_back(node);
    }
    StillStretches const found = findStillStretches(nodes, {});
    EXPECT_EQ(secondsOf(found), (Stretches{{0.0, 5.0}}));
    EXPECT_EQ(found.poses, 501U);
    EXPECT_EQ(found.unusable, 0U);
}

TEST(StillStretches, NodesWithoutAUsableTimeOrPoseAreLeftOut)
{
    Nodes nodes = standing(0.0, 5.0);
    nodes.push_back(nodeAt(notANumber, {1, 2, 3}));
    nodes.push_back(nodeAt(std::numeric_limits<double>::infinity(), {1, 2, 3}));
    nodes.push_back(nodeAt(1e11, {1, 2, 3})); // beyond integer time
    nodes.push_back(nodeAt(2.501, {notANumber, 2, 3}));
    nodes.push_back(nodeAt(2.502, {1, std::numeric_limits<double>::infinity(), 3}));
    nodes.emplace_back(2.503, TrafoT<double>::Invalid());
    nodes.push_back(nodeAt(2.504, {1, 2, 3}));
    nodes.back().pose.rotation().coeffs() *= 2.0; // no rotation
    nodes.push_back(nodeAt(2.505, {1, 2, 3}));
    nodes.back().pose.rotation().coeffs().setZero();
    StillStretches const found = findStillStretches(nodes, {});
    EXPECT_EQ(secondsOf(found), (Stretches{{0.0, 5.0}}));
    EXPECT_EQ(found.poses, 501U);
    EXPECT_EQ(found.unusable, 8U);
}

TEST(StillStretches, PosesAsFarApartAsNumbersGoAreMotion)
{
    constexpr double huge = 1.7e308;
    auto const nodes = recorded(0.0, 5.0, 100.0, [](double time) {
        return nodeAt(time, {time < 2.5 ? -huge : huge, 0, 0});
    });
    EXPECT_EQ(findStillStretches(nodes, {}).sections.size(), 2U);
}

TEST(StillStretches, WithoutNodesTheResultIsEmpty)
{
    StillStretches const found = findStillStretches({}, {});
    EXPECT_EQ(found.sections.size(), 0U);
    EXPECT_EQ(found.poses, 0U);
    EXPECT_EQ(found.measured, 0.0);
}

TEST(StillStretches, OneNodeOrTwoCannotBeMeasured)
{
    for (Nodes const& nodes : {Nodes{nodeAt(1.0, {0, 0, 0})},
                               Nodes{nodeAt(1.0, {0, 0, 0}), nodeAt(2.0, {0, 0, 0})},
                               Nodes{nodeAt(1.0, {0, 0, 0}), nodeAt(1.0, {0, 0, 0})}})
    {
        StillStretches const found = findStillStretches(nodes, {});
        EXPECT_EQ(found.sections.size(), 0U);
        EXPECT_EQ(found.measured, 0.0);
        EXPECT_EQ(found.gaps, 0U);
    }
}

TEST(StillStretches, TimesSinceAnEpochAreAsGoodAsAny)
{
    double const epoch = 1'403'715'524.5;
    Stretches const found = secondsOf(findStillStretches(standing(epoch, epoch + 10.0, 200.0), {}));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_NEAR(found[0].first, epoch, 1e-6);
    EXPECT_NEAR(found[0].second, epoch + 10.0, 1e-6);
}
