#pragma once

#include <roamscan/frame/platform/Export.h>

#include <iosfwd>
#include <string>

namespace oV::Roamscan
{

/// What belongs to a panorama picture apart from its pixels.
namespace PanoramaImageData
{

/// What a camera notes about itself in a JPEG file. The texts are the bytes of the file, their terminating
/// NUL included: the usual date and time, "2008:07:31 16:49:10", has 20 bytes. Their encoding is the
/// camera's.
struct ExifData
{
    std::string dateTime;     ///< When the picture was taken or last changed (tag 306); empty if absent.
    std::string manufacturer; ///< Who made the camera (tag 271); empty if absent.
    std::string model;        ///< Which camera it is (tag 272); empty if absent.
    bool valid = false; ///< Whether a sound directory with at least one entry was found, be it of any tag.
};

} // namespace PanoramaImageData

/// Reads three texts from the EXIF block of a JPEG file, from the stream's position on. Looks only at the
/// first APP1 segment, seeks over those before it, and never comes to the picture itself; the stream is to be
/// opened in binary mode and able to seek. Where it stands afterwards, and which of its state bits are set,
/// is open.
///
/// What the stream holds is not trusted. Without an EXIF block, and whenever anything in it is out of bounds,
/// the result is a default one; so it is for a stream that has ended or failed before, or that cannot seek. A
/// block that the stream ends in goes on with zeros.
///
/// Callers may rely on this: the first byte of a marker may be any. An APP1 segment of another kind ends the
/// search, too. A text of four bytes or less is taken from offset 8 of the block, not from its entry. Of
/// several entries with one tag the first counts.
///
/// Only what is no fault of the content is thrown: a failed allocation, or what a stream throws that was told
/// to. Calls on different streams may run in parallel.
[[nodiscard]] ROAMSCAN_EXPORT PanoramaImageData::ExifData readExifMetaData(std::istream& stream);

} // namespace oV::Roamscan
