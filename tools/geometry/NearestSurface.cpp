#include "tools/geometry/NearestSurface.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace oV::Roamscan::tool
{

namespace
{

constexpr double margin = 0.5;                // metres around the building that the grid covers
constexpr double finestCell = 0.5;            // metres
constexpr double mostComparisons = 5'000'000; // cells times surfaces; bounds time and memory

} // namespace

NearestSurface::NearestSurface(Building const& building) : building_(building)
{
    for (Surface const& surface : building.surfaces) {
        Rectangle const& r = surface.rectangle;
        Eigen::Vector3d const opposite = r.corner() + r.edgeA() + r.edgeB();
        bounds_.extend(r.corner())
            .extend(opposite)
            .extend(r.corner() + r.edgeA())
            .extend(r.corner() + r.edgeB());
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
    cellCounts_ = (size / cellSize_).ceil().cast<Eigen::Index>();
}

void NearestSurface::fillCells()
{
    // Within a cell, the distance to a surface differs from that of the centre by half a diagonal at most.
    double const slack = cellSize_ * std::sqrt(3.0);
    std::vector<double> distances(building_.surfaces.size());
    firstCandidate_.push_back(0);
    for (Eigen::Index cell = 0; cell < cellCounts_.prod(); ++cell) {
        Eigen::Array3d const index =
            Eigen::Array<Eigen::Index, 3, 1>(cell % cellCounts_.x(),
                                             cell / cellCounts_.x() % cellCounts_.y(),
                                             cell / cellCounts_.x() / cellCounts_.y())
                .cast<double>();
        Eigen::Vector3d const centre = bounds_.min() + (index + 0.5).matrix() * cellSize_;
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

double NearestSurface::distance(Eigen::Vector3d const& point) const
{
    double nearest = std::numeric_limits<double>::infinity();
    if (!bounds_.contains(point)) {
        for (Surface const& surface : building_.surfaces) {
            nearest = std::min(nearest, surface.rectangle.distance(point));
        }
        return nearest;
    }
    Eigen::Array<Eigen::Index, 3, 1> const index =
        ((point - bounds_.min()) / cellSize_).array().cast<Eigen::Index>().min(cellCounts_ - 1);
    auto const cell =
        static_cast<std::size_t>((index.z() * cellCounts_.y() + index.y()) * cellCounts_.x() + index.x());
    for (std::uint32_t i = firstCandidate_[cell]; i < firstCandidate_[cell + 1]; ++i) {
        nearest = std::min(nearest, building_.surfaces[candidates_[i]].rectangle.distance(point));
    }
    return nearest;
}

} // namespace oV::Roamscan::tool
