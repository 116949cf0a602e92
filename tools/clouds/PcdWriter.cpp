#include "tools/clouds/PcdWriter.h"

#include "tools/clouds/RecordCopy.h"

#include <limits>
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

/// "FIELDS x y z"
template <typename ValueOf>
std::string entry(char const* name, PointLayout const& layout, ValueOf const& valueOf)
{
    std::string line = name;
    for (Field const& field : layout.fields()) {
        line += ' ' + valueOf(field);
    }
    return line + '\n';
}

std::string pcdHeader(HeaderText const& text)
{
    std::string header = "# .PCD v0.7 - Point Cloud Data file format\n# points in metres, times in seconds " +
                         text.padding(2) + '\n';
    for (std::string const& comment : text.comments) {
        header += "# " + comment + '\n';
    }
    std::string const count = std::to_string(text.count);
    return header + "VERSION 0.7\n" +
           entry("FIELDS", text.fields, [](Field const& field) { return oneWord(field.name); }) +
           entry("SIZE", text.fields, [](Field const& field) { return std::to_string(sizeOf(field.type)); }) +
           entry(
               "TYPE", text.fields, [](Field const& field) { return std::string(1, letterOf(field.type)); }) +
           entry("COUNT", text.fields, [](Field const&) { return std::string("1"); }) + "WIDTH " + count +
           "\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS " + count + "\nDATA binary\n";
}

} // namespace

PcdWriter::PcdWriter(std::ostream& stream,
                     std::filesystem::path name,
                     PointLayout const& layout,
                     std::vector<std::string> comments)
    : RecordWriter(stream, std::move(name), layout, layout, std::move(comments), pcdHeader)
{}

} // namespace oV::Roamscan::tool
