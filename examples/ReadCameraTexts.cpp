/// @file
/// Reads when a picture was taken, and with which camera, from the beginning of a JPEG file. This one is so
/// small that it stands here; others are files opened in binary mode.

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
    0xFF, 0xD9};                                        // the end, where others have their pixels
// clang-format on

/// The text without the NUL that usually ends it.
std::string shown(std::string const& text)
{
    return text.substr(0, text.find('\0'));
}

} // namespace

int main()
{
    std::istringstream stream(std::string(std::begin(picture), std::end(picture)), std::ios::binary);
    auto const camera = oV::Roamscan::readExifMetaData(stream);
    if (!camera.valid) {
        std::fprintf(stderr, "the picture has no sound EXIF block\n");
        return 1;
    }
    // Texts of four bytes or less do not come out as the camera wrote them; these are longer.
    std::printf("taken at %s with the model %s of %s\n",
                shown(camera.dateTime).c_str(),
                shown(camera.model).c_str(),
                shown(camera.manufacturer).c_str());
    return shown(camera.model) == "X-100" ? 0 : 1;
}
