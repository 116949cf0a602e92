#pragma once

#include "tools/placing/TimeOfPoints.h"
#include "tools/points/PointBlock.h"

#include <roamscan/frame/bvbase/Vec3d.h>
#include <roamscan/trajectory/SampleMany.h>
#include <roamscan/trajectory/Trajectory.h>

#include <Eigen/Core>

#include <array>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <span>
#include <vector>

namespace oV::Roamscan::tool
{

/// What became of the points of a scan.
struct PlacingCounts
{
    std::uint64_t points = 0; ///< All.
    std::uint64_t placed = 0;
    std::uint64_t withoutTime = 0;     ///< The time is NaN.
    std::uint64_t outside = 0;         ///< The time is outside the trajectory.
    std::uint64_t inGaps = 0;          ///< The time is in a gap; such points may have been placed.
    std::uint64_t withoutPosition = 0; ///< Not measured (position zero), or the position is not finite.
    double earliest = std::numeric_limits<double>::infinity(); ///< Of the times, in seconds.
    double latest = -std::numeric_limits<double>::infinity();
    double largestRounding = 0.0; ///< Metres that a coordinate lost as a float.

    PlacingCounts& operator+=(PlacingCounts const& other);
};

/// How points are placed.
struct PlacingSettings
{
    double longestGap = std::numeric_limits<double>::infinity(); ///< Seconds between two poses.
    bool acrossGaps = false;                                     ///< Place points in longer gaps too.
    std::optional<Eigen::Vector3d> origin; ///< If given, coordinates are floats relative to it.
};

/// Placed points, and what is known of them.
struct PlacedBlock
{
    PointBlock points;                         ///< By PointPlacer::placedLayout(); only placed points.
    std::vector<Bv_1_1::Vec3d<double>> places; ///< Of the same points, in the world frame.
    std::vector<double> times;                 ///< Of the same points, in seconds.
    PlacingCounts counts;                      ///< Of all points of the block.

    std::vector<PointPlacement> placements; ///< Of all points of the block; for PointPlacer only.
    std::vector<std::uint32_t> kept;        ///< The placed points, if not all are; for PointPlacer only.
};

/// Transforms the points of a scan by the poses of a trajectory at the times of the points. All other
/// fields keep their values and types; directions (normals) are rotated.
class PointPlacer
{
public:
    /// Keeps a reference to the trajectory.
    /// @param name the scan's name for messages
    /// @throws ToolError if the points lack x, y or z, or normals are integers, which cannot be rotated
    PointPlacer(PointLayout scan,
                TimeOfPoints time,
                Trajectory const& trajectory,
                PlacingSettings settings,
                std::filesystem::path const& name);

    /// The layout of the scan, but with x, y and z as doubles, or as floats if there is an origin.
    [[nodiscard]] PointLayout const& placedLayout() const { return placed_; }

    /// May run concurrently.
    void place(PointBlock const& scan, PlacedBlock& placed) const;

private:
    using Vector = std::array<Field, 3>;

    /// Bytes that are copied from a record of the scan to a placed one.
    struct Piece
    {
        std::size_t from = 0;
        std::size_t to = 0;
        std::size_t size = 0; ///< 16, 8, 4, 2 or 1.
    };

    void findDirections(std::filesystem::path const& name);
    void planCopies();
    void findPlaces(PointBlock const& scan, PlacedBlock& placed) const;
    void readMeasured(PointBlock const& scan, std::span<Bv_1_1::Vec3d<double>> positions) const;
    static void count(PlacementCounts const& found, PlacedBlock& placed);
    static void keepPlaced(PlacedBlock& placed);
    void copyRecords(PointBlock const& scan, PlacedBlock& placed) const;
    void storePositions(PlacedBlock& placed) const;
    void rotateDirections(PlacedBlock& placed) const;

    PointLayout scan_;
    PointLayout placed_;
    TimeOfPoints time_;
    Trajectory const& trajectory_;
    PlacingSettings settings_;
    Vector position_;                // in the scan
    Vector placedPosition_;          // in the placed points
    std::vector<Vector> directions_; // in the placed points
    std::vector<Piece> pieces_;
};

} // namespace oV::Roamscan::tool
