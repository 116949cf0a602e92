#include "tools/commands/PanoramaCommand.h"

#include "tools/console/ProgressWatch.h"
#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"
#include "tools/io/OutputFile.h"
#include "tools/io/OutputTiles.h"
#include "tools/io/Pictures.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <system_error>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::uint64_t columnsOfATile = 1000;

std::string summary(cv::Mat const& picture, std::size_t tiles)
{
    return std::to_string(picture.cols) + " x " + std::to_string(picture.rows) + " pixels in " +
           std::to_string(tiles) + (tiles == 1 ? " tile\n" : " tiles\n");
}

/// @throws ToolError if a picture in one file lies among the tiles
void requireApart(std::filesystem::path const& file, std::filesystem::path const& tiles)
{
    std::filesystem::path const folder = std::filesystem::path(tiles).replace_extension();
    std::error_code ignored;
    if (std::filesystem::equivalent(std::filesystem::absolute(file).parent_path(), folder, ignored)) {
        throw fileError(file, "lies among the tiles; move it, or give the tiles another name");
    }
}

} // namespace

void runPanoramaSplit(PanoramaOptions const& options, std::ostream& out)
{
    requireApart(options.input, options.output);
    OutputTiles tiles(options.output);
    cv::Mat const picture = readPicture(options.input);
    std::filesystem::path const written(tiles.place()->getPath().stringAnsi());
    {
        auto const expected = static_cast<std::uint64_t>(picture.cols) / columnsOfATile + 1;
        ProgressWatch const progress("writing tiles", expected, [written] { return countTiles(written); });
        tiles.write(picture);
    }
    std::string const told = summary(picture, countTiles(written));
    tiles.commit();
    out << told;
}

void runPanoramaJoin(PanoramaOptions const& options, std::ostream& out)
{
    requirePictureFormat(options.output);
    requireApart(options.output, options.input);
    OutputFile file(options.output);

    constexpr std::uint64_t stages = 2;
    std::atomic<std::uint64_t> stage = 0;
    ProgressWatch const progress("joining tiles", stages, [&stage] { return stage.load(); });
    cv::Mat const picture = readTiles(options.input);
    stage = 1;
    writePicture(picture, options.output.extension().string(), file);
    file.commit();
    out << summary(picture, countTiles(options.input));
}

} // namespace oV::Roamscan::tool
