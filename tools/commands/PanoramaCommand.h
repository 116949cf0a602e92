#pragma once

#include <filesystem>
#include <iosfwd>

namespace oV::Roamscan::tool
{

struct PanoramaOptions
{
    std::filesystem::path input;
    std::filesystem::path output;
};

/// Makes tiles of a picture in one file. The output gives their place: "pano.png" stands for the folder
/// "pano" of PNG tiles.
/// @throws ToolError; tiles that were there before are as they were then
void runPanoramaSplit(PanoramaOptions const& options, std::ostream& out);

/// Makes one picture of tiles, whose place the input gives.
/// @throws ToolError; what was in the output file before is as it was then
void runPanoramaJoin(PanoramaOptions const& options, std::ostream& out);

} // namespace oV::Roamscan::tool
