#pragma once

#include "tools/simulation/Motion.h"

#include <Eigen/Core>

#include <vector>

namespace oV::Roamscan::tool
{

/// A person who walks along a closed line, round after round, facing forwards. The body sways, nods and bobs
/// with the steps. The motion is smooth: the line is a uniform B-spline of degree 5, which rounds the corners
/// and has continuous derivatives up to the fourth.
class WalkMotion : public Motion
{
public:
    /// `corners` of the closed line on the floor, at least three; `duration` in seconds; `phase` of the steps
    /// in radians.
    WalkMotion(std::vector<Eigen::Vector2d> const& corners, double duration, double phase);

    [[nodiscard]] Eigen::Isometry3d at(double time) const override;

private:
    /// Position and velocity on the line.
    struct Place
    {
        Eigen::Vector2d position;
        Eigen::Vector2d velocity;
    };
    [[nodiscard]] Place placeAt(double time) const;

    std::vector<Eigen::Vector2d> controlPoints_; // evenly spaced along the line
    double pointsPerSecond_;
    double phase_;
};

} // namespace oV::Roamscan::tool
