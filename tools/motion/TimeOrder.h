#pragma once

#include <roamscan/trajectory/TrajectoryNode.h>

#include <cstddef>
#include <vector>

namespace oV::Roamscan::tool
{

/// How the times of poses deviate from strictly ascending order. Indices are those of the nodes.
struct TimeOrder
{
    std::size_t repeated = 0;      ///< Poses at a time that an earlier pose in the list has.
    std::size_t firstRepeated = 0; ///< The first of them.
    std::size_t backward = 0;      ///< Poses whose time is before that of the previous pose in the list.
    std::size_t firstBackward = 0; ///< The first of them.
};

[[nodiscard]] TimeOrder timeOrderOf(std::vector<TrajectoryNode> const& nodes);

} // namespace oV::Roamscan::tool
