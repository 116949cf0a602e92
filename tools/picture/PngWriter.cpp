#include "tools/picture/PngWriter.h"

#include "tools/console/ToolError.h"

#include <png.h>

#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

void writePng(Canvas const& canvas, std::ostream& stream)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(canvas.width());
    image.height = static_cast<png_uint_32>(canvas.height());
    image.format = PNG_FORMAT_RGB;
    std::vector<std::uint8_t> const pixels = canvas.toBytes();

    png_alloc_size_t size = 0;
    std::vector<char> encoded;
    if (png_image_write_to_memory(&image, nullptr, &size, 0, pixels.data(), 0, nullptr) != 0) {
        encoded.resize(size);
        if (png_image_write_to_memory(&image, encoded.data(), &size, 0, pixels.data(), 0, nullptr) != 0) {
            stream.write(encoded.data(), static_cast<std::streamsize>(size));
            return;
        }
    }
    throw ToolError(std::string("the picture cannot be encoded: ") + image.message);
}

} // namespace oV::Roamscan::tool
