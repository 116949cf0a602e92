#pragma once

#include "tools/clouds/CloudInput.h"
#include "tools/points/FieldType.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// A number after the standard part of a record.
struct LasExtraField
{
    std::string name;
    FieldType type = FieldType::UInt8;
    std::size_t byte = 0; ///< In the record.
    double scale = 1.0;
    double offset = 0.0;
    bool isScaled = false; ///< Whether the value is `scale * number + offset`.
};

/// The header of a LAS file of version 1.0 to 1.4.
struct LasHeader
{
    unsigned format = 0;        ///< Of the points, 0 to 10.
    std::size_t recordSize = 0; ///< Bytes of a point.
    std::uint64_t pointCount = 0;
    std::array<double, 3> scale{};  ///< Of x, y and z.
    std::array<double, 3> offset{}; ///< Of x, y and z.
    std::vector<LasExtraField> extra;
};

/// Reads the header and leaves the stream at the first point.
/// @throws ToolError if it is damaged, or the points are compressed or have no time
[[nodiscard]] LasHeader readLasHeader(CloudInput& input);

} // namespace oV::Roamscan::tool
