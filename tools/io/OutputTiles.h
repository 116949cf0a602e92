#pragma once

#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/bvbase/SmartPtr.h>

#include <opencv2/core/mat.hpp>

#include <filesystem>

namespace oV::Roamscan::tool
{

/// A picture in tiles that appears under its name only when it is whole: the tiles are written into a folder
/// of a temporary name beside theirs, which commit() renames. A picture "walk/pano.png" has its tiles in the
/// folder "walk/pano"; those of a picture that was there before go away all together, so that none of them is
/// read as a part of the new one. Without commit() the temporary folder is removed, and what stood there
/// before is as it was.
class OutputTiles
{
public:
    /// Makes the temporary folder.
    /// @throws ToolError if it cannot be made, if the picture's name has no extension of a picture format, or
    /// if something other than tiles of this extension stands in the tiles' folder or has its name
    explicit OutputTiles(std::filesystem::path const& picture);
    OutputTiles(OutputTiles const&) = delete;
    OutputTiles& operator=(OutputTiles const&) = delete;
    ~OutputTiles();

    /// The picture's name, as it was given.
    [[nodiscard]] std::filesystem::path const& target() const { return picture_; }

    /// The folder that the tiles are to appear in.
    [[nodiscard]] std::filesystem::path const& folder() const { return folder_; }

    /// What LargeImageSerialization::serializeImage() is to be given so that the tiles come into the
    /// temporary folder.
    [[nodiscard]] Bv_1_1::SmartPtr<Bv_1_1::File const> const& place() const { return place_; }

    /// Writes the tiles of the picture.
    /// @throws ToolError if one of them cannot be written
    void write(cv::Mat const& image) const;

    /// Gives the tiles their folder. What was there before is back in its place if that fails.
    /// @throws ToolError
    void commit();

private:
    std::filesystem::path picture_;
    std::filesystem::path folder_;    // where links lead to
    std::filesystem::path temporary_; // beside it
    Bv_1_1::SmartPtr<Bv_1_1::File const> place_;
    bool committed_ = false;
};

} // namespace oV::Roamscan::tool
