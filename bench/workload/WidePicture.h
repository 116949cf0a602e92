#pragma once

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/bvbase/SmartPtr.h>

#include <opencv2/core/mat.hpp>

#include <string>

namespace bench
{

inline constexpr int widePictureRows = 5'000;
inline constexpr int widePictureColumns = 20'000;

/// The bytes of its pixels.
inline constexpr double widePictureSize = 3.0 * widePictureRows * widePictureColumns;

/// A panorama in colour, three bytes per pixel. Its smooth shades and the noise of a sensor compress as those
/// of a photograph do. The same in each run.
[[nodiscard]] cv::Mat makeWidePicture();

/// Where a picture is in one file, and where it is as tiles. The files are in a folder of this process, which
/// is removed when the process ends.
struct WidePictureFiles
{
    std::string whole;
    Bv_1_1::SmartPtr<Bv_1_1::File const> tiled;
};

/// The picture in a format, made by a child process when first used.
[[nodiscard]] WidePictureFiles widePictureFiles(std::string const& extension);

/// Files to write a picture to.
[[nodiscard]] WidePictureFiles newPictureFiles(std::string const& extension);

} // namespace bench
