#include "tools/commands/Commands.h"
#include "tools/commands/DevicePath.h"
#include "tools/commands/GapOptions.h"
#include "tools/commands/PathOption.h"
#include "tools/commands/PoseFormatOption.h"
#include "tools/commands/PositiveNumber.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/InputFile.h"
#include "tools/io/NumberText.h"
#include "tools/io/PoseTextFormats.h"
#include "tools/io/PoseTextWriter.h"
#include "tools/motion/TrajectoryGaps.h"

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
#include <utility>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

struct SampleArguments
{
    DevicePath path;
    std::filesystem::path at; ///< A file of times; empty if `rate` is given.
    double rate = 0.0;        ///< Poses per second.
    GapOptions gaps;
    PoseFormat format = PoseFormat::Tum;
};

constexpr std::size_t blockSize = 1U << 16;
constexpr double mostPoses = 100e6;

/// What became of the times.
struct SampleCounts
{
    std::uint64_t printed = 0;
    std::uint64_t outside = 0; ///< Outside the trajectory.
    std::uint64_t inGaps = 0;

    [[nodiscard]] std::uint64_t all() const { return printed + outside + inGaps; }
};

/// Prints the poses at many times, those in memory at once being few.
class Sampler
{
public:
    /// @param gaps in which no pose is printed
    Sampler(Trajectory const& trajectory,
            std::vector<TrajectoryGap> gaps,
            PoseFormat format,
            std::ostream& out)
        : trajectory_(trajectory),
          gaps_(std::move(gaps)),
          writer_(format, out, "standard output"),
          out_(out),
          poses_(blockSize)
    {}

    void print(std::span<double const> times)
    {
        while (!times.empty()) {
            auto const block = times.first(std::min(times.size(), blockSize));
            times = times.subspan(block.size());
            samplePoses(trajectory_, block, std::span(poses_).first(block.size()));
            for (std::size_t i = 0; i < block.size(); ++i) {
                if (!poses_[i].allFinite()) {
                    ++counts_.outside;
                } else if (isInGap(block[i], gaps_)) {
                    ++counts_.inGaps;
                } else {
                    writer_.add(block[i], poses_[i]);
                    ++counts_.printed;
                }
            }
            if (!out_) {
                throw ToolError("the poses could not be printed to standard output");
            }
        }
    }

    [[nodiscard]] SampleCounts const& counts() const { return counts_; }

private:
    Trajectory const& trajectory_;
    std::vector<TrajectoryGap> gaps_;
    PoseTextWriter writer_;
    std::ostream& out_;
    std::vector<TrafoT<double>> poses_;
    SampleCounts counts_;
};

/// Samples `rate` times per second from the first pose on, as long as there are poses.
void printAtRate(Trajectory const& trajectory, double rate, Sampler& sampler)
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
}

/// Empty if nothing was.
std::string whatWasLeftOut(SampleCounts const& counts, Trajectory const& trajectory, std::string const& gaps)
{
    std::vector<std::string> reasons;
    if (counts.outside > 0) {
        reasons.push_back(std::to_string(counts.outside) + " of " + std::to_string(counts.all()) +
                          " outside the trajectory, which is from " +
                          fixed(trajectory.getStartTime().get(), 3) + " s to " +
                          fixed(trajectory.getStopTime().get(), 3) + " s (do both use the same clock?)");
    }
    if (counts.inGaps > 0) {
        reasons.push_back(std::to_string(counts.inGaps) + " of " + std::to_string(counts.all()) +
                          " in gaps of the trajectory " + gaps +
                          " (--max-gap sets the longest gap, --across-gaps interpolates them)");
    }
    return reasons.empty() ? "" : listed(reasons);
}

void run(SampleArguments const& options, Console& console)
{
    requireOneStandardInput(options.path.trajectory, options.at, "the trajectory and the times");
    DevicePoses const poses = readDevicePoses(options.path);
    Trajectory const trajectory = buildTrajectoryFromTrajectoryNodes(poses.nodes);
    std::vector<double> const times = timesInOrder(poses.nodes);
    double const longestGap = options.gaps.longest(times);
    Sampler sampler(trajectory,
                    options.gaps.acrossGaps ? std::vector<TrajectoryGap>()
                                            : gapsLongerThan(longestGap, times),
                    options.format,
                    console.out);
    if (options.at.empty()) {
        printAtRate(trajectory, options.rate, sampler);
    } else {
        InputFile text = openInputOrPipe(options.at);
        sampler.print(readTimes(text.stream, options.at).times);
    }
    std::string const leftOut =
        whatWasLeftOut(sampler.counts(), trajectory, gapText(longestGap, !options.gaps.maxGap));
    if (sampler.counts().printed == 0) {
        throw fileError(options.at.empty() ? options.path.trajectory : options.at,
                        sampler.counts().all() == 0 ? "there is no time in it"
                                                    : "there is a pose at none of its times: " + leftOut);
    }
    if (!leftOut.empty()) {
        console.err << "roamscan: times left out: " << leftOut << '\n';
    }
}

} // namespace

void addSample(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<SampleArguments>();
    CLI::App* const command = app.add_subcommand("sample", "Print the poses of a trajectory at any times");
    addPath(*command, "--trajectory", options->path.trajectory, "The trajectory; - for the standard input")
        ->required();
    addDevices(*command, options->path);
    CLI::Option_group* const when = command->add_option_group("times", "When");
    when->require_option(1);
    addPath(*when, "--at", options->at, "A file with one time in seconds per line; - for the standard input");
    when->add_option("--rate", options->rate, "So many poses per second, from the first pose on")
        ->check(positiveNumber());
    addPoseFormat(*command, options->format, "tum, euroc, kitti or csv (tum)");
    addGapOptions(*command, options->gaps, "poses", "Print");
    command->footer("Times outside the trajectory and in its gaps are left out and counted.\n\n"
                    "Example:\n  roamscan sample --trajectory walk/walk.trajectory --rate 10 --format csv\n");
    command->callback([options, &console] { run(*options, console); });
}

} // namespace oV::Roamscan::tool
