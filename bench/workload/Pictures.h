#pragma once

#include <string>
#include <vector>

namespace bench
{

/// A JPEG file and its contents.
struct Picture
{
    std::string file;
    std::vector<char> bytes;
};

/// @throws std::runtime_error if the file cannot be read
[[nodiscard]] std::vector<char> readWhole(std::string const& file);

/// Pictures of cameras without their image data, of some kilobytes each. They are not part of the project.
[[nodiscard]] bool hasSmallPictures();
[[nodiscard]] std::vector<Picture> const& smallPictures();

/// One picture of 8 MB: the EXIF block of a camera, and noise as image data. Its file is removed when the
/// process ends.
[[nodiscard]] std::vector<Picture> const& largePicture();

} // namespace bench
