/// @file
/// A picture 20,000 columns wide as a folder of tiles, against the same picture in one file through OpenCV
/// itself.

#include "Benchmarks.h"
#include "bench/workload/ProcessMemory.h"
#include "bench/workload/WidePicture.h"

#include <roamscan/imagery/LargeImageSerialization.h>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace bench
{

namespace
{

using oV::Roamscan::LargeImageSerialization::readImage;
using oV::Roamscan::LargeImageSerialization::serializeImage;

constexpr int repetitions = 5;
constexpr char const* groupName = "A picture of 20,000 x 5,000 pixels in tiles";

cv::Mat readTiles(WidePictureFiles const& files)
{
    return readImage(files.tiled);
}

cv::Mat readWhole(WidePictureFiles const& files)
{
    return cv::imread(files.whole, cv::IMREAD_UNCHANGED);
}

void writeTiles(WidePictureFiles const& files, cv::Mat const& picture)
{
    serializeImage(picture, files.tiled);
}

void writeWhole(WidePictureFiles const& files, cv::Mat const& picture)
{
    if (!cv::imwrite(files.whole, picture)) {
        throw std::runtime_error("the picture could not be written");
    }
}

// Only the lossless format gives the same pixels either way.
void requireAgreement(std::string const& extension, WidePictureFiles const& files)
{
    cv::Mat const tiles = readTiles(files);
    cv::Mat const whole = readWhole(files);
    if (tiles.size() != whole.size() || tiles.type() != whole.type() || whole.cols != widePictureColumns ||
        (extension == "png" && cv::norm(tiles, whole, cv::NORM_INF) != 0.0))
    {
        throw std::logic_error("the pictures from the tiles and from one file differ");
    }
}

WidePictureFiles const& checkedFiles(std::string const& extension)
{
    static std::string known;
    static WidePictureFiles files;
    if (known != extension) {
        files = widePictureFiles(extension);
        requireAgreement(extension, files);
        known = extension;
    }
    return files;
}

Comparison compareReading(std::string const& extension, std::optional<double> target)
{
    auto const reader = [extension](auto read) {
        return [extension, read](benchmark::State& state) {
            auto const& files = checkedFiles(extension);
            timeEach(state, [&files, read] { return read(files); });
        };
    };
    std::string const name = "panorama/" + extension;
    Workload const one{1.0};
    return {groupName,
            "reading " + extension,
            milliseconds,
            repetitions,
            timedByHand("readImage", name + "/readImage", one, reader(readTiles)),
            {Baseline{timedByHand("cv::imread, one file", name + "/imread", one, reader(readWhole)),
                      Ratio::TimesAsFast,
                      target}}};
}

Comparison compareWriting(std::string const& extension)
{
    auto const writer = [extension](auto write) {
        return [extension, write](benchmark::State& state) {
            static cv::Mat const picture = makeWidePicture();
            auto const files = roomForWidePicture(extension);
            timeEach(state, [&files, write] {
                write(files, picture);
                return 0;
            });
        };
    };
    std::string const name = "panorama/" + extension;
    Workload const one{1.0};
    return {groupName,
            "writing " + extension,
            milliseconds,
            repetitions,
            timedByHand("serializeImage", name + "/serializeImage", one, writer(writeTiles)),
            {Baseline{timedByHand("cv::imwrite, one file", name + "/imwrite", one, writer(writeWhole)),
                      Ratio::TimesTheTime}}};
}

Subject peakOfReading(std::string label, std::string const& extension, auto read)
{
    return {std::move(label), [extension, read] {
                auto const files = widePictureFiles(extension);
                return inChild([&files, read] {
                    double const before = peakMemory();
                    cv::Mat const picture = read(files);
                    return peakMemory() - before;
                });
            }};
}

Comparison compareMemory(std::string const& extension)
{
    constexpr double target = 1.1;
    Subject const twice{"twice the picture", [] { return 2.0 * widePictureSize; }};
    return {"Peak memory of a picture of 20,000 x 5,000 pixels in tiles",
            "reading " + extension,
            megabytes,
            1,
            peakOfReading("readImage", extension, readTiles),
            {Baseline{twice, Ratio::TimesTheMemory, target},
             Baseline{peakOfReading("cv::imread, one file", extension, readWhole), Ratio::TimesTheMemory}}};
}

} // namespace

std::vector<Comparison> panoramaMemoryBenchmarks()
{
    return {compareMemory("png"), compareMemory("jpg")};
}

std::vector<Comparison> panoramaBenchmarks()
{
    constexpr double target = 1.7;
    return {compareReading("png", target),
            compareReading("jpg", std::nullopt),
            compareWriting("png"),
            compareWriting("jpg")};
}

} // namespace bench
