#pragma once

#include "tools/clouds/CloudInput.h"
#include "tools/clouds/PointReader.h"

#include <memory>

namespace oV::Roamscan::tool
{

/// Reads an uncompressed LAS file of version 1.0 to 1.4 whose points have GPS times (formats 1 and 3 to 10).
/// x, y and z are doubles in the file's unit; the other numbers of a point have the names that ASPRS gives
/// them, in lower case with underscores (return_number, gps_time, red, ...). Extra bytes have the names of
/// their descriptors; scaled ones are doubles.
/// @throws ToolError if the header is damaged or does not fit the file
[[nodiscard]] std::unique_ptr<PointReader> openLas(CloudInput input);

} // namespace oV::Roamscan::tool
