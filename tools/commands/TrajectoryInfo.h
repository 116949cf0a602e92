#pragma once

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <nlohmann/json.hpp>

#include <iosfwd>

namespace oV::Roamscan::tool
{

/// What is in a trajectory, as the members of an object.
[[nodiscard]] nlohmann::ordered_json toJson(TrajectoryData const& data);

/// The same in words, line by line.
void printText(TrajectoryData const& data, std::ostream& out);

} // namespace oV::Roamscan::tool
