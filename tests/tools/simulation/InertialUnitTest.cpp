#include "tools/simulation/InertialUnit.h"

#include "tools/simulation/RoomPlan.h"
#include "tools/simulation/WalkMotion.h"

#include <roamscan/time/EigenConversion.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Eigen::Vector3d;

constexpr double gravity = 9.81;

/// Goes round a circle of 2 m radius about the origin, counterclockwise at half a radian per second, and
/// looks along the radius, outwards. The circle lies in the plane of x and y.
class CirclingMotion : public Motion
{
public:
    explicit CirclingMotion(double start, double turning = 0.5)
        : Motion(start, start + 2.0), turning_(turning)
    {}

    [[nodiscard]] Eigen::Isometry3d at(double time) const override
    {
        Eigen::Isometry3d pose = Eigen::Isometry3d::Identity();
        pose.rotate(Eigen::AngleAxisd(turning_ * (time - startTime()), Vector3d::UnitZ()));
        pose.translate(Vector3d(2.0, 0.0, 0.0));
        return pose;
    }

private:
    double turning_;
};

InertialUnit withoutNoise()
{
    InertialUnit unit;
    unit.forceDeviation = 0.0;
    unit.turningDeviation = 0.0;
    unit.magneticDeviation = 0.0;
    return unit;
}

/// The largest deviation of any sample from what is expected of all.
struct Deviation
{
    Deviation(SampleMap<mapping::ImuData> const& samples, Vector3d const& ofForce, Vector3d const& ofTurning)
    {
        for (auto const& [tick, sample] : samples) {
            force = std::max(force, (toEigen(sample->getLinearAcceleration()) - ofForce).norm());
            turning = std::max(turning, (toEigen(sample->getAngularVelocity()) - ofTurning).norm());
        }
    }

    double force = 0.0;
    double turning = 0.0;
};

Eigen::Matrix3d const level = Eigen::Matrix3d::Identity();

} // namespace

TEST(InertialUnit, SamplesFromStartToStop)
{
    auto const samples = measure(withoutNoise(), CirclingMotion(100.0), level, 1);
    ASSERT_EQ(samples.size(), 401U);
    EXPECT_EQ(samples.begin()->first, 10'000'000'000);
    EXPECT_EQ(samples.rbegin()->first, 10'200'000'000);
    EXPECT_EQ(samples.at(10'000'500'000)->getTimeStamp().get(), 100.005);
    EXPECT_FALSE(samples.begin()->second->hasMagneticField());
}

TEST(InertialUnit, AtRestFeelsGravityUpwardsAndNoTurning)
{
    Deviation const deviation(
        measure(withoutNoise(), CirclingMotion(100.0, 0.0), level, 1), {0.0, 0.0, gravity}, Vector3d::Zero());
    EXPECT_LT(deviation.force, 1e-9);
    EXPECT_LT(deviation.turning, 1e-9);
}

TEST(InertialUnit, FeelsTheCircleInItsOwnFrame)
{
    // Towards the centre: 0.5^2 times the radius.
    auto const unit = [](Vector3d const& place, double yaw) {
        InertialUnit mounted = withoutNoise();
        mounted.bodyFromUnit.translate(place);
        mounted.bodyFromUnit.rotate(Eigen::AngleAxisd(yaw, Vector3d::UnitZ()));
        return mounted;
    };
    CirclingMotion const motion(100.0);
    Vector3d const turning(0.0, 0.0, 0.5);
    Deviation const inBody(
        measure(unit(Vector3d::Zero(), 0.0), motion, level, 1), {-0.5, 0.0, gravity}, turning);
    EXPECT_LT(inBody.force, 1e-4);
    EXPECT_LT(inBody.turning, 1e-6);
    Deviation const farther(
        measure(unit({1.0, 0.0, 0.0}, 0.0), motion, level, 1), {-0.75, 0.0, gravity}, turning);
    EXPECT_LT(farther.force, 1e-4);
    Deviation const turned(measure(unit(Vector3d::Zero(), std::numbers::pi / 2.0), motion, level, 1),
                           {0.0, 0.5, gravity},
                           turning);
    EXPECT_LT(turned.force, 1e-4);
}

TEST(InertialUnit, FeelsTheTurningAlongItsOwnAxes)
{
    InertialUnit unit = withoutNoise();
    unit.bodyFromUnit.rotate(Eigen::AngleAxisd(std::numbers::pi / 2.0, Vector3d::UnitY())); // its -x is up
    Deviation const deviation(
        measure(unit, CirclingMotion(100.0), level, 1), {-gravity, 0.0, -0.5}, {-0.5, 0.0, 0.0});
    EXPECT_LT(deviation.force, 1e-4);
    EXPECT_LT(deviation.turning, 1e-6);
}

TEST(InertialUnit, YearsOfSecondsDoNotSwallowTheMotion)
{
    Deviation const deviation(measure(withoutNoise(), CirclingMotion(1403715524.907143), level, 1),
                              {-0.5, 0.0, gravity},
                              {0, 0, 0.5});
    EXPECT_LT(deviation.force, 0.05);
    EXPECT_LT(deviation.turning, 0.001);
}

TEST(InertialUnit, UpIsThatOfThePlan)
{
    Eigen::Matrix3d planFromBuilding; // y is up, as in pictures turned over; -z is north
    planFromBuilding << 1, 0, 0, 0, 0, -1, 0, 1, 0;
    InertialUnit unit = withoutNoise();
    unit.hasCompass = true;
    auto const samples = measure(unit, CirclingMotion(100.0, 0.0), planFromBuilding, 1);
    Deviation const deviation(samples, {0.0, gravity, 0.0}, Vector3d::Zero());
    EXPECT_LT(deviation.force, 1e-9);
    auto const& last = *samples.rbegin()->second;
    ASSERT_TRUE(last.hasMagneticField());
    EXPECT_LT((toEigen(last.getMagneticField()) - Vector3d(0.0, -44.0, -20.0)).norm(), 1e-9);
}

TEST(InertialUnit, TheCompassTurnsWithTheUnit)
{
    InertialUnit unit = withoutNoise();
    unit.hasCompass = true;
    auto const samples = measure(unit, CirclingMotion(0.0), level, 1);
    Vector3d const start = toEigen(samples.at(0)->getMagneticField());
    EXPECT_LT((start - Vector3d(0.0, 20.0, -44.0)).norm(), 1e-9);
    Vector3d const turned = toEigen(samples.at(200'000'000)->getMagneticField()); // by one radian
    EXPECT_LT((turned - Vector3d(20.0 * std::sin(1.0), 20.0 * std::cos(1.0), -44.0)).norm(), 1e-9);
}

TEST(InertialUnit, TheForcesOfAWalkAddUpToItsVelocity)
{
    WalkMotion const motion(roundWalk(), 2.0, 1.0);
    InertialUnit const unit = withoutNoise();
    auto const velocityAt = [&](double time) -> Vector3d {
        return (motion.at(time + 1e-4).translation() - motion.at(time - 1e-4).translation()) / 2e-4;
    };
    Vector3d velocity = Vector3d::Zero();
    for (auto const& [tick, sample] : measure(unit, motion, level, 1)) {
        double const time = sample->getTimeStamp().get();
        // Each sample stands for the time around it, so the two at the ends count by half.
        bool const atEnd = time == motion.startTime() || time > motion.stopTime() - 0.001;
        Vector3d const force = motion.at(time).linear() * toEigen(sample->getLinearAcceleration());
        velocity += (atEnd ? 0.0025 : 0.005) * (force - Vector3d(0.0, 0.0, gravity));
    }
    Vector3d const gained = velocityAt(motion.stopTime()) - velocityAt(motion.startTime());
    EXPECT_GT(gained.norm(), 0.01) << "nothing to be seen in this walk";
    EXPECT_LT((velocity - gained).norm(), 0.001);
}

TEST(InertialUnit, TheNoiseHasItsDeviation)
{
    InertialUnit unit;
    unit.hasCompass = true;
    unit.samplesPerSecond = 2'000.0;
    double force = 0.0;
    double turning = 0.0;
    double magnetic = 0.0;
    auto const samples = measure(unit, CirclingMotion(100.0, 0.0), level, 1);
    for (auto const& [tick, sample] : samples) {
        force += (toEigen(sample->getLinearAcceleration()) - Vector3d(0.0, 0.0, gravity)).squaredNorm();
        turning += toEigen(sample->getAngularVelocity()).squaredNorm();
        magnetic += (toEigen(sample->getMagneticField()) - Vector3d(0.0, 20.0, -44.0)).squaredNorm();
    }
    auto const count = 3.0 * static_cast<double>(samples.size());
    EXPECT_NEAR(std::sqrt(force / count), unit.forceDeviation, 0.05 * unit.forceDeviation);
    EXPECT_NEAR(std::sqrt(turning / count), unit.turningDeviation, 0.05 * unit.turningDeviation);
    EXPECT_NEAR(std::sqrt(magnetic / count), unit.magneticDeviation, 0.05 * unit.magneticDeviation);
}

TEST(InertialUnit, SameSeedSameSamples)
{
    auto const numbers = [](std::uint64_t seed) {
        std::vector<double> found;
        for (auto const& [tick, sample] : measure(InertialUnit(), CirclingMotion(100.0), level, seed)) {
            found.push_back(sample->getLinearAcceleration().x);
            found.push_back(sample->getAngularVelocity().z);
        }
        return found;
    };
    EXPECT_EQ(numbers(1), numbers(1));
    EXPECT_NE(numbers(1), numbers(2));
}
