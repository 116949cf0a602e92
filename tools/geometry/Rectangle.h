#pragma once

#include <Eigen/Core>

#include <optional>

namespace oV::Roamscan::tool
{

/// A flat rectangle in space, seen from both sides.
class Rectangle
{
public:
    /// The corner, and the two edges that leave it at a right angle.
    Rectangle(Eigen::Vector3d const& corner, Eigen::Vector3d const& edgeA, Eigen::Vector3d const& edgeB);

    [[nodiscard]] Eigen::Vector3d const& corner() const { return corner_; }
    [[nodiscard]] Eigen::Vector3d edgeA() const { return directionA_ * lengthA_; }
    [[nodiscard]] Eigen::Vector3d edgeB() const { return directionB_ * lengthB_; }
    [[nodiscard]] Eigen::Vector3d const& normal() const { return normal_; }

    /// From a point to the nearest point of the rectangle.
    [[nodiscard]] double distance(Eigen::Vector3d const& point) const;

    /// How far along a ray of unit direction the rectangle is met; nothing if it is missed or lies behind.
    [[nodiscard]] std::optional<double> hit(Eigen::Vector3d const& origin,
                                            Eigen::Vector3d const& direction) const;

private:
    Eigen::Vector3d corner_;
    Eigen::Vector3d directionA_;
    Eigen::Vector3d directionB_;
    Eigen::Vector3d normal_;
    double lengthA_;
    double lengthB_;
};

} // namespace oV::Roamscan::tool
