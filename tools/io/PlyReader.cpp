#include "tools/io/PlyReader.h"

#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"
#include "tools/io/PlyHeader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t bytesAtOnce = 1U << 20;

/// The nearest integer that the type can hold; zero for NaN.
template <typename Whole>
Whole rounded(double value)
{
    constexpr double highest = std::numeric_limits<Whole>::max();
    return value > 0.0 ? static_cast<Whole>(std::lround(std::min(value, highest))) : Whole{0};
}

CloudPoint pointOf(PlyHeader const& header, char const* vertex)
{
    auto const value = [&](PlyField field) { return header.value(field, vertex); };
    CloudPoint point;
    point.position = {static_cast<float>(value(PlyField::X)),
                      static_cast<float>(value(PlyField::Y)),
                      static_cast<float>(value(PlyField::Z))};
    point.intensity = rounded<std::uint16_t>(value(PlyField::Intensity));
    point.r = rounded<std::uint8_t>(value(PlyField::Red));
    point.g = rounded<std::uint8_t>(value(PlyField::Green));
    point.b = rounded<std::uint8_t>(value(PlyField::Blue));
    point.a = rounded<std::uint8_t>(value(PlyField::Alpha));
    point.time = value(PlyField::Time);
    return point;
}

void checkSize(PlyHeader const& header, InputFile& file, std::filesystem::path const& path)
{
    std::uint64_t const available = file.size - static_cast<std::uint64_t>(file.stream.tellg());
    // Division cannot overflow, whatever the count.
    if (available % header.stride != 0 || available / header.stride != header.vertexCount) {
        throw fileError(path,
                        "the header promises " + std::to_string(header.vertexCount) + " vertices of " +
                            std::to_string(header.stride) + " bytes, but " + std::to_string(available) +
                            " bytes follow it; the file is cut off or damaged");
    }
}

} // namespace

std::vector<CloudPoint> readPlyFile(std::filesystem::path const& path)
{
    InputFile file = openInput(path);
    PlyHeader const header = readPlyHeader(file.stream, path);
    checkSize(header, file, path);

    std::vector<CloudPoint> scan;
    scan.reserve(header.vertexCount);
    std::size_t const verticesAtOnce = bytesAtOnce / header.stride + 1;
    std::vector<char> buffer(verticesAtOnce * header.stride);
    while (scan.size() < header.vertexCount) {
        auto const count = std::min<std::size_t>(verticesAtOnce, header.vertexCount - scan.size());
        file.stream.read(buffer.data(), static_cast<std::streamsize>(count * header.stride));
        if (!file.stream) {
            throw fileError(path, "cannot be read beyond vertex " + std::to_string(scan.size()));
        }
        for (std::size_t i = 0; i < count; ++i) {
            scan.push_back(pointOf(header, buffer.data() + i * header.stride));
        }
    }
    return scan;
}

} // namespace oV::Roamscan::tool
