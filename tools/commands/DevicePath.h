#pragma once

#include <roamscan/trajectorydata/TrajectoryData.h>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

namespace CLI
{
class App;
}

namespace oV::Roamscan::tool
{

/// The path of a device in a trajectory file, in the frame of another device.
struct DevicePath
{
    std::filesystem::path trajectory;
    std::optional<int> from; ///< The device; by default the tracked body.
    std::optional<int> to;   ///< The device in whose frame the path is; by default the world of the nodes.
};

/// Adds the options --from and --to.
void addDevices(CLI::App& command, DevicePath& path);

/// Poses in the order of the file.
struct DevicePoses
{
    std::vector<TrajectoryNode> nodes; ///< With a finite time and a finite, valid pose.
    std::size_t unusable = 0;          ///< Nodes without.
};

/// Reads the poses of the device. They are those of the nodes, bit for bit, if neither device is given.
/// @throws ToolError if the file cannot be read, a device has no position, or no pose is usable
[[nodiscard]] DevicePoses readDevicePoses(DevicePath const& path);

} // namespace oV::Roamscan::tool
