#pragma once

#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectory/TrajectoryNode.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench
{

using Pose = oV::Roamscan::TrafoT<double>;

/// How the times of poses follow each other; 200 poses a second while there are any.
enum class Spacing
{
    Even,
    Random, ///< Exponentially distributed gaps.
    Bursts  ///< Evenly spaced bursts of 2 to 10 s, and pauses of 20 to 120 s between them.
};

[[nodiscard]] std::string nameOf(Spacing spacing);

/// A count with its thousands set apart: 1,000,000.
[[nodiscard]] std::string withCommas(std::size_t count);

/// Where somebody with a scanner is at a time: on a winding path through a hall, swaying with the steps and
/// looking around. Poses 5 ms apart differ by some tenths of a degree.
[[nodiscard]] Pose poseOfWalk(double seconds);

/// Poses with their times, in order. The same ones in each run.
struct Walk
{
    std::vector<double> times;
    std::vector<Pose> poses;
};

[[nodiscard]] Walk makeWalk(std::size_t count, Spacing spacing);

/// The same as nodes, matrices filled. Takes no memory but that of the result.
[[nodiscard]] std::vector<oV::Roamscan::TrajectoryNode> makeNodes(std::size_t count, Spacing spacing);

/// Times to ask for, with the answer's ingredients: the earlier one of the neighbouring poses and the
/// fraction to the later one.
struct Queries
{
    struct Neighbours
    {
        std::uint32_t lower;
        double fraction;
    };

    std::vector<double> times;
    std::vector<Neighbours> neighbours;
};

/// Times that are spread evenly over the gaps between poses, however wide each gap is: few lie in pauses.
[[nodiscard]] Queries makeQueries(std::vector<double> const& poseTimes, std::size_t count, bool ascending);

} // namespace bench
