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
using Nodes = std::vector<TrajectoryNode>;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double degree = std::numbers::pi / 180.0;

TrajectoryNode nodeAt(double time, Vector3d const& place, double yaw = 0.0)
{
    return {time, TrafoT<double>(place, Eigen::Quaterniond(Eigen::AngleAxisd(yaw, Vector3d::UnitZ())), true)};
}

/// Nodes from one time to another, both included, at so many a second.
Nodes recorded(double from, double to, double rate, std::function<TrajectoryNode(double)> const& motion)
{
    Nodes nodes;
    auto const count = static_cast<int>(std::lround((to - from) * rate));
    for (int i = 0; i <= count; ++i) {
        nodes.push_back(motion(from + i / rate));
    }
    return nodes;
}

Nodes standing(double from, double to, double rate = 100.0)
{
    return recorded(from, to, rate, [](double time) { return nodeAt(time, {1, 2, 3}); });
}

Nodes joined(Nodes first, Nodes const& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// In seconds.
std::vector<std::pair<double, double>> secondsOf(StillStretches const& found)
{
    std::vector<std::pair<double, double>> stretches;
    for (TimeWindow const& section : found.sections) {
        stretches.emplace_back(static_cast<double>(section.start) * 1e-8,
                               static_cast<double>(section.end) * 1e-8);
    }
    return stretches;
}

using Stretches = std::vector<std::pair<double, double>>;

/// With a millimetre and a twentieth of a degree of noise on each number.
void addNoise(Nodes& nodes, std::uint64_t seed)
{
    RandomNumbers const random(seed);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        TrafoT<double>& pose = nodes[i].pose;
        for (Eigen::Index axis = 0; axis < 3; ++axis) {
            pose.translation()[axis] += 0.001 * random.normal(i, static_cast<std::uint64_t>(axis));
        }
        pose.rotation() = pose.rotation() *
                          Eigen::AngleAxisd(0.05 * degree * random.normal(i, 3), Vector3d::UnitX()) *
                          Eigen::AngleAxisd(0.05 * degree * random.normal(i, 4), Vector3d::UnitZ());
    }
}

/// Stands and goes in turn; knows when it stands.
class StopAndGo
{
public:
    StopAndGo(std::uint64_t seed, int stops)
    {
        RandomNumbers const random(seed);
        double time = 0.0;
        for (int i = 0; i < stops; ++i) {
            auto const position = static_cast<std::uint64_t>(i);
            double const stay = random.between(2.0, 5.0, position, 0);
            stops_.emplace_back(time, time + stay);
            time += stay + random.between(2.0, 4.0, position, 1);
            double const heading = random.between(-std::numbers::pi, std::numbers::pi, position, 2);
            velocities_.emplace_back(random.between(0.4, 1.5, position, 3) *
                                     Vector3d(std::cos(heading), std::sin(heading), 0.1));
        }
        end_ = time;
    }

    [[nodiscard]] TrajectoryNode at(double time) const
    {
        Vector3d place = Vector3d::Zero();
        double yaw = 0.0;
        for (std::size_t i = 0; i < stops_.size(); ++i) {
            double const next = i + 1 < stops_.size() ? stops_[i + 1].first : end_;
            double const gone = std::clamp(time, stops_[i].second, next) - stops_[i].second;
            place += gone * velocities_[i];
            yaw += gone * 20.0 * degree;
        }
        return nodeAt(time, place, yaw);
    }

    [[nodiscard]] double end() const { return end_; }
    [[nodiscard]] Stretches const& stops() const { return stops_; }

private:
    Stretches stops_;
    std::vector<Vector3d> velocities_;
    double end_ = 0.0;
};

/// On a line at a steady speed.
TrajectoryNode gliding(double time, double speed)
{
    return nodeAt(time, speed * time * Vector3d(2, -1, 2) / 3.0);
}

} // namespace

TEST(StillStretches, WhoStandsAllTheTimeIsFoundFromTheFirstPoseToTheLast)
{
    StillStretches const found = findStillStretches(standing(100.0, 110.0), {});
    ASSERT_EQ(found.sections.size(), 1U);
    EXPECT_EQ(*found.sections.begin(), TimeWindow(10'000'000'000, 11'000'000'000));
    EXPECT_EQ(found.poses, 1001U);
    EXPECT_EQ(found.window, 0.5);
    EXPECT_EQ(found.measured, 10.0);
    EXPECT_EQ(found.gaps, 0U);
    EXPECT_EQ(found.largestGap, 0.0);
    EXPECT_EQ(found.unusable, 0U);
}

TEST(StillStretches, WhoWalksAllTheTimeIsNotFound)
{
    auto const nodes = recorded(0.0, 20.0, 100.0, [](double time) { return gliding(time, 1.2); });
    EXPECT_EQ(findStillStretches(nodes, {}).sections.size(), 0U);
}

TEST(StillStretches, NoiseOfAMillimetreIsNoMotion)
{
    for (std::uint64_t const seed : {1U, 2U, 3U}) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Nodes nodes = standing(0.0, 20.0, 300.0);
        addNoise(nodes, seed);
        std::vector<double> speeds;
        for (std::size_t i = 1; i < nodes.size(); ++i) {
            speeds.push_back((nodes[i].pose.translation() - nodes[i - 1].pose.translation()).norm() * 300.0);
        }
        std::ranges::nth_element(speeds, speeds.begin() + 3000);
        EXPECT_GT(speeds[3000], 0.3) << "from pose to pose the noise looks like motion";
        EXPECT_EQ(secondsOf(findStillStretches(nodes, {})), (Stretches{{0.0, 20.0}}));
        EXPECT_EQ(secondsOf(findStillStretches(nodes, {0.01, 1.0, 1.0})), (Stretches{{0.0, 20.0}}));
    }
}

TEST(StillStretches, EveryStopOfAStopAndGoIsFoundInsideItsTrueBounds)
{
    for (std::uint64_t const seed : {11U, 12U, 13U, 14U, 15U, 16U}) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        StopAndGo const motion(seed, 6);
        Nodes nodes = recorded(0.0, motion.end(), 200.0, [&](double time) { return motion.at(time); });
        addNoise(nodes, seed);
        Stretches const found = secondsOf(findStillStretches(nodes, {}));
        ASSERT_EQ(found.size(), motion.stops().size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            // Half of a quarter of a second, a measurement every 20 ms, a pose every 5 ms.
            EXPECT_GE(found[i].first, motion.stops()[i].first);
            EXPECT_LE(found[i].first, motion.stops()[i].first + 0.15);
            EXPECT_LE(found[i].second, motion.stops()[i].second);
            EXPECT_GE(found[i].second, motion.stops()[i].second - 0.15);
        }
    }
}

TEST(StillStretches, AGentleStopIsFoundWhereTheSpeedFallsBelowTheLimit)
{
    // Slows down by 0.5 m/s each second until it stands at 4 s: at 3.9 s it goes at 0.05 m/s.
    auto const nodes = recorded(0.0, 8.0, 200.0, [](double time) {
        double const left = std::max(4.0 - time, 0.0);
        return nodeAt(time, {-0.25 * left * left, 0, 0});
    });
    Stretches const found = secondsOf(findStillStretches(nodes, {}));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_NEAR(found[0].first, 3.9, 0.04);
    EXPECT_DOUBLE_EQ(found[0].second, 8.0);
}

TEST(StillStretches, TheSpeedIsThatOfTheSetting)
{
    auto const atSpeed = [](double speed) {
        return recorded(0.0, 5.0, 100.0, [&](double time) { return gliding(time, speed); });
    };
    EXPECT_EQ(findStillStretches(atSpeed(0.0499), {}).sections.size(), 1U);
    EXPECT_EQ(findStillStretches(atSpeed(0.0501), {}).sections.size(), 0U);
    EXPECT_EQ(findStillStretches(atSpeed(0.4), {0.5, 3.0, 1.0}).sections.size(), 1U);
}

TEST(StillStretches, TheSpeedIsRightHoweverThePosesAreSpaced)
{
    for (std::uint64_t const seed : {21U, 22U, 23U, 24U}) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomNumbers const random(seed);
        Nodes slow;
        Nodes fast;
        double time = 0.0;
        for (std::uint64_t i = 0; i < 2000; ++i) {
            time += i % 7 == 0 ? 0.1 * random.uniform(i, 0) : 0.004 * random.uniform(i, 0) + 0.0001;
            slow.push_back(gliding(time, 0.0499));
            fast.push_back(gliding(time, 0.0501));
        }
        EXPECT_EQ(secondsOf(findStillStretches(slow, {})).size(), 1U);
        EXPECT_EQ(findStillStretches(fast, {}).sections.size(), 0U);
    }
}

TEST(StillStretches, TurningOnTheSpotIsMotion)
{
    auto const atRate = [](double rate) {
        return recorded(0.0, 5.0, 100.0, [&](double time) {
            return nodeAt(time, {0, 0, 0}, rate * degree * time);
        });
    };
    EXPECT_EQ(findStillStretches(atRate(2.99), {}).sections.size(), 1U);
    EXPECT_EQ(findStillStretches(atRate(3.01), {}).sections.size(), 0U);
    EXPECT_EQ(findStillStretches(atRate(90.0), {}).sections.size(), 0U);
    EXPECT_EQ(findStillStretches(atRate(9.9), {0.05, 10.0, 1.0}).sections.size(), 1U);
}

TEST(StillStretches, RotationsWithoutAMiddleAreMotion)
{
    Nodes nodes = standing(0.0, 5.0);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        nodes[i].pose.rotation().coeffs() = Eigen::Vector4d::Unit(static_cast<Eigen::Index>(i % 4));
    }
    EXPECT_EQ(findStillStretches(nodes, {}).sections.size(), 0U);
}

TEST(StillStretches, TurningBackIsNoStop)
{
    // Ten metres to and fro in eight seconds: for a moment the speed is 0, and below the limit for 0.03 s.
    auto const nodes = recorded(0.0, 40.0, 100.0, [](double time) {
        return nodeAt(time, {5.0 * std::cos(time * std::numbers::pi / 4.0), 0, 0});
    });
    EXPECT_EQ(findStillStretches(nodes, {}).sections.size(), 0U);
}

TEST(StillStretches, AShorterStretchThanAskedForDoesNotCount)
{
    EXPECT_EQ(findStillStretches(standing(0.0, 2.0), {0.05, 3.0, 2.0}).sections.size(), 1U);
    EXPECT_EQ(findStillStretches(standing(0.0, 1.99), {0.05, 3.0, 2.0}).sections.size(), 0U);
}

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

TEST(StillStretches, ARotationWhoseSignIsUndecidedIsNoMotion)
{
    // w and z are equally large and of opposite signs, so noise decides which of the two is made positive.
    Nodes nodes = recorded(0.0, 10.0, 100.0, [](double time) {
        return nodeAt(time, {1, 2, 3}, -std::numbers::pi / 2.0);
    });
    addNoise(nodes, 61);
    EXPECT_EQ(secondsOf(findStillStretches(nodes, {})), (Stretches{{0.0, 10.0}}));
}

TEST(StillStretches, AGapIsNotBridged)
{
    StillStretches const found = findStillStretches(joined(standing(0.0, 5.0), standing(17.0, 20.0)), {});
    EXPECT_EQ(secondsOf(found), (Stretches{{0.0, 5.0}, {17.0, 20.0}}));
    EXPECT_EQ(found.gaps, 1U);
    EXPECT_EQ(found.largestGap, 12.0);
    EXPECT_EQ(found.measured, 8.0);
}

TEST(StillStretches, AQuarterOfASecondWithoutPosesIsNoGapYet)
{
    StillStretches const bridged = findStillStretches(joined(standing(0.0, 5.0), standing(5.25, 10.0)), {});
    EXPECT_EQ(secondsOf(bridged), (Stretches{{0.0, 10.0}}));
    EXPECT_EQ(bridged.gaps, 0U);
    StillStretches const parted = findStillStretches(joined(standing(0.0, 5.0), standing(5.26, 10.0)), {});
    EXPECT_EQ(parted.sections.size(), 2U);
    EXPECT_EQ(parted.gaps, 1U);
}

TEST(StillStretches, WhatMovedWhileThereWereNoPosesIsNotStill)
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

TEST(StillStretches, PosesThatComeSeldomAreMeasuredOverLongerTimes)
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

TEST(StillStretches, WithoutNodesThereIsNothing)
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
