#include "tools/clouds/TextCloud.h"

#include "tools/clouds/TextBlocks.h"
#include "tools/clouds/TextColumns.h"
#include "tools/clouds/TextPoints.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/LineReader.h"
#include "tools/io/NumberText.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

using Names = std::vector<std::string>;

/// What the lines before the first point say.
struct TextHeader
{
    Names names;
    Separator separator = Separator::Blanks;
    std::uint64_t lines = 0; ///< Before the first point.
};

Names namesIn(std::string_view line, Separator separator)
{
    Names names;
    line = trimmed(line);
    while (line.data() != nullptr && !line.empty()) {
        names.emplace_back(takeColumn(line, separator));
    }
    return names;
}

bool isNumber(std::string const& text)
{
    return text.empty() || text == "nan" || text == "NaN" || parseNumber(text).has_value();
}

/// Tabs may be among the blanks between numbers, or separate names with blanks in them and empty columns.
Separator separatorOf(std::string_view line)
{
    for (Separator const separator : {Separator::Semicolon, Separator::Comma}) {
        if (line.find(static_cast<char>(separator)) != std::string_view::npos) {
            return separator;
        }
    }
    bool const byTabs = line.find('\t') != std::string_view::npos &&
                        (line.find("\t\t") != std::string_view::npos ||
                         !std::ranges::all_of(namesIn(line, Separator::Blanks), isNumber));
    return byTabs ? Separator::Tab : Separator::Blanks;
}

/// The names in a comment: "# x y z time" or "//X Y Z", with the separator of the points or with blanks.
Names namesInComment(std::string_view comment, Separator separator, std::size_t count)
{
    comment.remove_prefix(std::min(comment.find_first_not_of("#/ \t"), comment.size()));
    for (Separator const by : {separator, separatorOf(comment), Separator::Blanks}) {
        Names names = namesIn(comment, by);
        if (names.size() == count && !std::ranges::all_of(names, isNumber)) {
            return names;
        }
    }
    return {};
}

/// Of the first line that is neither blank nor a comment.
TextHeader headerOf(LineReader& lines, TextSettings const& settings)
{
    std::string comment;
    std::string_view line;
    while (lines.next(line)) {
        if (isWithoutData(line)) {
            comment = trimmed(line).empty() ? comment : std::string(trimmed(line));
            continue;
        }
        TextHeader header;
        header.separator = separatorOf(trimmed(line));
        Names const first = namesIn(line, header.separator);
        bool const hasNames = !std::ranges::all_of(first, isNumber);
        header.lines = lines.number() - (hasNames ? 0 : 1);
        header.names = hasNames ? first : namesInComment(comment, header.separator, first.size());
        if (!settings.columns.empty()) {
            header.names = settings.columns;
        }
        if (header.names.empty()) {
            throw lineError(lines.name(),
                            lines.number(),
                            "the " + std::to_string(first.size()) +
                                " columns have no names; give them with --columns x,y,z,time");
        }
        return header;
    }
    throw fileError(lines.name(), "there is no point in it");
}

void requireText(CloudInput& input)
{
    std::string start(std::min<std::uint64_t>(input.size, 1024), '\0');
    input.stream->read(start.data(), static_cast<std::streamsize>(start.size()));
    auto const isControl = [](char c) {
        return static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\r' && c != '\t';
    };
    if (std::ranges::any_of(start, isControl)) {
        throw fileError(input.name, "is not a cloud that this program reads: PLY, PCD, LAS, CSV or XYZ text");
    }
    input.stream->clear();
    input.stream->seekg(0);
}

void requireDistinct(TextHeader const& header, std::filesystem::path const& name)
{
    Names sorted = header.names;
    std::ranges::sort(sorted);
    auto const twice = std::ranges::adjacent_find(sorted);
    if (twice != sorted.end()) {
        throw fileError(name,
                        "two columns have the name " + excerpt(*twice) + "; give other names with --columns");
    }
}

void toFirstPoint(CloudInput& input, TextHeader const& header)
{
    input.stream->clear();
    input.stream->seekg(0);
    for (std::uint64_t i = 0; i < header.lines; ++i) {
        input.stream->ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
}

} // namespace

std::unique_ptr<PointReader> openTextCloud(CloudInput input, TextSettings const& settings)
{
    requireText(input);
    LineReader lines(*input.stream, input.name);
    TextHeader const header = headerOf(lines, settings);
    requireDistinct(header, input.name);

    toFirstPoint(input, header);
    TextColumns columns(header.names);
    TextLines points{header.lines + 1, 0, true};
    TextBlocks blocks(std::move(input), points.first);
    for (RawBlock raw; blocks.read(raw);) {
        std::string_view text(raw.bytes.data(), raw.bytes.size());
        while (!text.empty()) {
            std::string_view const line = takeLine(text);
            if (!isWithoutData(line)) {
                columns.take(line, header.separator);
                ++points.count;
            }
        }
    }
    input = std::move(blocks).takeInput();

    toFirstPoint(input, header);
    Names real{"x", "y", "z", "time", "t", "timestamp", "gps_time", "scalar_time", "scalar_gps_time"};
    if (settings.timeProperty) {
        real.push_back(*settings.timeProperty);
    }
    return readLines(std::move(input), columns.layout(real), header.separator, points);
}

} // namespace oV::Roamscan::tool
