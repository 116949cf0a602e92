#include "tools/geometry/SurfacesInView.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector3d;

constexpr double pi = std::numbers::pi;
constexpr double rounding = 1e-9;      // exceeds the rounding errors of sines
constexpr double angleRounding = 1e-6; // and of arc cosines near 0 and pi

double angleBetween(Vector3d const& unitA, Vector3d const& unitB)
{
    return std::acos(std::clamp(unitA.dot(unitB), -1.0, 1.0));
}

} // namespace

SurfacesInView::SurfacesInView(Building const& building, Vector3d const& origin) : building_(building)
{
    outlines_.reserve(building.surfaces.size());
    for (Surface const& surface : building.surfaces) {
        outlines_.push_back(outlineOf(surface.rectangle, origin));
    }
}

SurfacesInView::Outline SurfacesInView::outlineOf(Rectangle const& rectangle, Vector3d const& origin)
{
    Vector3d const first = rectangle.corner() - origin;
    Vector3d const a = rectangle.edgeA();
    Vector3d const b = rectangle.edgeB();
    Vector3d const middle = first + (a + b) / 2.0;
    std::array<Vector3d, 4> const corners{first, first + a, first + a + b, first + b};
    Outline outline{middle.normalized(), 0.0, {}};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        Vector3d const& from = corners[i];
        Vector3d const& to = corners[(i + 1) % corners.size()];
        outline.radius = std::max(outline.radius, angleBetween(outline.middle, from.normalized()));
        Vector3d const across = from.cross(to);
        // Skipped if the origin is in the plane of the rectangle, up to rounding.
        double const height = across.dot(middle);
        if (std::abs(height) > rounding * from.norm() * to.norm() * middle.norm()) {
            outline.sides.push_back((height > 0.0 ? across : -across).normalized());
        }
    }
    if (outline.radius >= pi / 2.0) {
        outline.radius = pi; // a larger circle around the corners need not contain the rectangle
    }
    return outline;
}

Building SurfacesInView::within(Vector3d const& axis, double halfAngle) const
{
    if (halfAngle >= pi / 2.0) {
        return building_;
    }
    // Below this product, the whole cone is on the other side of the plane.
    double const limit = -std::sin(halfAngle) - rounding;
    Building part;
    for (std::size_t i = 0; i < outlines_.size(); ++i) {
        Outline const& outline = outlines_[i];
        bool const isNear = angleBetween(outline.middle, axis) <= outline.radius + halfAngle + angleRounding;
        if (isNear &&
            std::ranges::all_of(outline.sides, [&](Vector3d const& side) { return side.dot(axis) >= limit; }))
        {
            part.surfaces.push_back(building_.surfaces[i]);
        }
    }
    return part;
}

} // namespace oV::Roamscan::tool
