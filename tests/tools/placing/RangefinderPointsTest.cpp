#include "tools/placing/RangefinderPoints.h"

#include <roamscan/time/TimeConversion.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Points = std::vector<mapping::TimedRangefinderPoint>;

std::shared_ptr<mapping::RangefinderData const> sample(double time, Points points)
{
    mapping::Vector3<double> const origin{
        7.0, 8.0, 9.0}; // of no account: the points are in the sensor's frame
    return std::make_shared<mapping::RangefinderData const>(
        mapping::TimeStamp(time), origin, mapping::TimedPointCloud(std::move(points)));
}

} // namespace

TEST(RangefinderPoints, AreInOrderEachWithItsOwnTime)
{
    SampleMap<mapping::RangefinderData> samples;
    samples[200] = sample(20.0, {{{3.0F, 0.0F, 0.0F}, 0.25F, {}}});
    samples[150] = sample(15.0, {});
    samples[100] = sample(10.0, {{{1.0F, 2.0F, 4.0F}, 0.0F, {}}, {{2.0F, 0.0F, 0.0F}, -0.5F, {}}});
    std::vector<CloudPoint> const scan = scanPointsOf(samples);
    ASSERT_EQ(scan.size(), 3U);
    EXPECT_EQ(scan[0].time, 10.0);
    EXPECT_EQ(scan[1].time, 9.5);
    EXPECT_EQ(scan[2].time, 20.25);
    EXPECT_EQ(scan[0].position, (Bv_1_1::Vec3d<float>{1.0F, 2.0F, 4.0F}));
    EXPECT_EQ(scan[1].position, (Bv_1_1::Vec3d<float>{2.0F, 0.0F, 0.0F}));
    EXPECT_EQ(scan[2].position, (Bv_1_1::Vec3d<float>{3.0F, 0.0F, 0.0F}));
    EXPECT_EQ(scan[0].intensity, 0);
}

TEST(RangefinderPoints, TimesAreRoundedToTicksOnlyOnce)
{
    // 0.6 ticks and 0.6 ticks are one tick, not two.
    SampleMap<mapping::RangefinderData> samples;
    samples[1] = sample(0.6e-8, {{{1.0F, 0.0F, 0.0F}, 0.6e-8F, {}}});
    std::vector<CloudPoint> const scan = scanPointsOf(samples);
    EXPECT_EQ(TimeConversion::convertToIntegerTime(scan.at(0).time), 1);
}

TEST(RangefinderPoints, AMissingTimeRemainsMissing)
{
    SampleMap<mapping::RangefinderData> samples;
    samples[1] = sample(1.0, {{{1.0F, 0.0F, 0.0F}, std::numeric_limits<float>::quiet_NaN(), {}}});
    EXPECT_TRUE(std::isnan(scanPointsOf(samples).at(0).time));
}
