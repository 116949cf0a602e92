#include "tools/commands/TrajectoryInfo.h"

#include "tools/commands/PoseInfo.h"
#include "tools/console/Text.h"
#include "tools/motion/TimedPose.h"
#include "tools/motion/TrajectoryGaps.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <ostream>
#include <span>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

/// The poses are in order of time; there is at least one.
Json describeSpan(std::vector<TimedPose> const& poses)
{
    double const duration = poses.back().time - poses.front().time;
    double largestStep = 0.0;
    double pathLength = 0.0;
    for (std::size_t i = 1; i < poses.size(); ++i) {
        largestStep = std::max(largestStep, poses[i].time - poses[i - 1].time);
        pathLength += (poses[i].position - poses[i - 1].position).norm();
    }
    return {{"from", poses.front().time},
            {"to", poses.back().time},
            {"duration", duration},
            {"meanStep", poses.size() > 1 ? duration / static_cast<double>(poses.size() - 1) : 0.0},
            {"largestStep", largestStep},
            {"pathLength", pathLength}};
}

/// The gaps that `roamscan place` does not interpolate across by default.
Json describeGaps(std::span<double const> times)
{
    double const longest = defaultLongestGap(times);
    Json json{{"usualStep", usualStep(times)}, {"longestStepWithoutGap", longest}};
    json["gaps"] = Json::array();
    for (TrajectoryGap const& gap : gapsLongerThan(longest, times)) {
        json["gaps"].push_back({{"from", gap.from}, {"to", gap.to}, {"duration", gap.duration()}});
    }
    return json;
}

void printGaps(Json const& trajectory, std::ostream& out)
{
    constexpr std::size_t mostShown = 10;
    Json const& gaps = trajectory.at("gaps");
    out << "  gaps: " << gaps.size() << " longer than " << number(trajectory, "longestStepWithoutGap", 6)
        << " s (ten usual steps)\n";
    for (std::size_t i = 0; i < std::min(gaps.size(), mostShown); ++i) {
        out << "    " << number(gaps[i], "from", 6) << " s to " << number(gaps[i], "to", 6) << " s, "
            << number(gaps[i], "duration", 6) << " s long\n";
    }
    if (gaps.size() > mostShown) {
        out << "    and " << gaps.size() - mostShown << " more; --json lists all\n";
    }
}

} // namespace

Json describe(TrajectoryData const& data)
{
    std::vector<TrajectoryNode const*> timed;
    for (TrajectoryNode const& node : data.nodes) {
        if (std::isfinite(node.time)) {
            timed.push_back(&node);
        }
    }
    std::vector<TimedPose> const poses = posesInOrderOfTime(timed);
    Json json{{"nodes", data.nodes.size()},
              {"inTimeOrder", std::ranges::is_sorted(timed, {}, &TrajectoryNode::time)},
              {"repeatedTimes", timed.size() - poses.size()},
              {"nodesWithoutTime", data.nodes.size() - timed.size()}};
    if (!poses.empty()) {
        json.update(describeSpan(poses));
        json.update(describeGaps(timesInOrder(data.nodes)));
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
    out << "  nodes: " << trajectory.at("nodes")
        << (trajectory.at("inTimeOrder") ? "\n" : ", not in order of time (measured in order)\n");
    if (trajectory.at("repeatedTimes") > 0) {
        out << "  nodes at the time of a later one: " << trajectory.at("repeatedTimes") << '\n';
    }
    if (trajectory.at("nodesWithoutTime") > 0) {
        out << "  nodes without a finite time: " << trajectory.at("nodesWithoutTime") << '\n';
    }
    if (trajectory.contains("from")) {
        out << "  time: " << number(trajectory, "from", 6) << " s to " << number(trajectory, "to", 6)
            << " s, " << number(trajectory, "duration", 6) << " s long\n"
            << "  steps in time: " << number(trajectory, "meanStep", 6) << " s on average, "
            << number(trajectory, "largestStep", 6) << " s at most\n"
            << "  path: " << number(trajectory, "pathLength", 3) << " m\n";
        printGaps(trajectory, out);
    }
    for (Json const& device : trajectory.at("devices")) {
        out << "  device " << device.at("device") << ": " << poseText(device) << '\n';
    }
    if (trajectory.at("devices").empty()) {
        out << "  no device positions\n";
    }
}

} // namespace oV::Roamscan::tool
