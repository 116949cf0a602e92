#include "tools/simulation/RecordedMotion.h"

#include "tools/console/ToolError.h"
#include "tools/motion/NodeOrder.h"
#include "tools/simulation/SimulationLimits.h"

#include <roamscan/time/TimeConversion.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

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

} // namespace

RecordedMotion::RecordedMotion(std::vector<TrajectoryNode> const& nodes, std::filesystem::path const& name)
{
    std::vector<TrajectoryNode const*> all;
    for (TrajectoryNode const& node : nodes) {
        check(node, name);
        all.push_back(&node);
    }
    for (TrajectoryNode const* const node : inOrderOfTime(all)) {
        times_.push_back(node->time);
        positions_.push_back(node->pose.translation());
        rotations_.push_back(node->pose.rotation().normalized());
    }
    if (times_.size() < 2) {
        throw fileError(name, "a motion needs poses at two different times at least");
    }
    if (times_.back() - times_.front() > longestSimulation) {
        throw fileError(name, "the recording is longer than a day; cut it into parts");
    }
}

double RecordedMotion::startTime() const
{
    return times_.front();
}

double RecordedMotion::stopTime() const
{
    return times_.back();
}

Eigen::Isometry3d RecordedMotion::at(double time) const
{
    double const within = std::clamp(time, times_.front(), times_.back());
    auto const after = std::upper_bound(times_.begin() + 1, times_.end() - 1, within);
    auto const i = static_cast<std::size_t>(after - times_.begin()) - 1;
    double const fraction = (within - times_[i]) / (times_[i + 1] - times_[i]);
    Eigen::Isometry3d pose = Eigen::Isometry3d::Identity();
    pose.translate(positions_[i] + fraction * (positions_[i + 1] - positions_[i]));
    pose.rotate(rotations_[i] * rotationBy(fraction * turnBetween(rotations_[i], rotations_[i + 1])));
    return pose;
}

} // namespace oV::Roamscan::tool
