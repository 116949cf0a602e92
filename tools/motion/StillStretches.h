#pragma once

#include <roamscan/geometry/AnchorSections.h>
#include <roamscan/trajectory/TrajectoryNode.h>

#include <cstddef>
#include <span>

namespace oV::Roamscan::tool
{

/// The thresholds of standing still.
struct StillSettings
{
    double speed = 0.05;     ///< Metres per second; slower is still.
    double rate = 3.0;       ///< Degrees per second; slower is still.
    double minSeconds = 1.0; ///< Shorter stretches are ignored.
};

/// When the device stood still, and how much of the recording could be measured.
struct StillStretches
{
    AnchorSections sections;  ///< The stretches.
    double window = 0.0;      ///< Seconds over which the motion was measured.
    double measured = 0.0;    ///< Seconds of the recording whose motion could be measured.
    std::size_t poses = 0;    ///< Nodes that were used: at different times, with a valid pose.
    std::size_t unusable = 0; ///< Nodes without a finite time or pose, or out of the range of integer time.
    std::size_t gaps = 0;     ///< Steps in time that are too long to be measured.
    double largestGap = 0.0;  ///< Seconds.
};

/// Finds the stretches in which the device stood still.
///
/// The difference between neighbouring poses is mostly noise: one millimetre at 300 poses per second looks
/// like 0.3 m/s. Therefore the motion at a time is measured between two median poses, over the half window of
/// 0.25 s before and the one after; with fewer poses per second, the half windows grow until each contains
/// about four poses. Medians are robust against outliers, and exact for steady motion with any spacing of the
/// poses. A stretch begins and ends at poses and is shorter than the true one: by half of a half window at
/// each end where a fast device stops abruptly, by less where it slows down gently. Vibration that is faster
/// than a half window counts as noise.
///
/// A step in time longer than a half window is a gap. No stretch contains a gap, and poses between two gaps
/// that are less than a window apart are not measured.
///
/// The nodes may be in any order; of several at the same time the last one counts.
[[nodiscard]] StillStretches findStillStretches(std::span<TrajectoryNode const> nodes,
                                                StillSettings const& settings);

} // namespace oV::Roamscan::tool
