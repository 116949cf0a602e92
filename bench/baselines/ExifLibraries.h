#pragma once

#include <span>
#include <string>

namespace bench
{

/// The camera's texts in a picture, up to the terminating zero.
struct CameraTexts
{
    std::string dateTime;
    std::string manufacturer;
    std::string model;

    bool operator==(CameraTexts const&) const = default;
};

/// By libexif, which decodes the whole EXIF block.
[[nodiscard]] CameraTexts readWithLibexif(std::string const& path);
[[nodiscard]] CameraTexts readWithLibexif(std::span<char const> picture);

/// By exiv2, which also decodes the other metadata of the picture.
[[nodiscard]] CameraTexts readWithExiv2(std::string const& path);
[[nodiscard]] CameraTexts readWithExiv2(std::span<char const> picture);

} // namespace bench
