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
/// @throws ToolError if there is no such file, or no picture in it
[[nodiscard]] cv::Mat readPicture(std::filesystem::path const& file);

/// @throws ToolError if the name's extension is that of no format that pictures can be written in
void requirePictureFormat(std::filesystem::path const& file);

/// Writes a picture in the format of the extension, such as ".png".
/// @throws ToolError if the format cannot hold it
void writePicture(cv::Mat const& picture, std::string const& extension, OutputFile& file);

/// The place that the library keeps the tiles of a picture at: those of "a/pano.png" are in the folder
/// "a/pano".
[[nodiscard]] Bv_1_1::SmartPtr<Bv_1_1::File const> placeOfTiles(std::filesystem::path const& file);

/// How many tiles there are without a gap.
[[nodiscard]] std::size_t countTiles(std::filesystem::path const& file);

/// Makes one picture of the tiles.
/// @throws ToolError if there are none, or they do not go together
[[nodiscard]] cv::Mat readTiles(std::filesystem::path const& file);

} // namespace oV::Roamscan::tool
