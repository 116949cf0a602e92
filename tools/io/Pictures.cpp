#include "tools/io/Pictures.h"

#include "tools/console/PathText.h"
#include "tools/console/ToolError.h"
#include "tools/io/FileKind.h"
#include "tools/io/InputFile.h"
#include "tools/io/NumberText.h"

#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/frame/failures/VisibleException.h>
#include <roamscan/imagery/LargeImageSerialization.h>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

std::filesystem::path tilePath(std::filesystem::path const& file, std::size_t index)
{
    std::filesystem::path const folder = file.parent_path() / file.stem();
    return folder / (std::to_string(index) + utf8(file.extension()));
}

/// The highest number of a tile in the folder; nothing if there is none.
std::optional<std::uint64_t> highestTile(std::filesystem::path const& file)
{
    std::optional<std::uint64_t> highest;
    std::error_code failure;
    std::filesystem::directory_iterator entry(tilePath(file, 0).parent_path(), failure);
    for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
        std::filesystem::path const& path = entry->path();
        auto const number = parseInteger(utf8(path.stem()));
        // A name such as 007.png is not that of a tile.
        if (number && *number >= 0 && path == tilePath(file, static_cast<std::size_t>(*number))) {
            highest = std::max(highest.value_or(0), static_cast<std::uint64_t>(*number));
        }
    }
    return highest;
}

/// @throws ToolError if a tile before the last one is missing
void requireAllTiles(std::filesystem::path const& file)
{
    std::size_t const count = countTiles(file);
    auto const highest = highestTile(file);
    if (highest && *highest >= count) {
        throw fileError(file,
                        "tile " + std::to_string(count) + " is missing: there is " +
                            utf8(tilePath(file, *highest)) + ", but no " + utf8(tilePath(file, count)));
    }
    if (count == 0) {
        throw fileError(file, "has no tiles: there is no " + utf8(tilePath(file, 0)));
    }
}

} // namespace

cv::Mat readPicture(std::filesystem::path const& file)
{
    (void)openInput(file); // for its message if the file cannot be read
    try {
        cv::Mat picture = cv::imread(utf8(file), cv::IMREAD_UNCHANGED);
        if (!picture.empty()) {
            return picture;
        }
    } catch (cv::Exception const& failure) {
        throw fileError(file, "cannot be decoded: " + failure.err);
    }
    throw fileError(
        file, whatItIsOr(file, FileKind::Picture, "is no picture in a readable format, such as PNG or JPEG"));
}

void requirePictureFormat(std::filesystem::path const& file)
{
    std::string const extension = utf8(file.extension());
    if (extension.size() < 2) {
        throw fileError(file, "has no extension for the picture's format; use .png, for example");
    }
    if (!cv::haveImageWriter("picture" + extension)) {
        throw fileError(file, extension + " pictures cannot be written; use .png, for example");
    }
}

void writePicture(cv::Mat const& picture, std::string const& extension, OutputFile& file)
{
    std::vector<unsigned char> bytes;
    try {
        if (!cv::imencode(extension, picture, bytes)) {
            throw fileError(file.target(),
                            "the format cannot hold this picture; use another one, such as .png");
        }
    } catch (cv::Exception const& failure) {
        throw fileError(file.target(), "the format cannot hold this picture: " + failure.err);
    }
    file.stream().write(reinterpret_cast<char const*>(bytes.data()),
                        static_cast<std::streamsize>(bytes.size()));
}

Bv_1_1::SmartPtr<Bv_1_1::File const> placeOfTiles(std::filesystem::path const& file)
{
    return Bv_1_1::File::fromPath(Bv_1_1::String::fromUtf16(file.u16string()));
}

std::size_t countTiles(std::filesystem::path const& file)
{
    std::size_t count = 0;
    std::error_code ignored;
    while (std::filesystem::is_regular_file(tilePath(file, count), ignored)) {
        ++count;
    }
    return count;
}

cv::Mat readTiles(std::filesystem::path const& file)
{
    requireAllTiles(file);
    try {
        cv::Mat picture = LargeImageSerialization::readImage(placeOfTiles(file));
        if (!picture.empty()) {
            return picture;
        }
    } catch (InternalErrorException const& failure) {
        throw fileError(file,
                        std::string("its tiles do not fit together: ") + failure.getDesc().stringAnsi());
    } catch (VisibleException const& failure) {
        throw fileError(file, failure.getDesc().stringAnsi());
    } catch (cv::Exception const& failure) {
        throw fileError(file, "its tiles cannot be joined: " + failure.err);
    }
    throw fileError(file, "its tiles are no readable pictures");
}

} // namespace oV::Roamscan::tool
