#include "tools/commands/Commands.h"
#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"
#include "tools/io/Output.h"
#include "tools/io/OutputFile.h"
#include "tools/io/PoseTextFormats.h"
#include "tools/io/RecordingFile.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

struct Options
{
    std::string format;
    std::filesystem::path times; ///< The times of KITTI poses; empty for other formats.
    std::filesystem::path input;
    std::filesystem::path output;
};

void checkTimesOption(Options const& options)
{
    bool const isKitti = options.format == "kitti";
    if (isKitti && options.times.empty()) {
        throw fileError(options.input, "KITTI poses have no times of their own; give them with --times FILE");
    }
    if (!isKitti && !options.times.empty()) {
        throw fileError(options.times, "--times goes with --format kitti only; leave it out");
    }
}

std::vector<TrajectoryNode> readPoses(Options const& options)
{
    InputFile poses = openInput(options.input);
    if (options.format == "tum") {
        return readTumPoses(poses.stream, options.input);
    }
    if (options.format == "euroc") {
        return readEurocPoses(poses.stream, options.input);
    }
    InputFile times = openInput(options.times);
    return readKittiPoses(poses.stream, options.input, readTimes(times.stream, options.times), options.times);
}

/// The tracked body becomes Device0, at the identity.
void run(Options const& options, std::ostream& out)
{
    checkTimesOption(options);
    requireDistinctFiles({options.input, options.times, options.output});

    TrajectoryData data;
    data.nodes = readPoses(options);
    data.devicePositions[Device::Device0] = TrafoT<double>::Identity();

    OutputFile output(options.output);
    writeTrajectory(data, output.stream(), options.output);
    output.commit();
    out << data.nodes.size() << " poses imported\n";
}

} // namespace

void addImport(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<Options>();
    CLI::App* const command = app.add_subcommand("import", "Convert poses in a text file to a trajectory");
    command->add_option("--format", options->format, "tum, euroc or kitti")
        ->required()
        ->check(CLI::IsMember({"tum", "euroc", "kitti"}));
    command->add_option("--times", options->times, "KITTI: a file with the time of each pose in seconds");
    command->add_option("IN", options->input, "The text file")->required();
    command->add_option("OUT", options->output, "The trajectory file to write")->required();
    command->footer("Example:\n  roamscan import --format euroc data.csv flight.trajectory\n");
    command->callback([options, &console] { run(*options, console.out); });
}

} // namespace oV::Roamscan::tool
