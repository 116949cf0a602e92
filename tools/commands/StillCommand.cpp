#include "tools/commands/StillCommand.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/TrajectoryFile.h"

#include <roamscan/time/TimeConversion.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

using Json = nlohmann::ordered_json;
using TimeConversion::convertToSeconds;

void requirePositive(char const* option, double value)
{
    if (!(std::isfinite(value) && value > 0.0)) {
        throw ToolError(std::string(option) + " must be a number above 0");
    }
}

double secondsIn(TimeWindow const& section)
{
    return convertToSeconds(section.end - section.start);
}

double totalSeconds(AnchorSections const& sections)
{
    int64 ticks = 0;
    for (TimeWindow const& section : sections) {
        ticks += section.end - section.start;
    }
    return convertToSeconds(ticks);
}

Json describe(StillStretches const& found, StillOptions const& options)
{
    Json json{{"file", options.trajectory.string()},
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
    for (TimeWindow const& section : found.sections) {
        json["stretches"].push_back({{"start", convertToSeconds(section.start)},
                                     {"end", convertToSeconds(section.end)},
                                     {"duration", secondsIn(section)},
                                     {"startTicks", section.start},
                                     {"endTicks", section.end}});
    }
    json["total"] = totalSeconds(found.sections);
    return json;
}

std::string flushRight(std::string const& text, std::size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

void printRow(std::string const& start,
              std::string const& end,
              std::string const& duration,
              std::ostream& out)
{
    constexpr std::size_t timeWidth = 20;
    constexpr std::size_t durationWidth = 16;
    out << flushRight(start, timeWidth) << flushRight(end, timeWidth) << flushRight(duration, durationWidth)
        << '\n';
}

std::string counted(std::size_t count, char const* one, char const* many)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

void print(StillStretches const& found, StillOptions const& options, std::ostream& out)
{
    out << oneLine(options.trajectory.string()) << ": slower than " << fixed(options.settings.speed, 3)
        << " m/s and " << fixed(options.settings.rate, 3) << " degrees/s for "
        << fixed(options.settings.minSeconds, 3) << " s or longer\n";
    printRow("start (s)", "end (s)", "duration (s)", out);
    for (TimeWindow const& section : found.sections) {
        printRow(fixed(convertToSeconds(section.start), 6),
                 fixed(convertToSeconds(section.end), 6),
                 fixed(secondsIn(section), 6),
                 out);
    }
    printRow("total",
             counted(found.sections.size(), "stretch", "stretches"),
             fixed(totalSeconds(found.sections), 6),
             out);
    if (found.measured > 0.0) {
        out << "  " << fixed(found.measured, 6) << " s of the recording were measured, over "
            << fixed(found.window, 3) << " s each time\n";
    } else {
        out << "  nothing was measured: no " << fixed(found.window, 3)
            << " s of the recording are without a gap between poses\n";
    }
    if (found.gaps > 0) {
        out << "  " << counted(found.gaps, "gap", "gaps") << " between poses, " << fixed(found.largestGap, 6)
            << " s at most, about which nothing is known\n";
    }
    if (found.unusable > 0) {
        out << "  " << counted(found.unusable, "node", "nodes")
            << " left out for a time or a pose that is not finite or out of range\n";
    }
}

} // namespace

void runStill(StillOptions const& options, std::ostream& out)
{
    requirePositive("--speed", options.settings.speed);
    requirePositive("--rate", options.settings.rate);
    requirePositive("--min-seconds", options.settings.minSeconds);
    auto const data = readTrajectoryFile(options.trajectory).data;
    StillStretches const found = findStillStretches(data->nodes, options.settings);
    if (found.poses == 0) {
        throw fileError(options.trajectory, "there is no usable pose with a time in it");
    }
    if (options.json) {
        // Names need not be UTF-8.
        out << describe(found, options).dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    } else {
        print(found, options, out);
    }
}

} // namespace oV::Roamscan::tool
