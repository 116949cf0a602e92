#include "tools/commands/TrajectoryInfo.h"

#include "tools/commands/PoseInfo.h"
#include "tools/console/Text.h"
#include "tools/motion/NodeOrder.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <ostream>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using NodePointers = std::vector<TrajectoryNode const*>;

/// The nodes are in order of time; there is at least one.
Json describeSpan(NodePointers const& nodes)
{
    double const duration = nodes.back()->time - nodes.front()->time;
    double largestStep = 0.0;
    double pathLength = 0.0;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        largestStep = std::max(largestStep, nodes[i]->time - nodes[i - 1]->time);
        pathLength += (nodes[i]->pose.translation() - nodes[i - 1]->pose.translation()).norm();
    }
    return {{"from", nodes.front()->time},
            {"to", nodes.back()->time},
            {"duration", duration},
            {"meanStep", nodes.size() > 1 ? duration / static_cast<double>(nodes.size() - 1) : 0.0},
            {"largestStep", largestStep},
            {"pathLength", pathLength}};
}

} // namespace

Json describe(TrajectoryData const& data)
{
    NodePointers timed;
    for (TrajectoryNode const& node : data.nodes) {
        if (std::isfinite(node.time)) {
            timed.push_back(&node);
        }
    }
    NodePointers const nodes = inOrderOfTime(timed);
    Json json{{"nodes", data.nodes.size()},
              {"inTimeOrder", std::ranges::is_sorted(timed, {}, &TrajectoryNode::time)},
              {"repeatedTimes", timed.size() - nodes.size()},
              {"nodesWithoutTime", data.nodes.size() - timed.size()}};
    if (!nodes.empty()) {
        json.update(describeSpan(nodes));
    }
    json["devices"] = Json::array();
    for (auto const& [device, position] : std::map(data.devicePositions.begin(), data.devicePositions.end()))
    {
        Json entry{{"device", static_cast<int>(device)}};
        entry.update(describe(position));
        json["devices"].push_back(entry);
    }
    return json;
}

void printTrajectory(Json const& trajectory, std::ostream& out)
{
    auto const number = [&](char const* member, int decimals) {
        return fixed(trajectory.at(member), decimals);
    };
    out << "  nodes: " << trajectory.at("nodes")
        << (trajectory.at("inTimeOrder") ? "\n" : ", not in order of time (measured in order)\n");
    if (trajectory.at("repeatedTimes") > 0) {
        out << "  nodes at the time of a later one: " << trajectory.at("repeatedTimes") << '\n';
    }
    if (trajectory.at("nodesWithoutTime") > 0) {
        out << "  nodes without a finite time: " << trajectory.at("nodesWithoutTime") << '\n';
    }
    if (trajectory.contains("from")) {
        out << "  time: " << number("from", 6) << " s to " << number("to", 6) << " s, "
            << number("duration", 6) << " s long\n"
            << "  steps in time: " << number("meanStep", 6) << " s on average, " << number("largestStep", 6)
            << " s at most\n"
            << "  path: " << number("pathLength", 3) << " m\n";
    }
    for (Json const& device : trajectory.at("devices")) {
        out << "  device " << device.at("device") << ": " << poseText(device) << '\n';
    }
    if (trajectory.at("devices").empty()) {
        out << "  no device positions\n";
    }
}

} // namespace oV::Roamscan::tool
