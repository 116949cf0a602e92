#pragma once

#include <roamscan/time/TrafoT.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <string>
#include <vector>

/// The position of a device on the instrument as text: "1=x,y,z,qw,qx,qy,qz", in metres.
namespace oV::Roamscan::tool
{

/// A device of the instrument and its position, which maps points of the device to the tracked body.
struct Mount
{
    Device device = Device::Device0;
    TrafoT<double> position;
};

/// @param option the option that has the text, for messages
/// @throws ToolError if the text has another form, the device is not 0 to 3, or the quaternion has not length
/// 1
[[nodiscard]] Mount parseMount(std::string const& text, std::string const& option);

/// Every number is the shortest text that reads back to the same value.
[[nodiscard]] std::string mountText(Mount const& mount);

/// Sets the positions of devices from such texts.
/// @throws ToolError as parseMount does, or if a device is named twice
void setMounts(TrajectoryData& data, std::vector<std::string> const& texts, std::string const& option);

/// The positions in the order of the devices.
[[nodiscard]] std::vector<Mount> mountsOf(TrajectoryData const& data);

} // namespace oV::Roamscan::tool
