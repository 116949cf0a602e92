#pragma once

#include <roamscan/trajectory/TrajectoryNode.h>

#include <span>
#include <vector>

namespace oV::Roamscan::tool
{

/// The times of nodes in ascending order, each once; without those that are not finite.
[[nodiscard]] std::vector<double> timesInOrder(std::span<TrajectoryNode const> nodes);

/// The median of the steps between ascending times; 0 for fewer than two.
[[nodiscard]] double usualStep(std::span<double const> times);

/// The longest step that is interpolated unless the user says otherwise: ten usual steps.
[[nodiscard]] double defaultLongestGap(std::span<double const> times);

/// A step in time without a pose in it.
struct TrajectoryGap
{
    double from = 0.0; ///< Seconds.
    double to = 0.0;   ///< Seconds.

    [[nodiscard]] double duration() const { return to - from; }
};

/// The steps between ascending times that are longer than `longest` seconds, in order of time.
[[nodiscard]] std::vector<TrajectoryGap> gapsLongerThan(double longest, std::span<double const> times);

/// Whether a time is in one of the gaps, which are in order of time. Their ends are poses and in no gap.
[[nodiscard]] bool isInGap(double time, std::span<TrajectoryGap const> gaps);

} // namespace oV::Roamscan::tool
