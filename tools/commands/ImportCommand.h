#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>

namespace oV::Roamscan::tool
{

/// The text formats that poses are imported from.
enum class PoseFormat : std::uint8_t
{
    Tum,
    Euroc,
    Kitti
};

struct ImportOptions
{
    PoseFormat format = PoseFormat::Tum;
    std::filesystem::path times; ///< KITTI only, and needed there: the times of the poses.
    std::filesystem::path input;
    std::filesystem::path output;
};

/// Makes a trajectory stream of a text of poses. The tracked body becomes Device0, at the identity.
/// @throws ToolError; nothing is written then
void runImport(ImportOptions const& options, std::ostream& out);

} // namespace oV::Roamscan::tool
