#include "tools/placing/TimeOfPoints.h"

#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan::tool;
using support::failureOf;

std::string fieldOf(PointLayout const& layout, TimeSettings const& settings = {})
{
    return TimeOfPoints(layout, settings, "scan").field().name;
}

/// The time of a point with one field, whose value is `value`.
template <typename Number>
double timeOf(FieldType type, Number value, double scale, double offset = 0.0)
{
    PointLayout const layout{{"time", type}};
    PointBlock block;
    block.resize(1, layout);
    store(block.records.data(), value);
    std::vector<double> seconds(1);
    TimeOfPoints(layout, {{}, scale, offset}, "scan").read(block, layout.stride(), seconds);
    return seconds[0];
}

double resolution(FieldType type, double seconds, double scale = 1.0, double offset = 0.0)
{
    return TimeOfPoints({{"time", type}}, {{}, scale, offset}, "scan").resolutionAt(seconds);
}

} // namespace

TEST(TimeOfPoints, IsFoundByItsUsualNames)
{
    for (char const* const name : {"time",
                                   "TIME",
                                   "t",
                                   "timestamp",
                                   "TimeStamp",
                                   "gps_time",
                                   "GpsTime",
                                   "scalar_GPS_Time",
                                   "scalar_Time",
                                   "Scalar_Timestamp"})
    {
        EXPECT_EQ(fieldOf({{"x", FieldType::Float}, {name, FieldType::Double}}), name);
    }
    EXPECT_EQ(fieldOf({{"time", FieldType::UInt64}, {"gps_time", FieldType::Double}}), "gps_time");
    EXPECT_EQ(fieldOf({{"when", FieldType::Double}, {"time", FieldType::Double}}, {"When", 1.0, 0.0}),
              "when");
    EXPECT_EQ(failureOf([] {
                  fieldOf({{"x", FieldType::Float}, {"tint", FieldType::UInt8}});
              }),
              "scan: its points have no time, and a point is placed by its time; if a property with another "
              "name is "
              "the time, give it with --time-property NAME; the properties are: x (float) and tint (uchar)");
    EXPECT_EQ(failureOf([] {
                  fieldOf({{"time", FieldType::Float}}, {"when", 1.0, 0.0});
              }),
              "scan: its points have no property \"when\"; they have: time (float)");
}

TEST(TimeOfPoints, IsConvertedToSeconds)
{
    EXPECT_EQ(timeOf(FieldType::Float, 1.5F, 1.0), 1.5);
    EXPECT_EQ(timeOf(FieldType::UInt16, std::uint16_t{7}, 0.5, 100.0), 103.5);
    EXPECT_EQ(timeOf(FieldType::Double, 7.0, 1e-3, 0.0), 0.007);
    EXPECT_EQ(timeOf(FieldType::Double, 3.0, 60.0, 1.0), 181.0);
}

TEST(TimeOfPoints, NanosecondsSinceTheEpochKeepTheirPrecision)
{
    EXPECT_EQ(timeOf(FieldType::Int64, std::int64_t{1403715524907143168}, 1e-9), 1403715524.907143168);
    EXPECT_EQ(timeOf(FieldType::UInt64, std::uint64_t{1403715524907143168}, 1e-9, -1403715524.0),
              0.907143168);
    EXPECT_EQ(timeOf(FieldType::Int64, std::int64_t{-1500000000}, 1e-9), -1.5);
}

TEST(TimeOfPoints, ResolutionFollowsFromTheType)
{
    EXPECT_EQ(resolution(FieldType::Float, 1.4e9), 128.0);
    EXPECT_EQ(resolution(FieldType::Float, 1.4e9, 1.0, 1.4e9), 0x1p-149);
    EXPECT_EQ(resolution(FieldType::Double, 1.4e9), 0x1p-22);
    EXPECT_EQ(resolution(FieldType::UInt32, 1.4e9), 1.0);
    EXPECT_EQ(resolution(FieldType::Int64, 1.4e9, 1e-9), 1e-9);
}
