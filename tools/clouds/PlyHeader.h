#pragma once

#include "tools/points/PointLayout.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iosfwd>

namespace oV::Roamscan::tool
{

/// How a PLY file stores its numbers.
enum class PlyFormat
{
    Ascii,
    LittleEndian,
    BigEndian
};

/// The header of a PLY file with vertices.
struct PlyHeader
{
    PlyFormat format = PlyFormat::Ascii;
    std::uint64_t vertexCount = 0;
    PointLayout vertex;            ///< The properties of a vertex.
    std::uint64_t bytesBefore = 0; ///< Of the elements before the vertices, in a binary file.
    std::uint64_t linesBefore = 0; ///< Of the elements before the vertices, in a text.
    std::uint64_t bytesAfter = 0;  ///< Of the elements after the vertices in a binary file, at least.
    bool listsAfter = false;       ///< Whether elements after the vertices have lists.
    std::uint64_t lines = 0;       ///< Of the header.
};

/// Reads the header and leaves the stream at the first byte after it. Its lines end with LF or CR LF. The
/// vertices may have properties of any scalar type; elements before the vertices may not have lists.
/// @throws ToolError ("FILE:LINE: why") if it is anything else
[[nodiscard]] PlyHeader readPlyHeader(std::istream& stream, std::filesystem::path const& name);

} // namespace oV::Roamscan::tool
