#pragma once

#include "tools/clouds/PointReader.h"

#include <filesystem>
#include <string_view>

namespace oV::Roamscan::tool
{

/// Separates columns.
enum class Separator : char
{
    Blanks = ' ', ///< One or more blanks or tabs.
    Comma = ',',
    Semicolon = ';',
    Tab = '\t'
};

/// Takes the first column from a line, without the blanks and quotation marks around it.
[[nodiscard]] std::string_view takeColumn(std::string_view& line, Separator separator);

/// Converts lines of text to records: each column becomes the field at its place. Blank lines and comments
/// ('#', "//") are skipped.
class LineConverter
{
public:
    /// @param name the file's name for messages
    LineConverter(std::filesystem::path name, PointLayout layout, Separator separator);

    [[nodiscard]] PointLayout const& layout() const { return layout_; }

    /// @throws ToolError ("FILE:LINE: why") if a line has more or fewer columns than the layout has fields,
    /// or a column is no number of the field's type. An empty column is NaN in a float or double field.
    void convert(RawBlock const& raw, PointBlock& points) const;

private:
    void convertLine(std::string_view line, char* record) const;

    std::filesystem::path name_;
    PointLayout layout_;
    Separator separator_;
};

} // namespace oV::Roamscan::tool
