#pragma once

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <cstddef>
#include <optional>

namespace oV::Roamscan::tool
{

/// What is in a trajectory stream, in numbers. The nodes are measured in order of their times.
struct TrajectorySummary
{
    /// Over nodes with a finite time; of several at the same time the last one in the file counts.
    struct Span
    {
        double from = 0.0; ///< Seconds, as all times here.
        double to = 0.0;
        double meanStep = 0.0; ///< 0 with one time only.
        double largestStep = 0.0;
        double pathLength = 0.0; ///< Metres, straight from node to node.
    };

    std::size_t nodes = 0;
    std::size_t repeatedTimes = 0;    ///< Nodes whose time another one takes over.
    std::size_t nodesWithoutTime = 0; ///< Nodes whose time is not finite.
    bool inOrder = true;              ///< Whether the file has the nodes in order of their times.
    std::optional<Span> span;         ///< None without a finite time.
};

[[nodiscard]] TrajectorySummary summarise(TrajectoryData const& data);

} // namespace oV::Roamscan::tool
