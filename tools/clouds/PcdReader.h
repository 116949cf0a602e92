#pragma once

#include "tools/clouds/CloudInput.h"
#include "tools/clouds/PointReader.h"

#include <memory>

namespace oV::Roamscan::tool
{

/// Reads a PCD file, ASCII or binary. The number of points must fit the size of a binary file, which is
/// checked before memory is allocated for them.
/// @throws ToolError if the header cannot be read or does not fit the file, or the points are compressed
[[nodiscard]] std::unique_ptr<PointReader> openPcd(CloudInput input);

} // namespace oV::Roamscan::tool
