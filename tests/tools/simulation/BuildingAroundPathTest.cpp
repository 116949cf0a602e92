#include "tools/simulation/BuildingAroundPath.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Eigen::Vector3d;

/// A figure of eight, 6 m by 5 m, at heights from 0.8 m to 1.2 m; with a gap that is crossed in one straight
/// step.
std::vector<Vector3d> figureOfEight()
{
    std::vector<Vector3d> path;
    for (int i = 0; i < 1000; ++i) {
        if (i < 300 || i > 420) {
            double const a = 2.0 * 3.14159265358979 * i / 1000.0;
            path.emplace_back(3.0 * std::sin(a), 2.5 * std::sin(2.0 * a), 1.0 + 0.2 * std::cos(a));
        }
    }
    return path;
}

/// The nearest that a path, straight from point to point, comes to a surface.
double clearanceOf(std::vector<Vector3d> const& path, Building const& building)
{
    double nearest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < path.size(); ++i) {
        Vector3d const step = path[i] - path[i - 1];
        int const parts = 1 + static_cast<int>(step.norm() / 0.02);
        for (int part = 0; part <= parts; ++part) {
            Vector3d const place = path[i - 1] + step * part / parts;
            for (Surface const& surface : building.surfaces) {
                nearest = std::min(nearest, surface.rectangle.distance(place));
            }
        }
    }
    return nearest;
}

} // namespace

TEST(BuildingAroundPath, EverythingKeepsClearOfThePath)
{
    auto const path = figureOfEight();
    for (std::uint64_t seed = 0; seed < 10; ++seed) {
        EXPECT_GT(clearanceOf(path, buildingAround(path, seed)), 0.6) << "seed " << seed;
    }
}

TEST(BuildingAroundPath, ThereIsMoreThanTheShell)
{
    Building const building = buildingAround(figureOfEight(), 1);
    auto const has = [&](char const* name) {
        return std::ranges::any_of(building.surfaces, [&](Surface const& s) { return s.name == name; });
    };
    EXPECT_TRUE(has("floor") && has("ceiling") && has("outer wall, north") && has("bay wall") &&
                has("pillar"));
}

TEST(BuildingAroundPath, SameSeedSameBuilding)
{
    auto const corners = [](std::uint64_t seed) {
        std::vector<double> numbers;
        for (Surface const& surface : buildingAround(figureOfEight(), seed).surfaces) {
            numbers.insert(numbers.end(), {surface.rectangle.corner().x(), surface.rectangle.corner().y()});
        }
        return numbers;
    };
    EXPECT_EQ(corners(3), corners(3));
    EXPECT_NE(corners(3), corners(4));
}

TEST(BuildingAroundPath, ACamerasPathHasItsFloorAcrossY)
{
    std::vector<Vector3d> path;
    for (Vector3d const& p : figureOfEight()) {
        path.emplace_back(p.x(), -p.z(), p.y()); // y points down
    }
    Building const building = buildingAround(path, 1);
    ASSERT_EQ(building.surfaces[0].name, "floor");
    EXPECT_NEAR(std::abs(building.surfaces[0].rectangle.normal().y()), 1.0, 1e-12);
    EXPECT_NEAR(building.surfaces[0].rectangle.corner().y(), -0.8 + 1.2, 1e-3);
    EXPECT_GT(clearanceOf(path, building), 0.6);
}

TEST(BuildingAroundPath, APathOfOnePlaceHasABuilding)
{
    std::vector<Vector3d> const path(5, Vector3d(100.0, -50.0, 2.0));
    Building const building = buildingAround(path, 1);
    EXPECT_GT(clearanceOf(path, building), 0.6);
}
