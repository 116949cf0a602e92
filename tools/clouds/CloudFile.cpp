#include "tools/clouds/CloudFile.h"

#include "tools/clouds/CsvWriter.h"
#include "tools/clouds/LasReader.h"
#include "tools/clouds/LasWriter.h"
#include "tools/clouds/PcdReader.h"
#include "tools/clouds/PcdWriter.h"
#include "tools/clouds/PlyReader.h"
#include "tools/clouds/PlyWriter.h"
#include "tools/console/PathText.h"
#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

std::string lowerEnding(std::filesystem::path const& path)
{
    std::string ending = utf8(path.extension());
    std::ranges::transform(ending, ending.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return ending;
}

/// The first bytes; the stream is at the first one afterwards.
std::string startOf(CloudInput& input)
{
    std::string start(std::min<std::uint64_t>(input.size, 16), '\0');
    input.stream->read(start.data(), static_cast<std::streamsize>(start.size()));
    input.stream->clear();
    input.stream->seekg(0);
    return start;
}

} // namespace

std::unique_ptr<PointReader> openCloud(std::filesystem::path const& path, TextSettings const& text)
{
    InputFile file = openInputOrCopyOfPipe(path);
    return openCloud({std::move(file.owned), file.size, path}, text);
}

std::unique_ptr<PointReader> openCloud(CloudInput input, TextSettings const& text)
{
    std::string const start = startOf(input);
    auto const begins = [&](std::string_view with) { return start.starts_with(with); };
    if (begins("LASF")) {
        return openLas(std::move(input));
    }
    if (begins("ply\n") || begins("ply\r") || begins("ply ") || lowerEnding(input.name) == ".ply") {
        return openPly(std::move(input));
    }
    if (begins("# .PCD") || begins("VERSION") || begins("FIELDS") || lowerEnding(input.name) == ".pcd") {
        return openPcd(std::move(input));
    }
    return openTextCloud(std::move(input), text);
}

CloudFormat cloudFormatOf(std::filesystem::path const& path)
{
    std::string const ending = lowerEnding(path);
    if (ending == ".ply") {
        return CloudFormat::Ply;
    }
    if (ending == ".pcd") {
        return CloudFormat::Pcd;
    }
    if (ending == ".csv") {
        return CloudFormat::Csv;
    }
    if (ending == ".las") {
        return CloudFormat::Las;
    }
    throw fileError(path, "the ending of a cloud must be .ply, .pcd, .csv or .las");
}

std::unique_ptr<PointWriter> makeCloudWriter(CloudFormat format,
                                             std::ostream& stream,
                                             std::filesystem::path const& name,
                                             PointLayout const& layout,
                                             CloudDescription const& description)
{
    switch (format) {
    case CloudFormat::Ply:
        return std::make_unique<PlyWriter>(stream, name, layout, description.comments);
    case CloudFormat::Pcd:
        return std::make_unique<PcdWriter>(stream, name, layout, description.comments);
    case CloudFormat::Las:
        return std::make_unique<LasWriter>(
            stream,
            name,
            layout,
            LasSettings{description.secondsField, description.origin, description.resolution});
    case CloudFormat::Csv:
        break;
    }
    return std::make_unique<CsvWriter>(stream, name, layout);
}

} // namespace oV::Roamscan::tool
