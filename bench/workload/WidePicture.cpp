#include "bench/workload/WidePicture.h"

#include "bench/workload/ProcessMemory.h"
#include "bench/workload/ScratchFolder.h"

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

WidePictureFiles filesNamed(std::string const& name, std::string const& extension)
{
    std::string const tiled = (scratchFolder() / (name + "-tiles." + extension)).string();
    return {(scratchFolder() / (name + "." + extension)).string(),
            Bv_1_1::File::fromPath(Bv_1_1::String::fromNarrow(tiled.c_str()))};
}

} // namespace

cv::Mat makeWidePicture()
{
    std::array<double, 3> const channelPhase{0.0, 0.7, 1.9};
    cv::Mat picture(widePictureRows, widePictureColumns, CV_8UC3);
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

WidePictureFiles widePictureFiles(std::string const& extension)
{
    WidePictureFiles files = filesNamed("picture", extension);
    if (!std::filesystem::exists(files.whole)) {
        inChild([&files] {
            cv::Mat const picture = makeWidePicture();
            oV::Roamscan::LargeImageSerialization::serializeImage(picture, files.tiled);
            if (!cv::imwrite(files.whole, picture)) {
                throw std::runtime_error("cannot write " + files.whole);
            }
            return 0.0;
        });
    }
    return files;
}

WidePictureFiles newPictureFiles(std::string const& extension)
{
    return filesNamed("new", extension);
}

} // namespace bench
