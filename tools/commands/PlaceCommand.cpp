#include "tools/commands/PlaceCommand.h"

#include "tools/console/ProgressBar.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/geometry/GroundPlane.h"
#include "tools/geometry/NearestSurface.h"
#include "tools/io/BuildingFile.h"
#include "tools/io/OutputFile.h"
#include "tools/io/Pictures.h"
#include "tools/io/PlyReader.h"
#include "tools/io/PlyWriter.h"
#include "tools/io/SensorFile.h"
#include "tools/io/TrajectoryFile.h"
#include "tools/picture/TopView.h"
#include "tools/placing/PointPlacer.h"
#include "tools/placing/RangefinderPoints.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector3d;

void requirePosition(TrajectoryData const& data, Device device, std::filesystem::path const& name)
{
    if (!data.devicePositions.contains(device)) {
        throw fileError(name,
                        "it has no position for device " + std::to_string(static_cast<std::int32_t>(device)) +
                            "; devices with a position: " + listDevices(data));
    }
}

Trajectory deriveTrajectory(TrajectoryData const& data, PlaceOptions const& options)
{
    bool const hasTimes =
        std::ranges::any_of(data.nodes, [](TrajectoryNode const& node) { return std::isfinite(node.time); });
    if (!hasTimes) {
        throw fileError(options.trajectory, "there is no pose with a time in it");
    }
    requirePosition(data, options.from, options.trajectory);
    requirePosition(data, options.to, options.trajectory);
    return data.buildTrajectoryFromTrajectoryNodes(options.from, options.to);
}

std::string chooseRangefinder(SensorData const& data, PlaceOptions const& options)
{
    std::vector<std::string> names;
    for (auto const& [name, samples] : data.rangefinderData) {
        names.push_back(name);
    }
    std::ranges::sort(names);
    if (names.empty()) {
        throw fileError(options.sensors, "there is no rangefinder in it");
    }
    std::string name = options.rangefinder.value_or(names.front());
    if (!data.rangefinderData.contains(name)) {
        std::ranges::transform(names, names.begin(), excerpt);
        throw fileError(options.sensors,
                        "it has no rangefinder " + excerpt(name) + "; there are: " + listed(names));
    }
    if (data.posesApplied && data.sensorPoses.contains(name)) {
        throw fileError(options.sensors,
                        "the samples of " + excerpt(name) +
                            " are rotated by its pose already; name the stream as it was recorded");
    }
    return name;
}

ScanPoints readScan(PlaceOptions const& options)
{
    if (options.sensors.empty()) {
        return readPlyFile(options.points);
    }
    auto const data = readSensorFile(options.sensors).data;
    return scanPointsOf(data->rangefinderData.at(chooseRangefinder(*data, options)));
}

Placement placeScan(ScanPoints const& scan, Trajectory const& trajectory, PlaceOptions const& options)
{
    std::filesystem::path const& name = options.sensors.empty() ? options.points : options.sensors;
    if (scan.size() == 0) {
        throw fileError(name, "there is no point in it");
    }
    Placement placement = placePoints(scan, trajectory);
    if (placement.placed.empty()) {
        throw fileError(name,
                        "none of its " + std::to_string(scan.size()) +
                            " points could be placed; the trajectory " + options.trajectory.string() +
                            " lasts from " + fixed(trajectory.getStartTime().get(), 3) + " s to " +
                            fixed(trajectory.getStopTime().get(), 3) + " s: do both count the same time?");
    }
    return placement;
}

Vector3d positionOf(CloudPoint const& point)
{
    return Eigen::Vector3f(point.x, point.y, point.z).cast<double>();
}

/// Of the placed points' distances to the true surfaces; `toBuilding` brings a placed point into the
/// building's frame.
double rootMeanSquare(std::vector<CloudPoint> const& placed,
                      TrafoT<double> const& toBuilding,
                      Building const& building)
{
    NearestSurface const nearest(building);
    ProgressBar progress("measuring", placed.size());
    double sum = 0.0;
    for (std::size_t i = 0; i < placed.size(); ++i) {
        progress.advanceTo(i);
        double const distance = nearest.distance(toBuilding * positionOf(placed[i]));
        sum += distance * distance;
    }
    return std::sqrt(sum / static_cast<double>(placed.size()));
}

/// Where the device went, in the trajectory's global frame.
std::vector<Vector3d> pathOf(Trajectory const& trajectory)
{
    constexpr double samples = 20'000.0;
    constexpr double finestStep = 0.01; // seconds
    std::vector<Vector3d> path{trajectory.sample(trajectory.getStartTime()).translation()};
    double const duration = trajectory.getDuration().get();
    if (duration > 0.0) {
        for (TrajectoryNode const& node :
             trajectory.sampled(Duration(std::max(duration / samples, finestStep)))) {
            path.push_back(node.pose.translation());
        }
        path.push_back(trajectory.sample(trajectory.getStopTime()).translation());
    }
    return path;
}

/// The plan is that of the nodes' frame, which `toNodes` leads to: there z is up as a rule.
cv::Mat3b
drawPlan(std::vector<CloudPoint> const& placed, Trajectory const& trajectory, TrafoT<double> const& toNodes)
{
    std::vector<Vector3d> path = pathOf(trajectory);
    for (Vector3d& place : path) {
        place = toNodes * place;
    }
    Eigen::Matrix3d const toPlan = planRotation(path);
    TopViewScene scene;
    for (Vector3d const& place : path) {
        Eigen::Vector2f const onPlan = (toPlan * place).head<2>().cast<float>();
        if (onPlan.allFinite()) {
            scene.path.push_back(onPlan);
        }
    }
    scene.points.reserve(placed.size());
    for (CloudPoint const& point : placed) {
        scene.points.emplace_back((toPlan * (toNodes * positionOf(point))).cast<float>());
    }
    return drawTopView(scene);
}

void writeCloud(std::vector<CloudPoint> const& placed, OutputFile& file)
{
    PlyWriter writer(file.stream());
    for (CloudPoint const& point : placed) {
        writer.add(point);
    }
    writer.finish();
}

void report(Placement const& placement, std::optional<double> rms, std::ostream& out)
{
    out << placement.total() << " points in the scan\n"
        << placement.placed.size() << " points were placed\n"
        << placement.withoutTime << " points had no time\n"
        << placement.outside << " points lay outside the trajectory in time\n"
        << placement.withoutPosition << " points had no measured position\n"
        << "placed " << placement.placed.size() << " of " << placement.total() << " points";
    if (rms) {
        out << ", rms " << fixed(*rms, 4) << " m";
    }
    out << '\n';
}

} // namespace

void runPlace(PlaceOptions const& options, std::ostream& out)
{
    requireDistinctFiles({options.trajectory,
                          options.points,
                          options.sensors,
                          options.building,
                          options.cloud,
                          options.picture});
    auto const data = readTrajectoryFile(options.trajectory).data;
    Trajectory const trajectory = deriveTrajectory(*data, options);
    std::optional<Building> building;
    if (!options.building.empty()) {
        building = readBuildingFile(options.building);
    }
    std::optional<OutputFile> cloud;
    std::optional<OutputFile> picture;
    if (!options.cloud.empty()) {
        cloud.emplace(options.cloud);
    }
    if (!options.picture.empty()) {
        picture.emplace(options.picture);
    }

    Placement const placement = placeScan(readScan(options), trajectory, options);

    TrafoT<double> const& toNodes = data->devicePositions.at(options.to);
    std::optional<double> rms;
    if (building) {
        rms = rootMeanSquare(placement.placed, toNodes, *building);
    }
    if (cloud) {
        writeCloud(placement.placed, *cloud);
        cloud->close();
    }
    if (picture) {
        writePicture(drawPlan(placement.placed, trajectory, toNodes), ".png", *picture);
        picture->close();
        picture->commit();
    }
    if (cloud) {
        cloud->commit();
    }
    report(placement, rms, out);
}

} // namespace oV::Roamscan::tool
