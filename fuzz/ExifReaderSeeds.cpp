/// @file
/// Writes the seeds of the EXIF reader's target: small valid and invalid files and EXIF blocks.

#include "Seeds.h"
#include "tests/support/JpegBytes.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

using fuzz::save;
using support::ByteOrder;
using support::bytes;
using support::cameraBlock;
using support::segment;

constexpr char asFile = 0;
constexpr char asBlock = 1;

// A block with one entry of each tag that the reader uses; all refer to the end of the block.
std::string everyTag(ByteOrder order)
{
    std::vector<std::uint16_t> const tags{
        270, 271, 272, 274, 282, 283, 296, 305, 306, 318, 319, 529, 531, 532, 33432, 34665, 1000};
    std::vector<support::TiffEntry> entries;
    for (std::uint16_t const tag : tags) {
        entries.push_back({tag, 8, support::placeBehind(static_cast<std::uint32_t>(tags.size()))});
    }
    return tiffBlock(order, entries, std::string(48, '1'));
}

void saveBlocks(std::filesystem::path const& folder)
{
    save(folder / "empty-input", asBlock, "");
    save(folder / "camera-little-endian", asBlock, cameraBlock(ByteOrder::Little));
    save(folder / "camera-big-endian", asBlock, cameraBlock(ByteOrder::Big));
    save(folder / "every-tag-little-endian", asBlock, everyTag(ByteOrder::Little));
    save(folder / "every-tag-big-endian", asBlock, everyTag(ByteOrder::Big));
    save(folder / "no-entries", asBlock, tiffBlock(ByteOrder::Little, {}));
    save(folder / "short-texts", asBlock, tiffBlock(ByteOrder::Big, {{271, 4}, {272, 1}, {306, 0}}));
    save(folder / "same-tags", asBlock, tiffBlock(ByteOrder::Little, {{271, 5, 8}, {271, 6, 8}}));
    save(folder / "count-too-large", asBlock, tiffBlock(ByteOrder::Big, {{306, 0xFFFFFFFF, 8}}));
    save(folder / "offset-too-large", asBlock, tiffBlock(ByteOrder::Big, {{306, 20, 0xFFFFFFFF}}));
    save(folder / "directory-on-header", asBlock, bytes({0, 1, 0, 42, 0, 0, 0, 0}));
    save(folder / "too-many-entries",
         asBlock,
         support::withU16(tiffBlock(ByteOrder::Little, {{7, 0, 0}}), 8, 0xFFFF));
}

void saveFiles(std::filesystem::path const& folder)
{
    std::string const start = support::startOfImage();
    std::string const camera = segment(0xE1, support::exifName() + cameraBlock(ByteOrder::Little));
    save(folder / "app0-and-camera", asFile, start + segment(0xE0, "JFIF") + camera + bytes({0xFF, 0xDB}));
    save(folder / "ends-with-segment", asFile, start + camera);
    save(folder / "ends-in-segment", asFile, start + camera.substr(0, camera.size() - 10));
    save(folder / "other-app1", asFile, start + segment(0xE1, "something") + camera);
    save(folder / "many-segments",
         asFile,
         start + segment(0xDB, "") + segment(0xD0, "x") + segment(0xFE, "comment") + bytes({0xFF, 0xD9}) +
             camera);
    save(folder / "length-too-small", asFile, start + bytes({0xFF, 0xE0, 0, 1}) + camera);
    save(folder / "length-too-large", asFile, start + bytes({0xFF, 0xE0, 0xFF, 0xFF}) + camera);
    save(folder / "no-picture", asFile, bytes({0x89, 'P', 'N', 'G', 13, 10, 26, 10}));
}

} // namespace

int main(int argc, char** argv)
{
    return fuzz::runSeeds(argc, argv, [](std::filesystem::path const& folder) {
        saveBlocks(folder);
        saveFiles(folder);
    });
}
