#pragma once

#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/TrajectoryNode.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bench
{

using Pose = oV::Roamscan::TrafoT<double>;

/// The distribution of the times of poses; 200 poses per second, except in pauses.
enum class Spacing
{
    Even,
    Random, ///< Exponentially distributed gaps.
    Bursts  ///< Evenly spaced bursts of 2 to 10 s, and pauses of 20 to 120 s between them.
};

/// The pose at a time of the simulator's walk, along a rectangle of 60 m by 36 m. It pitches, rolls and yaws
/// with the steps.
[[nodiscard]] Pose poseOfWalk(double seconds);

/// Nodes of a walk in the order of their times, with all fields set. The same in each run. Allocates only the
/// result.
[[nodiscard]] std::vector<oV::Roamscan::TrajectoryNode> makeNodes(std::size_t count, Spacing spacing);

/// A time to query, and where it lies between the poses.
struct Query
{
    double time;         ///< Seconds.
    std::uint32_t lower; ///< Index of the last pose that is not later.
    double fraction;     ///< Of the gap from that pose to the next.
};

/// Random queries, distributed evenly over the gaps between poses whatever their lengths, so that few lie in
/// pauses.
[[nodiscard]] std::vector<Query>
makeQueries(std::vector<oV::Roamscan::TrajectoryNode> const& nodes, std::size_t count, bool ascending);

} // namespace bench
