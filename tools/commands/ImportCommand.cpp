#include "tools/commands/Commands.h"
#include "tools/commands/PathOption.h"
#include "tools/commands/PoseFormatOption.h"
#include "tools/console/PathText.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/FileKind.h"
#include "tools/io/InputFile.h"
#include "tools/io/Output.h"
#include "tools/io/OutputFile.h"
#include "tools/io/PoseTextFormats.h"
#include "tools/io/RecordingFile.h"
#include "tools/motion/TimeOrder.h"
#include "tools/mounts/MountText.h"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

struct ImportArguments
{
    PoseFormat format = PoseFormat::Tum;
    std::filesystem::path times;     ///< The times of KITTI poses; empty for other formats.
    std::vector<std::string> mounts; ///< "1=x,y,z,qw,qx,qy,qz"
    std::filesystem::path input;
    std::filesystem::path output;
};

void checkTimesOption(ImportArguments const& options)
{
    bool const isKitti = options.format == PoseFormat::Kitti;
    if (isKitti && options.times.empty()) {
        throw fileError(options.input, "KITTI poses have no times of their own; give them with --times FILE");
    }
    if (!isKitti && !options.times.empty()) {
        throw fileError(options.times, "--times goes with --format kitti only; leave it out");
    }
    requireOneStandardInput(options.input, options.times, "the poses and the times");
}

FileKind kindOfFormat(PoseFormat format)
{
    switch (format) {
    case PoseFormat::Tum:
        return FileKind::TumPoses;
    case PoseFormat::Euroc:
        return FileKind::EurocPoses;
    case PoseFormat::Kitti:
        return FileKind::KittiPoses;
    case PoseFormat::Csv:
        return FileKind::CsvPoses;
    }
    return FileKind::Unknown;
}

/// The poses, and the lines that have their times.
TextPoses readInput(ImportArguments const& options)
{
    InputFile poses = openInputOrPipe(options.input);
    if (options.format != PoseFormat::Kitti) {
        return readPoses(options.format, poses.stream, options.input);
    }
    InputFile text = openInputOrPipe(options.times);
    TextTimes times = readTimes(text.stream, options.times);
    TextPoses read = readKittiPoses(poses.stream, options.input, times.times, options.times);
    read.lines = std::move(times.lines);
    return read;
}

TextPoses readInputOfKind(ImportArguments const& options)
{
    try {
        return readInput(options);
    } catch (ToolError const& failure) {
        FileKind const found = kindOfFile(options.input);
        if (found == FileKind::Unknown || found == kindOfFormat(options.format)) {
            throw;
        }
        throw fileError(options.input, "this is " + describe(found));
    }
}

/// Reports repeated times and times that go backward, with the first line of each.
void reportTimes(TimeOrder const& order,
                 std::vector<std::uint64_t> const& lines,
                 std::filesystem::path const& name,
                 std::ostream& out)
{
    auto const line = [&](std::size_t index) {
        return ", first in " + oneLine(utf8(name)) + ":" + std::to_string(lines[index]);
    };
    if (order.repeated > 0) {
        out << "  " << counted(order.repeated, "pose has", "poses have") << " the time of an earlier one"
            << line(order.firstRepeated) << "; of the poses at one time, the last one counts\n";
    }
    if (order.backward > 0) {
        out << "  " << counted(order.backward, "pose is", "poses are") << " before the previous one in time"
            << line(order.firstBackward) << "; a trajectory puts them in order\n";
    }
}

/// The tracked body becomes Device0, at the identity unless it is mounted elsewhere.
void run(ImportArguments const& options, Console& console)
{
    checkTimesOption(options);
    requireDistinctFiles({options.input, options.times, options.output});

    TrajectoryData data;
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();
    setMounts(data, options.mounts, "--mount");
    TextPoses poses = readInputOfKind(options);
    data.nodes = std::move(poses.nodes);

    OutputFile output(options.output);
    writeTrajectory(data, output.stream(), options.output);
    output.commit();
    std::ostream& report = console.reportBeside(options.output);
    report << counted(data.nodes.size(), "pose", "poses") << " imported\n";
    reportTimes(timeOrderOf(data.nodes),
                poses.lines,
                options.format == PoseFormat::Kitti ? options.times : options.input,
                report);
}

} // namespace

void addImport(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<ImportArguments>();
    CLI::App* const command = app.add_subcommand("import", "Convert poses in a text file to a trajectory");
    addPoseFormat(*command, options->format, "tum, euroc, kitti or csv")->required();
    addPath(*command, "--times", options->times, "KITTI: a file with the time of each pose in seconds");
    command
        ->add_option(
            "--mount",
            options->mounts,
            "Set the position of a device relative to the tracked body, as roamscan mount --set does; may be "
            "given several times")
        ->allow_extra_args(false)
        ->type_name("DEVICE=x,y,z,qw,qx,qy,qz");
    addPath(*command, "IN", options->input, "The text file; - for the standard input")->required();
    addPath(*command, "OUT", options->output, "The trajectory file to write; - for the standard output")
        ->required();
    command->footer("A CSV text has the columns time,x,y,z,qw,qx,qy,qz, in seconds and metres.\n\n"
                    "Example:\n  roamscan import --format euroc data.csv flight.trajectory\n");
    command->callback([options, &console] { run(*options, console); });
}

} // namespace oV::Roamscan::tool
