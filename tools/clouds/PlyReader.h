#pragma once

#include "tools/clouds/CloudInput.h"
#include "tools/clouds/PointReader.h"

#include <memory>

namespace oV::Roamscan::tool
{

/// Reads the vertices of a PLY file: text, or binary in either byte order. Other elements, such as faces, are
/// skipped.
///
/// The number of vertices must fit the size of a binary file, which is checked before memory is allocated
/// for them. Without lists in other elements, the size must match exactly.
/// @throws ToolError if the header cannot be read or does not fit the file
[[nodiscard]] std::unique_ptr<PointReader> openPly(CloudInput input);

} // namespace oV::Roamscan::tool
