#pragma once

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <iosfwd>

namespace bench
{

/// The stream format by way of the tree of objects that flatc generates for the schema, the way a program
/// without a mind to speed does it: store, tree, builder, frame; and frame, verified buffer, tree, store.

[[nodiscard]] bool writeThroughObjectTree(oV::Roamscan::TrajectoryData const& store, std::ostream& stream);
[[nodiscard]] bool readThroughObjectTree(oV::Roamscan::TrajectoryData& store, std::istream& stream);

} // namespace bench
