#include "tools/commands/Commands.h"
#include "tools/commands/DevicePath.h"
#include "tools/commands/PathOption.h"
#include "tools/commands/PoseFormatOption.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"
#include "tools/io/NumberText.h"
#include "tools/io/Output.h"
#include "tools/io/OutputFile.h"
#include "tools/io/PoseTextWriter.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

struct ExportArguments
{
    PoseFormat format = PoseFormat::Tum;
    DevicePath path;
    std::filesystem::path times; ///< The times of KITTI poses; may be empty.
    std::filesystem::path output;
};

void writeTimes(std::vector<TrajectoryNode> const& nodes, std::ostream& stream)
{
    for (TrajectoryNode const& node : nodes) {
        stream << shortestText(node.time) << '\n';
    }
}

void run(ExportArguments const& options, Console& console)
{
    if (options.format != PoseFormat::Kitti && !options.times.empty()) {
        throw fileError(options.times, "--times goes with --format kitti only; leave it out");
    }
    if (isStandardStream(options.times) && isStandardStream(options.output)) {
        throw ToolError(
            "the poses and the times cannot both be written to the standard output; name a file for one");
    }
    requireDistinctFiles({options.path.trajectory, options.times, options.output});

    DevicePoses const poses = readDevicePoses(options.path);
    OutputFile output(options.output);
    PoseTextWriter writer(options.format, output.stream(), options.output);
    for (TrajectoryNode const& node : poses.nodes) {
        writer.add(node.time, node.pose);
    }
    std::unique_ptr<OutputFile> times;
    if (!options.times.empty()) {
        times = std::make_unique<OutputFile>(options.times);
        writeTimes(poses.nodes, times->stream());
    }
    Output::commitAll({times.get(), &output});

    std::ostream& report = console.reportBeside(options.output, options.times);
    report << counted(poses.nodes.size(), "pose", "poses") << " exported\n";
    if (poses.unusable > 0) {
        report << "  " << counted(poses.unusable, "node", "nodes")
               << " left out: the time or the pose is not finite or not valid\n";
    }
}

} // namespace

void addExport(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<ExportArguments>();
    CLI::App* const command = app.add_subcommand("export", "Write the poses of a trajectory as a text");
    addPoseFormat(*command, options->format, "tum, euroc, kitti or csv")->required();
    addDevices(*command, options->path);
    addPath(*command,
            "--times",
            options->times,
            "KITTI: also write the time of each pose, in seconds, to this file");
    addPath(*command, "IN", options->path.trajectory, "The trajectory; - for the standard input")->required();
    addPath(*command, "OUT", options->output, "The text file to write; - for the standard output")
        ->required();
    command->footer(
        "Times and lengths are written so that they read back to the same numbers; only EuRoC's times\n"
        "are rounded to nanoseconds.\n\n"
        "Example:\n  roamscan export --format tum walk.trajectory walk.txt\n");
    command->callback([options, &console] { run(*options, console); });
}

} // namespace oV::Roamscan::tool
