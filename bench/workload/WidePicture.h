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

/// A panorama in colour, three bytes a pixel: slow shades and the noise of a sensor, so that it compresses as
/// a photograph does. The same in each run.
[[nodiscard]] cv::Mat makeWidePicture();

/// That picture on disk in a format: in one file, and as tiles. In a folder of this process, which goes when
/// it ends.
struct WidePictureFiles
{
    std::string whole;
    Bv_1_1::SmartPtr<Bv_1_1::File const> tiled;
};

/// Made when it is first asked for, in a process of its own.
[[nodiscard]] WidePictureFiles widePictureFiles(std::string const& extension);

/// Where a picture may be written to, whole or as tiles: in the same folder, over what was written before.
[[nodiscard]] WidePictureFiles roomForWidePicture(std::string const& extension);

} // namespace bench
