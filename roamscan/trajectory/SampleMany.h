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
/// Many poses, or many points, in one call. Each pose is bit for bit that of Trajectory::sample().
///
/// Faster than a loop over sample() if the trajectory has a table of poses
/// (InterpolatedTrajectoryPathBuilder): the table is searched only when a time leaves the interval between
/// two poses, and the values for the slerp in an interval are computed once. Times may be in any order;
/// ascending order is fastest.
///
/// Thread safety: all functions may run concurrently if the trajectory's functions may.

namespace oV::Roamscan
{

/// Samples the poses at many times.
/// @param trajectory has no pose at a time if its pose function throws `std::out_of_range` for it
/// @param times in seconds, in any order
/// @param poses receives a pose for each time; TrafoT::Invalid() if the trajectory has none
/// @return the number of times without a pose
/// @throws std::invalid_argument if the spans differ in size
///
/// Other exceptions of the pose function pass through; `poses` is unspecified then.
ROAMSCAN_EXPORT std::size_t
samplePoses(Trajectory const& trajectory, std::span<double const> times, std::span<TrafoT<double>> poses);

/// The outcome for one point.
enum class PointPlacement : std::uint8_t
{
    Placed = 0,   ///< The point was transformed.
    Outside = 1,  ///< The trajectory has no pose at the point's time.
    InGap = 2,    ///< The time lies between two poses that are farther apart than the longest gap.
    NotFinite = 3 ///< The time is NaN, or the given or the resulting position is not finite.
};

/// The number of points with each outcome.
struct PlacementCounts
{
    std::size_t placed = 0;    ///< PointPlacement::Placed
    std::size_t outside = 0;   ///< PointPlacement::Outside
    std::size_t inGap = 0;     ///< PointPlacement::InGap
    std::size_t notFinite = 0; ///< PointPlacement::NotFinite
};

/// Settings of placePoints().
struct PlacementSettings
{
    /// The longest time between two poses, in seconds, that is interpolated. Points in longer gaps are not
    /// placed, except exactly at the time of a pose. Ignored if the trajectory has no table of poses.
    double longestGap = std::numeric_limits<double>::infinity();
    /// Whether to use TBB's threads; otherwise everything runs on the caller's thread. The results are the
    /// same.
    bool parallel = true;
};

/// Transforms points from the device's frame to the trajectory's target frame: `pose(time) * point`, in
/// double precision.
/// @param trajectory has no pose at a time if its pose function throws `std::out_of_range` for it
/// @param times in seconds, one for each point, in any order
/// @param points in the device's frame, in the trajectory's unit of length
/// @param places receives the transformed point, or NaN if the point was not placed; may be the memory of
///     `points`
/// @param placements receives the outcome for each point; may be empty
/// @param settings the longest gap, and whether to run in parallel
/// @return the number of points with each outcome
/// @throws std::invalid_argument if the spans differ in size
///
/// Other exceptions of the pose function pass through; the results are unspecified then.
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
