#pragma once

#include "tools/console/JsonText.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <iosfwd>

namespace oV::Roamscan::tool
{

/// Describes a trajectory as a JSON object. Times are in seconds, over the nodes with a finite time in order
/// of time; of several nodes at the same time the last one counts. "pathLength" is the sum of the distances
/// between successive nodes in metres. Without a finite time, the members from "from" to "pathLength" are
/// missing.
[[nodiscard]] Json describe(TrajectoryData const& data);

/// Prints such an object as text.
void printTrajectory(Json const& trajectory, std::ostream& out);

} // namespace oV::Roamscan::tool
