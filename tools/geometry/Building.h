#pragma once

#include "tools/geometry/Rectangle.h"

#include <Eigen/Core>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// One face of a building.
struct Surface
{
    std::string name;
    Rectangle rectangle;
    double reflectance = 0.5; ///< The fraction of light that is reflected, 0 to 1.
};

/// The first surface on a ray.
struct RayHit
{
    double range = 0.0;        ///< Metres from the ray's origin.
    std::size_t surface = 0;   ///< Index into Building::surfaces.
    double cosIncidence = 0.0; ///< 1 for a ray along the normal of the surface, 0 for a grazing one.
};

/// The true surfaces of a place, in metres.
struct Building
{
    std::vector<Surface> surfaces;

    /// The first surface that a ray of unit direction hits within a range.
    [[nodiscard]] std::optional<RayHit>
    castRay(Eigen::Vector3d const& origin, Eigen::Vector3d const& direction, double longestRange) const;
};

/// An upright box, rotated about its vertical axis by `angle`.
struct UprightBox
{
    Eigen::Vector2d centre = Eigen::Vector2d::Zero();
    Eigen::Vector2d size = Eigen::Vector2d::Ones(); ///< Along the axes of the box.
    double angle = 0.0;                             ///< Radians, counterclockwise.
    double bottom = 0.0;
    double top = 1.0;
};

/// Adds the four sides of a box, and its horizontal face at the height `lid` if there is one, all with the
/// same name.
void addBox(Building& building,
            std::string const& name,
            UprightBox const& box,
            std::optional<double> lid,
            double reflectance);

/// Adds the six inner faces of a room: floor, ceiling, and the four outer walls.
void addShell(Building& building, Eigen::Vector3d const& lowest, Eigen::Vector3d const& highest);

} // namespace oV::Roamscan::tool
