/// @file
/// Iterates over a trajectory at a fixed time step and computes the length of its path.

#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>
#include <roamscan/trajectory/Trajectory.h>

#include <cstdio>

using oV::Roamscan::Duration;
using oV::Roamscan::InterpolatedTrajectoryPathBuilder;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;

int main()
{
    auto const at = [](double x, double y) { return TrafoT<double>::Translation({x, y, 0}); };
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .setInitialPose(TimeStamp(0.0), at(0, 0))
                                .addPose(Duration(3.0), at(3, 0))
                                .addPose(Duration(4.0), at(3, 4))
                                .build();

    double length = 0;
    Eigen::Vector3d last = trajectory.sample(trajectory.getStartTime()).translation();
    for (auto const& node : trajectory.sampled(Duration(0.5))) {
        length += (node.pose.translation() - last).norm();
        last = node.pose.translation();
    }
    std::printf("%.1f m in %.1f s\n", length, trajectory.getDuration().get());
    return 0;
}
