#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <optional>

namespace oV::Roamscan::tool
{

/// The scalar types of a PLY property.
enum class PlyType
{
    Int8,
    Uint8,
    Int16,
    Uint16,
    Int32,
    Uint32,
    Float32,
    Float64
};

[[nodiscard]] std::size_t sizeOf(PlyType type);

/// The values of a vertex that this program knows.
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
inline constexpr std::size_t plyFieldCount = 9;

/// Where a value lies in the bytes of one vertex.
struct PlyProperty
{
    PlyType type = PlyType::Float32;
    std::size_t offset = 0;
};

/// What the header of a binary little-endian PLY file with vertices, and nothing but vertices, says.
struct PlyHeader
{
    std::uint64_t vertexCount = 0;
    std::size_t stride = 0; ///< Bytes of one vertex.
    std::array<std::optional<PlyProperty>, plyFieldCount> properties;

    [[nodiscard]] std::optional<PlyProperty> const& property(PlyField field) const
    {
        return properties[static_cast<std::size_t>(field)];
    }
};

/// Reads the header and leaves the stream at the first vertex. Properties in any order and of any scalar
/// type; those without a use here are stepped over.
/// @throws ToolError ("FILE:LINE: why") if it is another format, has lists or other elements, or lacks x, y,
/// z or time
[[nodiscard]] PlyHeader readPlyHeader(std::istream& stream, std::filesystem::path const& name);

} // namespace oV::Roamscan::tool
