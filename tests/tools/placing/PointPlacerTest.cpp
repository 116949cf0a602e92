#include "tools/placing/PointPlacer.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

/// From x = 0 at 10 s to x = 10 at 20 s.
Trajectory straightAhead()
{
    TrajectoryData data;
    data.nodes.emplace_back(10.0, TrafoT<double>::Translation({0.0, 0.0, 0.0}));
    data.nodes.emplace_back(20.0, TrafoT<double>::Translation({10.0, 0.0, 0.0}));
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    return data.buildTrajectoryFromTrajectoryNodes(Device::Device0);
}

void add(std::vector<CloudPoint>& scan, Bv_1_1::Vec3d<float> const& position, double time)
{
    scan.push_back({{position, static_cast<std::uint16_t>(100 + scan.size())}, time});
}

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(PointPlacer, MovesPointsToWhereTheDeviceWas)
{
    std::vector<CloudPoint> scan;
    add(scan, {0.0F, 1.0F, 2.0F}, 10.0);
    add(scan, {1.0F, 1.0F, 1.0F}, 12.5);
    add(scan, {0.0F, 0.0F, 1.0F}, 20.0);
    Placement const placement = placePoints(scan, straightAhead());
    ASSERT_EQ(placement.placed.size(), 3U);
    EXPECT_EQ(placement.placed[0].position.x, 0.0F);
    EXPECT_EQ(placement.placed[1].position.x, 3.5F);
    EXPECT_EQ(placement.placed[1].position.y, 1.0F);
    EXPECT_EQ(placement.placed[1].position.z, 1.0F);
    EXPECT_EQ(placement.placed[1].intensity, 101);
    EXPECT_EQ(placement.placed[1].time, 12.5);
    EXPECT_EQ(placement.placed[2].position.x, 10.0F);
}

TEST(PointPlacer, EveryPointIsAccountedFor)
{
    std::vector<CloudPoint> scan;
    add(scan, {1.0F, 0.0F, 0.0F}, 15.0);
    add(scan, {1.0F, 0.0F, 0.0F}, notANumber);
    add(scan, {1.0F, 0.0F, 0.0F}, notANumber);
    add(scan, {1.0F, 0.0F, 0.0F}, 9.99);
    add(scan, {1.0F, 0.0F, 0.0F}, 20.01);
    add(scan, {1.0F, 0.0F, 0.0F}, -15.0);
    add(scan, {0.0F, 0.0F, 0.0F}, 15.0);
    add(scan, {static_cast<float>(notANumber), 0.0F, 0.0F}, 15.0);
    Placement const placement = placePoints(scan, straightAhead());
    EXPECT_EQ(placement.placed.size(), 1U);
    EXPECT_EQ(placement.withoutTime, 2U);
    EXPECT_EQ(placement.outside, 3U);
    EXPECT_EQ(placement.withoutPosition, 2U);
    EXPECT_EQ(placement.total(), scan.size());
}

TEST(PointPlacer, TimesOutOfTheRangeOfIntegerTimeAreOutside)
{
    std::vector<CloudPoint> scan;
    for (double const time : {1e11, -1e11, 1e300, infinity, -infinity}) {
        add(scan, {1.0F, 0.0F, 0.0F}, time);
    }
    // 2^64 ticks later is the same instant to a count that wraps around.
    add(scan, {1.0F, 0.0F, 0.0F}, 15.0 + 184467440737.09552);
    EXPECT_EQ(placePoints(scan, straightAhead()).outside, scan.size());
}
