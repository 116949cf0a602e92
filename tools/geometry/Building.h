#pragma once

#include "tools/geometry/Rectangle.h"

#include <Eigen/Core>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// One flat face of a building.
struct Surface
{
    std::string name;
    Rectangle rectangle;
    double reflectance = 0.5; ///< The share of light that comes back, 0 to 1.
};

/// What a ray meets first.
struct RayHit
{
    double range = 0.0;        ///< Metres from the ray's origin.
    std::size_t surface = 0;   ///< Index into Building::surfaces.
    double cosIncidence = 0.0; ///< 1 for a ray straight onto the surface, 0 for a grazing one.
};

/// The true surfaces of a place, in metres.
struct Building
{
    std::vector<Surface> surfaces;

    /// The first surface that a ray of unit direction meets within a range.
    [[nodiscard]] std::optional<RayHit>
    castRay(Eigen::Vector3d const& origin, Eigen::Vector3d const& direction, double longestRange) const;
};

/// An upright box; `angle` turns it about its vertical axis.
struct UprightBox
{
    Eigen::Vector2d centre = Eigen::Vector2d::Zero();
    Eigen::Vector2d size = Eigen::Vector2d::Ones(); ///< Along its own two axes.
    double angle = 0.0;                             ///< Radians, counterclockwise.
    double bottom = 0.0;
    double top = 1.0;
};

/// The faces that are wanted beside the four sides of a box.
enum class BoxLids
{
    None,
    Top,
    Bottom
};

/// Adds the faces of a box, all under one name.
void addBox(
    Building& building, std::string const& name, UprightBox const& box, BoxLids lids, double reflectance);

/// Adds the six inner faces of a room: floor, ceiling, and the four outer walls.
void addShell(Building& building, Eigen::Vector3d const& lowest, Eigen::Vector3d const& highest);

} // namespace oV::Roamscan::tool
