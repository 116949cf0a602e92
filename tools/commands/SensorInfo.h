#pragma once

#include <roamscan/sensors/SensorData.h>

#include <nlohmann/json.hpp>

#include <iosfwd>

namespace oV::Roamscan::tool
{

/// What is in a store of sensor samples, as the members of an object.
[[nodiscard]] nlohmann::ordered_json toJson(SensorData const& data);

/// The same in words, line by line.
void printText(SensorData const& data, std::ostream& out);

} // namespace oV::Roamscan::tool
