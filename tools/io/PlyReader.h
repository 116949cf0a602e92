#pragma once

#include "tools/points/ScanPoints.h"

#include <filesystem>

namespace oV::Roamscan::tool
{

/// Reads a scan from a binary little-endian PLY file. Besides x, y, z and time it takes intensity (rounded
/// and limited to 16 bits) and red, green, blue, alpha (to 8 bits) where the file has them; what it lacks is
/// zero.
///
/// The count of vertices must fit the size of the file to the byte, which is checked before room is made for
/// them.
/// @throws ToolError
[[nodiscard]] ScanPoints readPlyFile(std::filesystem::path const& path);

} // namespace oV::Roamscan::tool
