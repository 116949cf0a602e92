#pragma once

#include "tools/io/FrameFile.h"

#include <roamscan/sensors/SensorData.h>

#include <cstddef>
#include <filesystem>
#include <iosfwd>

namespace oV::Roamscan::tool
{

using SensorFile = FrameFile<SensorData>;

/// @throws ToolError if the file cannot be opened or holds no sound sensor stream
[[nodiscard]] SensorFile readSensorFile(std::filesystem::path const& path);

/// Writes one frame. `name` is what messages call the stream.
/// @throws ToolError if the stream does not take it, or it would be larger than can be read back
void writeSensors(SensorData const& data, std::ostream& stream, std::filesystem::path const& name);

/// The tables that the store takes in a stream: the root, and one for every sensor, sample and pose that is
/// kept there.
[[nodiscard]] std::size_t tableCount(SensorData const& data);

} // namespace oV::Roamscan::tool
