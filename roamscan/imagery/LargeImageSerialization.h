#pragma once

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/platform/Export.h>

#include <opencv2/core/mat.hpp>

/// Pictures that are too wide for one file, kept as a folder of tiles.
///
/// The file that the functions are given is never made or read: it gives the place. Through "walk/pano.png" a
/// picture is kept in the folder "walk/pano", as "0.png", "1.png" and so on: tile i holds the columns from
/// 1000 * i on, at most 1000 of them, and all rows. Nothing else is written, so the size of the picture, its
/// depth and its channels come back from the tiles.
///
/// What OpenCV says when it fails, and which tiles do not match, goes to the log with severity 1. The codecs
/// that OpenCV uses may write warnings of their own to the standard error stream.
///
/// Include this header with the component Imagery of the package: it needs OpenCV.
namespace oV::Roamscan::LargeImageSerialization
{

/// Writes the picture, one tile after the other. The file's extension alone chooses the format, with OpenCV's
/// own settings for it; a format that cannot hold the picture's depth converts it.
///
/// Makes the directories that are missing. Nothing is deleted: tiles of a wider picture that was there before
/// stay behind the new ones. A picture without columns makes the directory and no tile.
///
/// Runs on the caller's thread. Different places may be written at the same time.
/// @throws oV::VisibleException if a tile cannot be written, with code 18, "Error writing image to " and the
///     path of the tile; those before it stay
/// @throws oV::InternalErrorException if `file` is null
ROAMSCAN_EXPORT void serializeImage(cv::Mat const& image, Bv_1_1::SmartPtr<Bv_1_1::File const> file);

/// Reads a picture. The first number without a tile ends it. A tile that OpenCV cannot make out counts as an
/// empty one: alone it gives an empty picture, beside others it does not match.
///
/// The tiles are decoded on several threads, and then put side by side. Of several failures, the one that
/// comes first is thrown. The picture is held once, and with it the last tile and those that are being
/// decoded; twice at its peak if tiles before the last one are not full, or if there is but one. What a tile
/// may cost at most is OpenCV's limit: 2^30 pixels.
/// @throws oV::VisibleException if OpenCV fails on a tile, with code 18, "Error reading image from " and the
///     path of the tile
/// @throws oV::InternalErrorException "Img dimensions mismatch." or "Img types mismatch." if tiles differ in
///     rows, or in depth or channels; "Did not find any sub images." if there is no tile; if the picture
///     would have more columns than an `int` can count; or if `file` is null
/// @throws cv::Exception if there is no memory for the picture
[[nodiscard]] ROAMSCAN_EXPORT cv::Mat readImage(Bv_1_1::SmartPtr<Bv_1_1::File const> file);

} // namespace oV::Roamscan::LargeImageSerialization
