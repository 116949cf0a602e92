#include "tools/motion/TimeOrder.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

TimeOrder orderOf(std::vector<double> const& times)
{
    std::vector<TrajectoryNode> nodes;
    for (double const time : times) {
        nodes.emplace_back(time);
    }
    return timeOrderOf(nodes);
}

} // namespace

TEST(TimeOrder, NothingDeviatesInAscendingOrder)
{
    for (std::vector<double> const& times : std::vector<std::vector<double>>{{}, {1}, {-1, 0, 1}}) {
        EXPECT_EQ(orderOf(times).repeated, 0U);
        EXPECT_EQ(orderOf(times).backward, 0U);
    }
}

TEST(TimeOrder, RepeatedTimesNeedNotBeNeighbours)
{
    TimeOrder const order = orderOf({3, 1, 2, 1, 3, 1});
    EXPECT_EQ(order.repeated, 3U);
    EXPECT_EQ(order.firstRepeated, 3U);
    EXPECT_EQ(order.backward, 3U);
    EXPECT_EQ(order.firstBackward, 1U);
}

TEST(TimeOrder, ARepeatedTimeIsNotBackward)
{
    TimeOrder const order = orderOf({1, 1, 2});
    EXPECT_EQ(order.repeated, 1U);
    EXPECT_EQ(order.firstRepeated, 1U);
    EXPECT_EQ(order.backward, 0U);
}
