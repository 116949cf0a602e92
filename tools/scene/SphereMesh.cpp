#include "tools/scene/SphereMesh.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

using Index = std::uint16_t;

constexpr TriangleMesh octahedron()
{
    return {.vertices = {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}},
            .triangles = {
                {0, 2, 4}, {2, 1, 4}, {1, 3, 4}, {3, 0, 4}, {2, 0, 5}, {1, 2, 5}, {3, 1, 5}, {0, 3, 5}}};
}

/// Splits the triangles of a unit sphere and moves the new vertices out to the sphere.
class Splitter
{
public:
    explicit Splitter(TriangleMesh const& mesh) : mesh_{mesh.vertices, {}}
    {
        for (auto const& [a, b, c] : mesh.triangles) {
            Index const ab = middle(a, b);
            Index const bc = middle(b, c);
            Index const ca = middle(c, a);
            mesh_.triangles.insert(mesh_.triangles.end(),
                                   {{a, ab, ca}, {ab, b, bc}, {ca, bc, c}, {ab, bc, ca}});
        }
    }

    [[nodiscard]] TriangleMesh&& take() { return std::move(mesh_); }

private:
    // Two triangles share an edge, and so its middle.
    Index middle(Index a, Index b)
    {
        auto const [edge, isNew] =
            middles_.try_emplace(std::minmax(a, b), static_cast<Index>(mesh_.vertices.size()));
        if (isNew) {
            auto const [ax, ay, az] = mesh_.vertices[a];
            auto const [bx, by, bz] = mesh_.vertices[b];
            float const length = std::hypot(ax + bx, ay + by, az + bz);
            mesh_.vertices.push_back({(ax + bx) / length, (ay + by) / length, (az + bz) / length});
        }
        return edge->second;
    }

    TriangleMesh mesh_;
    std::map<std::pair<Index, Index>, Index> middles_;
};

} // namespace

TriangleMesh unitSphere(int splits)
{
    TriangleMesh mesh = octahedron();
    for (int i = 0; i < splits; ++i) {
        mesh = Splitter(mesh).take();
    }
    return mesh;
}

} // namespace oV::Roamscan::tool
