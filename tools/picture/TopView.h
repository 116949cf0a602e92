#pragma once

#include "tools/picture/Canvas.h"

#include <Eigen/Core>

#include <vector>

namespace oV::Roamscan::tool
{

/// What a plan shows, in plan coordinates (x to the right, y upwards, z towards the viewer), in metres.
struct TopViewScene
{
    std::vector<Eigen::Vector3f> points; ///< The cloud.
    std::vector<Eigen::Vector2f> path;   ///< Where the device went.
};

/// Draws a plan. Points between knee and head height, which are walls and what stands about, are drawn dark,
/// the more points the darker; floor and ceiling are a pale ground. The path lies on top, with its start and
/// its end; below stands a scale.
[[nodiscard]] Canvas drawTopView(TopViewScene const& scene);

} // namespace oV::Roamscan::tool
