#pragma once

#include "tools/clouds/CloudInput.h"
#include "tools/clouds/PointReader.h"

#include <bit>
#include <cstdint>
#include <memory>

namespace oV::Roamscan::tool
{

/// Reads the records of a layout from a binary file.
/// @param input at the first record
/// @param order the byte order of the file
/// @throws ToolError if fewer bytes follow than the records take
[[nodiscard]] std::unique_ptr<PointReader>
readRecords(CloudInput input, PointLayout const& layout, std::uint64_t count, std::endian order);

} // namespace oV::Roamscan::tool
