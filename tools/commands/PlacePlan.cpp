#include "tools/commands/PlacePlan.h"

#include "tools/geometry/GroundPlane.h"
#include "tools/picture/TopView.h"

#include <roamscan/time/EigenConversion.h>

#include <algorithm>
#include <utility>

namespace oV::Roamscan::tool
{

using Eigen::Vector3d;

std::vector<Vector3d> pathOf(Trajectory const& trajectory)
{
    constexpr double samples = 20'000.0;
    constexpr double finestStep = 0.01; // seconds
    std::vector<Vector3d> path{trajectory.sample(trajectory.getStartTime()).translation()};
    double const duration = trajectory.getDuration().get();
    if (duration > 0.0) {
        for (TrajectoryNode const& node :
             trajectory.sampled(Duration(std::max(duration / samples, finestStep)))) {
            path.push_back(node.pose.translation());
        }
        path.push_back(trajectory.sample(trajectory.getStopTime()).translation());
    }
    return path;
}

PlacePlan::PlacePlan(std::vector<Vector3d> path, TrafoT<double> const& nodesFromPlaced)
    : nodesFromPlaced_(nodesFromPlaced), path_(std::move(path))
{
    for (Vector3d& place : path_) {
        place = nodesFromPlaced_ * place;
    }
    std::erase_if(path_, [](Vector3d const& place) { return !place.cast<float>().allFinite(); });
    planFromNodes_ = planRotation(path_);
    if (!path_.empty()) {
        centre_ = path_.front();
    }
}

void PlacePlan::add(std::span<Bv_1_1::Vec3d<double> const> places)
{
    for (Bv_1_1::Vec3d<double> const& place : places) {
        if (seen_++ % step_ != 0) {
            continue;
        }
        if (points_.size() == mostPoints) { // keep every second one
            for (std::size_t i = 0; i < mostPoints / 2; ++i) {
                points_[i] = points_[2 * i];
            }
            points_.resize(mostPoints / 2);
            step_ *= 2;
        }
        Eigen::Vector3f const point = onPlan(nodesFromPlaced_ * toEigen(place));
        if (point.allFinite()) {
            points_.push_back(point);
        }
    }
}

cv::Mat3b PlacePlan::draw() const
{
    TopViewScene scene;
    for (Vector3d const& place : path_) {
        scene.path.emplace_back(onPlan(place).head<2>());
    }
    scene.points = points_;
    return drawTopView(scene);
}

Eigen::Vector3f PlacePlan::onPlan(Vector3d const& inNodes) const
{
    return (planFromNodes_ * (inNodes - centre_)).cast<float>();
}

} // namespace oV::Roamscan::tool
