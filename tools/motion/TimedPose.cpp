#include "tools/motion/TimedPose.h"

#include <algorithm>

namespace oV::Roamscan::tool
{

std::vector<TimedPose> posesInOrderOfTime(std::vector<TrajectoryNode const*> nodes)
{
    std::ranges::stable_sort(nodes, {}, &TrajectoryNode::time);
    std::vector<TimedPose> poses;
    poses.reserve(nodes.size());
    for (TrajectoryNode const* const node : nodes) {
        if (!poses.empty() && poses.back().time == node->time) {
            poses.pop_back();
        }
        poses.push_back({node->time, node->pose.translation(), node->pose.rotation().normalized()});
    }
    return poses;
}

} // namespace oV::Roamscan::tool
