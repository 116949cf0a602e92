#include "tools/simulation/Instrument.h"

#include <numbers>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector3d;

constexpr double radians(double degrees)
{
    return degrees * std::numbers::pi / 180.0;
}

Eigen::Isometry3d mounted(Vector3d const& place, double yaw, double pitch)
{
    Eigen::Isometry3d bodyFromDevice = Eigen::Isometry3d::Identity();
    bodyFromDevice.translate(place);
    bodyFromDevice.rotate(Eigen::AngleAxisd(radians(yaw), Vector3d::UnitZ()));
    bodyFromDevice.rotate(Eigen::AngleAxisd(radians(pitch), Vector3d::UnitY()));
    return bodyFromDevice;
}

} // namespace

std::map<Device, Eigen::Isometry3d> instrument()
{
    return {
        {Device::Device0, Eigen::Isometry3d::Identity()},
        {Device::Device1, mounted({0.12, 0.0, 0.18}, 25.0, 65.0)},   // scans walls, floor and ceiling
        {Device::Device2, mounted({-0.08, 0.0, 0.30}, 180.0, 15.0)}, // scans the walls all around
        {Device::Device3, mounted({0.05, 0.0, 0.45}, 0.0, 90.0)},
    };
}

MountedSensors rangefinders()
{
    auto const devices = instrument();
    return {{"scanner1", devices.at(Device::Device1)}, {"scanner2", devices.at(Device::Device2)}};
}

MountedSensors inertialUnits()
{
    return {
        {"imu1", mounted({0.02, -0.03, 0.01}, 90.0, 0.0)},
        {"imu2", mounted({-0.05, 0.0, 0.35}, 180.0, 90.0)},
    };
}

} // namespace oV::Roamscan::tool
