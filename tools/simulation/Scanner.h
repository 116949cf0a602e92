#pragma once

#include "tools/geometry/Building.h"
#include "tools/points/CloudPoint.h"
#include "tools/simulation/Motion.h"

#include <Eigen/Geometry>

#include <cstdint>
#include <functional>

namespace oV::Roamscan::tool
{

/// A rangefinder that rotates about its z axis and measures at right angles to it.
struct Scanner
{
    Eigen::Isometry3d bodyFromHead = Eigen::Isometry3d::Identity();
    double pointsPerSecond = 20'000.0;
    double turnsPerSecond = 19.7;    ///< Not a simple fraction of the points, so that lines do not repeat.
    double shortestRange = 0.1;      ///< Metres.
    double longestRange = 30.0;      ///< Metres.
    double rangeDeviation = 0.003;   ///< Metres, standard deviation of the normally distributed noise.
    double shareWithoutTime = 0.005; ///< Points whose time is missing.
    double overhang = 0.2; ///< Seconds of scanning before the start and after the stop of the motion.
};

/// Receives the points of a scan, in the frame of the head, in order of their times.
using PointSink = std::function<void(CloudPoint const&)>;

/// Scans a building during a motion. Rays that hit nothing give no point. The same seed gives the same
/// points.
void scan(Scanner const& scanner,
          Motion const& motion,
          Building const& building,
          std::uint64_t seed,
          PointSink const& sink);

} // namespace oV::Roamscan::tool
