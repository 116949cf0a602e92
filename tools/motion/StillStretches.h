#pragma once

#include <roamscan/geometry/AnchorSections.h>
#include <roamscan/trajectory/TrajectoryNode.h>

#include <cstddef>
#include <span>

namespace oV::Roamscan::tool
{

/// What counts as standing still.
struct StillSettings
{
    double speed = 0.05;     ///< Metres a second; slower is still.
    double rate = 3.0;       ///< Degrees a second; slower is still.
    double minSeconds = 1.0; ///< A shorter stretch does not count.
};

/// Where in a recording the device stood still, and how much of it could be measured.
struct StillStretches
{
    AnchorSections sections;  ///< The stretches.
    double window = 0.0;      ///< Seconds over which the motion was measured.
    double measured = 0.0;    ///< Seconds of the recording whose motion could be measured.
    std::size_t poses = 0;    ///< Nodes that were measured: at different times, with a pose.
    std::size_t unusable = 0; ///< Nodes without a finite time or pose, or beyond what integer time can count.
    std::size_t gaps = 0;     ///< Steps in time about which nothing is known.
    double largestGap = 0.0;  ///< Seconds.
};

/// Finds the stretches in which the device stood still.
///
/// Neighbouring poses say little about motion: a millimetre of noise at 300 poses a second looks like 0.3
/// m/s. So the motion at a time is that between two poses of the middle, the medians over the quarter of a
/// second before and the one after; where poses come less often, both halves grow until some four poses are
/// in each. The medians bear single poses that are far off, and are right for steady motion however the poses
/// are spaced. A stretch begins and ends at poses, inside the true one: where a fast device stops at once by
/// half of such a half, where it slows down gently by less. Trembling that is faster than a half is taken for
/// noise.
///
/// A step in time longer than a half is a gap. No stretch goes across it, and what lies between gaps that are
/// closer than two halves is not measured.
///
/// The nodes may come in any order; of several at the same time the last one counts.
[[nodiscard]] StillStretches findStillStretches(std::span<TrajectoryNode const> nodes,
                                                StillSettings const& settings);

} // namespace oV::Roamscan::tool
