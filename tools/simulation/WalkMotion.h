#pragma once

#include "tools/simulation/Motion.h"

#include <Eigen/Core>

#include <vector>

namespace oV::Roamscan::tool
{

/// Somebody who walks round and round along a closed line, looking where they go. The body sways, nods and
/// bobs with the steps. Position and attitude are smooth: the line is a spline of the fifth degree, without a
/// jump up to the fourth derivative, that rounds off the corners.
class WalkMotion : public Motion
{
public:
    /// `corners` of the closed line on the floor, at least three; `duration` in seconds; `phase` of the steps
    /// in radians.
    WalkMotion(std::vector<Eigen::Vector2d> const& corners, double duration, double phase);

    [[nodiscard]] double startTime() const override;
    [[nodiscard]] double stopTime() const override;
    [[nodiscard]] Eigen::Isometry3d at(double time) const override;

private:
    /// On the line: where, and which way per second.
    struct Place
    {
        Eigen::Vector2d position;
        Eigen::Vector2d velocity;
    };
    [[nodiscard]] Place placeAt(double time) const;

    std::vector<Eigen::Vector2d> controlPoints_; // evenly spaced along the line
    double pointsPerSecond_;
    double duration_;
    double phase_;
};

} // namespace oV::Roamscan::tool
