#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iosfwd>

namespace oV::Roamscan::tool
{

/// The values of a vertex that this program uses.
enum class PlyField : std::size_t
{
    X,
    Y,
    Z,
    Time,
    Intensity,
    Red,
    Green,
    Blue,
    Alpha
};

/// A scalar property of a vertex.
struct PlyProperty
{
    double (*read)(char const* bytes) = nullptr; ///< Null if the file does not have the property.
    std::size_t offset = 0;                      ///< In the bytes of a vertex.
};

/// The header of a binary little-endian PLY file that has vertices only.
struct PlyHeader
{
    std::uint64_t vertexCount = 0;
    std::size_t stride = 0;                  ///< Bytes per vertex.
    std::array<PlyProperty, 9> properties{}; ///< By PlyField.

    [[nodiscard]] bool has(PlyField field) const
    {
        return properties[static_cast<std::size_t>(field)].read != nullptr;
    }

    /// The value of a field in the bytes of a vertex; 0 if the file does not have it.
    [[nodiscard]] double value(PlyField field, char const* vertex) const
    {
        PlyProperty const& property = properties[static_cast<std::size_t>(field)];
        return property.read == nullptr ? 0.0 : property.read(vertex + property.offset);
    }
};

/// Reads the header and leaves the stream at the first vertex. The properties may be in any order and of any
/// scalar type; unknown ones are skipped.
/// @throws ToolError ("FILE:LINE: why") if it is another format, has lists or other elements, or lacks x, y,
/// z or time
[[nodiscard]] PlyHeader readPlyHeader(std::istream& stream, std::filesystem::path const& name);

} // namespace oV::Roamscan::tool
