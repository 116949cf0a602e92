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

namespace oV::Roamscan::tool
{

namespace
{

constexpr int columnsOfATile = 1000;

std::string summary(cv::Mat const& picture, std::size_t tiles)
{
    return std::to_string(picture.cols) + " x " + std::to_string(picture.rows) + " pixels in " +
           std::to_string(tiles) + (tiles == 1 ? " tile\n" : " tiles\n");
}

} // namespace

void runPanoramaSplit(PanoramaOptions const& options, std::ostream& out)
{
    OutputTiles tiles(options.output);
    cv::Mat const picture = readPicture(options.input);
    std::filesystem::path const written(tiles.place()->getPath().stringAnsi());
    {
        auto const expected = static_cast<std::uint64_t>(picture.cols / columnsOfATile + 1);
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
    OutputFile file(options.output);

    constexpr std::uint64_t stages = 3;
    std::atomic<std::uint64_t> stage = 0;
    ProgressWatch const progress("joining tiles", stages, [&stage] { return stage.load(); });
    cv::Mat const picture = readTiles(options.input);
    stage = 1;
    auto const bytes = encodePicture(picture, options.output);
    stage = 2;
    file.stream().write(reinterpret_cast<char const*>(bytes.data()),
                        static_cast<std::streamsize>(bytes.size()));
    file.commit();
    out << summary(picture, countTiles(options.input));
}

} // namespace oV::Roamscan::tool
