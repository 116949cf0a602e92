#pragma once

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <iosfwd>
#include <memory>

namespace bench
{

/// The trajectory stream by way of the tree of objects that flatc generates for the schema, as a simple
/// program would do it: from the store to the tree to the builder to the stream, and back.

[[nodiscard]] bool writeTrajectoryThroughObjectTree(oV::Roamscan::TrajectoryData const& store,
                                                    std::ostream& stream);

/// @return null if the stream is truncated or not valid
[[nodiscard]] std::shared_ptr<oV::Roamscan::TrajectoryData>
readTrajectoryThroughObjectTree(std::istream& stream);

} // namespace bench
