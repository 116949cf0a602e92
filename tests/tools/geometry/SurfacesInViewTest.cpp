#include "tools/geometry/SurfacesInView.h"

#include "tests/support/SpecialNumbers.h"
#include "tools/simulation/RandomNumbers.h"
#include "tools/simulation/RoomPlan.h"

#include <Eigen/Geometry>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Eigen::Vector3d;
using support::infinity;
using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::string>;

constexpr double pi = std::numbers::pi;

/// A cube of 2 m around the origin.
Building cube()
{
    Building building;
    addShell(building, {-1.0, -1.0, -1.0}, {1.0, 1.0, 1.0});
    return building;
}

Names namesWithin(Building const& building, Vector3d const& origin, Vector3d const& axis, double halfAngle)
{
    Names names;
    for (Surface const& surface : SurfacesInView(building, origin).within(axis, halfAngle).surfaces) {
        names.push_back(surface.name);
    }
    return names;
}

/// A random unit vector whose angle to the axis is at most `halfAngle`.
Vector3d
directionIn(Vector3d const& axis, double halfAngle, RandomNumbers const& random, std::uint64_t position)
{
    double const angle = random.between(0.0, halfAngle, position, 1);
    double const turn = random.between(0.0, 2.0 * pi, position, 2);
    Vector3d const aside = axis.unitOrthogonal();
    return std::cos(angle) * axis +
           std::sin(angle) * (std::cos(turn) * aside + std::sin(turn) * axis.cross(aside));
}

} // namespace

TEST(SurfacesInView, ANarrowConeMeetsOneFaceOfACube)
{
    Building const building = cube();
    Vector3d const middle = Vector3d::Zero();
    EXPECT_THAT(namesWithin(building, middle, {0.0, 0.0, 1.0}, 0.1), ElementsAre("ceiling"));
    EXPECT_THAT(namesWithin(building, middle, {0.0, 0.0, -1.0}, 0.1), ElementsAre("floor"));
    EXPECT_THAT(namesWithin(building, middle, {1.0, 0.0, 0.0}, 0.1), ElementsAre("outer wall, east"));
    EXPECT_THAT(namesWithin(building, middle, {0.0, 1.0, 0.0}, 0.1), ElementsAre("outer wall, north"));
}

TEST(SurfacesInView, AFaceIsInViewFromTheAngleOfItsEdgeOn)
{
    Building const building = cube();
    // The ceiling's edges are 45 degrees from straight up.
    EXPECT_THAT(namesWithin(building, Vector3d::Zero(), {0.0, 0.0, 1.0}, pi / 4.0 - 1e-6),
                ElementsAre("ceiling"));
    EXPECT_EQ(
        namesWithin(building, Vector3d::Zero(), {0.0, 0.0, 1.0}, pi / 4.0 + 1e-6),
        (Names{"ceiling", "outer wall, south", "outer wall, north", "outer wall, west", "outer wall, east"}));
}

TEST(SurfacesInView, SurfacesBehindTheOriginAreNotInView)
{
    Building building;
    addBox(building, "box", {{3.0, 0.0}, {1.0, 1.0}, 0.0, -1.0, 1.0}, std::nullopt, 0.5);
    EXPECT_EQ(namesWithin(building, Vector3d::Zero(), {1.0, 0.0, 0.0}, 0.01).size(), 2U); // front and back
    EXPECT_THAT(namesWithin(building, Vector3d::Zero(), {-1.0, 0.0, 0.0}, 0.5), IsEmpty());
}

TEST(SurfacesInView, AConeOfAHalfSphereContainsEverySurface)
{
    Building const building = cube();
    EXPECT_EQ(namesWithin(building, {5.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, pi / 2.0).size(), 6U);
}

TEST(SurfacesInView, NoSurfaceThatARayMeetsIsLeftOut)
{
    Building const building = roomPlan();
    constexpr std::uint64_t seed = 20;
    SCOPED_TRACE(seed);
    RandomNumbers const random(seed);
    std::vector<Vector3d> origins{{0.0, 0.0, 0.0},   // a corner of the building
                                  {3.0, 0.0, 1.0},   // on a wall
                                  {3.0, 5.0, 0.0},   // on the floor
                                  {-9.0, -5.0, 9.0}, // outside
                                  {3.9, 3.3, 0.75}}; // on the table
    for (std::uint64_t i = 0; i < 20; ++i) {
        origins.emplace_back(random.between(0.0, 24.0, i, 11),
                             random.between(0.0, 14.0, i, 12),
                             random.between(0.0, 2.8, i, 13));
    }
    std::uint64_t drawn = 0;
    for (Vector3d const& origin : origins) {
        SurfacesInView const inView(building, origin);
        for (int cone = 0; cone < 50; ++cone) {
            Vector3d const axis = directionIn(Vector3d::UnitZ(), pi, random, ++drawn);
            double const halfAngle = random.between(0.0, 1.6, drawn, 3);
            Building const part = inView.within(axis, halfAngle);
            for (int ray = 0; ray < 20; ++ray) {
                Vector3d const direction = directionIn(axis, halfAngle, random, ++drawn);
                auto const expected = building.castRay(origin, direction, infinity);
                auto const found = part.castRay(origin, direction, infinity);
                ASSERT_EQ(found.has_value(), expected.has_value())
                    << origin.transpose() << ", " << direction.transpose();
                if (expected) {
                    ASSERT_EQ(found->range, expected->range);
                    ASSERT_EQ(part.surfaces[found->surface].name, building.surfaces[expected->surface].name);
                }
            }
        }
    }
}

TEST(SurfacesInView, FewSurfacesAreInANarrowCone)
{
    Building const building = roomPlan();
    SurfacesInView const inView(building, {3.0, 11.0, 1.5});
    EXPECT_LT(inView.within({1.0, 0.0, 0.0}, 0.02).surfaces.size(), building.surfaces.size() / 4);
    EXPECT_EQ(inView.within({0.0, 0.0, 1.0}, 0.02).surfaces.size(), 1U);
}
