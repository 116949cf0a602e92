#include "bench/baselines/ExifLibraries.h"

#include <exiv2/exiv2.hpp>
#include <libexif/exif-data.h>

#include <memory>

namespace bench
{

namespace
{

using LibexifData = std::unique_ptr<ExifData, decltype([](ExifData* data) { exif_data_unref(data); })>;

std::string textOf(ExifContent* directory, ExifTag tag)
{
    ExifEntry const* const entry = exif_content_get_entry(directory, tag);
    if (entry == nullptr) {
        return {};
    }
    std::string text(reinterpret_cast<char const*>(entry->data), entry->size);
    return text.substr(0, text.find('\0'));
}

CameraTexts textsOf(LibexifData const& data)
{
    if (!data) {
        return {};
    }
    ExifContent* const directory = data->ifd[EXIF_IFD_0];
    return {textOf(directory, EXIF_TAG_DATE_TIME),
            textOf(directory, EXIF_TAG_MAKE),
            textOf(directory, EXIF_TAG_MODEL)};
}

std::string textOf(Exiv2::ExifData const& data, char const* key)
{
    auto const found = data.findKey(Exiv2::ExifKey(key));
    return found == data.end() ? std::string() : found->toString();
}

CameraTexts textsOf(Exiv2::Image::AutoPtr image)
{
    // Its warnings would go to stderr and cost time.
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    image->readMetadata();
    Exiv2::ExifData const& data = image->exifData();
    return {textOf(data, "Exif.Image.DateTime"),
            textOf(data, "Exif.Image.Make"),
            textOf(data, "Exif.Image.Model")};
}

} // namespace

CameraTexts readWithLibexif(std::string const& path)
{
    return textsOf(LibexifData(exif_data_new_from_file(path.c_str())));
}

CameraTexts readWithLibexif(std::span<char const> picture)
{
    auto const* const bytes = reinterpret_cast<unsigned char const*>(picture.data());
    return textsOf(LibexifData(exif_data_new_from_data(bytes, static_cast<unsigned int>(picture.size()))));
}

CameraTexts readWithExiv2(std::string const& path)
{
    return textsOf(Exiv2::ImageFactory::open(path));
}

CameraTexts readWithExiv2(std::span<char const> picture)
{
    auto const* const bytes = reinterpret_cast<unsigned char const*>(picture.data());
    return textsOf(Exiv2::ImageFactory::open(bytes, static_cast<long>(picture.size())));
}

} // namespace bench
