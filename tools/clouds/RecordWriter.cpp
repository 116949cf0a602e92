#include "tools/clouds/RecordWriter.h"

#include "tools/clouds/RecordCopy.h"

#include <limits>
#include <ostream>
#include <utility>

namespace oV::Roamscan::tool
{

std::string HeaderText::padding(std::size_t counts) const
{
    std::size_t const longest = std::numeric_limits<std::uint64_t>::digits10 + 1;
    return std::string(counts * (longest - std::to_string(count).size()), '-');
}

RecordWriter::RecordWriter(std::ostream& stream,
                           std::filesystem::path name,
                           PointLayout layout,
                           PointLayout written,
                           std::vector<std::string> comments,
                           MakeHeader& makeHeader)
    : stream_(stream),
      name_(std::move(name)),
      layout_(std::move(layout)),
      header_{std::move(written), std::move(comments), 0},
      makeHeader_(makeHeader)
{
    stream_ << makeHeader_(header_);
}

std::span<char const> RecordWriter::convert(PointBlock const& points,
                                            std::span<double const> /*times*/,
                                            std::vector<char>& buffer) const
{
    return littleEndianRecords(points, layout_, header_.fields, buffer, name_);
}

void RecordWriter::write(std::span<char const> converted, std::size_t points)
{
    writeBytes(stream_, converted, name_);
    header_.count += points;
}

void RecordWriter::finish()
{
    stream_.seekp(0);
    stream_ << makeHeader_(header_);
    stream_.seekp(0, std::ios::end);
}

} // namespace oV::Roamscan::tool
