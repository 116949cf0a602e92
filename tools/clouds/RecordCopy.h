#pragma once

#include "tools/points/PointBlock.h"

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

/// The points as records of another layout, in little-endian byte order, as binary files have them.
/// @param written has the fields of `layout` in the same order; a 64-bit integer may be a double
/// @param buffer may be used for the result
/// @param name the file's name for messages
/// @return a view of `buffer`, or of the points if they are such records already
/// @throws ToolError if a double cannot hold a 64-bit integer exactly
[[nodiscard]] std::span<char const> littleEndianRecords(PointBlock const& points,
                                                        PointLayout const& layout,
                                                        PointLayout const& written,
                                                        std::vector<char>& buffer,
                                                        std::filesystem::path const& name);

/// Writes bytes.
/// @param name the file's name for messages
/// @throws ToolError if the disk is full
void writeBytes(std::ostream& stream, std::span<char const> bytes, std::filesystem::path const& name);

/// A field's name as one word of printable ASCII, as headers in text need it: '_' for anything else.
[[nodiscard]] std::string oneWord(std::string_view name);

} // namespace oV::Roamscan::tool
