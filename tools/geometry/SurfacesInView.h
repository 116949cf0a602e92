#pragma once

#include "tools/geometry/Building.h"

#include <Eigen/Core>

#include <vector>

namespace oV::Roamscan::tool
{

/// Answers which surfaces of a building the rays from one point can meet within a cone of directions, so that
/// many rays side by side are compared with few surfaces. Borrows the building.
class SurfacesInView
{
public:
    SurfacesInView(Building const& building, Eigen::Vector3d const& origin);

    /// The part of the building that rays from the origin meet whose angle to the unit axis is at most
    /// `halfAngle` (radians), in the building's order; now and then a surface that they just miss is among
    /// it.
    [[nodiscard]] Building within(Eigen::Vector3d const& axis, double halfAngle) const;

private:
    /// Two bounds of the directions in which a surface is seen.
    struct Outline
    {
        Eigen::Vector3d middle; ///< Unit vector.
        double radius = 0.0;    ///< Radians, the largest angle to the middle.
        /// No direction has a negative product with one of these unit vectors.
        std::vector<Eigen::Vector3d> sides;
    };
    [[nodiscard]] static Outline outlineOf(Rectangle const& rectangle, Eigen::Vector3d const& origin);

    Building const& building_;
    std::vector<Outline> outlines_;
};

} // namespace oV::Roamscan::tool
