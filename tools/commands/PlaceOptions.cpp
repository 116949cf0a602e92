#include "tools/commands/PlaceOptions.h"

#include "tools/commands/PathOption.h"
#include "tools/commands/PositiveNumber.h"
#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"
#include "tools/io/Output.h"

#include <CLI/CLI.hpp>

#include <map>

namespace oV::Roamscan::tool
{

namespace
{

void addScanOptions(CLI::App& command, PlaceOptions& options)
{
    CLI::Option_group* const scan = command.add_option_group("scan", "The scan points");
    scan->require_option(1);
    CLI::Option* const points = addPath(
        *scan,
        "--points",
        options.points,
        "The scan, a cloud whose points have times: PLY, PCD, LAS, CSV or XYZ; - for the standard input");
    CLI::Option* const sensors =
        addPath(*scan, "--sensors", options.sensors, "The scan of a rangefinder in this sensor stream");
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

void addOutputOptions(CLI::App& command, PlaceOptions& options)
{
    std::map<std::string, CloudFormat> const formats{{"ply", CloudFormat::Ply},
                                                     {"pcd", CloudFormat::Pcd},
                                                     {"csv", CloudFormat::Csv},
                                                     {"las", CloudFormat::Las}};
    CLI::Option* const cloud =
        addPath(command,
                "--cloud",
                options.cloud,
                "Write the placed points to this file: .ply, .pcd, .csv or .las; - for the standard "
                "output, see --cloud-format");
    command
        .add_option_function<std::string>(
            "--cloud-format",
            [&options, formats](std::string const& name) { options.cloudFormat = formats.at(name); },
            "The format of the cloud whatever its name is: ply, pcd, csv or las")
        ->check(CLI::IsMember(formats))
        ->needs(cloud);
    command.add_option(
        "--offset",
        options.offset,
        "Write coordinates as floats relative to X,Y,Z, or to a round place near the path (auto)");
    addPath(command, "--picture", options.picture, "Draw a plan to this PNG file; - for the standard output");
    addPath(command, "--building", options.building, "Measure the points against these true surfaces (JSON)");
    command.add_flag("--json", options.json, "Print one JSON object instead of text");
}

} // namespace

std::optional<CloudFormat> PlaceOptions::formatOfCloud() const
{
    if (cloud.empty() || cloudFormat) {
        return cloudFormat;
    }
    if (isStandardStream(cloud)) {
        throw ToolError(
            "--cloud -: the standard output has no name that says the format; give --cloud-format "
            "ply, pcd, csv or las");
    }
    return cloudFormatOf(cloud);
}

void PlaceOptions::check() const
{
    requireDistinctFiles({trajectory, points, sensors, building, cloud, picture});
    static_cast<void>(formatOfCloud());
    requireOneStandardInput(trajectory, points.empty() ? sensors : points, "the trajectory and the scan");
    if (isStandardStream(cloud) && isStandardStream(picture)) {
        throw ToolError(
            "the cloud and the picture cannot both be written to the standard output; name a file "
            "for one");
    }
    if (!from && sensors.empty()) {
        throw ToolError("--from is required: a cloud does not say which device made it, 0 to 3 (see roamscan "
                        "place --help)");
    }
}

void addPlaceOptions(CLI::App& command, PlaceOptions& options)
{
    addPath(
        command, "--trajectory", options.trajectory, "The trajectory of the walk; - for the standard input")
        ->required();
    command
        .add_option(
            "--from",
            options.from,
            "The device that made the scan, 0 to 3; of a rangefinder, by default the one device whose "
            "position is the rangefinder's pose")
        ->check(CLI::Range(0, 3));
    command.add_option("--to", options.to, "The device in whose frame the points are placed, 0 to 3")
        ->required()
        ->check(CLI::Range(0, 3));
    addScanOptions(command, options);
    addGapOptions(command, options.gaps, "points", "Place");
    addOutputOptions(command, options);
}

} // namespace oV::Roamscan::tool
