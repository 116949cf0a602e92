#include "tools/clouds/PcdHeader.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/NumberText.h"

#include <algorithm>
#include <array>
#include <istream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::size_t longestLine = 65536;
constexpr std::uint64_t mostLines = 1000;
constexpr std::uint64_t mostFields = 10'000;

using Words = std::vector<std::string>;

/// Collects the entries of the header line by line.
class HeaderParser
{
public:
    explicit HeaderParser(std::filesystem::path const& name) : name_(name) {}

    /// False at the header's last line.
    bool take(std::string_view line)
    {
        ++header_.lines;
        line = line.substr(0, line.find('\r'));
        auto const columns = columnsOf(line);
        if (columns.empty() || columns[0].front() == '#') {
            return true;
        }
        constexpr std::array known{
            "VERSION", "FIELDS", "SIZE", "TYPE", "COUNT", "WIDTH", "HEIGHT", "VIEWPOINT", "POINTS", "DATA"};
        require(std::ranges::find(known, columns[0]) != known.end(),
                excerpt(columns[0]) + " is no entry of a PCD header");
        entries_[std::string(columns[0])] = Words(columns.begin() + 1, columns.end());
        return columns[0] != "DATA";
    }

    [[nodiscard]] PcdHeader finish()
    {
        Words const& data = entries_["DATA"];
        require(data != Words{"binary_compressed"},
                "the points are compressed, which is not supported; convert the file to binary");
        require(data == Words{"binary"} || data == Words{"ascii"}, "DATA must be binary or ascii");
        header_.binary = data[0] == "binary";
        takeFields();
        header_.pointCount = takePointCount();
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
    void takeFields()
    {
        Words const& names = entries_["FIELDS"];
        Words const& sizes = entries_["SIZE"];
        Words const& types = entries_["TYPE"];
        Words const counts = entries_.contains("COUNT") ? entries_["COUNT"] : Words(names.size(), "1");
        require(!names.empty(), "there are no FIELDS");
        require(sizes.size() == names.size() && types.size() == names.size() && counts.size() == names.size(),
                "FIELDS, SIZE, TYPE and COUNT differ in length");
        std::uint64_t total = 0;
        for (std::size_t i = 0; i < names.size(); ++i) {
            FieldType const type = fieldType(types[i], sizes[i]);
            auto const count = parseInteger(counts[i]);
            require(count && *count >= 1 && (total += static_cast<std::uint64_t>(*count)) <= mostFields,
                    excerpt(counts[i]) + " is not a count of numbers");
            for (std::int64_t k = 0; k < *count; ++k) {
                header_.layout.add(*count == 1 ? names[i] : names[i] + '_' + std::to_string(k), type);
            }
        }
    }

    [[nodiscard]] FieldType fieldType(std::string const& type, std::string const& size) const
    {
        static std::map<std::string, FieldType> const types{{"I1", FieldType::Int8},
                                                            {"U1", FieldType::UInt8},
                                                            {"I2", FieldType::Int16},
                                                            {"U2", FieldType::UInt16},
                                                            {"I4", FieldType::Int32},
                                                            {"U4", FieldType::UInt32},
                                                            {"I8", FieldType::Int64},
                                                            {"U8", FieldType::UInt64},
                                                            {"F4", FieldType::Float},
                                                            {"F8", FieldType::Double}};
        auto const found = types.find(type + size);
        require(found != types.end(),
                "a field of the type " + excerpt(type) + " and the size " + excerpt(size) +
                    " is not supported");
        return found->second;
    }

    [[nodiscard]] std::uint64_t takePointCount()
    {
        auto const points = countOf("POINTS");
        auto const width = countOf("WIDTH");
        auto const height = countOf("HEIGHT");
        require(points || (width && height), "there are no POINTS");
        constexpr std::uint64_t most = 1ULL << 48U; // a product must not wrap around
        if (points) {
            return *points;
        }
        require(*height == 0 || *width <= most / *height, "WIDTH and HEIGHT are larger than any file");
        return *width * *height;
    }

    [[nodiscard]] std::optional<std::uint64_t> countOf(char const* entry)
    {
        if (!entries_.contains(entry)) {
            return std::nullopt;
        }
        Words const& words = entries_[entry];
        auto const count = words.size() == 1 ? parseInteger(words[0]).value_or(-1) : -1;
        require(count >= 0, std::string(entry) + " is not a count");
        return static_cast<std::uint64_t>(count);
    }

    std::filesystem::path const& name_;
    PcdHeader header_;
    std::map<std::string, Words> entries_;
};

} // namespace

PcdHeader readPcdHeader(std::istream& stream, std::filesystem::path const& name)
{
    HeaderParser parser(name);
    std::vector<char> buffer(longestLine);
    for (bool more = true; more;) {
        parser.require(parser.number() < mostLines, "the header has no end");
        stream.getline(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        if (!stream.good()) {
            throw lineError(name, parser.number() + 1, "the header ends early, or its line is too long");
        }
        more = parser.take({buffer.data(), static_cast<std::size_t>(stream.gcount()) - 1});
    }
    return parser.finish();
}

} // namespace oV::Roamscan::tool
