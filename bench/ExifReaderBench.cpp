/// @file
/// The camera's texts in pictures, from files and from memory, against reading the pictures as a whole, and
/// against libexif and exiv2.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/MemoryStream.h"
#include "bench/workload/Pictures.h"

#include <roamscan/imagery/ExifReader.h>

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
#include "bench/baselines/ExifLibraries.h"
#endif

#include <fstream>
#include <stdexcept>

namespace bench
{

namespace
{

using oV::Roamscan::readExifMetaData;
using oV::Roamscan::PanoramaImageData::ExifData;

ExifData readFile(Picture const& picture)
{
    std::ifstream stream(picture.file, std::ios::binary);
    return readExifMetaData(stream);
}

ExifData readMemory(Picture const& picture)
{
    // The buffer takes writable memory, but nothing writes to it.
    MemoryStreamBuffer buffer({const_cast<char*>(picture.bytes.data()), picture.bytes.size()});
    std::istream stream(&buffer);
    return readExifMetaData(stream);
}

std::vector<char> readWholeFile(Picture const& picture)
{
    return readWhole(picture.file);
}

std::vector<char> copyMemory(Picture const& picture)
{
    return picture.bytes;
}

using Pictures = std::vector<Picture> const& (*)();

Function reading(Pictures pictures, auto read)
{
    return [pictures, read](benchmark::State& state) { measureEach(state, pictures(), read); };
}

#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
auto const libexifFile = [](Picture const& picture) { return readWithLibexif(picture.file); };
auto const libexifMemory = [](Picture const& picture) { return readWithLibexif(picture.bytes); };
auto const exiv2File = [](Picture const& picture) { return readWithExiv2(picture.file); };
auto const exiv2Memory = [](Picture const& picture) { return readWithExiv2(picture.bytes); };

std::string untilZero(std::string const& text)
{
    return text.substr(0, text.find('\0'));
}

// Only libraries that give the same texts can be compared.
void requireAgreement(Picture const& picture, auto const& read, auto const& readOther)
{
    ExifData const data = read(picture);
    CameraTexts const texts{untilZero(data.dateTime), untilZero(data.manufacturer), untilZero(data.model)};
    if (!(texts == readOther(picture))) {
        throw std::logic_error("the readers differ on " + picture.file);
    }
}

Baseline
otherReader(std::string label, Pictures pictures, auto read, auto readOther, std::optional<double> target)
{
    auto const function = [pictures, read, readOther](benchmark::State& state) {
        for (Picture const& picture : pictures()) {
            requireAgreement(picture, read, readOther);
        }
        measureEach(state, pictures(), readOther);
    };
    return otherLibrary(std::move(label), function, target);
}
#endif

// Adds the figures of reading pictures from files and from memory; `target` is for the other libraries.
void addFigures(Group& group,
                std::string const& name,
                Pictures pictures,
                [[maybe_unused]] std::optional<double> target)
{
    Figure fromFile{name + ", from its file",
                    microseconds,
                    {"readExifMetaData", reading(pictures, readFile)},
                    {{"reading all of it", reading(pictures, readWholeFile)}}};
    Figure fromMemory{name + ", from memory",
                      microseconds,
                      {"readExifMetaData", reading(pictures, readMemory)},
                      {{"copying all of it", reading(pictures, copyMemory)}}};
#ifdef ROAMSCAN_BENCH_OTHER_LIBRARIES
    fromFile.baselines.push_back(otherReader("libexif", pictures, readFile, libexifFile, target));
    fromFile.baselines.push_back(otherReader("exiv2", pictures, readFile, exiv2File, target));
    fromMemory.baselines.push_back(otherReader("libexif", pictures, readMemory, libexifMemory, target));
    fromMemory.baselines.push_back(otherReader("exiv2", pictures, readMemory, exiv2Memory, target));
#endif
    group.figures.push_back(std::move(fromFile));
    group.figures.push_back(std::move(fromMemory));
}

} // namespace

Group exifReader()
{
    Group group{"The texts of a camera", Cost::ProcessorTime, {}};
    addFigures(group, "a picture of 8 MB", largePicture, std::nullopt); // opening it is most of the time
    if (hasSmallPictures()) {
        addFigures(group, "a small picture", smallPictures, 5.0);
    }
    return group;
}

} // namespace bench
