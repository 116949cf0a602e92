#include "tools/commands/Commands.h"
#include "tools/commands/PathOption.h"
#include "tools/commands/PositiveNumber.h"
#include "tools/console/JsonText.h"
#include "tools/console/PathText.h"
#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/RecordingFile.h"
#include "tools/motion/StillStretches.h"

#include <roamscan/time/TimeConversion.h>

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iomanip>
#include <memory>
#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

using TimeConversion::convertToSeconds;

struct StillArguments
{
    std::filesystem::path trajectory;
    StillSettings settings;
    bool json = false;
};

Json describeStretches(StillStretches const& found, StillArguments const& options)
{
    Json json{{"file", utf8(options.trajectory)},
              {"speed", options.settings.speed},
              {"rate", options.settings.rate},
              {"minSeconds", options.settings.minSeconds},
              {"window", found.window},
              {"poses", found.poses},
              {"unusableNodes", found.unusable},
              {"gaps", found.gaps},
              {"largestGap", found.largestGap},
              {"measured", found.measured}};
    json["stretches"] = Json::array();
    int64 total = 0;
    for (TimeWindow const& section : found.sections) {
        int64 const duration = section.end - section.start;
        json["stretches"].push_back({{"start", convertToSeconds(section.start)},
                                     {"end", convertToSeconds(section.end)},
                                     {"duration", convertToSeconds(duration)},
                                     {"startTicks", section.start},
                                     {"endTicks", section.end}});
        total += duration;
    }
    json["total"] = convertToSeconds(total);
    return json;
}

void printText(Json const& found, std::ostream& out)
{
    auto const printRow = [&](std::string const& start, std::string const& end, std::string const& duration) {
        out << std::setw(20) << start << std::setw(20) << end << std::setw(16) << duration << '\n';
    };
    Json const& stretches = found.at("stretches");
    out << oneLine(found.at("file").get<std::string>()) << ": slower than " << number(found, "speed", 3)
        << " m/s and " << number(found, "rate", 3) << " degrees/s for " << number(found, "minSeconds", 3)
        << " s or longer\n";
    printRow("start (s)", "end (s)", "duration (s)");
    for (Json const& stretch : stretches) {
        printRow(number(stretch, "start", 6), number(stretch, "end", 6), number(stretch, "duration", 6));
    }
    printRow("total", counted(stretches.size(), "stretch", "stretches"), number(found, "total", 6));
    if (found.at("measured") > 0.0) {
        out << "  " << number(found, "measured", 6) << " s of the recording were measured, with a window of "
            << number(found, "window", 3) << " s\n";
    } else {
        out << "  nothing was measured: no " << number(found, "window", 3)
            << " s of the recording are without a gap between poses\n";
    }
    if (found.at("gaps") > 0) {
        out << "  " << counted(found.at("gaps"), "gap", "gaps") << " between poses, "
            << number(found, "largestGap", 6) << " s at most, without any information\n";
    }
    if (found.at("unusableNodes") > 0) {
        out << "  " << counted(found.at("unusableNodes"), "node", "nodes")
            << " ignored: the time or the pose is not finite or out of range\n";
    }
}

void run(StillArguments const& options, std::ostream& out)
{
    auto const data = readTrajectoryFile(options.trajectory).data;
    StillStretches const found = findStillStretches(data->nodes, options.settings);
    if (found.poses == 0) {
        throw fileError(options.trajectory, "there is no usable pose with a time in it");
    }
    (options.json ? printJson : printText)(describeStretches(found, options), out);
}

} // namespace

void addStill(CLI::App& app, Console& console)
{
    auto const options = std::make_shared<StillArguments>();
    StillSettings& settings = options->settings;
    CLI::App* const command = app.add_subcommand("still", "Find when the device stood still");
    addPath(*command, "--trajectory", options->trajectory, "The trajectory of the recording")->required();
    command->add_option("--speed", settings.speed, "Slower than this is still, in metres per second (0.05)")
        ->check(positiveNumber());
    command
        ->add_option("--rate", settings.rate, "Turning slower than this is still, in degrees per second (3)")
        ->check(positiveNumber());
    command->add_option("--min-seconds", settings.minSeconds, "Ignore shorter stretches (1)")
        ->check(positiveNumber());
    command->add_flag("--json", options->json, "Print one JSON object instead of a table");
    command->footer("Example:\n  roamscan still --trajectory walk/walk.trajectory --min-seconds 5 --json\n");
    command->callback([options, &console] { run(*options, console.out); });
}

} // namespace oV::Roamscan::tool
