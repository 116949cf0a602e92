#include "tools/geometry/NearestSurface.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace oV::Roamscan::tool
{

namespace
{

constexpr double margin = 0.5;                // metres around the building that the cells cover too
constexpr double finestCell = 0.5;            // metres
constexpr double mostComparisons = 5'000'000; // cells times surfaces, to bound time and memory

} // namespace

NearestSurface::NearestSurface(Building const& building) : building_(building)
{
    for (Surface const& surface : building.surfaces) {
        Rectangle const& r = surface.rectangle;
        for (Eigen::Vector3d const& corner : {r.corner(),
                                              Eigen::Vector3d(r.corner() + r.edgeA()),
                                              Eigen::Vector3d(r.corner() + r.edgeB()),
                                              Eigen::Vector3d(r.corner() + r.edgeA() + r.edgeB())})
        {
            bounds_.extend(corner);
        }
    }
    if (!building.surfaces.empty()) {
        bounds_.min().array() -= margin;
        bounds_.max().array() += margin;
        chooseCells();
        fillCells();
    }
}

void NearestSurface::chooseCells()
{
    auto const surfaces = static_cast<double>(building_.surfaces.size());
    Eigen::Array3d const size = bounds_.sizes().array();
    cellSize_ = finestCell;
    while ((size / cellSize_).ceil().prod() * surfaces > mostComparisons) {
        cellSize_ *= 1.5;
    }
    Eigen::Array3d const counts = (size / cellSize_).ceil();
    for (int axis = 0; axis < 3; ++axis) {
        cellCounts_[static_cast<std::size_t>(axis)] = static_cast<std::size_t>(counts[axis]);
    }
}

void NearestSurface::fillCells()
{
    // Within a cell, distances differ from those at its centre by half a diagonal at most.
    double const slack = cellSize_ * std::sqrt(3.0);
    std::vector<double> distances(building_.surfaces.size());
    firstCandidate_.push_back(0);
    for (std::size_t z = 0; z < cellCounts_[2]; ++z) {
        for (std::size_t y = 0; y < cellCounts_[1]; ++y) {
            for (std::size_t x = 0; x < cellCounts_[0]; ++x) {
                Eigen::Vector3d const index(
                    static_cast<double>(x), static_cast<double>(y), static_cast<double>(z));
                Eigen::Vector3d const centre = bounds_.min() + (index.array() + 0.5).matrix() * cellSize_;
                std::ranges::transform(building_.surfaces, distances.begin(), [&](Surface const& surface) {
                    return surface.rectangle.distance(centre);
                });
                double const limit = *std::ranges::min_element(distances) + slack * (1.0 + 1e-9);
                for (std::uint32_t i = 0; i < distances.size(); ++i) {
                    if (distances[i] <= limit) {
                        candidates_.push_back(i);
                    }
                }
                firstCandidate_.push_back(static_cast<std::uint32_t>(candidates_.size()));
            }
        }
    }
}

double NearestSurface::distance(Eigen::Vector3d const& point) const
{
    double nearest = std::numeric_limits<double>::infinity();
    if (!bounds_.contains(point)) {
        for (Surface const& surface : building_.surfaces) {
            nearest = std::min(nearest, surface.rectangle.distance(point));
        }
        return nearest;
    }
    std::size_t cell = 0;
    for (int axis = 2; axis >= 0; --axis) {
        std::size_t const count = cellCounts_[static_cast<std::size_t>(axis)];
        auto const index = static_cast<std::size_t>((point[axis] - bounds_.min()[axis]) / cellSize_);
        cell = cell * count + std::min(index, count - 1);
    }
    for (std::uint32_t i = firstCandidate_[cell]; i < firstCandidate_[cell + 1]; ++i) {
        nearest = std::min(nearest, building_.surfaces[candidates_[i]].rectangle.distance(point));
    }
    return nearest;
}

} // namespace oV::Roamscan::tool
