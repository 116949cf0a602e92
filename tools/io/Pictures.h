#pragma once

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/bvbase/SmartPtr.h>

#include <opencv2/core/mat.hpp>

#include <cstddef>
#include <filesystem>
#include <vector>

namespace oV::Roamscan::tool
{

/// Decodes the picture in a file; depth and channels stay as they are.
/// @throws ToolError if there is no such file, or no picture in it
[[nodiscard]] cv::Mat readPicture(std::filesystem::path const& file);

/// @throws ToolError if the name's extension is that of no format that pictures can be written in
void requirePictureFormat(std::filesystem::path const& file);

/// The bytes of a file of this name for the picture.
/// @throws ToolError if the format cannot hold it
[[nodiscard]] std::vector<unsigned char> encodePicture(cv::Mat const& picture,
                                                       std::filesystem::path const& file);

/// The place that the library keeps the tiles of a picture at: those of "a/pano.png" are in the folder
/// "a/pano".
[[nodiscard]] Bv_1_1::SmartPtr<Bv_1_1::File const> placeOfTiles(std::filesystem::path const& file);

/// How many tiles there are without a gap.
[[nodiscard]] std::size_t countTiles(std::filesystem::path const& file);

/// Makes one picture of the tiles.
/// @throws ToolError if there are none, or they do not go together
[[nodiscard]] cv::Mat readTiles(std::filesystem::path const& file);

} // namespace oV::Roamscan::tool
