#pragma once

#include "tests/support/PoseAt.h"
#include "tests/support/RandomPoses.h"

#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>
#include <roamscan/trajectory/Trajectory.h>

#include <cmath>
#include <stdexcept>

namespace support
{

using oV::Roamscan::InterpolatedTrajectoryPathBuilder;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;

/// Poses at 1 s, 2 s and, after a gap, 12 s.
inline Trajectory withGap()
{
    return InterpolatedTrajectoryPathBuilder()
        .addPose(TimeStamp(1.0), at(10))
        .addPose(TimeStamp(2.0), at(20))
        .addPose(TimeStamp(12.0), at(120))
        .build();
}

/// The pose as sample() gives it, or Invalid() where it finds none.
inline TrafoT<double> sampledAlone(Trajectory const& trajectory, double time)
{
    try {
        return trajectory.sample(time);
    } catch (std::out_of_range const&) {
        return TrafoT<double>::Invalid();
    }
}

/// A trajectory over poses at random times, some close together and some far apart.
inline Trajectory randomTrajectory(RandomPoses& random, int poses)
{
    InterpolatedTrajectoryPathBuilder builder;
    double time = random.number(-5, 5);
    for (int i = 0; i < poses; ++i) {
        builder.addPose(TimeStamp(time), random.pose());
        time += std::pow(10.0, random.number(-6, 1));
    }
    return builder.build();
}

} // namespace support
