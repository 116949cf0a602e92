#include "tools/motion/NodeOrder.h"

#include <algorithm>

namespace oV::Roamscan::tool
{

std::vector<TrajectoryNode const*> inOrderOfTime(std::vector<TrajectoryNode const*> nodes)
{
    std::ranges::stable_sort(nodes, {}, &TrajectoryNode::time);
    std::vector<TrajectoryNode const*> ordered;
    ordered.reserve(nodes.size());
    for (TrajectoryNode const* const node : nodes) {
        if (!ordered.empty() && ordered.back()->time == node->time) {
            ordered.back() = node;
        } else {
            ordered.push_back(node);
        }
    }
    return ordered;
}

} // namespace oV::Roamscan::tool
