#include <roamscan/time/detail/Compose.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>
#include <roamscan/trajectory/detail/PoseSequence.h>
#include <roamscan/trajectory/detail/TrajectoryOverTable.h>

#include <utility>

namespace oV::Roamscan
{

Trajectory buildTrajectoryFromTrajectoryNodes(std::vector<TrajectoryNode> const& nodes)
{
    // No shortcut for the identity: multiplying by it is exact, but turns -0.0 into 0.0.
    return buildTrajectoryFromTrajectoryNodes(nodes, TrafoT<double>::Identity(), TrafoT<double>::Identity());
}

Trajectory buildTrajectoryFromTrajectoryNodes(std::vector<TrajectoryNode> const& nodes,
                                              TrafoT<double> const& rightTransform,
                                              TrafoT<double> const& leftTransform)
{
    detail::PoseSequence poses;
    poses.reserve(nodes.size());
    for (TrajectoryNode const& node : nodes) {
        poses.write(node.time, detail::compose(detail::compose(leftTransform, node.pose), rightTransform));
    }
    return detail::trajectoryOverTable(std::move(poses).toTable());
}

} // namespace oV::Roamscan
