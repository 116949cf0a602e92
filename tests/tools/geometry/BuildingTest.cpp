#include "tools/geometry/Building.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Eigen::Vector3d;

Rectangle floorTile()
{
    return {{1.0, 2.0, 0.0}, {4.0, 0.0, 0.0}, {0.0, 3.0, 0.0}}; // x from 1 to 5, y from 2 to 5
}

} // namespace

TEST(Rectangle, DistanceToFaceEdgeAndCorner)
{
    Rectangle const tile = floorTile();
    EXPECT_DOUBLE_EQ(tile.distance({3.0, 3.0, 0.7}), 0.7);
    EXPECT_DOUBLE_EQ(tile.distance({3.0, 3.0, -0.7}), 0.7);
    EXPECT_DOUBLE_EQ(tile.distance({3.0, 3.0, 0.0}), 0.0);
    EXPECT_DOUBLE_EQ(tile.distance({-2.0, 3.0, 4.0}), 5.0); // beside an edge: 3 and 4
    EXPECT_DOUBLE_EQ(tile.distance({6.0, 7.0, 2.0}), 3.0);  // off a corner: 1, 2 and 2
    EXPECT_DOUBLE_EQ(tile.distance({0.0, 0.0, 2.0}), 3.0);
}

TEST(Rectangle, DistanceToATiltedOne)
{
    Rectangle const tilted({0, 0, 0}, {3.0, 4.0, 0.0}, {0.0, 0.0, 2.0}); // upright, over the line to (3, 4)
    EXPECT_NEAR(tilted.distance({4.0, -3.0, 1.0}), 5.0, 1e-12);          // straight off its lower corner
    EXPECT_NEAR(tilted.distance({3.0 + 0.6, 4.0 + 0.8, 1.0}), 1.0, 1e-12);
    EXPECT_NEAR(tilted.distance({1.5 + 0.8, 2.0 - 0.6, 3.0}), std::sqrt(2.0), 1e-12);
}

TEST(Rectangle, RaysHitFromBothSidesWithinTheEdges)
{
    Rectangle const tile = floorTile();
    EXPECT_DOUBLE_EQ(tile.hit({2.0, 3.0, 1.5}, {0.0, 0.0, -1.0}).value_or(-1.0), 1.5);
    EXPECT_DOUBLE_EQ(tile.hit({2.0, 3.0, -1.5}, {0.0, 0.0, 1.0}).value_or(-1.0), 1.5);
    EXPECT_DOUBLE_EQ(tile.hit({0.0, 3.0, 4.0}, {0.6, 0.0, -0.8}).value_or(-1.0), 5.0); // meets (3, 3)
    EXPECT_FALSE(tile.hit({2.0, 3.0, 1.5}, {0.0, 0.0, 1.0})) << "behind the ray";
    EXPECT_FALSE(tile.hit({0.9, 3.0, 1.5}, {0.0, 0.0, -1.0})) << "beside the rectangle";
    EXPECT_FALSE(tile.hit({2.0, 5.1, 1.5}, {0.0, 0.0, -1.0})) << "beside the rectangle";
    EXPECT_FALSE(tile.hit({0.0, 3.0, 1.5}, {1.0, 0.0, 0.0})) << "parallel";
    EXPECT_FALSE(tile.hit({0.0, 3.0, 0.0}, {1.0, 0.0, 0.0})) << "in its plane";
}

TEST(Building, ARayMeetsTheNearestSurface)
{
    Building building;
    addShell(building, {0.0, 0.0, 0.0}, {10.0, 6.0, 3.0});
    addBox(building, "pillar", {{5.0, 3.0}, {1.0, 1.0}, 0.0, 0.0, 3.0}, std::nullopt, 0.5);

    auto const pillar = building.castRay({1.0, 3.0, 1.0}, {1.0, 0.0, 0.0}, 30.0);
    ASSERT_TRUE(pillar);
    EXPECT_DOUBLE_EQ(pillar->range, 3.5); // its near face stands at x = 4.5
    EXPECT_EQ(building.surfaces[pillar->surface].name, "pillar");
    EXPECT_DOUBLE_EQ(pillar->cosIncidence, 1.0);

    auto const wall = building.castRay({1.0, 1.0, 1.0}, {1.0, 0.0, 0.0}, 30.0);
    ASSERT_TRUE(wall);
    EXPECT_DOUBLE_EQ(wall->range, 9.0);
    EXPECT_EQ(building.surfaces[wall->surface].name, "outer wall, east");

    auto const floor = building.castRay({1.0, 1.0, 1.2}, {0.8, 0.0, -0.6}, 30.0);
    ASSERT_TRUE(floor);
    EXPECT_DOUBLE_EQ(floor->range, 2.0);
    EXPECT_DOUBLE_EQ(floor->cosIncidence, 0.6);

    EXPECT_FALSE(building.castRay({1.0, 1.0, 1.0}, {1.0, 0.0, 0.0}, 8.9)) << "out of range";
    EXPECT_TRUE(building.castRay({1.0, 1.0, 1.0}, {1.0, 0.0, 0.0}, 9.0)) << "just in range";
}

TEST(Building, BoxesHaveTheirSidesAndTheLidsAskedFor)
{
    auto const facesOf = [](std::optional<double> lid) {
        Building building;
        addBox(building, "box", {{1.0, 1.0}, {2.0, 1.0}, 0.3, 0.5, 2.0}, lid, 0.5);
        return building.surfaces;
    };
    EXPECT_EQ(facesOf(std::nullopt).size(), 4U);
    ASSERT_EQ(facesOf(2.0).size(), 5U);
    EXPECT_EQ(facesOf(2.0).back().rectangle.corner().z(), 2.0);
    ASSERT_EQ(facesOf(0.5).size(), 5U);
    EXPECT_EQ(facesOf(0.5).back().rectangle.corner().z(), 0.5);
}

TEST(Building, ATurnedBoxHasItsFacesAroundItsCentre)
{
    Building building;
    double const eighth = std::atan(1.0); // 45 degrees
    addBox(building, "box", {{5.0, 5.0}, {2.0, 2.0}, eighth, 0.0, 3.0}, std::nullopt, 0.5);
    for (Surface const& face : building.surfaces) {
        EXPECT_NEAR(face.rectangle.distance({5.0, 5.0, 1.0}), 1.0, 1e-12);
    }
    auto const hit = building.castRay({0.0, 5.0, 1.0}, Vector3d::UnitX(), 30.0);
    ASSERT_TRUE(hit);
    EXPECT_NEAR(hit->range, 5.0 - std::sqrt(2.0), 1e-9); // the corner points at the ray
}
