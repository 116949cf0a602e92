#include "tools/commands/InfoCommand.h"

#include "tools/commands/TrajectorySummary.h"
#include "tools/console/Text.h"
#include "tools/io/TrajectoryFile.h"

#include <nlohmann/json.hpp>

#include <exception>
#include <map>
#include <ostream>
#include <string>

namespace oV::Roamscan::tool
{

namespace
{

using Json = nlohmann::ordered_json;

/// In order of the devices.
std::map<int, TrafoT<double>> positionsOf(TrajectoryData const& data)
{
    std::map<int, TrafoT<double>> positions;
    for (auto const& [device, position] : data.devicePositions) {
        positions.emplace(static_cast<int>(device), position);
    }
    return positions;
}

Json toJson(std::filesystem::path const& path, TrajectoryFile const& file)
{
    TrajectorySummary const summary = summarise(*file.data);
    Json json;
    json["file"] = path.string();
    json["nodes"] = summary.nodes;
    json["inTimeOrder"] = summary.inOrder;
    json["repeatedTimes"] = summary.repeatedTimes;
    json["nodesWithoutTime"] = summary.nodesWithoutTime;
    if (summary.span) {
        json["from"] = summary.span->from;
        json["to"] = summary.span->to;
        json["duration"] = summary.span->to - summary.span->from;
        json["meanStep"] = summary.span->meanStep;
        json["largestStep"] = summary.span->largestStep;
        json["pathLength"] = summary.span->pathLength;
    }
    json["devices"] = Json::array();
    for (auto const& [device, position] : positionsOf(*file.data)) {
        auto const [x, y, z, qw, qx, qy, qz] = position.serialize();
        json["devices"].push_back(
            {{"device", device}, {"translation", {x, y, z}}, {"rotation", {qw, qx, qy, qz}}});
    }
    json["bytesBehind"] = file.bytesBehind;
    return json;
}

void printSpan(TrajectorySummary const& summary, std::ostream& out)
{
    if (!summary.span) {
        return;
    }
    auto const& span = *summary.span;
    out << "  time: " << fixed(span.from, 6) << " s to " << fixed(span.to, 6) << " s, "
        << fixed(span.to - span.from, 6) << " s long\n"
        << "  steps in time: " << fixed(span.meanStep, 6) << " s on average, " << fixed(span.largestStep, 6)
        << " s at most\n"
        << "  path: " << fixed(span.pathLength, 3) << " m\n";
}

void printText(std::filesystem::path const& path, TrajectoryFile const& file, std::ostream& out)
{
    TrajectorySummary const summary = summarise(*file.data);
    out << oneLine(path.string()) << '\n' << "  nodes: " << summary.nodes;
    out << (summary.inOrder ? "\n" : ", not in order of time (measured in order)\n");
    if (summary.repeatedTimes > 0) {
        out << "  nodes at the time of a later one: " << summary.repeatedTimes << '\n';
    }
    if (summary.nodesWithoutTime > 0) {
        out << "  nodes without a finite time: " << summary.nodesWithoutTime << '\n';
    }
    printSpan(summary, out);
    for (auto const& [device, position] : positionsOf(*file.data)) {
        auto const [x, y, z, qw, qx, qy, qz] = position.serialize();
        out << "  device " << device << ": translation " << fixed(x, 6) << ' ' << fixed(y, 6) << ' '
            << fixed(z, 6) << " m, rotation (w x y z) " << fixed(qw, 6) << ' ' << fixed(qx, 6) << ' '
            << fixed(qy, 6) << ' ' << fixed(qz, 6) << '\n';
    }
    if (file.data->devicePositions.empty()) {
        out << "  no device positions\n";
    }
    if (file.bytesBehind > 0) {
        out << "  " << file.bytesBehind << " bytes follow the first frame\n";
    }
}

} // namespace

bool runInfo(InfoOptions const& options, std::ostream& out, std::ostream& err)
{
    bool allRead = true;
    Json document = Json::array();
    for (std::filesystem::path const& path : options.files) {
        try {
            TrajectoryFile const file = readTrajectoryFile(path);
            if (options.json) {
                document.push_back(toJson(path, file));
            } else {
                printText(path, file, out);
            }
        } catch (std::exception const& failure) {
            allRead = false;
            err << "roamscan: " << oneLine(failure.what()) << '\n';
            document.push_back({{"file", path.string()}, {"error", failure.what()}});
        }
    }
    if (options.json) {
        // File names need not be UTF-8.
        out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    }
    return allRead;
}

} // namespace oV::Roamscan::tool
