#include "tools/commands/DevicePath.h"

#include "tools/console/ToolError.h"
#include "tools/io/RecordingFile.h"

#include <CLI/CLI.hpp>

#include <cmath>

namespace oV::Roamscan::tool
{

namespace
{

TrafoT<double>
positionOf(TrajectoryData const& data, std::optional<int> device, std::filesystem::path const& name)
{
    if (!device) {
        return TrafoT<double>::Identity();
    }
    requirePosition(data, static_cast<Device>(*device), name);
    return data.devicePositions.at(static_cast<Device>(*device));
}

} // namespace

void addDevices(CLI::App& command, DevicePath& path)
{
    command.add_option("--from", path.from, "The device whose poses these are, 0 to 3 (the tracked body)")
        ->check(CLI::Range(0, 3));
    command
        .add_option(
            "--to", path.to, "The device in whose frame the poses are, 0 to 3 (the world of the trajectory)")
        ->check(CLI::Range(0, 3));
}

DevicePoses readDevicePoses(DevicePath const& path)
{
    auto const data = readTrajectoryFile(path.trajectory).data;
    TrafoT<double> const bodyFromDevice = positionOf(*data, path.from, path.trajectory);
    TrafoT<double> const targetFromWorld = positionOf(*data, path.to, path.trajectory).inverse();
    bool const isStored = !path.from && !path.to;

    DevicePoses poses;
    poses.nodes.reserve(data->nodes.size());
    for (TrajectoryNode const& node : data->nodes) {
        TrafoT<double> const pose = isStored ? node.pose : (targetFromWorld * node.pose) * bodyFromDevice;
        if (std::isfinite(node.time) && pose.valid() && pose.allFinite()) {
            poses.nodes.emplace_back(node.time, pose);
        }
    }
    poses.unusable = data->nodes.size() - poses.nodes.size();
    if (poses.nodes.empty()) {
        throw fileError(path.trajectory, "there is no usable pose with a time in it");
    }
    return poses;
}

} // namespace oV::Roamscan::tool
