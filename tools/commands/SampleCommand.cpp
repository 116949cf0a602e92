#include "tools/commands/Commands.h"
#include "tools/commands/DevicePath.h"
#include "tools/commands/PoseFormatOption.h"
#include "tools/commands/PositiveNumber.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"
#include "tools/io/NumberText.h"
#include "tools/io/PoseTextFormats.h"
#include "tools/io/PoseTextWriter.h"

#include <roamscan/trajectory/SampleMany.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

struct Options
{
    DevicePath path;
    std::filesystem::path at; ///< A file of times; empty if `rate` is given.
    double rate = 0.0;        ///< Poses per second.
    PoseFormat format = PoseFormat::Tum;
};

constexpr std::size_t blockSize = 1U << 16;
constexpr double mostPoses = 100e6;

/// Prints the poses at many times, those in memory at once being few.
class Sampler
{
public:
    Sampler(Trajectory const& trajectory, PoseFormat format, std::ostream& out)
        : trajectory_(trajectory), writer_(format, out, "standard output"), out_(out), poses_(blockSize)
    {}

    void print(std::span<double const> times)
    {
        while (!times.empty()) {
            auto const block = times.first(std::min(times.size(), blockSize));
            times = times.subspan(block.size());
            samplePoses(trajectory_, block, std::span(poses_).first(block.size()));
            for (std::size_t i = 0; i < block.size(); ++i) {
                if (poses_[i].allFinite()) {
                    writer_.add(block[i], poses_[i]);
                    ++printed_;
                }
            }
            if (!out_) {
                throw ToolError("the poses could not be printed to standard output");
            }
        }
    }

    [[nodiscard]] std::uint64_t printed() const { return printed_; }

private:
    Trajectory const& trajectory_;
    PoseTextWriter writer_;
    std::ostream& out_;
    std::vector<TrafoT<double>> poses_;
    std::uint64_t printed_ = 0;
};

/// Samples `rate` times per second from the first pose on, as long as there are poses.
std::uint64_t printAtRate(Trajectory const& trajectory, double rate, Sampler& sampler)
{
    double const start = trajectory.getStartTime().get();
    double const stop = trajectory.getStopTime().get();
    if ((stop - start) * rate > mostPoses) {
        throw ToolError("--rate " + shortestText(rate) +
                        " gives more than 100 million poses; choose a lower rate");
    }
    std::vector<double> times;
    std::uint64_t index = 0;
    for (double time = start; time <= stop; time = start + static_cast<double>(index) / rate) {
        times.push_back(time);
        ++index;
        if (times.size() == blockSize) {
            sampler.print(times);
            times.clear();
        }
    }
    sampler.print(times);
    return index;
}

void run(Options const& options, Console& console)
{
    if (isStandardStream(options.path.trajectory) && isStandardStream(options.at)) {
        throw ToolError(
            "the trajectory and the times cannot both be read from the standard input; name a file for one");
    }
    DevicePoses const poses = readDevicePoses(options.path);
    Trajectory const trajectory = buildTrajectoryFromTrajectoryNodes(poses.nodes);
    std::string const span = fixed(trajectory.getStartTime().get(), 3) + " s to " +
                             fixed(trajectory.getStopTime().get(), 3) + " s";

    std::uint64_t total = 0;
    Sampler sampler(trajectory, options.format, console.out);
    if (options.at.empty()) {
        total = printAtRate(trajectory, options.rate, sampler);
    } else {
        InputFile text = openInputOrPipe(options.at);
        auto const times = readTimes(text.stream, options.at).times;
        total = times.size();
        sampler.print(times);
    }
    if (sampler.printed() == 0) {
        throw fileError(options.at.empty() ? options.path.trajectory : options.at,
                        total == 0 ? "there is no time in it"
                                   : "none of its times is in the trajectory, which is from " + span +
                                         ": do both use the same clock?");
    }
    if (sampler.printed() < total) {
        console.err << "roamscan: " << total - sampler.printed() << " of " << counted(total, "time", "times")
                    << " left out: the trajectory is from " << span << '\n';
    }
}

} // namespace

void addSample(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<Options>();
    CLI::App* const command = app.add_subcommand("sample", "Print the poses of a trajectory at any times");
    command->add_option("--trajectory", options->path.trajectory, "The trajectory; - for the standard input")
        ->required();
    addDevices(*command, options->path);
    CLI::Option_group* const when = command->add_option_group("times", "When");
    when->require_option(1);
    when->add_option(
        "--at", options->at, "A file with one time in seconds per line; - for the standard input");
    when->add_option("--rate", options->rate, "So many poses per second, from the first pose on")
        ->check(positiveNumber());
    addPoseFormat(*command, options->format, "tum, euroc, kitti or csv (tum)");
    command->footer("Times outside the trajectory are left out.\n\n"
                    "Example:\n  roamscan sample --trajectory walk/walk.trajectory --rate 10 --format csv\n");
    command->callback([options, &console] { run(*options, console); });
}

} // namespace oV::Roamscan::tool
