#include "tools/clouds/PlyWriter.h"

#include "tools/clouds/RecordCopy.h"

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

std::string plyHeader(HeaderText const& text)
{
    std::string header = "ply\nformat binary_little_endian 1.0\n";
    for (std::string const& comment : text.comments) {
        header += "comment " + comment + '\n';
    }
    header += "comment points in metres, times in seconds " + text.padding(1) + "\nelement vertex " +
              std::to_string(text.count) + '\n';
    for (Field const& field : text.fields.fields()) {
        header += std::string("property ") + nameOf(field.type) + ' ' + oneWord(field.name) + '\n';
    }
    return header + "end_header\n";
}

} // namespace

PlyWriter::PlyWriter(std::ostream& stream,
                     std::filesystem::path name,
                     PointLayout const& layout,
                     std::vector<std::string> comments)
    : RecordWriter(stream, std::move(name), layout, typesOfPly(layout), std::move(comments), plyHeader)
{}

} // namespace oV::Roamscan::tool
