#pragma once

#include "tools/clouds/CloudFile.h"

#include <cstddef>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace support
{

/// The points of a cloud in memory.
struct CloudTable
{
    oV::Roamscan::tool::PointLayout layout;
    oV::Roamscan::tool::PointBlock points;

    [[nodiscard]] std::size_t size() const { return points.count; }

    /// The values of a field.
    [[nodiscard]] std::vector<double> column(std::string_view name) const
    {
        auto const* const field = layout.find(name);
        if (field == nullptr) {
            throw std::invalid_argument("no field " + std::string(name));
        }
        std::vector<double> values(points.count);
        points.read(*field, layout.stride(), values.data());
        return values;
    }

    /// The values of a point, in the order of the fields.
    [[nodiscard]] std::vector<double> row(std::size_t index) const
    {
        std::vector<double> values;
        for (auto const& field : layout.fields()) {
            values.push_back(column(field.name).at(index));
        }
        return values;
    }

    /// "name type" of every field, as in PLY files.
    [[nodiscard]] std::vector<std::string> fields() const
    {
        std::vector<std::string> texts;
        for (auto const& field : layout.fields()) {
            texts.push_back(field.name + ' ' + oV::Roamscan::tool::nameOf(field.type));
        }
        return texts;
    }
};

/// All points that a reader gives.
inline CloudTable tableOf(oV::Roamscan::tool::PointReader& reader)
{
    CloudTable table{reader.layout(), {}};
    oV::Roamscan::tool::RawBlock raw;
    oV::Roamscan::tool::PointBlock block;
    while (reader.read(raw)) {
        reader.convert(raw, block);
        table.points.count += block.count;
        table.points.records.insert(table.points.records.end(), block.records.begin(), block.records.end());
    }
    return table;
}

/// A cloud in a file.
inline CloudTable readCloud(std::filesystem::path const& path)
{
    return tableOf(*oV::Roamscan::tool::openCloud(path));
}

/// A cloud in memory, as a file of this name.
inline CloudTable parseCloud(std::string const& bytes, std::filesystem::path const& name)
{
    return tableOf(*oV::Roamscan::tool::openCloud(
        oV::Roamscan::tool::CloudInput{std::make_unique<std::istringstream>(bytes), bytes.size(), name}));
}

} // namespace support
