#pragma once

#include <span>
#include <string>

namespace bench
{

/// What a camera notes in a picture, without what ends a text.
struct CameraTexts
{
    std::string dateTime;
    std::string manufacturer;
    std::string model;

    bool operator==(CameraTexts const&) const = default;
};

/// Through libexif, which decodes the whole block.
[[nodiscard]] CameraTexts readWithLibexif(std::string const& path);
[[nodiscard]] CameraTexts readWithLibexif(std::span<char const> picture);

/// Through exiv2, which decodes the picture's other metadata, too.
[[nodiscard]] CameraTexts readWithExiv2(std::string const& path);
[[nodiscard]] CameraTexts readWithExiv2(std::span<char const> picture);

} // namespace bench
