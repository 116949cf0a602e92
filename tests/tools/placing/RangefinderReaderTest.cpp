#include "tools/placing/RangefinderReader.h"

#include "tests/tools/support/CloudTable.h"

#include <roamscan/time/TimeConversion.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
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

support::CloudTable readAll(SampleMap<mapping::RangefinderData> const& samples)
{
    RangefinderReader reader(samples);
    support::CloudTable table = support::tableOf(reader);
    EXPECT_EQ(reader.pointCount(), table.size());
    return table;
}

} // namespace

TEST(RangefinderReader, AreInOrderEachWithItsOwnTime)
{
    SampleMap<mapping::RangefinderData> samples;
    samples[200] = sample(20.0, {{{3.0F, 0.0F, 0.0F}, 0.25F, {}}});
    samples[150] = sample(15.0, {});
    samples[100] = sample(10.0, {{{1.0F, 2.0F, 4.0F}, 0.0F, {}}, {{2.0F, 0.0F, 0.0F}, -0.5F, {}}});
    support::CloudTable const scan = readAll(samples);
    ASSERT_EQ(scan.size(), 3U);
    EXPECT_EQ(scan.column("time"), (std::vector{10.0, 9.5, 20.25}));
    EXPECT_EQ(scan.column("x"), (std::vector{1.0, 2.0, 3.0}));
    EXPECT_EQ(scan.column("y"), (std::vector{2.0, 0.0, 0.0}));
    EXPECT_EQ(scan.column("z"), (std::vector{4.0, 0.0, 0.0}));
}

TEST(RangefinderReader, TimesAreRoundedToTicksOnlyOnce)
{
    // 0.6 ticks and 0.6 ticks are one tick, not two.
    SampleMap<mapping::RangefinderData> samples;
    samples[1] = sample(0.6e-8, {{{1.0F, 0.0F, 0.0F}, 0.6e-8F, {}}});
    support::CloudTable const scan = readAll(samples);
    EXPECT_EQ(TimeConversion::convertToIntegerTime(scan.column("time").at(0)), 1);
}

TEST(RangefinderReader, AMissingTimeRemainsMissing)
{
    SampleMap<mapping::RangefinderData> samples;
    samples[1] = sample(1.0, {{{1.0F, 0.0F, 0.0F}, std::numeric_limits<float>::quiet_NaN(), {}}});
    EXPECT_TRUE(std::isnan(readAll(samples).column("time").at(0)));
}

TEST(RangefinderReader, ReadsLongRecordingsInBlocks)
{
    SampleMap<mapping::RangefinderData> samples;
    std::size_t count = 0;
    for (std::int64_t tick = 0; tick < 100; ++tick) {
        Points points;
        for (int i = 0; i < 500 + tick; ++i) {
            points.push_back({{static_cast<float>(count++), 0.0F, 0.0F}, 0.0F, {}});
        }
        samples[tick] = sample(static_cast<double>(tick), std::move(points));
    }
    std::vector<double> const x = readAll(samples).column("x");
    ASSERT_EQ(x.size(), count);
    for (std::size_t i = 0; i < count; ++i) {
        ASSERT_EQ(x[i], static_cast<double>(i));
    }
}
