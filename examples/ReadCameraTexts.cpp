/// @file
/// Reads from the EXIF block of a JPEG file when a picture was taken and with which camera. The bytes of this
/// small file are part of the program; open a real file in binary mode.

#include <roamscan/imagery/ExifReader.h>

#include <cstdio>
#include <iterator>
#include <sstream>
#include <string>

namespace
{

// clang-format off
constexpr unsigned char picture[] = {
    0xFF, 0xD8,                                         // the start of a JPEG file
    0xFF, 0xE1, 0x00, 0x55, 'E', 'x', 'i', 'f', 0, 0,   // the segment of the EXIF block, 85 bytes long
    'M', 'M', 0, 42, 0, 0, 0, 8,                        // big-endian; the directory is at offset 8
    0, 3,                                               // three entries: tag, type, count, offset
    0x01, 0x0F, 0, 2, 0, 0, 0, 5, 0, 0, 0, 46,          // make
    0x01, 0x10, 0, 2, 0, 0, 0, 6, 0, 0, 0, 51,          // model
    0x01, 0x32, 0, 2, 0, 0, 0, 20, 0, 0, 0, 57,         // date and time
    'A', 'C', 'M', 'E', 0,
    'X', '-', '1', '0', '0', 0,
    '2', '0', '2', '4', ':', '0', '5', ':', '1', '7', ' ', '0', '9', ':', '3', '0', ':', '0', '0', 0,
    0xFF, 0xD9};                                        // the end of the file; this one has no pixels
// clang-format on

/// The text up to its terminating NUL.
std::string withoutNul(std::string const& text)
{
    return text.substr(0, text.find('\0'));
}

} // namespace

int main()
{
    std::istringstream stream(std::string(std::begin(picture), std::end(picture)), std::ios::binary);
    auto const camera = oV::Roamscan::readExifMetaData(stream);
    if (!camera.valid) {
        std::fprintf(stderr, "the file has no valid EXIF block\n");
        return 1;
    }
    // Texts of at most four bytes are not returned as the camera wrote them; these are longer.
    std::printf("taken at %s with model %s by %s\n",
                withoutNul(camera.dateTime).c_str(),
                withoutNul(camera.model).c_str(),
                withoutNul(camera.manufacturer).c_str());
    return withoutNul(camera.model) == "X-100" ? 0 : 1;
}
