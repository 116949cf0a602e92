#pragma once

#include "tools/io/SensorFile.h"
#include "tools/io/TrajectoryFile.h"

#include <filesystem>
#include <variant>

namespace oV::Roamscan::tool
{

/// The first frame of a file, of either kind.
using RecordingFile = std::variant<TrajectoryFile, SensorFile>;

/// Tells the kind by the content. A stream with nothing in it looks the same in both kinds, and counts as a
/// trajectory.
/// @throws ToolError if the file cannot be opened or holds neither kind
[[nodiscard]] RecordingFile readRecordingFile(std::filesystem::path const& path);

} // namespace oV::Roamscan::tool
