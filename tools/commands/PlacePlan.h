#pragma once

#include <roamscan/frame/bvbase/Vec3d.h>
#include <roamscan/trajectory/Trajectory.h>

#include <Eigen/Core>
#include <opencv2/core/mat.hpp>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace oV::Roamscan::tool
{

/// Samples the path of the device: at most about 20,000 places, in order of time.
[[nodiscard]] std::vector<Eigen::Vector3d> pathOf(Trajectory const& trajectory);

/// The plan of placed points that `roamscan place --picture` draws. Of a large cloud it keeps every second,
/// fourth, ... point, so that the memory is bounded.
class PlacePlan
{
public:
    static constexpr std::size_t mostPoints = 1U << 22;

    /// @param path in the world frame of the placed points
    /// @param nodesFromPlaced the plan shows the frame of the nodes, because their z axis usually points up
    PlacePlan(std::vector<Eigen::Vector3d> path, TrafoT<double> const& nodesFromPlaced);

    void add(std::span<Bv_1_1::Vec3d<double> const> places);

    [[nodiscard]] cv::Mat3b draw() const;

private:
    [[nodiscard]] Eigen::Vector3f onPlan(Eigen::Vector3d const& inNodes) const;

    TrafoT<double> nodesFromPlaced_;
    std::vector<Eigen::Vector3d> path_;                // in the frame of the nodes
    Eigen::Vector3d centre_ = Eigen::Vector3d::Zero(); // near the path, so that floats are precise
    Eigen::Matrix3d planFromNodes_;
    std::vector<Eigen::Vector3f> points_;
    std::uint64_t seen_ = 0;
    std::uint64_t step_ = 1;
};

} // namespace oV::Roamscan::tool
