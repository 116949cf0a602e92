#include "tools/simulation/BurstCollector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <vector>

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

TEST(BurstCollector, CountsTheTimesOfABurstFromItsFirstPoint)
{
    BurstCollector collector(0.5);
    for (double const time : {10.0, 10.25, 10.5, 12.0, 12.375}) {
        collector.add({{{static_cast<float>(time), 1.0F, 2.0F}}, time});
    }
    auto const samples = collector.take();
    ASSERT_EQ(samples.size(), 3U);
    auto const& first = *samples.at(1'000'000'000);
    EXPECT_EQ(first.getTimeStamp().get(), 10.0);
    EXPECT_EQ(first.getOrigin(), mapping::Vector3<double>());
    auto const& points = first.getRanges().get();
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[0].position, (mapping::Vector3<float>{10.0F, 1.0F, 2.0F}));
    EXPECT_EQ(points[0].time, 0.0F);
    EXPECT_EQ(points[1].time, 0.25F);
    EXPECT_EQ(samples.at(1'050'000'000)->getRanges().get().size(), 1U);
    EXPECT_EQ(samples.at(1'200'000'000)->getRanges().get().at(1).time, 0.375F);
}

TEST(BurstCollector, PointsWithoutATimeAreLeftOut)
{
    BurstCollector collector(1.0);
    collector.add({{{1.0F, 0.0F, 0.0F}}, std::nan("")});
    EXPECT_TRUE(collector.take().empty());
    collector.add({{{1.0F, 0.0F, 0.0F}}, 5.0});
    collector.add({{{1.0F, 0.0F, 0.0F}}, std::nan("")});
    collector.add({{{1.0F, 0.0F, 0.0F}}, 5.5});
    auto const samples = collector.take();
    ASSERT_EQ(samples.size(), 1U);
    EXPECT_EQ(samples.begin()->second->getRanges().get().size(), 2U);
    EXPECT_TRUE(collector.take().empty());
}

TEST(BurstCollector, KeepsTheTimesOfYearsOfSeconds)
{
    BurstCollector collector(0.002);
    std::vector<double> times;
    for (int i = 0; i < 400; ++i) {
        times.push_back(1403715524.907143 + 5e-5 * i);
        collector.add({{{1.0F, 0.0F, 0.0F}}, times.back()});
    }
    std::size_t i = 0;
    for (auto const& [tick, sample] : collector.take()) {
        for (auto const& point : sample->getRanges().get()) {
            ASSERT_EQ(sample->getTimeStamp().get() + static_cast<double>(point.time), times.at(i++));
        }
    }
    EXPECT_EQ(i, times.size());
}
