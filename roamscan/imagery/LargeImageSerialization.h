#pragma once

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/platform/Export.h>

#include <opencv2/core/mat.hpp>

/// Stores pictures that are too wide for one file as a folder of tiles. The pictures are usually panoramas.
///
/// The `file` argument names the folder and the format; it is not a file that is written or read itself. The
/// picture "walk/pano.png" is stored in the folder "walk/pano" as "0.png", "1.png" and so on. Tile i holds
/// all rows of the columns from 1000 * i, at most 1000 columns. There are no other files: size, depth and
/// channels follow from the tiles.
///
/// OpenCV's error messages, and which tiles do not match, go to the log with severity 1. OpenCV's codecs may
/// write warnings to standard error.
///
/// This header needs OpenCV. Its functions are in a shared library of their own, so that only programs that
/// use them load OpenCV's codecs: link the package's component Imagery.
namespace oV::Roamscan::LargeImageSerialization
{

/// Writes a picture, one tile after the other, on the caller's thread. Creates missing directories.
///
/// Thread safety: different folders may be written concurrently.
///
/// @param image a picture without columns creates the folder and no tile
/// @param file  its extension selects the format, with OpenCV's default settings. A format that does not
///        support the picture's depth converts it.
/// @warning Existing tiles are not deleted: those of a wider picture remain after the new ones.
/// @throws oV::VisibleException if a tile cannot be written, with code 18, "Error writing image to " and the
///     path of the tile; the tiles before it remain
/// @throws oV::InternalErrorException if `file` is null
ROAMSCAN_IMAGERY_EXPORT void serializeImage(cv::Mat const& image, Bv_1_1::SmartPtr<Bv_1_1::File const> file);

/// Reads a picture. Decodes the tiles in parallel on TBB's threads and joins them side by side, up to the
/// first number that has no tile.
///
/// Needs memory for the picture, the last tile, and the tiles that are being decoded; for two pictures if a
/// tile before the last one is narrower than 1000 columns, or if there is only one tile. OpenCV limits a tile
/// to 2^30 pixels.
///
/// Of several errors, the one that occurs first is thrown.
/// @note A tile that OpenCV cannot decode counts as an empty picture. If it is the only tile, the result is
///     empty; otherwise it does not match the other tiles, which is an error.
/// @throws oV::VisibleException if OpenCV fails on a tile, with code 18, "Error reading image from " and the
///     path of the tile
/// @throws oV::InternalErrorException "Img dimensions mismatch." or "Img types mismatch." if tiles differ in
///     rows, or in depth or channels; "Did not find any sub images." if there is no tile; if the picture
///     would have more columns than an `int` can count; or if `file` is null
/// @throws cv::Exception if there is no memory for the picture
[[nodiscard]] ROAMSCAN_IMAGERY_EXPORT cv::Mat readImage(Bv_1_1::SmartPtr<Bv_1_1::File const> file);

} // namespace oV::Roamscan::LargeImageSerialization
