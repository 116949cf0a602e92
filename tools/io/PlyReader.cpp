#include "tools/io/PlyReader.h"

#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"
#include "tools/io/PlyHeader.h"

#include <roamscan/frame/platform/LittleEndian.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <span>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t bytesAtOnce = 1U << 20;

double valueOf(PlyProperty const& property, std::span<char const> vertex)
{
    std::uint64_t const bits = fromLittleEndian(vertex.subspan(property.offset, sizeOf(property.type)));
    switch (property.type) {
    case PlyType::Int8:
        return static_cast<std::int8_t>(bits);
    case PlyType::Int16:
        return static_cast<std::int16_t>(bits);
    case PlyType::Int32:
        return static_cast<std::int32_t>(bits);
    case PlyType::Uint8:
    case PlyType::Uint16:
    case PlyType::Uint32:
        return static_cast<double>(bits);
    case PlyType::Float32:
        return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
    case PlyType::Float64:
        return std::bit_cast<double>(bits);
    }
    return std::numeric_limits<double>::quiet_NaN();
}

/// To the nearest whole number that the type can hold; NaN gives zero.
template <typename Whole>
Whole limited(double value)
{
    constexpr double highest = std::numeric_limits<Whole>::max();
    return value > 0.0 ? static_cast<Whole>(std::lround(std::min(value, highest))) : Whole{0};
}

class VertexReader
{
public:
    explicit VertexReader(PlyHeader const& header) : header_(header) {}

    void appendTo(ScanPoints& scan, std::span<char const> vertex) const
    {
        auto const value = [&](PlyField field) {
            auto const& property = header_.property(field);
            return property ? valueOf(*property, vertex) : 0.0;
        };
        IRoamscanData::ScanPoint point;
        point.position = {static_cast<float>(value(PlyField::X)),
                          static_cast<float>(value(PlyField::Y)),
                          static_cast<float>(value(PlyField::Z))};
        point.intensity = limited<std::uint16_t>(value(PlyField::Intensity));
        point.r = limited<std::uint8_t>(value(PlyField::Red));
        point.g = limited<std::uint8_t>(value(PlyField::Green));
        point.b = limited<std::uint8_t>(value(PlyField::Blue));
        point.a = limited<std::uint8_t>(value(PlyField::Alpha));
        scan.points.push_back(point);
        scan.times.push_back(value(PlyField::Time));
    }

private:
    PlyHeader const& header_;
};

void checkSize(PlyHeader const& header, InputFile& file, std::filesystem::path const& path)
{
    std::uint64_t const there = file.size - static_cast<std::uint64_t>(file.stream.tellg());
    // Dividing instead of multiplying: a hostile count must not wrap around.
    if (there % header.stride != 0 || there / header.stride != header.vertexCount) {
        throw fileError(path,
                        "the header promises " + std::to_string(header.vertexCount) + " vertices of " +
                            std::to_string(header.stride) + " bytes, but " + std::to_string(there) +
                            " bytes follow it; the file is cut off or damaged");
    }
}

} // namespace

ScanPoints readPlyFile(std::filesystem::path const& path)
{
    InputFile file = openInput(path);
    PlyHeader const header = readPlyHeader(file.stream, path);
    checkSize(header, file, path);

    ScanPoints scan;
    scan.points.reserve(header.vertexCount);
    scan.times.reserve(header.vertexCount);
    VertexReader const reader(header);
    std::size_t const verticesAtOnce = bytesAtOnce / header.stride + 1;
    std::vector<char> buffer(verticesAtOnce * header.stride);
    while (scan.size() < header.vertexCount) {
        auto const count = std::min<std::size_t>(verticesAtOnce, header.vertexCount - scan.size());
        file.stream.read(buffer.data(), static_cast<std::streamsize>(count * header.stride));
        if (!file.stream) {
            throw fileError(path, "cannot be read beyond vertex " + std::to_string(scan.size()));
        }
        for (std::size_t i = 0; i < count; ++i) {
            reader.appendTo(scan, std::span(buffer).subspan(i * header.stride, header.stride));
        }
    }
    return scan;
}

} // namespace oV::Roamscan::tool
