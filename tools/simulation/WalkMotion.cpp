#include "tools/simulation/WalkMotion.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector2d;
using Eigen::Vector3d;

constexpr double beginning = 1000.0; // seconds; recordings rarely start at zero
constexpr double speed = 1.25;       // metres per second along the line
constexpr double spacing = 0.6;      // metres between control points, approximately
constexpr double carryHeight = 1.4;  // metres
constexpr double stepsPerSecond = 1.8;

/// Amplitudes of the motion of the body by the steps.
constexpr double sway = 0.03; // metres to either side, once per two steps
constexpr double bob = 0.015; // metres up and down, with each step
constexpr double roll = 0.02; // radians, with the sway
constexpr double nod = 0.025; // radians, with the bob
constexpr double yaw = 0.03;  // radians, with the sway

/// The six pieces of the uniform B-spline basis of degree 5, as polynomials in the fraction between two
/// control points: 120 times the coefficients, the constant term first.
constexpr std::size_t pieces = 6;
constexpr std::array<std::array<double, pieces>, pieces> basis{{
    {1.0, -5.0, 10.0, -10.0, 5.0, -1.0},
    {26.0, -50.0, 20.0, 20.0, -20.0, 5.0},
    {66.0, 0.0, -60.0, 0.0, 30.0, -10.0},
    {26.0, 50.0, 20.0, -20.0, -20.0, 10.0},
    {1.0, 5.0, 10.0, 10.0, 5.0, -5.0},
    {0.0, 0.0, 0.0, 0.0, 0.0, 1.0},
}};
constexpr double basisScale = 1.0 / 120.0;

double lineLength(std::vector<Vector2d> const& corners)
{
    double length = 0.0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        length += (corners[(i + 1) % corners.size()] - corners[i]).norm();
    }
    return length;
}

/// `count` points along the closed line at equal steps.
std::vector<Vector2d> evenlySpaced(std::vector<Vector2d> const& corners, std::size_t count)
{
    double const step = lineLength(corners) / static_cast<double>(count);
    std::vector<Vector2d> points;
    double ahead = 0.0; // from the corner to the next point
    for (std::size_t i = 0; i < corners.size() && points.size() < count; ++i) {
        Vector2d const edge = corners[(i + 1) % corners.size()] - corners[i];
        double const length = edge.norm();
        for (; ahead < length && points.size() < count; ahead += step) {
            points.emplace_back(corners[i] + edge * (ahead / length));
        }
        ahead -= length;
    }
    return points;
}

} // namespace

WalkMotion::WalkMotion(std::vector<Vector2d> const& corners, double duration, double phase)
    : Motion(beginning, beginning + duration),
      controlPoints_(
          evenlySpaced(corners, static_cast<std::size_t>(std::ceil(lineLength(corners) / spacing)))),
      pointsPerSecond_(speed / (lineLength(corners) / static_cast<double>(controlPoints_.size()))),
      phase_(phase)
{}

WalkMotion::Place WalkMotion::placeAt(double time) const
{
    auto const count = static_cast<double>(controlPoints_.size());
    double const along = (time - beginning) * pointsPerSecond_;
    double const round = along - std::floor(along / count) * count; // from 0 to count
    double const whole = std::floor(round);
    double const f = round - whole;
    Place place{Vector2d::Zero(), Vector2d::Zero()};
    for (std::size_t piece = 0; piece < pieces; ++piece) {
        double value = 0.0;
        double slope = 0.0;
        for (std::size_t power = pieces; power-- > 0;) {
            slope = slope * f + value;
            value = value * f + basis[piece][power];
        }
        Vector2d const& point =
            controlPoints_[(static_cast<std::size_t>(whole) + piece) % controlPoints_.size()];
        place.position += basisScale * value * point;
        place.velocity += basisScale * pointsPerSecond_ * slope * point;
    }
    return place;
}

Eigen::Isometry3d WalkMotion::at(double time) const
{
    Place const place = placeAt(time);
    double const step = 2.0 * std::numbers::pi * stepsPerSecond * (time - beginning) + phase_;
    double const side = std::sin(step / 2.0);
    double const lift = std::sin(step);
    double const heading = std::atan2(place.velocity.y(), place.velocity.x());
    Vector2d const left = Vector2d(-place.velocity.y(), place.velocity.x()).normalized();
    Vector2d const onFloor = place.position + sway * side * left;

    Eigen::Isometry3d pose = Eigen::Isometry3d::Identity();
    pose.translate(Vector3d(onFloor.x(), onFloor.y(), carryHeight + bob * lift));
    pose.rotate(Eigen::AngleAxisd(heading + yaw * side, Vector3d::UnitZ()));
    pose.rotate(Eigen::AngleAxisd(nod * lift, Vector3d::UnitY()));
    pose.rotate(Eigen::AngleAxisd(roll * side, Vector3d::UnitX()));
    return pose;
}

} // namespace oV::Roamscan::tool
