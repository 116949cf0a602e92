#include "tools/simulation/RecordedMotion.h"

#include "tools/console/ToolError.h"

#include <roamscan/time/TimeConversion.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace oV::Roamscan::tool
{

namespace
{

constexpr double farthest = 10'000.0; // metres from the origin
constexpr double unitTolerance = 0.01;

void check(TrajectoryNode const& node, std::filesystem::path const& name)
{
    if (!std::isfinite(node.time) || !node.pose.allFinite()) {
        throw fileError(name, "a pose or its time is not finite; import the recording again without it");
    }
    if (std::abs(node.time) > TimeConversion::largestSeconds) {
        throw fileError(
            name, "the time of a pose is more than 2900 years from zero, out of the range of a recording");
    }
    if (std::abs(node.pose.rotation().norm() - 1.0) > unitTolerance) {
        throw fileError(name, "a pose's quaternion is not of unit length");
    }
    if (node.pose.translation().cwiseAbs().maxCoeff() > farthest) {
        throw fileError(
            name,
            "a pose is more than 10 km from the origin, where the single precision of scan points "
            "no longer resolves millimetres; shift the recording");
    }
}

/// The turn from one rotation to another as a vector along its axis, as long as its angle.
Eigen::Vector3d turnBetween(Eigen::Quaterniond const& from, Eigen::Quaterniond const& to)
{
    Eigen::AngleAxisd const turn(from.conjugate() * to); // the angle is from 0 to pi
    return turn.axis() * turn.angle();
}

Eigen::Quaterniond rotationBy(Eigen::Vector3d const& turn)
{
    double const angle = turn.norm();
    return angle > 0.0 ? Eigen::Quaterniond(Eigen::AngleAxisd(angle, turn / angle))
                       : Eigen::Quaterniond::Identity();
}

std::vector<TimedPose> checkedPoses(std::vector<TrajectoryNode> const& nodes,
                                    std::filesystem::path const& name)
{
    std::vector<TrajectoryNode const*> all;
    for (TrajectoryNode const& node : nodes) {
        check(node, name);
        all.push_back(&node);
    }
    std::vector<TimedPose> poses = posesInOrderOfTime(std::move(all));
    if (poses.size() < 2) {
        throw fileError(name, "a motion needs poses at two different times at least");
    }
    if (poses.back().time - poses.front().time > longestSimulation) {
        throw fileError(name, "the recording is longer than a day; cut it into parts");
    }
    return poses;
}

} // namespace

RecordedMotion::RecordedMotion(std::vector<TrajectoryNode> const& nodes, std::filesystem::path const& name)
    : RecordedMotion(checkedPoses(nodes, name))
{}

RecordedMotion::RecordedMotion(std::vector<TimedPose> poses)
    : Motion(poses.front().time, poses.back().time), poses_(std::move(poses))
{}

Eigen::Isometry3d RecordedMotion::at(double time) const
{
    double const within = std::clamp(time, startTime(), stopTime());
    auto const after =
        std::ranges::upper_bound(poses_.begin() + 1, poses_.end() - 1, within, {}, &TimedPose::time);
    TimedPose const& from = *(after - 1);
    TimedPose const& to = *after;
    double const fraction = (within - from.time) / (to.time - from.time);
    Eigen::Isometry3d pose = Eigen::Isometry3d::Identity();
    pose.translate(from.position + fraction * (to.position - from.position));
    pose.rotate(from.rotation * rotationBy(fraction * turnBetween(from.rotation, to.rotation)));
    return pose;
}

} // namespace oV::Roamscan::tool
