#pragma once

#include "tools/io/Output.h"

#include <opencv2/core/mat.hpp>

#include <filesystem>
#include <string>

namespace oV::Roamscan::tool
{

/// @throws ToolError if something other than a folder with nothing but tiles of the extension has the name:
/// nothing else may be deleted
void requireOnlyTiles(std::filesystem::path const& folder, std::string const& extension);

/// A picture in tiles that appears only when it is complete. The tiles of a picture "walk/pano.png" are in
/// the folder "walk/pano", which is the target. It is replaced as a whole, so that no tile of a previous
/// picture is left among the new ones.
class OutputTiles : public Output
{
public:
    /// Creates the temporary folder.
    /// @throws ToolError if it cannot be created, if the picture's name has no extension of a picture format,
    /// or if the target exists and is not a folder with nothing but tiles of this extension in it
    explicit OutputTiles(std::filesystem::path const& picture);

    /// The picture whose tiles are in the temporary folder.
    [[nodiscard]] std::filesystem::path picture() const
    {
        return std::filesystem::path(temporary()) += extension_;
    }

    /// Writes the tiles of the picture.
    /// @throws ToolError if one of them cannot be written
    void write(cv::Mat const& image) const;

private:
    void finish() override;

    std::string extension_; // of the tiles
};

} // namespace oV::Roamscan::tool
