#pragma once

#include "tools/clouds/CloudInput.h"
#include "tools/clouds/PointReader.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// How a text of numbers is read.
struct TextSettings
{
    std::vector<std::string> columns; ///< The names of the columns; empty to take them from the header.
    std::optional<std::string> timeProperty; ///< The column with the time, if it has no usual name.
};

/// Reads a text with one point a line: CSV (commas or semicolons) or columns between blanks or tabs (XYZ).
/// Names come from the first line, from a comment before the first point ("# x y z time", "//X Y Z"), or from
/// the settings.
///
/// The text is read once before its points are read, to count them and to find the types of the columns: the
/// smallest integer type that holds all values of a column, or double.
/// @throws ToolError if the columns have no names, or two the same one
[[nodiscard]] std::unique_ptr<PointReader> openTextCloud(CloudInput input, TextSettings const& settings);

} // namespace oV::Roamscan::tool
