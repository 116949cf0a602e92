#pragma once

#include <roamscan/frame/platform/Export.h>

#include <iosfwd>
#include <string>

namespace oV::Roamscan
{

/// Data of a panorama picture other than its pixels.
namespace PanoramaImageData
{

/// The camera's entries in a JPEG file. The strings are the bytes of the file, including the terminating NUL:
/// the usual date and time, "2008:07:31 16:49:10", has 20 bytes. The camera chooses the encoding.
struct ExifData
{
    std::string dateTime;     ///< When the picture was taken or last changed (tag 306). Empty if absent.
    std::string manufacturer; ///< Manufacturer of the camera (tag 271). Empty if absent.
    std::string model;        ///< Model of the camera (tag 272). Empty if absent.
    bool valid = false;       ///< Whether an EXIF directory with at least one entry, of any tag, was read.
};

} // namespace PanoramaImageData

/// Reads three strings from the EXIF block of a JPEG file. Reads the first APP1 segment only, and seeks over
/// the segments before it. The stream's contents are not trusted.
///
/// Thread safety: calls on different streams may run concurrently.
///
/// @param stream a seekable stream in binary mode, positioned at the start of the JPEG data. Its position and
///        state afterwards are unspecified.
/// @return the strings; a default result if there is no EXIF block, if an offset or a length in it is out of
///         bounds, or if the stream has failed or cannot seek
/// @throws std::bad_alloc
/// @throws std::ios_base::failure if exceptions are enabled on the stream
/// @note Kept for compatibility:
/// - The first byte of a marker is not tested.
/// - An APP1 segment that is not EXIF also ends the search.
/// - A truncated block is padded with zeros.
/// - A string of four bytes or fewer is read from offset 8 of the block, not from its entry.
/// - Of several entries with the same tag, the first one is used.
[[nodiscard]] ROAMSCAN_EXPORT PanoramaImageData::ExifData readExifMetaData(std::istream& stream);

} // namespace oV::Roamscan
