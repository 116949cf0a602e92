#pragma once

#include <roamscan/trajectorydata/Device.h>

#include <Eigen/Geometry>

#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// A device of the carried instrument and where it is mounted.
struct MountedDevice
{
    Device device = Device::Device0;
    Eigen::Isometry3d position = Eigen::Isometry3d::Identity(); ///< Device frame to the body frame.
};

/// The instrument: the reference (Device0), two rangefinder heads, tilted differently, that spin about their
/// own z axis (Device1, Device2), and a camera above them (Device3) that looks along its z axis.
[[nodiscard]] std::vector<MountedDevice> instrument();

/// A sensor that records samples under its name.
struct MountedSensor
{
    std::string name;
    Eigen::Isometry3d position = Eigen::Isometry3d::Identity(); ///< Sensor frame to the body frame.
};

/// "scanner1" and "scanner2": the heads of Device1 and Device2.
[[nodiscard]] std::vector<MountedSensor> rangefinders();

/// "imu1" beside the reference, "imu2" on the mast; their axes point elsewhere than the body's.
[[nodiscard]] std::vector<MountedSensor> inertialUnits();

} // namespace oV::Roamscan::tool
