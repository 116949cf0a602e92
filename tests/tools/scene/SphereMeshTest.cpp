#include "tools/scene/SphereMesh.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <utility>

namespace
{

using namespace oV::Roamscan::tool;

double
tripleProduct(std::array<float, 3> const& a, std::array<float, 3> const& b, std::array<float, 3> const& c)
{
    return a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
           a[2] * (b[0] * c[1] - b[1] * c[0]);
}

} // namespace

TEST(SphereMesh, HasFourTimesTheTrianglesWithEachSplit)
{
    EXPECT_EQ(unitSphere(0).vertices.size(), 6U);
    EXPECT_EQ(unitSphere(0).triangles.size(), 8U);
    EXPECT_EQ(unitSphere(1).vertices.size(), 18U);
    EXPECT_EQ(unitSphere(1).triangles.size(), 32U);
    EXPECT_EQ(unitSphere(2).vertices.size(), 66U);
    EXPECT_EQ(unitSphere(2).triangles.size(), 128U);
}

TEST(SphereMesh, HasAllVerticesOnTheSphere)
{
    for (auto const& [x, y, z] : unitSphere(3).vertices) {
        EXPECT_NEAR(std::hypot(x, y, z), 1.0, 1e-6);
    }
}

TEST(SphereMesh, IsClosedAndFacesOutward)
{
    TriangleMesh const sphere = unitSphere(2);
    std::map<std::pair<std::uint16_t, std::uint16_t>, int> edges;
    for (auto const& [a, b, c] : sphere.triangles) {
        EXPECT_GT(tripleProduct(sphere.vertices[a], sphere.vertices[b], sphere.vertices[c]), 0.0);
        for (auto const& edge : {std::pair(a, b), std::pair(b, c), std::pair(c, a)}) {
            ++edges[edge];
        }
    }
    // Each edge is walked once in each direction.
    for (auto const& [edge, count] : edges) {
        EXPECT_EQ(count, 1);
        EXPECT_TRUE(edges.contains({edge.second, edge.first}));
    }
}
