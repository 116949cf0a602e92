#pragma once

#include "tools/io/OutputFile.h"

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/bvbase/SmartPtr.h>

#include <opencv2/core/mat.hpp>

#include <cstddef>
#include <filesystem>
#include <string>

namespace oV::Roamscan::tool
{

/// Decodes the picture in a file; depth and channels stay as they are.
/// @throws ToolError if there is no such file, or it is not a picture
[[nodiscard]] cv::Mat readPicture(std::filesystem::path const& file);

/// @throws ToolError if pictures cannot be written in the format of the name's extension
void requirePictureFormat(std::filesystem::path const& file);

/// Writes a picture in the format of the extension, such as ".png".
/// @throws ToolError if the format cannot hold it
void writePicture(cv::Mat const& picture, std::string const& extension, OutputFile& file);

/// The file for LargeImageSerialization. The tiles of "a/pano.png" are in the folder "a/pano".
[[nodiscard]] Bv_1_1::SmartPtr<Bv_1_1::File const> placeOfTiles(std::filesystem::path const& file);

/// The number of tiles from tile 0 up to the first missing one.
[[nodiscard]] std::size_t countTiles(std::filesystem::path const& file);

/// Joins the tiles to one picture.
/// @throws ToolError if there are none, one before the last is missing, or they do not fit together
[[nodiscard]] cv::Mat readTiles(std::filesystem::path const& file);

} // namespace oV::Roamscan::tool
