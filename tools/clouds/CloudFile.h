#pragma once

#include "tools/clouds/CloudInput.h"
#include "tools/clouds/PointReader.h"
#include "tools/clouds/PointWriter.h"
#include "tools/clouds/TextCloud.h"

#include <array>
#include <filesystem>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

/// Clouds in the formats that this program knows.
namespace oV::Roamscan::tool
{

/// Opens a cloud: PLY, PCD, LAS, or text (CSV, XYZ). The content decides on the format. A pipe, or the
/// standard input ("-"), is copied to a temporary file, because most formats are not read from front to back.
/// @throws ToolError if there is no such file, or it is not a cloud
[[nodiscard]] std::unique_ptr<PointReader> openCloud(std::filesystem::path const& path,
                                                     TextSettings const& text = {});

/// The same for any input.
[[nodiscard]] std::unique_ptr<PointReader> openCloud(CloudInput input, TextSettings const& text = {});

/// A format that clouds are written in.
enum class CloudFormat
{
    Ply,
    Pcd,
    Csv,
    Las
};

/// The format that the ending of a file's name stands for.
/// @throws ToolError if it is none
[[nodiscard]] CloudFormat cloudFormatOf(std::filesystem::path const& path);

/// What a writer says of a cloud besides its points.
struct CloudDescription
{
    std::vector<std::string> comments; ///< Lines for the header, if the format has comments.
    std::string secondsField;          ///< The field whose value is the time in seconds; may be empty.
    std::array<double, 3> origin{};    ///< Of the integer coordinates of LAS, in metres.
    double resolution = 1e-6;          ///< Of the integer coordinates of LAS, in metres.
};

/// Writes a cloud of a format.
/// @param stream must be seekable; the writer keeps a reference to it
/// @param name the file's name for messages
/// @throws ToolError if the format cannot hold the fields
[[nodiscard]] std::unique_ptr<PointWriter> makeCloudWriter(CloudFormat format,
                                                           std::ostream& stream,
                                                           std::filesystem::path const& name,
                                                           PointLayout const& layout,
                                                           CloudDescription const& description);

} // namespace oV::Roamscan::tool
