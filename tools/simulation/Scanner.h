#pragma once

#include "tools/geometry/Building.h"
#include "tools/points/CloudPoint.h"
#include "tools/simulation/Motion.h"

#include <Eigen/Geometry>

#include <cstdint>
#include <functional>

namespace oV::Roamscan::tool
{

/// A rangefinder that spins about its z axis and measures at right angles to it.
struct Scanner
{
    Eigen::Isometry3d bodyFromHead = Eigen::Isometry3d::Identity();
    double pointsPerSecond = 20'000.0;
    double turnsPerSecond = 19.7;    ///< No simple fraction of the points, so that lines do not repeat.
    double shortestRange = 0.1;      ///< Metres.
    double longestRange = 30.0;      ///< Metres.
    double rangeDeviation = 0.003;   ///< Metres, standard deviation of the normally distributed noise.
    double shareWithoutTime = 0.005; ///< Points whose time got lost on the way.
    double overhang = 0.2;           ///< Seconds that it runs before the motion starts and after it stops.
};

/// Takes the points of a scan, in the head's frame, in order of their times.
using PointSink = std::function<void(CloudPoint const&)>;

/// Scans a building on the way. Rays that meet nothing give no point. The same seed gives the same points.
void scan(Scanner const& scanner,
          Motion const& motion,
          Building const& building,
          std::uint64_t seed,
          PointSink const& sink);

} // namespace oV::Roamscan::tool
