#include "tools/commands/Commands.h"
#include "tools/commands/PathOption.h"
#include "tools/console/PathText.h"
#include "tools/console/ProgressWatch.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/OutputFile.h"
#include "tools/io/OutputTiles.h"
#include "tools/io/Pictures.h"

#include <roamscan/imagery/AnchorScanMetadata.h>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <string>
#include <system_error>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::uint64_t columnsOfATile = 1000;

struct PanoramaArguments
{
    std::filesystem::path input;
    std::filesystem::path output;
};

std::string summary(cv::Mat const& picture, std::size_t tiles)
{
    return std::to_string(picture.cols) + " x " + std::to_string(picture.rows) + " pixels in " +
           counted(tiles, "tile", "tiles") + '\n';
}

/// @throws ToolError if a picture in one file is in the folder of the tiles
void requireApart(std::filesystem::path const& file, std::filesystem::path const& tiles)
{
    std::filesystem::path const folder = std::filesystem::path(tiles).replace_extension();
    std::error_code ignored;
    if (std::filesystem::equivalent(std::filesystem::absolute(file).parent_path(), folder, ignored)) {
        throw fileError(file, "is in the folder of the tiles; move it, or give the tiles another name");
    }
}

void split(PanoramaArguments const& options, std::ostream& out)
{
    requireApart(options.input, options.output);
    OutputTiles tiles(options.output);
    cv::Mat const picture = readPicture(options.input);
    std::filesystem::path const written = tiles.picture();
    {
        auto const expected = static_cast<std::uint64_t>(picture.cols) / columnsOfATile + 1;
        ProgressWatch const progress("writing tiles", expected, [written] { return countTiles(written); });
        tiles.write(picture);
    }
    std::string const result = summary(picture, countTiles(written));
    tiles.commit();
    out << result;
}

/// Whether the metadata beside the tiles call the picture a stitched panorama. Metadata that cannot be read
/// do not matter to the picture.
bool isStitched(std::filesystem::path const& tiles)
{
    std::ifstream file(std::filesystem::path(tiles).replace_extension(".json"));
    auto const json = nlohmann::json::parse(file, nullptr, false);
    try {
        auto const pictures = json.get<AnchorScanMetadata>().panoramaPictures;
        return std::ranges::any_of(pictures, [&](AnchorScanMetadata::PanoramaPicture const& picture) {
            return picture.fileName == utf8(tiles.filename()) &&
                   picture.content == AnchorScanMetadata::PanoramaPicture::Content::ContentStitched;
        });
    } catch (nlohmann::json::exception const&) {
        return false;
    }
}

/// Reports a tile that must be missing at the end, or between tiles that were numbered anew.
/// @throws ToolError if the metadata show that the last tile is missing
void checkWidth(cv::Mat const& picture,
                std::size_t count,
                std::filesystem::path const& tiles,
                std::ostream& err)
{
    auto const columns = static_cast<std::uint64_t>(picture.cols);
    std::uint64_t const most = count * columnsOfATile;
    // A panorama of 360 degrees has two columns for each row at least, as it shows at most 180 degrees
    // upright.
    std::uint64_t const whole = 2 * static_cast<std::uint64_t>(picture.rows);
    if (columns == most && columns + 1 < whole && isStitched(tiles)) {
        throw fileError(tiles,
                        "tile " + std::to_string(count) +
                            " is missing: by its metadata this is a stitched panorama, "
                            "which has about " +
                            std::to_string(whole) + " columns, but the " +
                            counted(count, "tile has", "tiles have") + " only " + std::to_string(columns));
    }
    if (columns > most || columns + columnsOfATile <= most) {
        err << "roamscan: " << oneLine(utf8(tiles)) << ": " << counted(count, "tile", "tiles") << " of "
            << columns << " columns do not fit: all but the last one should have " << columnsOfATile
            << "; is one of them missing or from another picture?\n";
    }
}

void join(PanoramaArguments const& options, Console& console)
{
    requirePictureFormat(options.output);
    requireApart(options.output, options.input);
    OutputFile file(options.output);

    constexpr std::uint64_t stages = 2;
    std::atomic<std::uint64_t> stage = 0;
    ProgressWatch const progress("joining tiles", stages, [&stage] { return stage.load(); });
    cv::Mat const picture = readTiles(options.input);
    checkWidth(picture, countTiles(options.input), options.input, console.err);
    stage = 1;
    writePicture(picture, utf8(options.output.extension()), file);
    file.commit();
    console.out << summary(picture, countTiles(options.input));
}

} // namespace

void addPanorama(CLI::App& app, Console& console)
{
    constexpr char const* place = "The name of the tiles: pano.png for PNG tiles in the folder pano";
    auto const options = std::make_shared<PanoramaArguments>();
    CLI::App* const command = app.add_subcommand("panorama", "Split a wide picture into tiles, or join them");
    command->require_subcommand(1);
    command->footer("Example:\n  roamscan panorama join walk/panorama.png panorama.jpg\n");

    CLI::App* const splitting = command->add_subcommand("split", "Split a picture into tiles");
    addPath(*splitting, "IN", options->input, "The picture in one file")->required();
    addPath(*splitting, "OUT", options->output, place)->required();
    splitting->callback([options, &console] { split(*options, console.out); });

    CLI::App* const joining = command->add_subcommand("join", "Join tiles to one picture");
    addPath(*joining, "IN", options->input, place)->required();
    addPath(*joining, "OUT", options->output, "The picture to write")->required();
    joining->callback([options, &console] { join(*options, console); });
}

} // namespace oV::Roamscan::tool
