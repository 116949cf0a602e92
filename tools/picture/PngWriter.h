#pragma once

#include "tools/picture/Canvas.h"

#include <iosfwd>

namespace oV::Roamscan::tool
{

/// Writes the picture as a PNG file of 24-bit colours.
/// @throws ToolError if the picture cannot be encoded
void writePng(Canvas const& canvas, std::ostream& stream);

} // namespace oV::Roamscan::tool
