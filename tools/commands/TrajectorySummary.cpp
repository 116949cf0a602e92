#include "tools/commands/TrajectorySummary.h"

#include "tools/motion/NodeOrder.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace oV::Roamscan::tool
{

namespace
{

using NodePointers = std::vector<TrajectoryNode const*>;

TrajectorySummary::Span measure(NodePointers const& nodes)
{
    TrajectorySummary::Span span;
    span.from = nodes.front()->time;
    span.to = nodes.back()->time;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        span.largestStep = std::max(span.largestStep, nodes[i]->time - nodes[i - 1]->time);
        span.pathLength += (nodes[i]->pose.translation() - nodes[i - 1]->pose.translation()).norm();
    }
    if (nodes.size() > 1) {
        span.meanStep = (span.to - span.from) / static_cast<double>(nodes.size() - 1);
    }
    return span;
}

} // namespace

TrajectorySummary summarise(TrajectoryData const& data)
{
    TrajectorySummary summary;
    summary.nodes = data.nodes.size();
    NodePointers timed;
    for (TrajectoryNode const& node : data.nodes) {
        if (std::isfinite(node.time)) {
            timed.push_back(&node);
        }
    }
    summary.nodesWithoutTime = summary.nodes - timed.size();
    summary.inOrder = std::ranges::is_sorted(timed, {}, &TrajectoryNode::time);
    NodePointers const nodes = inOrderOfTime(timed);
    summary.repeatedTimes = timed.size() - nodes.size();
    if (!nodes.empty()) {
        summary.span = measure(nodes);
    }
    return summary;
}

} // namespace oV::Roamscan::tool
