#include "tools/motion/StillStretches.h"

#include "tests/tools/support/MotionNodes.h"
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

TEST(StillStretches, ADeviceAtRestIsStillFromTheFirstPoseToTheLast)
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

TEST(StillStretches, ASteadyWalkHasNoStretch)
{
    auto const nodes = recorded(0.0, 20.0, 100.0, [](double time) { return gliding(time, 1.2); });
    EXPECT_EQ(findStillStretches(nodes, {}).sections.size(), 0U);
}

TEST(StillStretches, NoiseOfOneMillimetreIsNotMotion)
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

TEST(StillStretches, TurningBackIsNotAStop)
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
