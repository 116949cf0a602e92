#pragma once

#include "tools/geometry/Building.h"

#include <Eigen/Core>
#include <Eigen/Geometry>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace oV::Roamscan::tool
{

/// Computes exact distances between points and the nearest surface of a building.
///
/// A grid of cells lists, for each cell, the surfaces that can be the nearest one of a point in it. Points
/// outside the grid are compared with all surfaces. Keeps a reference to the building.
class NearestSurface
{
public:
    explicit NearestSurface(Building const& building);

    /// Infinite if the building has no surface.
    [[nodiscard]] double distance(Eigen::Vector3d const& point) const;

private:
    void chooseCells();
    void fillCells();

    Building const& building_;
    Eigen::AlignedBox3d bounds_;
    double cellSize_ = 1.0;
    Eigen::Array<Eigen::Index, 3, 1> cellCounts_; // along x, y and z
    std::vector<std::uint32_t> firstCandidate_;   // one more entry than there are cells
    std::vector<std::uint32_t> candidates_;
};

} // namespace oV::Roamscan::tool
