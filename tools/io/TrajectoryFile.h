#pragma once

#include "tools/io/FrameFile.h"

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <string>

namespace oV::Roamscan::tool
{

/// As many nodes as a trajectory stream can be read back with.
inline constexpr std::size_t largestNodeCount = largestTableCount - 1;

using TrajectoryFile = FrameFile<TrajectoryData>;

/// @throws ToolError if the file cannot be opened or holds no sound trajectory stream
[[nodiscard]] TrajectoryFile readTrajectoryFile(std::filesystem::path const& path);

/// Writes one frame. `name` is what messages call the stream.
/// @throws ToolError if the stream does not take it, or it holds more nodes than can be read back
void writeTrajectory(TrajectoryData const& data, std::ostream& stream, std::filesystem::path const& name);

/// "0, 1 and 3", or "none": the devices whose positions are known.
[[nodiscard]] std::string listDevices(TrajectoryData const& data);

} // namespace oV::Roamscan::tool
