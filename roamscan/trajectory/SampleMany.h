#pragma once

#include <roamscan/frame/bvbase/Vec3d.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/Trajectory.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

/// @file
/// Many poses, or many points, in one call. Each pose is the same to the last bit as Trajectory::sample()
/// gives, but a trajectory over a table of poses is searched only where the times leave an interval between
/// two poses, and what depends on the interval only is computed once for it. Times in ascending order are the
/// fastest, any order works.
///
/// All functions may run on any number of threads at once, as long as the trajectory's functions allow it.

namespace oV::Roamscan
{

/// The poses at many times.
/// @param times seconds, in any order
/// @param poses receives a pose for each time; TrafoT::Invalid() where the trajectory has none, which is
/// where
///              its pose function throws `std::out_of_range`
/// @return the number of times without a pose
/// @throws std::invalid_argument if the spans differ in size; other exceptions of the pose function pass
/// through, and the poses are unspecified then
ROAMSCAN_EXPORT std::size_t
samplePoses(Trajectory const& trajectory, std::span<double const> times, std::span<TrafoT<double>> poses);

/// What became of a point.
enum class PointPlacement : std::uint8_t
{
    Placed = 0,
    Outside = 1,  ///< The trajectory has no pose at the point's time.
    InGap = 2,    ///< The time lies between two poses that are farther apart than the longest gap.
    NotFinite = 3 ///< The time is NaN, or the position or its place is not finite.
};

/// How many points had each outcome.
struct PlacementCounts
{
    std::size_t placed = 0;    ///< Placement::Placed
    std::size_t outside = 0;   ///< Placement::Outside
    std::size_t inGap = 0;     ///< Placement::InGap
    std::size_t notFinite = 0; ///< Placement::NotFinite
};

/// How points are placed.
struct PlacementSettings
{
    /// Seconds. Poses that are farther apart are not interpolated across; a time at a pose is not in a gap.
    /// Only a trajectory over a table of poses has gaps.
    double longestGap = std::numeric_limits<double>::infinity();
    /// Whether the points are shared out among TBB's threads in ranges; otherwise the caller's thread does
    /// all. The results are the same.
    bool parallel = true;
};

/// Places points in the trajectory's target frame: `pose(time) * point`, in double precision.
/// @param times      seconds, one for each point, in any order
/// @param points     in the device's frame, in metres
/// @param places     receives the place of each point, NaN where it has none; may be `points` itself
/// @param placements receives what became of each point; may be empty if nobody asks
/// @throws std::invalid_argument if the spans differ in size; other exceptions of the pose function than
/// `std::out_of_range` pass through, and what was received is unspecified then
ROAMSCAN_EXPORT PlacementCounts placePoints(Trajectory const& trajectory,
                                            std::span<double const> times,
                                            std::span<Bv_1_1::Vec3d<double> const> points,
                                            std::span<Bv_1_1::Vec3d<double>> places,
                                            std::span<PointPlacement> placements = {},
                                            PlacementSettings const& settings = {});
/// @overload
ROAMSCAN_EXPORT PlacementCounts placePoints(Trajectory const& trajectory,
                                            std::span<double const> times,
                                            std::span<Bv_1_1::Vec3d<float> const> points,
                                            std::span<Bv_1_1::Vec3d<double>> places,
                                            std::span<PointPlacement> placements = {},
                                            PlacementSettings const& settings = {});

} // namespace oV::Roamscan
