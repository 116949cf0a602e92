#pragma once

#include "tools/geometry/Building.h"

#include <filesystem>
#include <iosfwd>

/// The true surfaces of a building as JSON:
///
///     { "format": "roamscan building", "version": 1, "unit": "m",
///       "surfaces": [ { "name": "floor", "corner": [x, y, z], "edges": [[x, y, z], [x, y, z]],
///       "reflectance": 0.5 } ] }
///
/// Each surface is a rectangle; its two edges leave the corner at a right angle.
namespace oV::Roamscan::tool
{

void writeBuilding(Building const& building, std::ostream& stream);

/// @throws ToolError if the file cannot be opened or holds no such document
[[nodiscard]] Building readBuildingFile(std::filesystem::path const& path);

} // namespace oV::Roamscan::tool
