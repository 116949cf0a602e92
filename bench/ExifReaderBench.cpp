/// @file
/// The camera's texts in pictures, from files and from memory, against reading the pictures as a whole, and
/// against libexif and exiv2.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/MemoryStream.h"
#include "bench/workload/ScratchFolder.h"
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
    std::string file;
    std::vector<char> bytes;
};

std::vector<char> readWhole(std::string const& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::vector<char> bytes(static_cast<std::size_t>(std::filesystem::file_size(file)));
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
        throw std::runtime_error("cannot read " + file);
    }
    return bytes;
}

std::vector<Picture> picturesIn(std::filesystem::path const& folder)
{
    std::vector<Picture> pictures;
    // The canonical path is the fastest to open; resolving links is not measured.
    for (auto const& entry : std::filesystem::directory_iterator(std::filesystem::canonical(folder))) {
        std::string const file = entry.path().string();
        pictures.push_back({file, readWhole(file)});
    }
    return pictures;
}

// Pictures of cameras without their image data, of some kilobytes each. They are not part of the project.
std::filesystem::path const smallFolder = std::filesystem::path(ROAMSCAN_SHARED_DATA_DIR) / "exif";

std::vector<Picture> const& smallPictures()
{
    static auto const pictures = picturesIn(smallFolder);
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
    static ScratchFolder const folder;
    static auto const pictures = [] {
        std::ofstream(folder.path() / "large.jpg", std::ios::binary) << makeLargePicture();
        return picturesIn(folder.path());
    }();
    return pictures;
}

// The functions that measure one picture from its file.
struct FromFile
{
    static constexpr char const* name = ", from its file";

    static ExifData read(Picture const& picture)
    {
        std::ifstream stream(picture.file, std::ios::binary);
        return readExifMetaData(stream);
    }
    static std::vector<char> readAll(Picture const& picture) { return readWhole(picture.file); }
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
    static CameraTexts libexif(Picture const& picture)
    {
        return readWithLibexif(picture.file);
    }
    static CameraTexts exiv2(Picture const& picture)
    {
        return readWithExiv2(picture.file);
    }
#endif
};

// The same from memory.
struct FromMemory
{
    static constexpr char const* name = ", from memory";

    static ExifData read(Picture const& picture)
    {
        // The buffer takes writable memory, but nothing writes to it.
        MemoryStreamBuffer buffer({const_cast<char*>(picture.bytes.data()), picture.bytes.size()});
        std::istream stream(&buffer);
        return readExifMetaData(stream);
    }
    static std::vector<char> readAll(Picture const& picture) { return picture.bytes; }
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
    static CameraTexts libexif(Picture const& picture)
    {
        return readWithLibexif(picture.bytes);
    }
    static CameraTexts exiv2(Picture const& picture)
    {
        return readWithExiv2(picture.bytes);
    }
#endif
};

using Pictures = std::vector<Picture> const& (*)();
using Target = std::optional<double>; // for the other libraries

Function reading(Pictures pictures, auto read)
{
    return [pictures, read](benchmark::State& state) { measureEach(state, pictures(), read); };
}

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
std::string untilZero(std::string const& text)
{
    return text.substr(0, text.find('\0'));
}

Function otherReading(Pictures pictures, auto read, auto readOther)
{
    return [pictures, read, readOther](benchmark::State& state) {
        // Only libraries that give the same texts can be compared.
        for (Picture const& picture : pictures()) {
            ExifData const data = read(picture);
            CameraTexts const texts{
                untilZero(data.dateTime), untilZero(data.manufacturer), untilZero(data.model)};
            if (!(texts == readOther(picture))) {
                throw std::logic_error("the readers differ on " + picture.file);
            }
        }
        measureEach(state, pictures(), readOther);
    };
}
#endif

template <typename Source>
Figure figure(std::string const& picture, Pictures pictures, [[maybe_unused]] Target target)
{
    return {picture + Source::name,
            microseconds,
            {"readExifMetaData", reading(pictures, Source::read)},
            {{"reading all of it", reading(pictures, Source::readAll)},
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
             {"libexif", otherReading(pictures, Source::read, Source::libexif), timesAsFast, target},
             {"exiv2", otherReading(pictures, Source::read, Source::exiv2), timesAsFast, target}
#endif
            }};
}

} // namespace

Group exifReader()
{
    // Of the large picture, opening it is most of the time: no target.
    Group group{"The texts of a camera",
                Cost::ProcessorTime,
                {figure<FromFile>("a picture of 8 MB", largePicture, {}),
                 figure<FromMemory>("a picture of 8 MB", largePicture, {})}};
    std::error_code ignored;
    if (std::filesystem::is_directory(smallFolder, ignored)) {
        group.figures.push_back(figure<FromFile>("a small picture", smallPictures, 5.0));
        group.figures.push_back(figure<FromMemory>("a small picture", smallPictures, 5.0));
    }
    return group;
}

} // namespace bench
