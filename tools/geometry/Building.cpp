#include "tools/geometry/Building.h"

#include <Eigen/Geometry>

#include <cmath>

namespace oV::Roamscan::tool
{

std::optional<RayHit>
Building::castRay(Eigen::Vector3d const& origin, Eigen::Vector3d const& direction, double longestRange) const
{
    std::optional<RayHit> nearest;
    for (std::size_t i = 0; i < surfaces.size(); ++i) {
        auto const range = surfaces[i].rectangle.hit(origin, direction);
        if (range && *range <= (nearest ? nearest->range : longestRange)) {
            nearest = RayHit{*range, i, 0.0};
        }
    }
    if (nearest) {
        nearest->cosIncidence = std::abs(surfaces[nearest->surface].rectangle.normal().dot(direction));
    }
    return nearest;
}

void addBox(Building& building,
            std::string const& name,
            UprightBox const& box,
            std::optional<double> lid,
            double reflectance)
{
    Eigen::Rotation2Dd const turn(box.angle);
    Eigen::Vector2d const a = turn * Eigen::Vector2d(box.size.x(), 0.0);
    Eigen::Vector2d const b = turn * Eigen::Vector2d(0.0, box.size.y());
    Eigen::Vector2d const first = box.centre - (a + b) / 2.0;
    Eigen::Vector3d const up(0.0, 0.0, box.top - box.bottom);
    auto const inSpace = [](Eigen::Vector2d const& v, double z) { return Eigen::Vector3d(v.x(), v.y(), z); };
    auto const add = [&](Eigen::Vector3d const& corner, Eigen::Vector3d const& e, Eigen::Vector3d const& f) {
        building.surfaces.push_back({name, Rectangle(corner, e, f), reflectance});
    };

    add(inSpace(first, box.bottom), inSpace(a, 0.0), up);
    add(inSpace(first + b, box.bottom), inSpace(a, 0.0), up);
    add(inSpace(first, box.bottom), inSpace(b, 0.0), up);
    add(inSpace(first + a, box.bottom), inSpace(b, 0.0), up);
    if (lid) {
        add(inSpace(first, *lid), inSpace(a, 0.0), inSpace(b, 0.0));
    }
}

void addShell(Building& building, Eigen::Vector3d const& lowest, Eigen::Vector3d const& highest)
{
    Eigen::Vector3d const size = highest - lowest;
    Eigen::Vector3d const x(size.x(), 0.0, 0.0);
    Eigen::Vector3d const y(0.0, size.y(), 0.0);
    Eigen::Vector3d const z(0.0, 0.0, size.z());
    building.surfaces.push_back({"floor", Rectangle(lowest, x, y), 0.35});
    building.surfaces.push_back({"ceiling", Rectangle(lowest + z, x, y), 0.85});
    building.surfaces.push_back({"outer wall, south", Rectangle(lowest, x, z), 0.7});
    building.surfaces.push_back({"outer wall, north", Rectangle(lowest + y, x, z), 0.7});
    building.surfaces.push_back({"outer wall, west", Rectangle(lowest, y, z), 0.7});
    building.surfaces.push_back({"outer wall, east", Rectangle(lowest + x, y, z), 0.7});
}

} // namespace oV::Roamscan::tool
