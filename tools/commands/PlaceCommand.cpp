#include "tools/clouds/CloudFile.h"
#include "tools/commands/Commands.h"
#include "tools/commands/PlacePlan.h"
#include "tools/commands/PlaceReport.h"
#include "tools/commands/PositiveNumber.h"
#include "tools/commands/ScanSource.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/geometry/NearestSurface.h"
#include "tools/io/BuildingFile.h"
#include "tools/io/Output.h"
#include "tools/io/OutputFile.h"
#include "tools/io/Pictures.h"
#include "tools/io/RecordingFile.h"
#include "tools/motion/TrajectoryGaps.h"
#include "tools/mounts/RangefinderMount.h"
#include "tools/placing/CloudPlacing.h"

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
    std::filesystem::path points;           ///< The scan as a cloud; empty if `sensors` is given.
    std::filesystem::path sensors;          ///< The scan as a sensor stream; empty if `points` is given.
    std::optional<std::string> rangefinder; ///< Of the sensor stream; by default the first by name.
    TimeSettings time;                      ///< Of the cloud.
    std::optional<double> maxGap;           ///< Seconds.
    bool acrossGaps = false;
    std::filesystem::path cloud; ///< The outputs and the building may be empty.
    std::filesystem::path picture;
    std::filesystem::path building;    ///< The true surfaces to measure the placed points against.
    std::optional<std::string> offset; ///< "X,Y,Z" or "auto".
    TextSettings text;                 ///< Of the cloud, if it is a text.
    bool json = false;
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

ScanSource openScan(Options const& options)
{
    if (options.sensors.empty()) {
        TextSettings text = options.text;
        text.timeProperty = options.time.property;
        return {options.points, nullptr, openCloud(options.points, text), {}};
    }
    return openRangefinder(options.sensors, options.rangefinder);
}

/// Refuses times that would place the points of several steps by one pose.
void requireResolution(TimeOfPoints const& time, PlaceReport const& report, std::filesystem::path const& scan)
{
    double const resolution =
        std::max(time.resolutionAt(report.trajectoryStart), time.resolutionAt(report.trajectoryStop));
    if (report.usualStep > 0.0 && resolution > report.usualStep) {
        throw fileError(scan,
                        "the time property " + excerpt(time.field().name) + " of type " +
                            nameOf(time.field().type) + " has steps of " + fixed(resolution, 6) +
                            " s at the times of the trajectory, whose poses are " +
                            fixed(report.usualStep, 6) +
                            " s apart; store the times as doubles, or relative to a later start with "
                            "--time-offset");
    }
}

PlaceReport prepare(Options const& options, TrajectoryData const& data, Trajectory const& trajectory)
{
    std::vector<double> const times = timesInOrder(data.nodes);
    PlaceReport report;
    report.gapIsDefault = !options.maxGap;
    report.usualStep = usualStep(times);
    report.trajectoryStart = trajectory.getStartTime().get();
    report.trajectoryStop = trajectory.getStopTime().get();
    std::optional<CloudFormat> format;
    if (!options.cloud.empty()) {
        format = cloudFormatOf(options.cloud);
    }
    report.coordinates = chooseCoordinates(options.offset, format, trajectory);
    report.settings = {options.maxGap.value_or(defaultLongestGap(times)),
                       options.acrossGaps,
                       report.coordinates.floatOrigin};
    return report;
}

CloudDescription describe(PlaceCoordinates const& coordinates, TimeOfPoints const& time)
{
    CloudDescription description;
    if (coordinates.floatOrigin) {
        Vector3d const& origin = *coordinates.floatOrigin;
        description.comments.push_back("offset " + fixed(origin.x(), 6) + ' ' + fixed(origin.y(), 6) + ' ' +
                                       fixed(origin.z(), 6) + " is to be added to x y z");
    }
    if (coordinates.stepOrigin) {
        Vector3d const& origin = *coordinates.stepOrigin;
        description.origin = {origin.x(), origin.y(), origin.z()};
        description.resolution = coordinates.step;
    }
    if (time.isInSeconds()) {
        description.secondsField = time.field().name;
    }
    return description;
}

/// A cloud that is written.
struct CloudOutput
{
    CloudOutput(std::filesystem::path const& path,
                PointLayout const& layout,
                CloudDescription const& description)
        : file(path), writer(makeCloudWriter(cloudFormatOf(path), file.stream(), path, layout, description))
    {}

    OutputFile file;
    std::unique_ptr<PointWriter> writer;
};

void requireDistinctFiles(Options const& options)
{
    tool::requireDistinctFiles({options.trajectory,
                                options.points,
                                options.sensors,
                                options.building,
                                options.cloud,
                                options.picture});
}

/// Warns if the rangefinder is not mounted where the device is.
void warnAboutMount(TrajectoryData const& data, Device device, ScanSource const& scan, std::ostream& err)
{
    std::string const warning = scan.data ? mountWarning(data, device, *scan.data, scan.rangefinder) : "";
    if (!warning.empty()) {
        err << "roamscan: warning: " << warning << '\n';
    }
}

/// The last line printed is the result.
void run(Options const& options, std::ostream& out, std::ostream& err)
{
    requireDistinctFiles(options);
    auto const data = readTrajectoryFile(options.trajectory).data;
    Trajectory const trajectory = deriveTrajectory(*data, options);
    TrafoT<double> const nodesFromPlaced = data->devicePositions.at(options.to);
    PlaceReport report = prepare(options, *data, trajectory);

    std::optional<Building> building;
    std::optional<NearestSurface> surfaces;
    PlacedUses uses;
    if (!options.building.empty()) {
        building = readBuildingFile(options.building);
        surfaces.emplace(*building);
        uses.error = [&](Vector3d const& place) { return surfaces->distance(nodesFromPlaced * place); };
    }

    ScanSource const scan = openScan(options);
    report.scan = scan.name.string();
    warnAboutMount(*data, options.from, scan, err);
    TimeOfPoints const time(scan.points->layout(), options.time, scan.name);
    requireResolution(time, report, scan.name);
    PointPlacer const placer(scan.points->layout(), time, trajectory, report.settings, scan.name);

    std::optional<CloudOutput> cloud;
    if (!options.cloud.empty()) {
        cloud.emplace(options.cloud, placer.placedLayout(), describe(report.coordinates, time));
        uses.writer = cloud->writer.get();
    }
    std::optional<OutputFile> picture;
    std::optional<PlacePlan> plan;
    if (!options.picture.empty()) {
        picture.emplace(options.picture);
        plan.emplace(pathOf(trajectory), nodesFromPlaced);
        uses.look = [&](std::span<Bv_1_1::Vec3d<double> const> places) { plan->add(places); };
    }

    CloudPlacing const placing = placeCloud(*scan.points, placer, uses);
    report.counts = placing.counts;
    bool const anyPlaced = placing.counts.placed > 0;
    if (anyPlaced) {
        if (surfaces) {
            report.rms = std::sqrt(placing.sumOfSquaredErrors / static_cast<double>(placing.counts.placed));
        }
        if (cloud) {
            cloud->writer->finish();
        }
        if (picture) {
            writePicture(plan->draw(), ".png", *picture);
        }
        Output::commitAll({picture ? &*picture : nullptr, cloud ? &cloud->file : nullptr});
    }
    if (options.json) {
        printJson(toJson(report), out);
    } else {
        printText(report, out);
    }
    if (!anyPlaced) {
        throw fileError(scan.name, whyNothingWasPlaced(report));
    }
}

void addScanOptions(CLI::App& command, Options& options)
{
    CLI::Option_group* const scan = command.add_option_group("scan", "The scan points");
    scan->require_option(1);
    CLI::Option* const points = scan->add_option(
        "--points", options.points, "The scan, a cloud whose points have times: PLY, PCD, LAS, CSV or XYZ");
    CLI::Option* const sensors =
        scan->add_option("--sensors", options.sensors, "The scan of a rangefinder in this sensor stream");
    command.add_option("--rangefinder", options.rangefinder, "The rangefinder's name (the first by name)")
        ->needs(sensors);
    command
        .add_option("--columns",
                    options.text.columns,
                    "The names of the columns of a text without a header: x,y,z,time,...")
        ->delimiter(',')
        ->needs(points);
    command
        .add_option("--time-property",
                    options.time.property,
                    "The property with the time of a point (time, t, timestamp or gps_time, in any case)")
        ->needs(points);
    command
        .add_option("--time-scale",
                    options.time.scale,
                    "Seconds per unit of the times of points (1); 1e-9 for nanoseconds")
        ->needs(points)
        ->check(positiveNumber());
    command.add_option("--time-offset", options.time.offset, "Seconds to add to the times of points (0)")
        ->needs(points);
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
    addScanOptions(*command, *options);
    command
        ->add_option("--max-gap",
                     options->maxGap,
                     "Leave out points between two poses that are more seconds apart (ten usual steps)")
        ->check(positiveNumber());
    command->add_flag("--across-gaps", options->acrossGaps, "Place the points in longer gaps too");
    command->add_option(
        "--cloud", options->cloud, "Write the placed points to this file: .ply, .pcd, .csv or .las");
    command->add_option(
        "--offset",
        options->offset,
        "Write coordinates as floats relative to X,Y,Z, or to a round place near the path (auto)");
    command->add_option("--picture", options->picture, "Draw a plan to this PNG file");
    command->add_option(
        "--building", options->building, "Measure the points against these true surfaces (JSON)");
    command->add_flag("--json", options->json, "Print one JSON object instead of text");
    command->footer(
        R"(A scan is in the frame of its device. Its points need x, y and z in metres and a time on the clock of the
trajectory. All other properties are written unchanged; normals are rotated. Coordinates are written as doubles.
Example:
  roamscan place --trajectory walk/walk.trajectory --from 1 --to 0 --sensors walk/walk.sensors --cloud cloud.ply --picture plan.png
)");
    command->callback([options, &console] { run(*options, console.out, console.err); });
}

} // namespace oV::Roamscan::tool
