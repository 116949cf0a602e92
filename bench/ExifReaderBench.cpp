/// @file
/// The camera's texts in pictures, from files and from memory, against reading the pictures as a whole, and
/// against libexif and exiv2.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/MemoryStream.h"
#include "bench/workload/ScratchFiles.h"
#include "tests/support/JpegBytes.h"

#include <roamscan/imagery/ExifReader.h>

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
#include "bench/baselines/ExifLibraries.h"
#endif

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <system_error>

namespace bench
{

namespace
{

using oV::Roamscan::readExifMetaData;
using oV::Roamscan::PanoramaImageData::ExifData;

// A JPEG file and its contents.
struct Picture
{
    std::string path;
    std::vector<char> bytes;
};

Picture pictureAt(std::filesystem::path const& file)
{
    // The canonical path is the fastest to open; resolving links is not measured.
    std::string const path = std::filesystem::canonical(file).string();
    return {path, wholeFile(path)};
}

// Pictures of cameras without their image data, of some kilobytes each. They are not part of the project.
std::filesystem::path const smallFolder = std::filesystem::path(ROAMSCAN_SHARED_DATA_DIR) / "exif";

std::vector<Picture> const& smallPictures()
{
    static auto const pictures = [] {
        std::vector<Picture> all;
        for (auto const& entry : std::filesystem::directory_iterator(smallFolder)) {
            all.push_back(pictureAt(entry.path()));
        }
        return all;
    }();
    return pictures;
}

// A picture of 8 MB: the EXIF block of a camera, and noise as image data.
std::string makeLargePicture()
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
    return picture + bytes({0xFF, 0xD9});
}

std::vector<Picture> const& largePicture()
{
    static std::vector<Picture> const pictures{
        pictureAt(writtenFile("large.jpg", [](std::string const& path) {
            std::ofstream(path, std::ios::binary) << makeLargePicture();
        }))};
    return pictures;
}

// The readers take the path of a picture, or its bytes in memory.

ExifData readTexts(std::string const& path)
{
    std::ifstream stream(path, std::ios::binary);
    return readExifMetaData(stream);
}

ExifData readTexts(std::vector<char> const& bytes)
{
    // The buffer takes writable memory, but nothing writes to it.
    MemoryStreamBuffer buffer({const_cast<char*>(bytes.data()), bytes.size()});
    std::istream stream(&buffer);
    return readExifMetaData(stream);
}

std::vector<char> readAll(std::string const& path)
{
    return wholeFile(path);
}

std::vector<char> readAll(std::vector<char> const& bytes)
{
    return bytes;
}

using Pictures = std::vector<Picture> const& (*)();

// Measures a reader on each picture. `source` is the member of Picture that it reads.
Function reading(Pictures pictures, auto source, auto read)
{
    return [=](benchmark::State& state) {
        measureEach(state, pictures(), [&](Picture const& picture) { return read(picture.*source); });
    };
}

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
std::string untilZero(std::string const& text)
{
    return text.substr(0, text.find('\0'));
}

Function otherReading(Pictures pictures, auto source, auto read)
{
    return [=](benchmark::State& state) {
        // Only libraries that give the same texts can be compared.
        for (Picture const& picture : pictures()) {
            ExifData const data = readTexts(picture.*source);
            CameraTexts const texts{
                untilZero(data.dateTime), untilZero(data.manufacturer), untilZero(data.model)};
            if (texts != read(picture.*source)) {
                throw std::logic_error("the readers differ on " + picture.path);
            }
        }
        reading(pictures, source, read)(state);
    };
}
#endif

// `target` is for the other libraries.
Figure readingFigure(std::string const& name,
                     Pictures pictures,
                     auto source,
                     [[maybe_unused]] std::optional<double> target = std::nullopt)
{
    auto const ours = [](auto const& from) { return readTexts(from); };
    auto const all = [](auto const& from) { return readAll(from); };
    Figure figure{name,
                  microseconds,
                  {"readExifMetaData", reading(pictures, source, ours)},
                  {{"reading all of it", reading(pictures, source, all)}}};
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
    auto const libexif = [](auto const& from) { return readWithLibexif(from); };
    auto const exiv2 = [](auto const& from) { return readWithExiv2(from); };
    figure.baselines.push_back({"libexif", otherReading(pictures, source, libexif), timesAsFast, target});
    figure.baselines.push_back({"exiv2", otherReading(pictures, source, exiv2), timesAsFast, target});
#endif
    return figure;
}

} // namespace

Group exifReader()
{
    // Of the large picture, opening it is most of the time: no target.
    Group group{"The texts of a camera",
                Cost::ProcessorTime,
                {readingFigure("a picture of 8 MB, from its file", largePicture, &Picture::path),
                 readingFigure("a picture of 8 MB, from memory", largePicture, &Picture::bytes)}};
    std::error_code ignored;
    if (std::filesystem::is_directory(smallFolder, ignored)) {
        group.figures.push_back(
            readingFigure("a small picture, from its file", smallPictures, &Picture::path, 5.0));
        group.figures.push_back(
            readingFigure("a small picture, from memory", smallPictures, &Picture::bytes, 5.0));
    }
    return group;
}

} // namespace bench
