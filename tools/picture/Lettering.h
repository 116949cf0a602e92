#pragma once

#include "tools/picture/Canvas.h"

#include <string_view>

namespace oV::Roamscan::tool
{

/// The extent of a text in pixels; `scale` is the side of one dot of its letters, which are five dots wide
/// and seven high.
[[nodiscard]] Eigen::Vector2f textSize(std::string_view text, float scale);

/// Writes a text. The letters known are digits, the point, and those of "start", "end", "m" and "km"; any
/// other one is a gap.
void drawText(
    Canvas& canvas, std::string_view text, Eigen::Vector2f const& topLeft, float scale, Colour const& colour);

} // namespace oV::Roamscan::tool
