/// @file
/// A picture of 20,000 columns as a folder of tiles, against the same picture in one file by OpenCV itself:
/// time and peak memory.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"
#include "bench/workload/ScratchFiles.h"

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/imagery/LargeImageSerialization.h>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <stdexcept>

namespace bench
{

namespace
{

using oV::Roamscan::LargeImageSerialization::readImage;
using oV::Roamscan::LargeImageSerialization::serializeImage;

constexpr int pictureRows = 5'000;
constexpr int pictureColumns = 20'000;

// The bytes of its pixels.
constexpr double pictureSize = 3.0 * pictureRows * pictureColumns;

// A panorama in colour, three bytes per pixel. Its smooth shades and the noise of a sensor compress as those
// of a photograph do. The same in each run.
cv::Mat makePicture()
{
    std::array<double, 3> const channelPhase{0.0, 0.7, 1.9};
    cv::Mat picture(pictureRows, pictureColumns, CV_8UC3);
    std::minstd_rand noise(24);
    for (int row = 0; row < picture.rows; ++row) {
        auto* pixel = picture.ptr<std::uint8_t>(row);
        double const vertical = 60.0 * std::sin(0.01 * row);
        for (int column = 0; column < picture.cols; ++column) {
            for (double const phase : channelPhase) {
                double const shade = 128.0 + vertical + 40.0 * std::sin(0.003 * column + phase);
                *pixel++ = static_cast<std::uint8_t>(shade + static_cast<double>(noise() % 8));
            }
        }
    }
    return picture;
}

cv::Mat readTiles(std::string const& file)
{
    return readImage(Bv_1_1::File::fromPath(Bv_1_1::String::fromNarrow(file.c_str())));
}

cv::Mat readWhole(std::string const& file)
{
    return cv::imread(file, cv::IMREAD_UNCHANGED);
}

void writeTiles(std::string const& file, cv::Mat const& picture)
{
    serializeImage(picture, Bv_1_1::File::fromPath(Bv_1_1::String::fromNarrow(file.c_str())));
}

void writeWhole(std::string const& file, cv::Mat const& picture)
{
    if (!cv::imwrite(file, picture)) {
        throw std::runtime_error("cannot write " + file);
    }
}

// The picture in a format: in one file, and in tiles in a folder of the same name.
std::string pictureFile(std::string const& extension)
{
    return writtenFile(extension + "-picture." + extension, [&extension](std::string const& path) {
        cv::Mat const picture = makePicture();
        writeTiles(path, picture);
        writeWhole(path, picture);
        cv::Mat const tiles = readTiles(path);
        cv::Mat const whole = readWhole(path);
        bool const isLossless = extension == "png";
        if (tiles.size() != picture.size() || whole.size() != picture.size() ||
            tiles.type() != whole.type() || (isLossless && cv::norm(tiles, whole, cv::NORM_INF) != 0.0))
        {
            throw std::logic_error("the pictures from the tiles and from one file differ");
        }
    });
}

Function reading(std::string const& extension, auto read)
{
    return [extension, read](benchmark::State& state) {
        timeEach(state, [file = pictureFile(extension), read] { return read(file); });
    };
}

Function writing(std::string const& extension, auto write)
{
    return [extension, write](benchmark::State& state) {
        static cv::Mat const picture = makePicture();
        timeEach(state, [file = scratchFile(extension + "-new." + extension), write] {
            write(file, picture);
            return true;
        });
    };
}

Function peakOfReading(std::string const& extension, auto read)
{
    return [extension, read](benchmark::State& state) {
        measurePeakMemory(
            state, [file = pictureFile(extension)] { return file; }, read);
    };
}

void twiceThePicture(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        state.counters[peakMemoryCounter] = 2.0 * pictureSize;
    }
}

Figure readingFigure(std::string const& extension, std::optional<double> target = std::nullopt)
{
    return {"reading " + extension,
            milliseconds,
            {"readImage", reading(extension, readTiles)},
            {{"cv::imread, one file", reading(extension, readWhole), timesAsFast, target}}};
}

Figure writingFigure(std::string const& extension)
{
    return {"writing " + extension,
            milliseconds,
            {"serializeImage", writing(extension, writeTiles)},
            {{"cv::imwrite, one file", writing(extension, writeWhole), timesTheTime}}};
}

Figure memoryFigure(std::string const& extension)
{
    return {"reading " + extension,
            megabytes,
            {"readImage", peakOfReading(extension, readTiles)},
            {{"twice the picture", twiceThePicture, timesTheMemory, 1.1},
             {"cv::imread, one file", peakOfReading(extension, readWhole), timesTheMemory}}};
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
