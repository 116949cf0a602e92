#pragma once

#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/detail/PoseTable.h>

#include <utility>

namespace oV::Roamscan::detail
{

/// The trajectory of a table, from its first to its last key; from 0 to 0 if the table is empty.
[[nodiscard]] inline Trajectory trajectoryOverTable(PoseTable table)
{
    auto const& times = table.times();
    auto const start = times.empty() ? TimeStamp() : TimeStamp(times.front());
    auto const stop = times.empty() ? TimeStamp() : TimeStamp(times.back());
    return Trajectory(start, stop, std::move(table));
}

} // namespace oV::Roamscan::detail
