#pragma once

#include "tools/clouds/LineConverter.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

/// Finds the type of each column of a text: the smallest integer type that holds all its values, or double.
class TextColumns
{
public:
    explicit TextColumns(std::vector<std::string> names) : names_(std::move(names)), columns_(names_.size())
    {}

    /// Takes a line with data into account. Columns that are missing or no numbers are left to the conversion
    /// of the line, which reports them.
    void take(std::string_view line, Separator separator);

    /// The columns that `isReal` names are doubles, unless that would change an integer.
    [[nodiscard]] PointLayout layout(std::vector<std::string> const& real) const;

private:
    struct Column
    {
        bool isInteger = true;
        std::int64_t lowest = 0;
        std::uint64_t highest = 0;
    };

    static void take(std::string_view text, Column& column);

    std::vector<std::string> names_;
    std::vector<Column> columns_;
};

} // namespace oV::Roamscan::tool
