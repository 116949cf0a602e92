#include "tools/io/PlyHeader.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/NumberText.h"

#include <algorithm>
#include <istream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t longestLine = 1024;
constexpr std::uint64_t mostLines = 1000;

constexpr std::array<std::pair<std::string_view, PlyType>, 16> typeNames{{
    {"char", PlyType::Int8},
    {"int8", PlyType::Int8},
    {"uchar", PlyType::Uint8},
    {"uint8", PlyType::Uint8},
    {"short", PlyType::Int16},
    {"int16", PlyType::Int16},
    {"ushort", PlyType::Uint16},
    {"uint16", PlyType::Uint16},
    {"int", PlyType::Int32},
    {"int32", PlyType::Int32},
    {"uint", PlyType::Uint32},
    {"uint32", PlyType::Uint32},
    {"float", PlyType::Float32},
    {"float32", PlyType::Float32},
    {"double", PlyType::Float64},
    {"float64", PlyType::Float64},
}};

constexpr std::array<std::string_view, plyFieldCount> fieldNames{
    "x", "y", "z", "time", "intensity", "red", "green", "blue", "alpha"};

using Words = std::vector<std::string_view>;

Words split(std::string_view line)
{
    Words words;
    for (auto word = nextColumn(line); !word.empty(); word = nextColumn(line)) {
        words.push_back(word);
    }
    return words;
}

/// Takes up the header line by line.
class HeaderParser
{
public:
    explicit HeaderParser(std::filesystem::path const& name) : name_(name) {}

    /// False at the header's last line.
    bool take(std::string_view line)
    {
        ++number_;
        Words const words = split(line);
        if (number_ == 1) {
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
            return false;
        }
        return true;
    }

    [[nodiscard]] PlyHeader finish() const
    {
        require(elementSeen_, "there is no \"element vertex\"");
        for (PlyField const field : {PlyField::X, PlyField::Y, PlyField::Z, PlyField::Time}) {
            require(header_.property(field).has_value(),
                    "the vertices lack the property \"" +
                        std::string(fieldNames[static_cast<std::size_t>(field)]) +
                        "\"; x, y, z and time are needed");
        }
        return header_;
    }

    void require(bool fulfilled, std::string const& why) const
    {
        if (!fulfilled) {
            throw lineError(name_, number_, why);
        }
    }

    [[nodiscard]] std::uint64_t number() const { return number_; }

private:
    void takeFormat(Words const& words)
    {
        require(words == Words{"format", "binary_little_endian", "1.0"},
                "the format must be \"binary_little_endian 1.0\"; convert the file");
        formatSeen_ = true;
    }

    void takeElement(Words const& words)
    {
        require(words.size() == 3, "an element has a name and a count");
        require(!elementSeen_ && words[1] == "vertex",
                "the element " + excerpt(words[1]) + " is one too many; a scan has vertices only, and once");
        auto const count = parseInteger(words[2]);
        require(count && *count >= 0, excerpt(words[2]) + " is not a count of vertices");
        header_.vertexCount = static_cast<std::uint64_t>(*count);
        elementSeen_ = true;
    }

    void takeProperty(Words const& words)
    {
        require(elementSeen_, "a property before its element");
        require(words.size() < 2 || words[1] != "list", "list properties have no place in a scan");
        require(words.size() == 3, "a property has a type and a name");
        auto const* const type =
            std::ranges::find(typeNames, words[1], &std::pair<std::string_view, PlyType>::first);
        require(type != typeNames.end(), excerpt(words[1]) + " is not a scalar type");
        require(std::ranges::find(propertyNames_, words[2]) == propertyNames_.end(),
                "the property " + excerpt(words[2]) + " stands there twice");
        propertyNames_.emplace_back(words[2]);
        auto const* const field = std::ranges::find(fieldNames, words[2]);
        if (field != fieldNames.end()) {
            header_.properties[static_cast<std::size_t>(field - fieldNames.begin())] =
                PlyProperty{type->second, header_.stride};
        }
        header_.stride += sizeOf(type->second);
    }

    std::filesystem::path const& name_;
    PlyHeader header_;
    std::vector<std::string> propertyNames_;
    std::uint64_t number_ = 0;
    bool formatSeen_ = false;
    bool elementSeen_ = false;
};

} // namespace

std::size_t sizeOf(PlyType type)
{
    constexpr std::array<std::size_t, 8> sizes{1, 1, 2, 2, 4, 4, 4, 8};
    return sizes[static_cast<std::size_t>(type)];
}

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
