#include "bench/workload/Pictures.h"

#include "bench/workload/ScratchFolder.h"
#include "tests/support/JpegBytes.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace bench
{

namespace
{

std::filesystem::path const smallFolder = std::filesystem::path(ROAMSCAN_SHARED_DATA_DIR) / "exif";

std::vector<char> makeLargePicture()
{
    using support::bytes;
    using support::segment;
    constexpr std::size_t imageSize = 8'000'000;
    std::string picture = support::startOfImage();
    picture += segment(0xE0, std::string("JFIF\0\1\2\0\0\1\0\1\0\0", 14));
    picture += segment(0xE1, support::exifName() + support::cameraBlock(support::ByteOrder::Little));
    picture += segment(0xDB, std::string(1, '\0') + std::string(64, '\1'));
    picture += segment(0xC0, bytes({8, 0x0B, 0xB8, 0x0F, 0xA0, 1, 1, 0x11, 0}));
    picture += segment(0xDA, bytes({1, 1, 0, 0, 63, 0}));
    std::mt19937 random(8);
    std::generate_n(
        std::back_inserter(picture), imageSize, [&random] { return static_cast<char>(random() % 255); });
    picture += bytes({0xFF, 0xD9});
    return {picture.begin(), picture.end()};
}

} // namespace

std::vector<char> readWhole(std::string const& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::vector<char> bytes(static_cast<std::size_t>(std::filesystem::file_size(file)));
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
        throw std::runtime_error("cannot read " + file);
    }
    return bytes;
}

bool hasSmallPictures()
{
    std::error_code ignored;
    return std::filesystem::is_directory(smallFolder, ignored);
}

std::vector<Picture> const& smallPictures()
{
    static auto const pictures = [] {
        std::vector<Picture> read;
        // The canonical path is the fastest to open; resolving links is not measured.
        for (auto const& entry : std::filesystem::directory_iterator(std::filesystem::canonical(smallFolder)))
        {
            std::string const file = entry.path().string();
            read.push_back({file, readWhole(file)});
        }
        return read;
    }();
    return pictures;
}

std::vector<Picture> const& largePicture()
{
    static std::vector<Picture> const pictures = [] {
        Picture picture{(scratchFolder() / "large.jpg").string(), makeLargePicture()};
        std::ofstream stream(picture.file, std::ios::binary);
        if (!stream.write(picture.bytes.data(), static_cast<std::streamsize>(picture.bytes.size())).flush()) {
            throw std::runtime_error("cannot write " + picture.file);
        }
        return std::vector{std::move(picture)};
    }();
    return pictures;
}

} // namespace bench
