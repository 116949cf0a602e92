#include "tools/simulation/Scanner.h"

#include "tools/console/ProgressBar.h"
#include "tools/simulation/RandomNumbers.h"

#include <roamscan/time/EigenConversion.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector3d;

/// The purposes of random numbers.
enum Purpose : std::uint64_t
{
    RangeNoise = 1,
    LostTime = 2,
    IntensityNoise = 3
};

/// Higher for bright surfaces and steep rays.
std::uint16_t intensityOf(double reflectance, RayHit const& hit, double noise)
{
    double const share = reflectance * (0.25 + 0.75 * hit.cosIncidence) * (1.0 + 0.03 * noise);
    return static_cast<std::uint16_t>(std::lround(65535.0 * std::clamp(share, 0.0, 1.0)));
}

} // namespace

void scan(Scanner const& scanner,
          Motion const& motion,
          Building const& building,
          std::uint64_t seed,
          PointSink const& sink)
{
    double const from = motion.startTime() - scanner.overhang;
    double const to = motion.stopTime() + scanner.overhang;
    auto const count = static_cast<std::uint64_t>(std::floor((to - from) * scanner.pointsPerSecond)) + 1;
    RandomNumbers const random(seed);
    ProgressBar progress("scanning", count);
    for (std::uint64_t i = 0; i < count; ++i) {
        progress.advanceTo(i);
        double const elapsed = static_cast<double>(i) / scanner.pointsPerSecond;
        double const time = from + elapsed;
        double const turns = elapsed * scanner.turnsPerSecond;
        double const angle = 2.0 * std::numbers::pi * (turns - std::floor(turns));
        Vector3d const direction(std::cos(angle), std::sin(angle), 0.0);

        Eigen::Isometry3d const head = motion.at(time) * scanner.bodyFromHead;
        auto const hit =
            building.castRay(head.translation(), head.linear() * direction, scanner.longestRange);
        if (!hit || hit->range < scanner.shortestRange) {
            continue;
        }
        double const range = hit->range + scanner.rangeDeviation * random.normal(i, RangeNoise);
        Vector3d const point = range * direction;
        bool const lost = random.uniform(i, LostTime) < scanner.shareWithoutTime;
        sink({{toVec3d(point.cast<float>()),
               intensityOf(
                   building.surfaces[hit->surface].reflectance, *hit, random.normal(i, IntensityNoise))},
              lost ? std::numeric_limits<double>::quiet_NaN() : time});
    }
}

} // namespace oV::Roamscan::tool
