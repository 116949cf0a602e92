#include "tools/mounts/RangefinderMount.h"

#include <Eigen/Geometry>
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

TrafoT<double> position(double x, double degrees)
{
    double const half = degrees * 3.14159265358979323846 / 360.0;
    return {{x, 0.0, 0.25}, Eigen::Quaterniond(std::cos(half), 0.0, std::sin(half), 0.0), true};
}

TrajectoryData instrument()
{
    TrajectoryData data;
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    data.devicePositions[Device::Device1] = position(0.1, 30.0);
    data.devicePositions[Device::Device2] = position(0.1, 60.0);
    data.devicePositions[Device::Device3] = position(0.2, 30.0);
    return data;
}

SensorData sensorsWith(TrafoT<double> const& pose)
{
    auto const v = pose.serialize();
    auto const f = [&](std::size_t i) { return static_cast<float>(v[i]); };
    SensorData sensors;
    sensors.sensorPoses["head"] = {{f(0), f(1), f(2)}, {f(4), f(5), f(6), f(3)}};
    return sensors;
}

using Devices = std::vector<Device>;

Devices found(TrafoT<double> const& pose)
{
    return devicesOfRangefinder(instrument(), sensorsWith(pose), "head");
}

} // namespace

TEST(RangefinderMount, IsRecognisedByItsPose)
{
    EXPECT_EQ(found(TrafoT<double>::Identity()), Devices{Device::Device0});
    EXPECT_EQ(found(position(0.1, 30.0)), Devices{Device::Device1});
    EXPECT_EQ(found(position(0.1, 60.0)), Devices{Device::Device2});
    EXPECT_EQ(found(position(0.2, 30.0)), Devices{Device::Device3});
}

TEST(RangefinderMount, MayBeOffByAMillimetreAndAMilliradian)
{
    EXPECT_EQ(found(position(0.1009, 30.05)), Devices{Device::Device1});
    EXPECT_EQ(found(position(0.1011, 30.0)), Devices{});
    EXPECT_EQ(found(position(0.1, 30.06)), Devices{});
}

TEST(RangefinderMount, MayFitSeveralDevices)
{
    TrajectoryData data = instrument();
    data.devicePositions[Device::Device3] = data.devicePositions.at(Device::Device1);
    Devices const devices = devicesOfRangefinder(data, sensorsWith(position(0.1, 30.0)), "head");
    EXPECT_EQ(devices, (Devices{Device::Device1, Device::Device3}));
    EXPECT_EQ(namesOf(devices), "devices 1 and 3");
}

TEST(RangefinderMount, TheSignOfAQuaternionDoesNotMatter)
{
    TrafoT<double> negative = position(0.1, 30.0);
    negative.rotation().coeffs() = -negative.rotation().coeffs();
    EXPECT_EQ(found(negative), Devices{Device::Device1});
}

TEST(RangefinderMount, WithoutAPoseNothingIsKnown)
{
    SensorData const sensors = sensorsWith(position(0.1, 30.0));
    EXPECT_EQ(devicesOfRangefinder(instrument(), sensors, "other"), Devices{});
    EXPECT_EQ(mountWarning(instrument(), Device::Device1, sensors, "other"), "");
    EXPECT_EQ(devicesOfRangefinder(TrajectoryData(), sensors, "head"), Devices{});
    EXPECT_EQ(mountWarning({}, Device::Device1, sensors, "head"), "");
}

TEST(RangefinderMount, AnotherDeviceIsWarnedAbout)
{
    SensorData const sensors = sensorsWith(position(0.1, 30.0));
    EXPECT_EQ(mountWarning(instrument(), Device::Device1, sensors, "head"), "");
    EXPECT_EQ(mountWarning(instrument(), Device::Device2, sensors, "head"),
              "the pose of \"head\" in the sensor stream is 0.0000 m and 30.000 degrees from the position of "
              "device "
              "2; it is that of device 1");
    EXPECT_EQ(
        mountWarning(instrument(), Device::Device3, sensorsWith(position(0.5, 30.0)), "head"),
        "the pose of \"head\" in the sensor stream is 0.3000 m and 0.000 degrees from the position of device "
        "3; no device has it, see roamscan mount");
}

TEST(RangefinderMount, APoseThatIsNotFiniteFitsNoDevice)
{
    SensorData sensors = sensorsWith(position(0.1, 30.0));
    sensors.sensorPoses["head"].translation.x = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(devicesOfRangefinder(instrument(), sensors, "head"), Devices{});
    EXPECT_NE(mountWarning(instrument(), Device::Device1, sensors, "head"), "");
}
