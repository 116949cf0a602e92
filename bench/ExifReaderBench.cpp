/// @file
/// The camera's texts of pictures, from files and from memory: against taking the pictures in, and, where
/// they are built in, against libexif and exiv2.

#include "Benchmarks.h"
#include "bench/workload/MemoryStream.h"
#include "tests/support/JpegBytes.h"

#include <roamscan/imagery/ExifReader.h>

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
#include "baselines/ExifLibraries.h"
#endif

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <ios>
#include <istream>
#include <iterator>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace bench
{

namespace
{

using oV::Roamscan::readExifMetaData;
using oV::Roamscan::PanoramaImageData::ExifData;

constexpr int repetitions = 9;

struct Picture
{
    std::string file;
    std::vector<char> bytes;
};
using Pictures = std::vector<Picture>;

std::vector<char> readWhole(std::string const& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::vector<char> bytes(static_cast<std::size_t>(std::filesystem::file_size(file)));
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
        throw std::runtime_error("cannot read " + file);
    }
    return bytes;
}

/// A stream's buffer over memory that can go forward as a file does.
class PictureBuffer : public MemoryStreamBuffer
{
public:
    using MemoryStreamBuffer::MemoryStreamBuffer;

protected:
    pos_type seekoff(off_type offset, std::ios::seekdir direction, std::ios::openmode /*which*/) override
    {
        if (direction != std::ios::cur || offset < eback() - gptr() || offset > egptr() - gptr()) {
            return {off_type(-1)};
        }
        setg(eback(), gptr() + offset, egptr());
        return {gptr() - eback()};
    }
};

ExifData readFile(Picture const& picture)
{
    std::ifstream stream(picture.file, std::ios::binary);
    return readExifMetaData(stream);
}

ExifData readMemory(Picture const& picture)
{
    // The buffer's memory could be written to, but nobody does.
    PictureBuffer buffer({const_cast<char*>(picture.bytes.data()), picture.bytes.size()});
    std::istream stream(&buffer);
    return readExifMetaData(stream);
}

std::vector<char> takeInFile(Picture const& picture)
{
    return readWhole(picture.file);
}

std::vector<char> takeInMemory(Picture const& picture)
{
    return picture.bytes;
}

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
CameraTexts libexifFile(Picture const& picture)
{
    return readWithLibexif(picture.file);
}

CameraTexts libexifMemory(Picture const& picture)
{
    return readWithLibexif(picture.bytes);
}

CameraTexts exiv2File(Picture const& picture)
{
    return readWithExiv2(picture.file);
}

CameraTexts exiv2Memory(Picture const& picture)
{
    return readWithExiv2(picture.bytes);
}

std::string withoutEnd(std::string const& text)
{
    return text.substr(0, text.find('\0'));
}

// Whoever reads something else is not to be compared with.
void requireAgreement(Pictures const& pictures)
{
    for (Picture const& picture : pictures) {
        for (ExifData const& data : {readFile(picture), readMemory(picture)}) {
            CameraTexts const texts{
                withoutEnd(data.dateTime), withoutEnd(data.manufacturer), withoutEnd(data.model)};
            for (auto const read : {libexifFile, libexifMemory, exiv2File, exiv2Memory}) {
                if (!(texts == read(picture))) {
                    throw std::logic_error("the readers differ on " + picture.file);
                }
            }
        }
    }
}
#else
void requireAgreement(Pictures const& /*pictures*/) {}
#endif

std::filesystem::path const smallFolder = std::filesystem::path(ROAMSCAN_SHARED_DATA_DIR) / "exif";

Pictures const& smallPictures()
{
    static Pictures const all = [] {
        Pictures pictures;
        // Finding the way to a file is not what is compared; the shortest one is taken.
        for (auto const& entry : std::filesystem::directory_iterator(std::filesystem::canonical(smallFolder)))
        {
            std::string const file = entry.path().string();
            pictures.push_back({file, readWhole(file)});
        }
        requireAgreement(pictures);
        return pictures;
    }();
    return all;
}

/// A picture of 8 MB: a camera's block, and noise for an image.
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

// The file goes away with the process.
struct LargePicture
{
    LargePicture() : path(std::filesystem::temp_directory_path() / "roamscan-bench-picture.jpg")
    {
        pictures.push_back({path.string(), makeLargePicture()});
        auto const& bytes = pictures.front().bytes;
        std::ofstream stream(path, std::ios::binary);
        if (!stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
            throw std::runtime_error("cannot write " + path.string());
        }
        requireAgreement(pictures);
    }
    LargePicture(LargePicture const&) = delete;
    LargePicture& operator=(LargePicture const&) = delete;
    ~LargePicture()
    {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    std::filesystem::path path;
    Pictures pictures;
};

Pictures const& largePictures()
{
    static LargePicture const one;
    return one.pictures;
}

/// What is read: pictures, how many there are, and how often all of them for one measurement.
struct Case
{
    std::string name;
    std::string figure;
    bool fromFile;
    Pictures const& (*pictures)();
    double count;
    int iterations;
};

template <typename Result>
Subject reading(std::string label, std::string const& name, Case const& which, Result (*read)(Picture const&))
{
    auto const body = [pictures = which.pictures, read](benchmark::State& state) {
        Pictures const& all = pictures();
        for ([[maybe_unused]] auto _ : state) {
            for (Picture const& picture : all) {
                Result const result = read(picture);
                benchmark::DoNotOptimize(&result);
                benchmark::ClobberMemory();
            }
        }
    };
    return timedLoop(
        std::move(label), "exif/" + which.name + "/" + name, {which.count, which.iterations}, body);
}

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
void addOtherLibraries(Comparison& comparison, Case const& which)
{
    // Of a large picture with a small block, opening it is all that takes time.
    std::optional<double> const target = which.pictures == smallPictures ? std::optional(5.0) : std::nullopt;
    auto const libexif = which.fromFile ? libexifFile : libexifMemory;
    auto const exiv2 = which.fromFile ? exiv2File : exiv2Memory;
    comparison.baselines.push_back(
        {reading("libexif", "libexif", which, libexif), Ratio::TimesAsFast, target, true});
    comparison.baselines.push_back(
        {reading("exiv2", "exiv2", which, exiv2), Ratio::TimesAsFast, target, true});
}
#else
void addOtherLibraries(Comparison& /*comparison*/, Case const& /*which*/) {}
#endif

Comparison compareReading(Case const& which)
{
    auto const ours = which.fromFile ? readFile : readMemory;
    auto const whole = which.fromFile ? takeInFile : takeInMemory;
    Comparison comparison{"The texts of a camera",
                          which.figure,
                          microseconds,
                          repetitions,
                          reading("readExifMetaData", "reader", which, ours),
                          {Baseline{reading("taking it in whole", "whole", which, whole)}}};
    addOtherLibraries(comparison, which);
    return comparison;
}

} // namespace

std::vector<Comparison> exifReaderBenchmarks()
{
    std::vector<Case> cases{
        {"large-file", "a picture of 8 MB, from its file", true, largePictures, 1.0, 100},
        {"large-memory", "a picture of 8 MB, from memory", false, largePictures, 1.0, 100}};
    std::error_code ignored;
    if (std::filesystem::is_directory(smallFolder, ignored)) {
        cases.push_back({"small-file", "a small picture, from its file", true, smallPictures, 6.0, 300});
        cases.push_back({"small-memory", "a small picture, from memory", false, smallPictures, 6.0, 300});
    }
    std::vector<Comparison> comparisons;
    for (Case const& which : cases) {
        comparisons.push_back(compareReading(which));
    }
    return comparisons;
}

} // namespace bench
