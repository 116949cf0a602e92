#include "tools/mounts/RangefinderMount.h"

#include "tools/console/Text.h"
#include "tools/mounts/MountText.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <numbers>
#include <vector>

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

std::optional<Device> deviceOfRangefinder(TrajectoryData const& trajectory,
                                          SensorData const& sensors,
                                          std::string const& rangefinder)
{
    auto const pose = poseOf(sensors, rangefinder);
    if (!pose) {
        return std::nullopt;
    }
    std::vector<Mount> const mounts = mountsOf(trajectory);
    auto const mount = std::ranges::find_if(
        mounts, [&](Mount const& candidate) { return deviation(candidate.position, *pose).isEqual(); });
    return mount == mounts.end() ? std::nullopt : std::optional(mount->device);
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
    auto const name = [](Device d) { return "device " + std::to_string(static_cast<int>(d)); };
    auto const fitting = deviceOfRangefinder(trajectory, sensors, rangefinder);
    return "the pose of " + excerpt(rangefinder) + " in the sensor stream is " + fixed(off.distance, 4) +
           " m and " + fixed(off.angle * degrees, 3) + " degrees from the position of " + name(device) +
           (fitting ? "; it is that of " + name(*fitting) : "; no device has it, see roamscan mount");
}

} // namespace oV::Roamscan::tool
