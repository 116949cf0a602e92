#include "tools/mounts/RangefinderMount.h"

#include "tools/console/Text.h"
#include "tools/mounts/MountText.h"

#include <Eigen/Geometry>

#include <numbers>
#include <optional>

namespace oV::Roamscan::tool
{

namespace
{

/// The distance of two positions of a sensor, in metres and radians.
struct Deviation
{
    double distance = 0.0;
    double angle = 0.0;

    [[nodiscard]] bool isEqual() const { return distance <= 1e-3 && angle <= 1e-3; }
};

Deviation deviation(TrafoT<double> const& a, TrafoT<double> const& b)
{
    return {(a.translation() - b.translation()).norm(),
            a.rotation().normalized().angularDistance(b.rotation().normalized())};
}

std::optional<TrafoT<double>> poseOf(SensorData const& sensors, std::string const& rangefinder)
{
    auto const found = sensors.sensorPoses.find(rangefinder);
    if (found == sensors.sensorPoses.end()) {
        return std::nullopt;
    }
    TrafoT<float> const pose(found->second, true);
    return TrafoT<double>(pose.translation().cast<double>(), pose.rotation().cast<double>(), true);
}

} // namespace

std::vector<Device> devicesOfRangefinder(TrajectoryData const& trajectory,
                                         SensorData const& sensors,
                                         std::string const& rangefinder)
{
    std::vector<Device> devices;
    if (auto const pose = poseOf(sensors, rangefinder)) {
        for (Mount const& mount : mountsOf(trajectory)) {
            if (deviation(mount.position, *pose).isEqual()) {
                devices.push_back(mount.device);
            }
        }
    }
    return devices;
}

std::string namesOf(std::vector<Device> const& devices)
{
    std::vector<std::string> numbers;
    for (Device const device : devices) {
        numbers.push_back(std::to_string(static_cast<int>(device)));
    }
    return (devices.size() == 1 ? "device " : "devices ") + listed(numbers);
}

std::string mountWarning(TrajectoryData const& trajectory,
                         Device device,
                         SensorData const& sensors,
                         std::string const& rangefinder)
{
    auto const pose = poseOf(sensors, rangefinder);
    auto const position = trajectory.devicePositions.find(device);
    if (!pose || position == trajectory.devicePositions.end()) {
        return {};
    }
    Deviation const off = deviation(position->second, *pose);
    if (off.isEqual()) {
        return {};
    }
    constexpr double degrees = 180.0 / std::numbers::pi;
    auto const fitting = devicesOfRangefinder(trajectory, sensors, rangefinder);
    return "the pose of " + excerpt(rangefinder) + " in the sensor stream is " + fixed(off.distance, 4) +
           " m and " + fixed(off.angle * degrees, 3) + " degrees from the position of " + namesOf({device}) +
           (fitting.empty() ? "; no device has it, see roamscan mount"
                            : "; it is that of " + namesOf(fitting));
}

} // namespace oV::Roamscan::tool
