#pragma once

#include "tools/points/CloudPoint.h"

#include <filesystem>
#include <vector>

namespace oV::Roamscan::tool
{

/// Reads a scan from a binary little-endian PLY file. x, y, z and time are required. Intensity is rounded and
/// limited to 16 bits, red, green, blue and alpha to 8 bits; they are zero if the file does not have them.
///
/// The number of vertices must match the size of the file exactly, which is checked before memory is
/// allocated for them.
/// @throws ToolError
[[nodiscard]] std::vector<CloudPoint> readPlyFile(std::filesystem::path const& path);

} // namespace oV::Roamscan::tool
