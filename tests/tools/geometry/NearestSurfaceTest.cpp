#include "tools/geometry/NearestSurface.h"

#include "tools/simulation/RandomNumbers.h"
#include "tools/simulation/RoomPlan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

double byComparingAll(Building const& building, Eigen::Vector3d const& point)
{
    double nearest = std::numeric_limits<double>::infinity();
    for (Surface const& surface : building.surfaces) {
        nearest = std::min(nearest, surface.rectangle.distance(point));
    }
    return nearest;
}

} // namespace

TEST(NearestSurface, AnswersAsComparingAllSurfacesDoes)
{
    Building const building = roomPlan();
    NearestSurface const nearest(building);
    RandomNumbers const random(7);
    for (std::uint64_t i = 0; i < 20'000; ++i) {
        // Also somewhat outside the building.
        Eigen::Vector3d const point(random.between(-2.0, 26.0, i, 1),
                                    random.between(-2.0, 16.0, i, 2),
                                    random.between(-1.0, 4.0, i, 3));
        ASSERT_EQ(nearest.distance(point), byComparingAll(building, point)) << point.transpose();
    }
}

TEST(NearestSurface, HandWorkedDistances)
{
    Building building;
    addShell(building, {0.0, 0.0, 0.0}, {4.0, 4.0, 3.0});
    NearestSurface const nearest(building);
    EXPECT_DOUBLE_EQ(nearest.distance({2.0, 2.0, 1.0}), 1.0);
    EXPECT_DOUBLE_EQ(nearest.distance({0.25, 2.0, 1.0}), 0.25);
    EXPECT_DOUBLE_EQ(nearest.distance({7.0, 8.0, 1.0}), 5.0);
    EXPECT_DOUBLE_EQ(nearest.distance({4.0, 4.0, 3.0}), 0.0);
}

TEST(NearestSurface, WideBuildingsTakeLargerCells)
{
    Building building;
    addShell(building, {-9e6, -9e6, -9e6}, {9e6, 9e6, 9e6});
    NearestSurface const nearest(building);
    EXPECT_NEAR(nearest.distance({0.0, 0.0, 0.0}), 9e6, 1e-3);
    EXPECT_NEAR(nearest.distance({1.0, 2.0, 9e6 - 3.0}), 3.0, 1e-3);
}

TEST(NearestSurface, WithoutSurfacesEverythingIsInfinitelyFar)
{
    Building const empty;
    EXPECT_EQ(NearestSurface(empty).distance({0.0, 0.0, 0.0}), std::numeric_limits<double>::infinity());
}
