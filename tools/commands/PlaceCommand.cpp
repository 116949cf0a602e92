#include "tools/commands/Commands.h"
#include "tools/console/ProgressBar.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/geometry/GroundPlane.h"
#include "tools/geometry/NearestSurface.h"
#include "tools/io/BuildingFile.h"
#include "tools/io/Output.h"
#include "tools/io/OutputFile.h"
#include "tools/io/Pictures.h"
#include "tools/io/PlyReader.h"
#include "tools/io/PlyWriter.h"
#include "tools/io/RecordingFile.h"
#include "tools/picture/TopView.h"
#include "tools/placing/PointPlacer.h"
#include "tools/placing/RangefinderPoints.h"

#include <roamscan/time/EigenConversion.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector3d;

struct Options
{
    std::filesystem::path trajectory;
    Device from = Device::Device1;          ///< The device that made the scan.
    Device to = Device::Device0;            ///< The device in whose world frame the points are placed.
    std::filesystem::path points;           ///< The scan as a PLY file; empty if `sensors` is given.
    std::filesystem::path sensors;          ///< The scan as a sensor stream; empty if `points` is given.
    std::optional<std::string> rangefinder; ///< Of the sensor stream; by default the first by name.
    std::filesystem::path cloud;            ///< The outputs and the building may be empty.
    std::filesystem::path picture;
    std::filesystem::path building; ///< The true surfaces to measure the placed points against.
};

Trajectory deriveTrajectory(TrajectoryData const& data, Options const& options)
{
    if (std::ranges::none_of(data.nodes, [](TrajectoryNode const& node) { return std::isfinite(node.time); }))
    {
        throw fileError(options.trajectory, "there is no pose with a time in it");
    }
    requirePosition(data, options.from, options.trajectory);
    requirePosition(data, options.to, options.trajectory);
    return data.buildTrajectoryFromTrajectoryNodes(options.from, options.to);
}

std::string chooseRangefinder(SensorData const& data, Options const& options)
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
                            " are already rotated by its pose; give the stream as it was recorded");
    }
    return name;
}

std::vector<CloudPoint> readScan(Options const& options)
{
    if (options.sensors.empty()) {
        return readPlyFile(options.points);
    }
    auto const data = readSensorFile(options.sensors).data;
    return scanPointsOf(data->rangefinderData.at(chooseRangefinder(*data, options)));
}

Placement placeScan(std::vector<CloudPoint> const& scan, Trajectory const& trajectory, Options const& options)
{
    std::filesystem::path const& name = options.sensors.empty() ? options.points : options.sensors;
    if (scan.empty()) {
        throw fileError(name, "there is no point in it");
    }
    Placement placement = placePoints(scan, trajectory);
    if (placement.placed.empty()) {
        throw fileError(name,
                        "none of its " + std::to_string(scan.size()) +
                            " points could be placed; the trajectory " + options.trajectory.string() +
                            " is from " + fixed(trajectory.getStartTime().get(), 3) + " s to " +
                            fixed(trajectory.getStopTime().get(), 3) + " s: do both use the same clock?");
    }
    return placement;
}

Vector3d positionOf(CloudPoint const& point)
{
    return toEigen(point.position).cast<double>();
}

/// Of the distances between the placed points and the true surfaces.
double rootMeanSquare(std::vector<CloudPoint> const& placed,
                      TrafoT<double> const& buildingFromPlaced,
                      Building const& building)
{
    NearestSurface const nearest(building);
    ProgressBar progress("measuring", placed.size());
    double sum = 0.0;
    for (std::size_t i = 0; i < placed.size(); ++i) {
        progress.advanceTo(i);
        double const distance = nearest.distance(buildingFromPlaced * positionOf(placed[i]));
        sum += distance * distance;
    }
    return std::sqrt(sum / static_cast<double>(placed.size()));
}

/// Samples the path of the device.
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

/// The plan shows the frame of the nodes, because their z axis usually points up.
cv::Mat3b drawPlan(std::vector<CloudPoint> const& placed,
                   Trajectory const& trajectory,
                   TrafoT<double> const& nodesFromPlaced)
{
    std::vector<Vector3d> path = pathOf(trajectory);
    for (Vector3d& place : path) {
        place = nodesFromPlaced * place;
    }
    std::erase_if(path, [](Vector3d const& place) { return !place.cast<float>().allFinite(); });
    Eigen::Matrix3d const planFromNodes = planRotation(path);
    TopViewScene scene;
    for (Vector3d const& place : path) {
        scene.path.emplace_back((planFromNodes * place).head<2>().cast<float>());
    }
    scene.points.reserve(placed.size());
    for (CloudPoint const& point : placed) {
        scene.points.emplace_back((planFromNodes * (nodesFromPlaced * positionOf(point))).cast<float>());
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

/// The output, unless its name is empty.
std::unique_ptr<OutputFile> openOutput(std::filesystem::path const& path)
{
    return path.empty() ? nullptr : std::make_unique<OutputFile>(path);
}

/// The last line printed is the result.
void run(Options const& options, std::ostream& out)
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
    auto const cloud = openOutput(options.cloud);
    auto const picture = openOutput(options.picture);

    Placement const placement = placeScan(readScan(options), trajectory, options);

    TrafoT<double> const& nodesFromPlaced = data->devicePositions.at(options.to);
    std::optional<double> rms;
    if (building) {
        rms = rootMeanSquare(placement.placed, nodesFromPlaced, *building);
    }
    if (cloud) {
        writeCloud(placement.placed, *cloud);
    }
    if (picture) {
        writePicture(drawPlan(placement.placed, trajectory, nodesFromPlaced), ".png", *picture);
    }
    Output::commitAll({picture.get(), cloud.get()});
    report(placement, rms, out);
}

} // namespace

void addPlace(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<Options>();
    CLI::App* const command = app.add_subcommand(
        "place", "Transform the points of a scan along a trajectory into world coordinates");
    command->add_option("--trajectory", options->trajectory, "The trajectory of the walk")->required();
    command->add_option("--from", options->from, "The device that made the scan, 0 to 3")
        ->required()
        ->check(CLI::Range(0, 3));
    command->add_option("--to", options->to, "The device in whose frame the points are placed, 0 to 3")
        ->required()
        ->check(CLI::Range(0, 3));
    CLI::Option_group* const scan = command->add_option_group("scan", "The scan points");
    scan->require_option(1);
    scan->add_option("--points", options->points, "The scan, a binary little-endian PLY file");
    CLI::Option* const sensors =
        scan->add_option("--sensors", options->sensors, "The scan of a rangefinder in this sensor stream");
    command->add_option("--rangefinder", options->rangefinder, "The rangefinder's name (the first by name)")
        ->needs(sensors);
    command->add_option("--cloud", options->cloud, "Write the placed points to this PLY file");
    command->add_option("--picture", options->picture, "Draw a plan to this PNG file");
    command->add_option(
        "--building", options->building, "Measure the points against these true surfaces (JSON)");
    command->footer("Example:\n  roamscan place --trajectory walk/walk.trajectory --from 1 --to 0 "
                    "--sensors walk/walk.sensors --cloud cloud.ply --picture plan.png\n");
    command->callback([options, &console] { run(*options, console.out); });
}

} // namespace oV::Roamscan::tool
