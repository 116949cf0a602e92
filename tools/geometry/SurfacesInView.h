#pragma once

#include "tools/geometry/Building.h"

#include <Eigen/Core>

#include <vector>

namespace oV::Roamscan::tool
{

/// Finds the surfaces of a building that rays from one point can hit within a cone of directions, so that
/// neighbouring rays are tested against few surfaces. Keeps a reference to the building.
class SurfacesInView
{
public:
    SurfacesInView(Building const& building, Eigen::Vector3d const& origin);

    /// The surfaces, in the building's order, that rays from the origin can hit whose angle to the unit axis
    /// is at most `halfAngle` (radians). The result may include surfaces that the rays just miss.
    [[nodiscard]] Building within(Eigen::Vector3d const& axis, double halfAngle) const;

private:
    /// Two bounds of the directions from the origin to a surface.
    struct Outline
    {
        Eigen::Vector3d middle; ///< Unit vector.
        double radius = 0.0;    ///< Radians, the largest angle between a direction and `middle`.
        /// Every direction has a non-negative dot product with each of these unit vectors.
        std::vector<Eigen::Vector3d> sides;
    };
    [[nodiscard]] static Outline outlineOf(Rectangle const& rectangle, Eigen::Vector3d const& origin);

    Building const& building_;
    std::vector<Outline> outlines_;
};

} // namespace oV::Roamscan::tool
