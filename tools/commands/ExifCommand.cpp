#include "tools/commands/FileReport.h"
#include "tools/console/PathText.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/FileKind.h"
#include "tools/io/InputFile.h"

#include <roamscan/imagery/ExifReader.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using Row = std::array<std::string, 4>;

std::string withoutTrailing(std::string_view characters, std::string_view text)
{
    return std::string(text.substr(0, text.find_last_not_of(characters) + 1));
}

Json describePicture(std::filesystem::path const& path)
{
    InputFile file = openInput(path);
    PanoramaImageData::ExifData const data = readExifMetaData(file.stream);
    if (file.stream.bad()) {
        throw fileError(path, "cannot be read; check the medium");
    }
    if (FileKind const kind = kindOfFile(path);
        !data.valid && kind != FileKind::Unknown && kind != FileKind::Picture)
    {
        throw fileError(path, "this is " + describe(kind));
    }
    constexpr std::string_view terminator("\0", 1);
    return {{"file", utf8(path)},
            {"valid", data.valid},
            {"dateTime", withoutTrailing(terminator, data.dateTime)},
            {"manufacturer", withoutTrailing(terminator, data.manufacturer)},
            {"model", withoutTrailing(terminator, data.model)}};
}

/// The text without padding, shortened to fit a table.
std::string cell(std::string const& text)
{
    constexpr std::size_t longest = 40;
    using namespace std::string_view_literals;
    std::string shown = plain(withoutTrailing("\0 "sv, text));
    if (shown.size() > longest) {
        shown.replace(longest - 3, std::string::npos, "...");
    }
    return shown.empty() ? "-" : shown;
}

Row toRow(Json const& description)
{
    std::string const file = oneLine(description.at("file").get<std::string>());
    if (!description.at("valid")) {
        return {file, "no valid EXIF block", "", ""};
    }
    return {file,
            cell(description.at("dateTime")),
            cell(description.at("manufacturer")),
            cell(description.at("model"))};
}

void printTable(std::vector<Json> const& descriptions, std::ostream& out)
{
    if (descriptions.empty()) {
        return;
    }
    std::vector<Row> rows{{"file", "date and time", "make", "model"}};
    std::ranges::transform(descriptions, std::back_inserter(rows), toRow);
    std::array<std::size_t, std::tuple_size_v<Row>> widths{};
    for (Row const& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    for (Row const& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i] + std::string(widths[i] - row[i].size() + 2, ' ');
        }
        out << withoutTrailing(" ", line) << '\n';
    }
}

} // namespace

void addExif(CLI::App& app, Console& console)
{
    CLI::App* const command =
        app.add_subcommand("exif", "Show when and with which camera pictures were taken");
    command->footer("Example:\n  roamscan exif panorama.jpg detail.jpg --json\n");
    addFileReport(*command, "Pictures in JPEG files", describePicture, printTable, console);
}

} // namespace oV::Roamscan::tool
