#include "tools/simulation/Scanner.h"

#include "tools/geometry/NearestSurface.h"
#include "tools/simulation/Instrument.h"
#include "tools/simulation/RoomPlan.h"
#include "tools/simulation/WalkMotion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using Eigen::Vector3d;

/// Stands still, turned by a quarter about z.
class StandingMotion : public Motion
{
public:
    StandingMotion() : Motion(50.0, 51.0) {}
    [[nodiscard]] Eigen::Isometry3d at(double /*time*/) const override
    {
        Eigen::Isometry3d pose = Eigen::Isometry3d::Identity();
        pose.translate(Vector3d(4.0, 3.0, 1.0));
        pose.rotate(Eigen::AngleAxisd(std::numbers::pi / 2.0, Vector3d::UnitZ()));
        return pose;
    }
};

std::vector<CloudPoint>
scanned(Scanner const& scanner, Motion const& motion, Building const& building, std::uint64_t seed)
{
    std::vector<CloudPoint> points;
    scan(scanner, motion, building, seed, [&](CloudPoint const& point) { points.push_back(point); });
    return points;
}

Building box()
{
    Building building;
    addShell(building, {0.0, 0.0, 0.0}, {10.0, 8.0, 3.0});
    return building;
}

} // namespace

TEST(Scanner, MeasuresInItsOwnFrameAtItsOwnTimes)
{
    Scanner scanner;
    scanner.rangeDeviation = 0.0;
    scanner.shareWithoutTime = 0.0;
    scanner.pointsPerSecond = 100.0;
    scanner.turnsPerSecond = 25.0; // four points a turn
    scanner.overhang = 0.0;
    auto const points = scanned(scanner, StandingMotion(), box(), 1);
    ASSERT_EQ(points.size(), 101U);
    // The head's x points along the building's y: 5 m to the north wall, then 4 m to the west wall, and so
    // on.
    EXPECT_NEAR(points[0].position.x, 5.0, 1e-5);
    EXPECT_NEAR(points[0].position.y, 0.0, 1e-5);
    EXPECT_NEAR(points[1].position.y, 4.0, 1e-5);
    EXPECT_NEAR(points[2].position.x, -3.0, 1e-5);
    EXPECT_NEAR(points[3].position.y, -6.0, 1e-5);
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(points[i].time, 50.0 + 0.01 * static_cast<double>(i), 1e-9);
        EXPECT_EQ(points[i].position.z, 0.0F);
    }
}

TEST(Scanner, RunsLongerThanTheMotionAndLosesSomeTimes)
{
    Scanner const scanner;
    auto const points = scanned(scanner, StandingMotion(), box(), 1);
    ASSERT_EQ(points.size(), 28'001U); // 1.4 s
    std::size_t lost = 0;
    std::size_t outside = 0;
    for (CloudPoint const& point : points) {
        lost += std::isnan(point.time) ? 1 : 0;
        outside += point.time < 50.0 || point.time > 51.0 ? 1 : 0;
    }
    EXPECT_NEAR(static_cast<double>(lost), 140.0, 60.0);
    EXPECT_NEAR(static_cast<double>(outside), 7960.0, 60.0);
}

TEST(Scanner, TheNoiseHasItsDeviation)
{
    Scanner scanner;
    scanner.turnsPerSecond = 0.0; // always straight at the north wall
    double sum = 0.0;
    double squares = 0.0;
    auto const points = scanned(scanner, StandingMotion(), box(), 1);
    for (CloudPoint const& point : points) {
        double const error = static_cast<double>(point.position.x) - 5.0;
        sum += error;
        squares += error * error;
    }
    auto const count = static_cast<double>(points.size());
    EXPECT_NEAR(sum / count, 0.0, 0.0002);
    EXPECT_NEAR(std::sqrt(squares / count), 0.003, 0.0001);
}

TEST(Scanner, SurfacesOutOfRangeGiveNoPoint)
{
    Scanner scanner;
    scanner.longestRange = 5.5;
    scanner.turnsPerSecond = 25.0;
    scanner.pointsPerSecond = 100.0;
    scanner.overhang = 0.0;
    EXPECT_EQ(scanned(scanner, StandingMotion(), box(), 1).size(), 76U); // 6 m to the east wall are too far
    scanner.shortestRange = 3.5;
    EXPECT_EQ(scanned(scanner, StandingMotion(), box(), 1).size(), 51U); // 3 m to the south wall are too near
    EXPECT_EQ(scanned(scanner, StandingMotion(), Building(), 1).size(), 0U);
}

TEST(Scanner, PointsAreOnTheSurfacesAtTheTruePoses)
{
    Building const building = roomPlan();
    NearestSurface const nearest(building);
    WalkMotion const motion(roundWalk(), 0.6, 0.0); // some twenty turns
    Scanner scanner;
    scanner.bodyFromHead = instrument().at(Device::Device1);
    scanner.rangeDeviation = 0.0;
    scanner.shareWithoutTime = 0.0;
    for (CloudPoint const& point : scanned(scanner, motion, building, 1)) {
        Vector3d const local = toEigen(point.position).cast<double>();
        ASSERT_LT(nearest.distance(motion.at(point.time) * scanner.bodyFromHead * local), 1e-5) << point.time;
    }
}

TEST(Scanner, SameSeedSamePoints)
{
    auto const bytes = [](std::uint64_t seed) {
        auto const points = scanned(Scanner(), StandingMotion(), box(), seed);
        std::vector<float> numbers;
        for (CloudPoint const& point : points) {
            numbers.insert(
                numbers.end(),
                {point.position.x, point.position.y, point.position.z, static_cast<float>(point.intensity)});
        }
        return numbers;
    };
    EXPECT_EQ(bytes(1), bytes(1));
    EXPECT_NE(bytes(1), bytes(2));
}
