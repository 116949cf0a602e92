#pragma once

#include <Eigen/Core>
#include <opencv2/core/mat.hpp>

#include <vector>

namespace oV::Roamscan::tool
{

/// What a plan shows, in plan coordinates (x to the right, y upwards, z towards the viewer), in metres. All
/// numbers are finite.
struct TopViewScene
{
    std::vector<Eigen::Vector3f> points; ///< The point cloud.
    std::vector<Eigen::Vector2f> path;   ///< The path of the device.
};

/// Draws a plan: 8 bits per channel, in the order blue, green, red. Points between knee and head height
/// (walls and furniture) are dark, the more points the darker; floor and ceiling are a pale background. The
/// path with its start and its end is drawn over them; a scale bar stands below.
[[nodiscard]] cv::Mat3b drawTopView(TopViewScene const& scene);

} // namespace oV::Roamscan::tool
