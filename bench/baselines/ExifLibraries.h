#pragma once

#include <array>
#include <span>
#include <string>

namespace bench
{

/// The camera's texts in a picture, each up to the terminating zero: time, manufacturer, model.
using CameraTexts = std::array<std::string, 3>;

/// By libexif, which decodes the whole EXIF block.
[[nodiscard]] CameraTexts readWithLibexif(std::string const& path);
[[nodiscard]] CameraTexts readWithLibexif(std::span<char const> picture);

/// By exiv2, which also decodes the other metadata of the picture.
[[nodiscard]] CameraTexts readWithExiv2(std::string const& path);
[[nodiscard]] CameraTexts readWithExiv2(std::span<char const> picture);

} // namespace bench
