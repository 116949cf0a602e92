#pragma once

#include <Eigen/Core>

#include <optional>

namespace oV::Roamscan::tool
{

/// A rectangle in space with two visible sides.
class Rectangle
{
public:
    /// @param edgeA and `edgeB`: the edges from the corner, at a right angle
    Rectangle(Eigen::Vector3d const& corner, Eigen::Vector3d const& edgeA, Eigen::Vector3d const& edgeB);

    [[nodiscard]] Eigen::Vector3d const& corner() const { return corner_; }
    [[nodiscard]] Eigen::Vector3d edgeA() const { return directionA_ * lengthA_; }
    [[nodiscard]] Eigen::Vector3d edgeB() const { return directionB_ * lengthB_; }
    [[nodiscard]] Eigen::Vector3d const& normal() const { return normal_; }

    /// The distance between a point and the rectangle.
    [[nodiscard]] double distance(Eigen::Vector3d const& point) const;

    /// The distance along a ray of unit direction to the rectangle; nothing if the ray does not hit it.
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
