#pragma once

#include <roamscan/trajectorydata/Device.h>

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

namespace oV::Roamscan::tool
{

struct PlaceOptions
{
    std::filesystem::path trajectory;
    Device from = Device::Device1; ///< The device whose scan it is.
    Device to = Device::Device0;   ///< The device into whose global frame the points are placed.
    std::filesystem::path points;  ///< The scan as a PLY file; empty if it is in a sensor stream.
    std::filesystem::path sensors; ///< The sensor stream whose scan it is; empty if it is in a PLY file.
    std::optional<std::string> rangefinder; ///< Of the sensor stream; the first by name unless told.
    std::filesystem::path cloud;            ///< Left out if empty, as the picture and the building.
    std::filesystem::path picture;
    std::filesystem::path building; ///< The true surfaces to measure the placed points against.
};

/// Places the points of a scan by a trajectory, and says on `out` what became of them; the last line is the
/// result.
/// @throws ToolError, or what the library throws; nothing is written then
void runPlace(PlaceOptions const& options, std::ostream& out);

} // namespace oV::Roamscan::tool
