#include "tools/commands/TrajectoryInfo.h"

#include "tools/commands/PoseInfo.h"
#include "tools/commands/TrajectorySummary.h"
#include "tools/console/Text.h"

#include <map>
#include <ostream>
#include <utility>

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

} // namespace

Json toJson(TrajectoryData const& data)
{
    TrajectorySummary const summary = summarise(data);
    Json json;
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
    for (auto const& [device, position] : positionsOf(data)) {
        Json entry{{"device", device}};
        addPose(entry, position);
        json["devices"].push_back(std::move(entry));
    }
    return json;
}

void printText(TrajectoryData const& data, std::ostream& out)
{
    TrajectorySummary const summary = summarise(data);
    out << "  nodes: " << summary.nodes;
    out << (summary.inOrder ? "\n" : ", not in order of time (measured in order)\n");
    if (summary.repeatedTimes > 0) {
        out << "  nodes at the time of a later one: " << summary.repeatedTimes << '\n';
    }
    if (summary.nodesWithoutTime > 0) {
        out << "  nodes without a finite time: " << summary.nodesWithoutTime << '\n';
    }
    printSpan(summary, out);
    for (auto const& [device, position] : positionsOf(data)) {
        out << "  device " << device << ": " << poseInWords(position) << '\n';
    }
    if (data.devicePositions.empty()) {
        out << "  no device positions\n";
    }
}

} // namespace oV::Roamscan::tool
