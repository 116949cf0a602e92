#include "WidePicture.h"

#include "ProcessMemory.h"

#include <roamscan/imagery/LargeImageSerialization.h>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <system_error>

namespace bench
{

namespace
{

namespace files = oV::Roamscan::LargeImageSerialization;

class ScratchFolder
{
public:
    ScratchFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "roamscan-bench-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no folder for the pictures");
        }
        path_ = name;
    }
    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] WidePictureFiles named(std::string const& name, std::string const& extension) const
    {
        std::string const tiled = (path_ / (name + "-tiles." + extension)).string();
        return {(path_ / (name + "." + extension)).string(),
                Bv_1_1::File::fromPath(Bv_1_1::String::fromNarrow(tiled.c_str()))};
    }

private:
    std::filesystem::path path_;
};

ScratchFolder const& scratchFolder()
{
    static ScratchFolder const folder;
    return folder;
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
    WidePictureFiles there = scratchFolder().named("picture", extension);
    if (!std::filesystem::exists(there.whole)) {
        inChild([&there] {
            cv::Mat const picture = makeWidePicture();
            files::serializeImage(picture, there.tiled);
            return cv::imwrite(there.whole, picture) ? 1.0 : 0.0;
        });
    }
    return there;
}

WidePictureFiles roomForWidePicture(std::string const& extension)
{
    return scratchFolder().named("room", extension);
}

} // namespace bench
