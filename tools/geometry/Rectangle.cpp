#include "tools/geometry/Rectangle.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>

namespace oV::Roamscan::tool
{

Rectangle::Rectangle(Eigen::Vector3d const& corner,
                     Eigen::Vector3d const& edgeA,
                     Eigen::Vector3d const& edgeB)
    : corner_(corner),
      directionA_(edgeA.normalized()),
      directionB_(edgeB.normalized()),
      normal_(directionA_.cross(directionB_)),
      lengthA_(edgeA.norm()),
      lengthB_(edgeB.norm())
{}

double Rectangle::distance(Eigen::Vector3d const& point) const
{
    Eigen::Vector3d const offset = point - corner_;
    double const a = directionA_.dot(offset);
    double const b = directionB_.dot(offset);
    double const missA = a - std::clamp(a, 0.0, lengthA_);
    double const missB = b - std::clamp(b, 0.0, lengthB_);
    double const height = normal_.dot(offset);
    return std::sqrt(missA * missA + missB * missB + height * height);
}

std::optional<double> Rectangle::hit(Eigen::Vector3d const& origin, Eigen::Vector3d const& direction) const
{
    Eigen::Vector3d const offset = corner_ - origin;
    // For a ray in the plane, this is infinite or NaN.
    double const range = normal_.dot(offset) / normal_.dot(direction);
    if (!(range > 0.0 && std::isfinite(range))) {
        return std::nullopt;
    }
    Eigen::Vector3d const onPlane = range * direction - offset;
    double const a = directionA_.dot(onPlane);
    double const b = directionB_.dot(onPlane);
    bool const inside = a >= 0.0 && a <= lengthA_ && b >= 0.0 && b <= lengthB_;
    return inside ? std::optional(range) : std::nullopt;
}

} // namespace oV::Roamscan::tool
