/// @file
/// A picture of 20,000 columns as a folder of tiles, against the same picture in one file by OpenCV itself:
/// time and peak memory.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/WidePicture.h"

#include <roamscan/imagery/LargeImageSerialization.h>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include <stdexcept>

namespace bench
{

namespace
{

using oV::Roamscan::LargeImageSerialization::readImage;
using oV::Roamscan::LargeImageSerialization::serializeImage;

cv::Mat readTiles(WidePictureFiles const& files)
{
    return readImage(files.tiled);
}

cv::Mat readWhole(WidePictureFiles const& files)
{
    return cv::imread(files.whole, cv::IMREAD_UNCHANGED);
}

bool writeTiles(WidePictureFiles const& files, cv::Mat const& picture)
{
    serializeImage(picture, files.tiled);
    return true;
}

bool writeWhole(WidePictureFiles const& files, cv::Mat const& picture)
{
    return cv::imwrite(files.whole, picture);
}

using Read = cv::Mat (*)(WidePictureFiles const&);
using Write = bool (*)(WidePictureFiles const&, cv::Mat const&);

// Files that were compared: the lossless format must give the same pixels either way.
struct Input
{
    explicit Input(std::string const& extension) : files(widePictureFiles(extension))
    {
        cv::Mat const tiles = readTiles(files);
        cv::Mat const whole = readWhole(files);
        if (tiles.size() != whole.size() || tiles.type() != whole.type() ||
            whole.cols != widePictureColumns ||
            (extension == "png" && cv::norm(tiles, whole, cv::NORM_INF) != 0.0))
        {
            throw std::logic_error("the pictures from the tiles and from one file differ");
        }
    }

    WidePictureFiles files;
};

Function reading(std::string const& extension, Read read)
{
    return [extension, read](benchmark::State& state) {
        auto const& files = inputFor<Input>(extension).files;
        timeEach(state, [&files, read] { return read(files); });
    };
}

Function writing(std::string const& extension, Write write)
{
    return [extension, write](benchmark::State& state) {
        static cv::Mat const picture = makeWidePicture();
        auto const files = newPictureFiles(extension);
        timeEach(state, [&files, write] {
            if (!write(files, picture)) {
                throw std::runtime_error("the picture could not be written");
            }
            return true;
        });
    };
}

Function peakOfReading(std::string const& extension, Read read)
{
    return [extension, read](benchmark::State& state) {
        auto const files = widePictureFiles(extension);
        measurePeakMemory(
            state, [&files] { return &files; }, read);
    };
}

void twiceThePicture(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        state.counters[peakMemoryCounter] = 2.0 * widePictureSize;
    }
}

Figure readingFigure(std::string const& extension, std::optional<double> target = std::nullopt)
{
    return {"reading " + extension,
            milliseconds,
            {"readImage", reading(extension, readTiles)},
            {{"cv::imread, one file", reading(extension, readWhole), Ratio::TimesAsFast, target}}};
}

Figure writingFigure(std::string const& extension)
{
    return {"writing " + extension,
            milliseconds,
            {"serializeImage", writing(extension, writeTiles)},
            {{"cv::imwrite, one file", writing(extension, writeWhole), Ratio::TimesTheTime}}};
}

Figure memoryFigure(std::string const& extension)
{
    return {"reading " + extension,
            megabytes,
            {"readImage", peakOfReading(extension, readTiles)},
            {{"twice the picture", twiceThePicture, Ratio::TimesTheMemory, 1.1},
             {"cv::imread, one file", peakOfReading(extension, readWhole), Ratio::TimesTheMemory}}};
}

} // namespace

Group panorama()
{
    return {"A picture of 20,000 x 5,000 pixels in tiles",
            Cost::ReportedTime,
            {readingFigure("png", 1.7), readingFigure("jpg"), writingFigure("png"), writingFigure("jpg")}};
}

Group panoramaMemory()
{
    return {"Peak memory of a picture of 20,000 x 5,000 pixels in tiles",
            Cost::PeakMemory,
            {memoryFigure("png"), memoryFigure("jpg")}};
}

} // namespace bench
