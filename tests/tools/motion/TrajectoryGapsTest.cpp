#include "tools/motion/TrajectoryGaps.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

} // namespace

TEST(TrajectoryGaps, TimesAreInOrderWithoutRepetition)
{
    std::vector<TrajectoryNode> nodes;
    for (double const time : {3.0, 1.0, std::numeric_limits<double>::quiet_NaN(), 3.0, 2.0}) {
        nodes.emplace_back(time, TrafoT<double>::Identity());
    }
    EXPECT_EQ(timesInOrder(nodes), (std::vector{1.0, 2.0, 3.0}));
}

TEST(TrajectoryGaps, TheUsualStepIsTheMedian)
{
    EXPECT_EQ(usualStep(std::vector{0.0, 1.0, 2.0, 3.0, 20.0}), 1.0);
    EXPECT_EQ(defaultLongestGap(std::vector{0.0, 1.0, 2.0, 3.0, 20.0}), 10.0);
    EXPECT_EQ(usualStep(std::vector{4.0}), 0.0);
    EXPECT_EQ(usualStep({}), 0.0);
}

TEST(TrajectoryGaps, LongerStepsAreGaps)
{
    std::vector const times{0.0, 1.0, 6.0, 7.0, 17.0};
    auto const gaps = gapsLongerThan(4.0, times);
    ASSERT_EQ(gaps.size(), 2U);
    EXPECT_EQ(gaps[0].from, 1.0);
    EXPECT_EQ(gaps[0].to, 6.0);
    EXPECT_EQ(gaps[1].duration(), 10.0);
    EXPECT_EQ(gapsLongerThan(5.0, times).size(), 1U);
}

TEST(TrajectoryGaps, TheEndsOfAGapAreNotInIt)
{
    std::vector<TrajectoryGap> const gaps{{1.0, 2.0}, {5.0, 9.0}};
    for (double const time : {1.5, 5.0000001, 8.0}) {
        EXPECT_TRUE(isInGap(time, gaps)) << time;
    }
    for (double const time : {0.0, 1.0, 2.0, 3.0, 5.0, 9.0, 10.0, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(isInGap(time, gaps)) << time;
    }
    EXPECT_FALSE(isInGap(1.0, {}));
}
