/// @file
/// The shortest program that uses poses.

#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectory/TrajectoryFromNodes.h>

int main()
{
    using oV::Roamscan::TrafoT;
    auto const trajectory = oV::Roamscan::buildTrajectoryFromTrajectoryNodes(
        {{1.0, TrafoT<double>::Identity()}, {2.0, TrafoT<double>::Translation({4.0, 0.0, 0.0})}});
    return trajectory.sample(1.5).translation().x() == 2.0 ? 0 : 1;
}
