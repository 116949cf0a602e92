#include "tools/commands/ExifCommand.h"

#include "tools/commands/FileReport.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"

#include <roamscan/imagery/ExifReader.h>

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

using Json = FileReport::Json;
using PanoramaImageData::ExifData;
using Row = std::array<std::string, 4>;

ExifData readExif(std::filesystem::path const& path)
{
    InputFile file = openInput(path);
    ExifData data = readExifMetaData(file.stream);
    if (file.stream.bad()) {
        throw fileError(path, "cannot be read; check the medium");
    }
    return data;
}

std::string withoutTrailing(std::string_view characters, std::string_view text)
{
    return std::string(text.substr(0, text.find_last_not_of(characters) + 1));
}

// Without what ends or fills it.
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

Row toRow(std::filesystem::path const& path, ExifData const& data)
{
    std::string const file = oneLine(path.string());
    if (!data.valid) {
        return {file, "no sound EXIF block", "", ""};
    }
    return {file, cell(data.dateTime), cell(data.manufacturer), cell(data.model)};
}

Json toJson(std::filesystem::path const& path, ExifData const& data)
{
    constexpr std::string_view terminator("\0", 1);
    return {{"file", path.string()},
            {"valid", data.valid},
            {"dateTime", withoutTrailing(terminator, data.dateTime)},
            {"manufacturer", withoutTrailing(terminator, data.manufacturer)},
            {"model", withoutTrailing(terminator, data.model)}};
}

void printTable(std::vector<Row> const& rows, std::ostream& out)
{
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

bool runExif(ExifOptions const& options, std::ostream& out, std::ostream& err)
{
    FileReport report(err);
    std::vector<Row> rows{{"file", "date and time", "make", "model"}};
    for (std::filesystem::path const& path : options.files) {
        report.add(path, [&] {
            ExifData const data = readExif(path);
            rows.push_back(toRow(path, data));
            return toJson(path, data);
        });
    }
    if (options.json) {
        report.print(out);
    } else if (rows.size() > 1) {
        printTable(rows, out);
    }
    return report.allRead();
}

} // namespace oV::Roamscan::tool
