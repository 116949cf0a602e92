#include "tools/clouds/CloudFile.h"
#include "tools/commands/Commands.h"
#include "tools/commands/PlaceOptions.h"
#include "tools/commands/PlacePlan.h"
#include "tools/commands/PlaceReport.h"
#include "tools/commands/ScanSource.h"
#include "tools/console/PathText.h"
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

Trajectory deriveTrajectory(TrajectoryData const& data, Device from, PlaceOptions const& options)
{
    if (std::ranges::none_of(data.nodes, [](TrajectoryNode const& node) { return std::isfinite(node.time); }))
    {
        throw fileError(options.trajectory, "there is no pose with a time in it");
    }
    requirePosition(data, from, options.trajectory);
    requirePosition(data, options.to, options.trajectory);
    return data.buildTrajectoryFromTrajectoryNodes(from, options.to);
}

ScanSource openScan(PlaceOptions const& options)
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

PlaceReport prepare(PlaceOptions const& options,
                    TrajectoryData const& data,
                    ScanSource const& scan,
                    Device from,
                    Trajectory const& trajectory)
{
    std::vector<double> const times = timesInOrder(data.nodes);
    PlaceReport report;
    report.scan = utf8(scan.name);
    report.rangefinder = scan.rangefinder;
    report.from = from;
    report.fromIsRecognised = !options.from;
    report.gapIsDefault = !options.gaps.maxGap;
    report.usualStep = usualStep(times);
    report.trajectoryStart = trajectory.getStartTime().get();
    report.trajectoryStop = trajectory.getStopTime().get();
    report.coordinates = chooseCoordinates(options.offset, options.formatOfCloud(), trajectory);
    report.settings = {options.gaps.longest(times), options.gaps.acrossGaps, report.coordinates.floatOrigin};
    return report;
}

CloudDescription describeCloud(PlaceCoordinates const& coordinates, TimeOfPoints const& time)
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

/// A cloud that is written. Only CSV has no count in its header, which is known at the end.
struct CloudOutput
{
    CloudOutput(std::filesystem::path const& path,
                CloudFormat format,
                PointLayout const& layout,
                CloudDescription const& description)
        : file(path, format == CloudFormat::Csv ? Writing::InOrder : Writing::WithSeeking),
          writer(makeCloudWriter(format, file.stream(), path, layout, description))
    {}

    OutputFile file;
    std::unique_ptr<PointWriter> writer;
};

/// Warns if the rangefinder is not mounted where the device is.
void warnAboutMount(TrajectoryData const& data, Device device, ScanSource const& scan, std::ostream& err)
{
    std::string const warning = scan.data ? mountWarning(data, device, *scan.data, scan.rangefinder) : "";
    if (!warning.empty()) {
        err << "roamscan: warning: " << warning << '\n';
    }
}

void print(PlaceReport const& report, PlaceOptions const& options, std::ostream& out)
{
    if (options.json) {
        printJson(toJson(report), out);
    } else {
        printText(report, out);
    }
}

/// The last line printed is the result.
void run(PlaceOptions const& options, Console& console)
{
    options.check();
    auto const data = readTrajectoryFile(options.trajectory).data;
    ScanSource const scan = openScan(options);
    Device const from = options.from ? static_cast<Device>(*options.from) : deviceOf(scan, *data);
    Trajectory const trajectory = deriveTrajectory(*data, from, options);
    TrafoT<double> const nodesFromPlaced = data->devicePositions.at(options.to);
    PlaceReport report = prepare(options, *data, scan, from, trajectory);
    warnAboutMount(*data, from, scan, console.err);

    std::optional<Building> building;
    std::optional<NearestSurface> surfaces;
    PlacedUses uses;
    if (!options.building.empty()) {
        building = readBuildingFile(options.building);
        surfaces.emplace(*building);
        uses.error = [&](Vector3d const& place) { return surfaces->distance(nodesFromPlaced * place); };
    }

    TimeOfPoints const time(scan.points->layout(), options.time, scan.name);
    requireResolution(time, report, scan.name);
    PointPlacer const placer(scan.points->layout(), time, trajectory, report.settings, scan.name);

    std::optional<CloudOutput> cloud;
    if (!options.cloud.empty()) {
        cloud.emplace(options.cloud,
                      *options.formatOfCloud(),
                      placer.placedLayout(),
                      describeCloud(report.coordinates, time));
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
    print(report, options, console.reportBeside(options.cloud, options.picture));
    if (!anyPlaced) {
        throw fileError(scan.name, whyNothingWasPlaced(report));
    }
}

} // namespace

void addPlace(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<PlaceOptions>();
    CLI::App* const command = app.add_subcommand(
        "place", "Transform the points of a scan along a trajectory into world coordinates");
    addPlaceOptions(*command, *options);
    command->footer(
        R"(A scan is in the frame of its device. Its points need x, y and z in metres and a time on the clock of the
trajectory. All other properties are written unchanged; normals are rotated. Coordinates are written as doubles.
A scan from a pipe is copied to a temporary file first. A cloud to a pipe is written when it is complete; CSV is written
at once.
Example:
  roamscan place --trajectory walk/walk.trajectory --from 1 --to 0 --sensors walk/walk.sensors --cloud cloud.ply --picture plan.png
)");
    command->callback([options, &console] { run(*options, console); });
}

} // namespace oV::Roamscan::tool
