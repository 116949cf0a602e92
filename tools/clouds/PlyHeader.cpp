#include "tools/clouds/PlyHeader.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/NumberText.h"

#include <algorithm>
#include <array>
#include <istream>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t longestLine = 1024;
constexpr std::uint64_t mostLines = 1000;

struct Type
{
    std::string_view name;
    std::string_view sizedName;
    FieldType type;
};

constexpr std::array types{Type{"char", "int8", FieldType::Int8},
                           Type{"uchar", "uint8", FieldType::UInt8},
                           Type{"short", "int16", FieldType::Int16},
                           Type{"ushort", "uint16", FieldType::UInt16},
                           Type{"int", "int32", FieldType::Int32},
                           Type{"uint", "uint32", FieldType::UInt32},
                           Type{"float", "float32", FieldType::Float},
                           Type{"double", "float64", FieldType::Double}};

using Words = std::vector<std::string_view>;

/// Saturates: a hostile count must not wrap around.
std::uint64_t product(std::uint64_t count, std::uint64_t size)
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max() / 4;
    return size != 0 && count > most / size ? most : count * size;
}

/// Parses the header line by line.
class HeaderParser
{
public:
    explicit HeaderParser(std::filesystem::path const& name) : name_(name) {}

    /// False at the header's last line.
    bool take(std::string_view line)
    {
        ++header_.lines;
        line = trimmed(line.substr(0, line.find('\r')));
        Words const words = columnsOf(line);
        if (header_.lines == 1) {
            require(line == "ply", "does not begin with \"ply\"; give a PLY file");
            return true;
        }
        require(!words.empty(), "an empty line in the header");
        if (words[0] == "comment" || words[0] == "obj_info") {
            return true;
        }
        if (!formatSeen_) {
            takeFormat(words);
        } else if (words[0] == "element") {
            takeElement(words);
        } else if (words[0] == "property") {
            takeProperty(words);
        } else {
            require(words.size() == 1 && words[0] == "end_header", excerpt(line) + " is not understood");
            finishElement();
            return false;
        }
        return true;
    }

    [[nodiscard]] PlyHeader finish() const
    {
        require(verticesSeen_, "there is no \"element vertex\"");
        require(header_.vertex.stride() > 0, "the vertices have no property");
        return header_;
    }

    void require(bool fulfilled, std::string const& why) const
    {
        if (!fulfilled) {
            throw lineError(name_, header_.lines, why);
        }
    }

    [[nodiscard]] std::uint64_t number() const { return header_.lines; }

private:
    struct Element
    {
        std::string name;
        std::uint64_t count = 0;
        PointLayout properties;
        std::uint64_t smallestSize = 0; ///< Of one item with empty lists.
        bool hasLists = false;
    };

    void takeFormat(Words const& words)
    {
        require(words.size() == 3 && words[0] == "format" && words[2] == "1.0",
                "the second line must be \"format ascii 1.0\", or binary_little_endian or binary_big_endian "
                "instead of ascii");
        if (words[1] == "binary_little_endian") {
            header_.format = PlyFormat::LittleEndian;
        } else if (words[1] == "binary_big_endian") {
            header_.format = PlyFormat::BigEndian;
        } else {
            require(words[1] == "ascii", excerpt(words[1]) + " is not a format of PLY");
        }
        formatSeen_ = true;
    }

    void takeElement(Words const& words)
    {
        require(words.size() == 3, "an element needs a name and a count");
        require(words[1] != "vertex" || !(verticesSeen_ || element_.name == "vertex"),
                "the element \"vertex\" is there twice");
        auto const count = parseInteger(words[2]);
        require(count && *count >= 0, excerpt(words[2]) + " is not a count");
        finishElement();
        element_ = {std::string(words[1]), static_cast<std::uint64_t>(*count), {}, 0, false};
    }

    void takeProperty(Words const& words)
    {
        require(!element_.name.empty(), "a property before its element");
        if (words.size() == 5 && words[1] == "list") {
            require(element_.name != "vertex", "list properties of vertices are not supported");
            element_.smallestSize += sizeOf(typeNamed(words[2]));
            element_.hasLists = true;
            return;
        }
        require(words.size() == 3, "a property needs a type and a name");
        FieldType const type = typeNamed(words[1]);
        element_.smallestSize += sizeOf(type);
        if (element_.name == "vertex") {
            require(std::ranges::none_of(element_.properties.fields(),
                                         [&](Field const& field) { return field.name == words[2]; }),
                    "the property " + excerpt(words[2]) + " is there twice");
            element_.properties.add(std::string(words[2]), type);
        }
    }

    [[nodiscard]] FieldType typeNamed(std::string_view name) const
    {
        auto const* const type =
            std::ranges::find_if(types, [&](Type const& t) { return t.name == name || t.sizedName == name; });
        require(type != types.end(), excerpt(name) + " is not a scalar type");
        return type->type;
    }

    void finishElement()
    {
        if (element_.name == "vertex") {
            verticesSeen_ = true;
            header_.vertexCount = element_.count;
            header_.vertex = element_.properties;
        } else if (verticesSeen_) {
            header_.bytesAfter += product(element_.count, element_.smallestSize);
            header_.listsAfter = header_.listsAfter || element_.hasLists;
        } else {
            require(!element_.hasLists,
                    "the element " + excerpt(element_.name) +
                        " has lists and is before the vertices; write the vertices first");
            header_.bytesBefore += product(element_.count, element_.smallestSize);
            header_.linesBefore += element_.count;
        }
        // Later sums must not wrap around.
        require(header_.bytesBefore < (1ULL << 62U) && header_.bytesAfter < (1ULL << 62U) &&
                    header_.linesBefore < (1ULL << 62U),
                "the counts are larger than any file");
    }

    std::filesystem::path const& name_;
    PlyHeader header_;
    Element element_;
    bool formatSeen_ = false;
    bool verticesSeen_ = false;
};

} // namespace

PlyHeader readPlyHeader(std::istream& stream, std::filesystem::path const& name)
{
    HeaderParser parser(name);
    std::array<char, longestLine> buffer{};
    for (bool more = true; more;) {
        parser.require(parser.number() < mostLines, "the header has no end");
        stream.getline(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        if (!stream.good()) {
            throw lineError(name, parser.number() + 1, "the header ends early, or its line is too long");
        }
        std::string_view const line(buffer.data(), static_cast<std::size_t>(stream.gcount()) - 1);
        more = parser.take(line);
    }
    return parser.finish();
}

} // namespace oV::Roamscan::tool
