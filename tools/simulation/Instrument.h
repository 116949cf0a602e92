#pragma once

#include <roamscan/trajectorydata/Device.h>

#include <Eigen/Geometry>

#include <map>
#include <string>

namespace oV::Roamscan::tool
{

/// The instrument, as the poses of its devices (bodyFromDevice): the reference (Device0), two rangefinder
/// heads with different tilts that rotate about their own z axis (Device1, Device2), and a camera above them
/// (Device3) that looks along its z axis.
[[nodiscard]] std::map<Device, Eigen::Isometry3d> instrument();

/// The poses of sensors (bodyFromSensor) by the names under which their samples are recorded.
using MountedSensors = std::map<std::string, Eigen::Isometry3d>;

/// "scanner1" and "scanner2": the heads of Device1 and Device2.
[[nodiscard]] MountedSensors rangefinders();

/// "imu1" near the reference, "imu2" on the mast; their axes differ from those of the body.
[[nodiscard]] MountedSensors inertialUnits();

} // namespace oV::Roamscan::tool
