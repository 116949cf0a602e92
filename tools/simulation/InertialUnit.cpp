#include "tools/simulation/InertialUnit.h"

#include "tools/simulation/RandomNumbers.h"

#include <roamscan/time/EigenConversion.h>
#include <roamscan/time/TimeConversion.h>

#include <cmath>
#include <memory>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector3d;

/// The purposes of random numbers; each takes three, one for each axis.
enum Purpose : std::uint64_t
{
    ForceNoise = 1,
    TurningNoise = 4,
    MagneticNoise = 7
};

constexpr double gravity = 9.81;        // m/s^2
constexpr double velocityTime = 0.005;  // seconds
constexpr double northwardField = 20.0; // microtesla
constexpr double downwardField = 44.0;  // microtesla

/// The motion of the unit at an instant, by central differences.
struct Moving
{
    Eigen::Matrix3d unitFromBuilding; ///< The rotation only.
    Vector3d acceleration;            ///< In the building's frame.
    Vector3d angularVelocity;         ///< In the unit's frame.
};

Moving movingAt(double time, Motion const& motion, Eigen::Isometry3d const& bodyFromUnit)
{
    double const earlier = time - velocityTime;
    double const later = time + velocityTime;
    Eigen::Isometry3d const before = motion.at(earlier) * bodyFromUnit;
    Eigen::Isometry3d const now = motion.at(time) * bodyFromUnit;
    Eigen::Isometry3d const after = motion.at(later) * bodyFromUnit;
    // Far from time zero, the rounded times are not exactly velocityTime apart.
    Vector3d const arriving = (now.translation() - before.translation()) / (time - earlier);
    Vector3d const leaving = (after.translation() - now.translation()) / (later - time);
    Eigen::AngleAxisd const turn(before.linear().transpose() * after.linear());
    double const span = later - earlier;
    return {
        now.linear().transpose(), (leaving - arriving) / (span / 2.0), turn.axis() * (turn.angle() / span)};
}

} // namespace

SampleMap<mapping::ImuData> measure(InertialUnit const& unit,
                                    Motion const& motion,
                                    Eigen::Matrix3d const& planFromBuilding,
                                    std::uint64_t seed)
{
    Vector3d const upwards = planFromBuilding.transpose() * Vector3d(0.0, 0.0, gravity);
    Vector3d const field = planFromBuilding.transpose() * Vector3d(0.0, northwardField, -downwardField);
    RandomNumbers const random(seed);
    double const duration = motion.stopTime() - motion.startTime();
    auto const count = static_cast<std::uint64_t>(std::floor(duration * unit.samplesPerSecond)) + 1;
    SampleMap<mapping::ImuData> samples;
    for (std::uint64_t i = 0; i < count; ++i) {
        auto const noise = [&](double deviation, Purpose purpose) -> Vector3d {
            return deviation * Vector3d(random.normal(i, purpose),
                                        random.normal(i, purpose + 1),
                                        random.normal(i, purpose + 2));
        };
        double const time = motion.startTime() + static_cast<double>(i) / unit.samplesPerSecond;
        Moving const moving = movingAt(time, motion, unit.bodyFromUnit);
        auto const force = toVector3(moving.unitFromBuilding * (moving.acceleration + upwards) +
                                     noise(unit.forceDeviation, ForceNoise));
        auto const turning = toVector3(moving.angularVelocity + noise(unit.turningDeviation, TurningNoise));
        auto const magnetic =
            toVector3(moving.unitFromBuilding * field + noise(unit.magneticDeviation, MagneticNoise));
        mapping::TimeStamp const stamp(time);
        samples.insert_or_assign(
            samples.end(),
            TimeConversion::convertToIntegerTime(time),
            unit.hasCompass ? std::make_shared<mapping::ImuData const>(stamp, force, turning, magnetic)
                            : std::make_shared<mapping::ImuData const>(stamp, force, turning));
    }
    return samples;
}

} // namespace oV::Roamscan::tool
