#include "tools/geometry/GroundPlane.h"

#include <Eigen/Geometry>

namespace oV::Roamscan::tool
{

Eigen::Matrix3d planRotation(std::vector<Eigen::Vector3d> const& path)
{
    constexpr double flat = 0.25; // of the other two extents, to count as the height of a path
    if (path.empty()) {
        return Eigen::Matrix3d::Identity();
    }
    Eigen::AlignedBox3d bounds;
    for (Eigen::Vector3d const& point : path) {
        bounds.extend(point);
    }
    Eigen::Vector3d const extent = bounds.sizes();
    auto const isHeight = [&](int axis, int first, int second) {
        return extent[axis] < flat * extent[first] && extent[axis] < flat * extent[second];
    };
    Eigen::Matrix3d rotation = Eigen::Matrix3d::Identity();
    if (isHeight(1, 0, 2)) {
        rotation << 1, 0, 0, 0, 0, 1, 0, -1, 0; // y points down in a camera's frame
    } else if (isHeight(0, 1, 2)) {
        rotation << 0, 1, 0, 0, 0, 1, 1, 0, 0;
    }
    return rotation;
}

} // namespace oV::Roamscan::tool
