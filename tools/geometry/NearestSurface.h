#pragma once

#include "tools/geometry/Building.h"

#include <Eigen/Core>
#include <Eigen/Geometry>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace oV::Roamscan::tool
{

/// Answers how far a point is from the nearest surface of a building, exactly.
///
/// Space is cut into cells, each with the few surfaces that can be the nearest one of a point in it; a point
/// outside the cells is compared with all. Borrows the building.
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
    std::array<std::size_t, 3> cellCounts_{};
    std::vector<std::uint32_t> firstCandidate_; // one more than there are cells
    std::vector<std::uint32_t> candidates_;
};

} // namespace oV::Roamscan::tool
