#include "tools/clouds/PcdWriter.h"

#include "tools/clouds/RecordCopy.h"

#include <limits>
#include <ostream>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

char letterOf(FieldType type)
{
    if (isFloating(type)) {
        return 'F';
    }
    return withType(type,
                    [](auto zero) { return std::numeric_limits<decltype(zero)>::is_signed ? 'I' : 'U'; });
}

} // namespace

PcdWriter::PcdWriter(std::ostream& stream,
                     std::filesystem::path name,
                     PointLayout layout,
                     std::vector<std::string> comments)
    : stream_(stream), name_(std::move(name)), layout_(std::move(layout)), comments_(std::move(comments))
{
    writeHeader();
}

std::span<char const> PcdWriter::convert(PointBlock const& points,
                                         std::span<double const> /*times*/,
                                         std::vector<char>& buffer) const
{
    return littleEndianRecords(points, layout_, layout_, buffer, name_);
}

void PcdWriter::write(std::span<char const> converted, std::size_t points)
{
    writeBytes(stream_, converted, name_);
    count_ += points;
}

void PcdWriter::finish()
{
    stream_.seekp(0);
    writeHeader();
    stream_.seekp(0, std::ios::end);
}

void PcdWriter::writeHeader()
{
    // The comment pads the counts, so that the header keeps its length when they change.
    std::string const digits = std::to_string(count_);
    std::string const padding(2 * (std::numeric_limits<std::uint64_t>::digits10 + 1 - digits.size()), '-');
    stream_ << "# .PCD v0.7 - Point Cloud Data file format\n# points in metres, times in seconds " << padding
            << '\n';
    for (std::string const& comment : comments_) {
        stream_ << "# " << comment << '\n';
    }
    stream_ << "VERSION 0.7\n";
    auto const writeEntry = [this](char const* entry, auto const& valueOf) {
        stream_ << entry;
        for (Field const& field : layout_.fields()) {
            stream_ << ' ' << valueOf(field);
        }
        stream_ << '\n';
    };
    writeEntry("FIELDS", [](Field const& field) { return oneWord(field.name); });
    writeEntry("SIZE", [](Field const& field) { return sizeOf(field.type); });
    writeEntry("TYPE", [](Field const& field) { return letterOf(field.type); });
    writeEntry("COUNT", [](Field const&) { return 1; });
    stream_ << "WIDTH " << digits << "\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS " << digits
            << "\nDATA binary\n";
}

} // namespace oV::Roamscan::tool
