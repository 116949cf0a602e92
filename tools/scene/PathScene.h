#pragma once

#include <roamscan/frame/bvbase/Vec3d.h>

#include <cstddef>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// A point in metres, z up.
using ScenePoint = Bv_1_1::Vec3d<double>;

/// The mark of one trajectory node.
struct PathMarker
{
    std::string name; ///< UTF-8
    ScenePoint position;
    double radius = 0.0; ///< In metres.
};

/// A path to be drawn: a polyline with markers. All coordinates are finite and fit a `float`.
struct PathScene
{
    std::string name;             ///< UTF-8
    std::vector<ScenePoint> line; ///< The corners of the polyline in order.
    std::vector<PathMarker> markers;
    std::size_t ignoredPoints =
        0; ///< Corners that are not in `line`: not finite, or too large for a `float`.
    std::size_t ignoredMarkers = 0; ///< The same of markers.

    /// A viewer draws each sphere by itself, so more markers than this are drawn as points.
    static constexpr std::size_t mostSpheres = 10'000;

    /// Whether the markers are drawn as spheres, not as points.
    [[nodiscard]] bool hasSpheres() const { return markers.size() <= mostSpheres; }
    /// Whether the line has a length: a single corner is not drawn.
    [[nodiscard]] bool hasLine() const { return line.size() >= 2; }
    /// Whether there is nothing to draw.
    [[nodiscard]] bool empty() const { return !hasLine() && markers.empty(); }
};

} // namespace oV::Roamscan::tool
