#pragma once

#include <roamscan/trajectorydata/Device.h>

#include <Eigen/Geometry>

#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// A device of the carried instrument and how it is mounted.
struct MountedDevice
{
    Device device = Device::Device0;
    Eigen::Isometry3d bodyFromDevice = Eigen::Isometry3d::Identity();
};

/// The instrument: the reference (Device0), two rangefinder heads with different tilts that rotate about
/// their own z axis (Device1, Device2), and a camera above them (Device3) that looks along its z axis.
[[nodiscard]] std::vector<MountedDevice> instrument();

/// A sensor that records samples under its name.
struct MountedSensor
{
    std::string name;
    Eigen::Isometry3d bodyFromSensor = Eigen::Isometry3d::Identity();
};

/// "scanner1" and "scanner2": the heads of Device1 and Device2.
[[nodiscard]] std::vector<MountedSensor> rangefinders();

/// "imu1" near the reference, "imu2" on the mast; their axes differ from those of the body.
[[nodiscard]] std::vector<MountedSensor> inertialUnits();

} // namespace oV::Roamscan::tool
