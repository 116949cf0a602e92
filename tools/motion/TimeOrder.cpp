#include "tools/motion/TimeOrder.h"

#include <algorithm>
#include <numeric>

namespace oV::Roamscan::tool
{

TimeOrder timeOrderOf(std::vector<TrajectoryNode> const& nodes)
{
    TimeOrder order;
    order.firstRepeated = nodes.size();
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        if (nodes[i].time < nodes[i - 1].time) {
            order.firstBackward = order.backward++ == 0 ? i : order.firstBackward;
        }
    }
    std::vector<std::size_t> sorted(nodes.size());
    std::iota(sorted.begin(), sorted.end(), std::size_t{0});
    std::ranges::stable_sort(sorted, {}, [&](std::size_t i) { return nodes[i].time; });
    for (std::size_t i = 1; i < sorted.size(); ++i) {
        if (nodes[sorted[i]].time == nodes[sorted[i - 1]].time) {
            ++order.repeated;
            order.firstRepeated = std::min(order.firstRepeated, sorted[i]);
        }
    }
    return order;
}

} // namespace oV::Roamscan::tool
