#pragma once

#include <filesystem>
#include <iosfwd>
#include <vector>

namespace oV::Roamscan::tool
{

struct ExifOptions
{
    std::vector<std::filesystem::path> files;
    bool json = false; ///< One array with an object for each file, instead of a table.
};

/// Tells on `out` what cameras have noted in pictures: date and time, make and model. A picture without a
/// sound EXIF block is shown as such, and is no failure. A file that cannot be read is one line on `err` and
/// does not stop the others.
/// @return whether all files could be read
[[nodiscard]] bool runExif(ExifOptions const& options, std::ostream& out, std::ostream& err);

} // namespace oV::Roamscan::tool
