#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace oV::Roamscan::tool
{

/// The triangles of a surface.
struct TriangleMesh
{
    std::vector<std::array<float, 3>> vertices;
    std::vector<std::array<std::uint16_t, 3>> triangles; ///< Vertex indices, counter-clockwise from outside.
};

/// A sphere of radius 1 around the origin: an octahedron whose triangles are split into four `splits` times,
/// 8 * 4^splits triangles. A vertex is its own normal.
/// @param splits 0 to 6
[[nodiscard]] TriangleMesh unitSphere(int splits);

} // namespace oV::Roamscan::tool
