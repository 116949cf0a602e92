#pragma once

#include "tools/points/PointLayout.h"

#include <cstdint>
#include <filesystem>
#include <iosfwd>

namespace oV::Roamscan::tool
{

/// The header of a PCD file.
struct PcdHeader
{
    PointLayout layout; ///< A field of several numbers is as many fields: "name_0", "name_1", ...
    std::uint64_t pointCount = 0;
    bool binary = false;
    std::uint64_t lines = 0; ///< Of the header.
};

/// Reads the header and leaves the stream at the first byte after it.
/// @throws ToolError ("FILE:LINE: why") if it is damaged, or the points are compressed
[[nodiscard]] PcdHeader readPcdHeader(std::istream& stream, std::filesystem::path const& name);

} // namespace oV::Roamscan::tool
