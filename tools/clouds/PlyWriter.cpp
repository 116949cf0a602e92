#include "tools/clouds/PlyWriter.h"

#include "tools/clouds/RecordCopy.h"

#include <limits>
#include <ostream>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

/// The layout with doubles for 64-bit integers.
PointLayout typesOfPly(PointLayout const& layout)
{
    PointLayout written;
    for (Field const& field : layout.fields()) {
        bool const isLong = field.type == FieldType::Int64 || field.type == FieldType::UInt64;
        written.add(field.name, isLong ? FieldType::Double : field.type);
    }
    return written;
}

} // namespace

PlyWriter::PlyWriter(std::ostream& stream,
                     std::filesystem::path name,
                     PointLayout layout,
                     std::vector<std::string> comments)
    : stream_(stream),
      name_(std::move(name)),
      layout_(std::move(layout)),
      written_(typesOfPly(layout_)),
      comments_(std::move(comments))
{
    writeHeader();
}

std::span<char const> PlyWriter::convert(PointBlock const& points,
                                         std::span<double const> /*times*/,
                                         std::vector<char>& buffer) const
{
    return littleEndianRecords(points, layout_, written_, buffer, name_);
}

void PlyWriter::write(std::span<char const> converted, std::size_t points)
{
    writeBytes(stream_, converted, name_);
    count_ += points;
}

void PlyWriter::finish()
{
    stream_.seekp(0);
    writeHeader();
    stream_.seekp(0, std::ios::end);
}

void PlyWriter::writeHeader()
{
    // The comment pads the count, so that the header keeps its length when the count changes.
    std::string const digits = std::to_string(count_);
    std::string const padding(std::numeric_limits<std::uint64_t>::digits10 + 1 - digits.size(), '-');
    stream_ << "ply\nformat binary_little_endian 1.0\n";
    for (std::string const& comment : comments_) {
        stream_ << "comment " << comment << '\n';
    }
    stream_ << "comment points in metres, times in seconds " << padding << "\nelement vertex " << digits
            << '\n';
    for (Field const& field : written_.fields()) {
        stream_ << "property " << nameOf(field.type) << ' ' << oneWord(field.name) << '\n';
    }
    stream_ << "end_header\n";
}

} // namespace oV::Roamscan::tool
