/// @file
/// Builds a trajectory from a few poses and samples it.

#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>
#include <roamscan/trajectory/Trajectory.h>

#include <cmath>
#include <cstdio>
#include <stdexcept>

using oV::Roamscan::Duration;
using oV::Roamscan::InterpolatedTrajectoryPathBuilder;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;

int main()
{
    // Stand still for 1 s, then move 2 m along x in 4 s while turning 90 degrees to the left.
    auto const start = TrafoT<double>::Identity();
    double const half = std::sqrt(0.5);
    Eigen::Quaterniond const leftTurn(half, 0, 0, half); // w, x, y, z
    TrafoT<double> const goal(Eigen::Vector3d(2, 0, 0), leftTurn, true);
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .setInitialPose(TimeStamp(10.0), start)
                                .waitFor(Duration(1.0))
                                .addPose(Duration(4.0), goal)
                                .build();

    std::printf("from %g s to %g s\n", trajectory.getStartTime().get(), trajectory.getStopTime().get());
    for (double const time : {10.5, 12.0, 13.0, 15.0}) {
        auto const position = trajectory.sample(time).translation();
        std::printf("at %g s: x = %.3f m\n", time, position.x());
    }

    // Outside the trajectory, sample() throws; sample_or() returns the given fallback.
    try {
        (void)trajectory.sample(16.0);
    } catch (std::out_of_range const& failure) {
        std::printf("at 16 s: %s\n", failure.what());
    }
    auto const later = trajectory.sample_or(TimeStamp(16.0), TrafoT<double>::Invalid());
    std::printf("with a fallback: %s\n", later.valid() ? "a pose" : "no pose");
    return 0;
}
