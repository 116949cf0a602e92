#include "tools/clouds/CsvWriter.h"

#include "tools/clouds/RecordCopy.h"

#include <algorithm>
#include <charconv>
#include <ostream>
#include <string>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t longestNumber = 32; // characters of any number of any type

/// The name without what would end a column.
std::string columnName(std::string name)
{
    std::ranges::replace_if(
        name, [](char c) { return c == ',' || c == '"' || static_cast<unsigned char>(c) < ' '; }, '_');
    return name;
}

} // namespace

CsvWriter::CsvWriter(std::ostream& stream, std::filesystem::path name, PointLayout layout)
    : stream_(stream), name_(std::move(name)), layout_(std::move(layout))
{
    char const* separator = "";
    for (Field const& field : layout_.fields()) {
        stream_ << std::exchange(separator, ",") << columnName(field.name);
    }
    stream_ << '\n';
}

std::span<char const> CsvWriter::convert(PointBlock const& points,
                                         std::span<double const> /*times*/,
                                         std::vector<char>& buffer) const
{
    buffer.resize(points.count * layout_.fields().size() * (longestNumber + 1));
    char* to = buffer.data();
    char const* record = points.records.data();
    for (std::size_t i = 0; i < points.count; ++i, record += layout_.stride()) {
        for (Field const& field : layout_.fields()) {
            withType(field.type, [&](auto zero) {
                auto const number = load<decltype(zero)>(record + field.offset);
                to = std::to_chars(to, to + longestNumber, number).ptr;
            });
            *to++ = ',';
        }
        to[-1] = '\n';
    }
    return {buffer.data(), to};
}

void CsvWriter::write(std::span<char const> converted, std::size_t /*points*/)
{
    writeBytes(stream_, converted, name_);
}

} // namespace oV::Roamscan::tool
