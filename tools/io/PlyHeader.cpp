#include "tools/io/PlyHeader.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/NumberText.h"

#include <roamscan/frame/platform/LittleEndian.h>

#include <algorithm>
#include <bit>
#include <istream>
#include <string>
#include <string_view>
#include <type_traits>
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
    std::size_t size;
    double (*read)(char const* bytes);
};

template <typename Number>
double readNumber(char const* bytes)
{
    std::uint64_t const bits = fromLittleEndian({bytes, sizeof(Number)});
    if constexpr (std::is_same_v<Number, double>) {
        return std::bit_cast<double>(bits);
    } else if constexpr (std::is_same_v<Number, float>) {
        return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
    } else {
        return static_cast<double>(static_cast<Number>(bits));
    }
}

template <typename Number>
constexpr Type typeOf(std::string_view name, std::string_view sizedName)
{
    return {name, sizedName, sizeof(Number), readNumber<Number>};
}

constexpr std::array types{typeOf<std::int8_t>("char", "int8"),
                           typeOf<std::uint8_t>("uchar", "uint8"),
                           typeOf<std::int16_t>("short", "int16"),
                           typeOf<std::uint16_t>("ushort", "uint16"),
                           typeOf<std::int32_t>("int", "int32"),
                           typeOf<std::uint32_t>("uint", "uint32"),
                           typeOf<float>("float", "float32"),
                           typeOf<double>("double", "float64")};

constexpr std::array<std::string_view, 9> fieldNames{
    "x", "y", "z", "time", "intensity", "red", "green", "blue", "alpha"};

using Words = std::vector<std::string_view>;

/// Parses the header line by line.
class HeaderParser
{
public:
    explicit HeaderParser(std::filesystem::path const& name) : name_(name) {}

    /// False at the header's last line.
    bool take(std::string_view line)
    {
        ++number_;
        Words const words = columnsOf(line);
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
            require(header_.has(field),
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
        require(words.size() == 3, "an element needs a name and a count");
        require(!elementSeen_ && words[1] == "vertex",
                "the element " + excerpt(words[1]) +
                    " is not supported; a scan has one element, the vertices");
        auto const count = parseInteger(words[2]);
        require(count && *count >= 0, excerpt(words[2]) + " is not a count of vertices");
        header_.vertexCount = static_cast<std::uint64_t>(*count);
        elementSeen_ = true;
    }

    void takeProperty(Words const& words)
    {
        require(elementSeen_, "a property before its element");
        require(words.size() < 2 || words[1] != "list", "list properties are not supported");
        require(words.size() == 3, "a property needs a type and a name");
        auto const* const type = std::ranges::find_if(
            types, [&](Type const& t) { return t.name == words[1] || t.sizedName == words[1]; });
        require(type != types.end(), excerpt(words[1]) + " is not a scalar type");
        require(std::ranges::find(propertyNames_, words[2]) == propertyNames_.end(),
                "the property " + excerpt(words[2]) + " is there twice");
        propertyNames_.emplace_back(words[2]);
        auto const* const field = std::ranges::find(fieldNames, words[2]);
        if (field != fieldNames.end()) {
            header_.properties[static_cast<std::size_t>(field - fieldNames.begin())] = {type->read,
                                                                                        header_.stride};
        }
        header_.stride += type->size;
    }

    std::filesystem::path const& name_;
    PlyHeader header_;
    std::vector<std::string> propertyNames_;
    std::uint64_t number_ = 0;
    bool formatSeen_ = false;
    bool elementSeen_ = false;
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
