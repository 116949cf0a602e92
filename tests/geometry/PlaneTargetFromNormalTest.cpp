/// @file
/// Plane targets from a normal: which axis is chosen, and the resulting rotation.

#include "tests/support/PlaneTargets.h"
#include "tests/support/RandomPoses.h"
#include "tests/support/SpecialNumbers.h"

#include <roamscan/geometry/PlaneTarget.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace
{

using oV::Roamscan::invalidTarget;
using oV::Roamscan::PlaneTarget;
using support::expectFrame;
using support::near;
using support::notANumber;

using Vector = Eigen::Matrix<double, 3, 1>;
using Matrix = Eigen::Matrix<double, 3, 3>;

constexpr double tolerance = 1e-14;

TEST(PlaneTargetFromNormal, TheNormalAlongXPicksY)
{
    // Y although z is as small: a = (0, 0, 1) and b = (0, -1, 0); the frame is read row by row.
    expectFrame(PlaneTarget(Vector(1, 0, 0)), {0, 0, 1}, {0, -1, 0}, {1, 0, 0});
}

TEST(PlaneTargetFromNormal, TheNormalAlongYPicksX)
{
    // a = (0, 0, -1) and b = (-1, 0, 0).
    expectFrame(PlaneTarget(Vector(0, 1, 0)), {0, -1, 0}, {0, 0, 1}, {-1, 0, 0});
}

TEST(PlaneTargetFromNormal, TheNormalAlongZPicksX)
{
    // a = (0, 1, 0) and b = (-1, 0, 0).
    expectFrame(PlaneTarget(Vector(0, 0, 1)), {0, -1, 0}, {1, 0, 0}, {0, 0, 1});
}

TEST(PlaneTargetFromNormal, NegativeNormalsPickByTheirSizes)
{
    expectFrame(PlaneTarget(Vector(-1, 0, 0)), {0, 0, -1}, {0, -1, 0}, {-1, 0, 0});
    expectFrame(PlaneTarget(Vector(0, -1, 0)), {0, -1, 0}, {0, 0, -1}, {1, 0, 0});
    expectFrame(PlaneTarget(Vector(0, 0, -1)), {0, -1, 0}, {-1, 0, 0}, {0, 0, -1});
}

TEST(PlaneTargetFromNormal, EqualComponentsPickX)
{
    // a = n cross X = (0, 1, -1) and b = n cross a = (-2, 1, 1), for n = (1, 1, 1).
    double const two = 1 / std::sqrt(2.0);
    double const three = 1 / std::sqrt(3.0);
    double const six = 1 / std::sqrt(6.0);
    expectFrame(PlaneTarget(Vector(1, 1, 1)), {0, -2 * six, three}, {two, six, three}, {-two, six, three});
}

TEST(PlaneTargetFromNormal, EqualXAndZAboveYPickY)
{
    // a = n cross Y = (-1, 0, 1) and b = n cross a = (0, -2, 0), for n = (1, 0, 1).
    double const two = 1 / std::sqrt(2.0);
    expectFrame(PlaneTarget(Vector(1, 0, 1)), {-two, 0, two}, {0, -1, 0}, {two, 0, two});
}

TEST(PlaneTargetFromNormal, TheNormalInTheXYPlanePicksZ)
{
    // a = (4, -3, 0) and b = (0, 0, -25), for n = (3, 4, 0) of length 5.
    expectFrame(PlaneTarget(Vector(3, 4, 0)), {0.8, 0, 0.6}, {-0.6, 0, 0.8}, {0, -1, 0});
}

TEST(PlaneTargetFromNormal, TheNormalConstructorGivesTheThirdRowOfItsFrame)
{
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        support::RandomPoses random(seed);
        Vector const n(random.number(-5, 5), random.number(-5, 5), random.number(-5, 5));
        Eigen::Index smallest = 0;
        n.cwiseAbs().minCoeff(&smallest);
        // By angles rather than by cross products: b is the axis made perpendicular to n and
        // turned round, and a is b a quarter turn back.
        Vector const normal = n / n.norm();
        Vector const axis = Vector::Unit(smallest);
        Vector const b = (normal * normal.dot(axis) - axis).normalized();
        Vector const a = Eigen::AngleAxis<double>(std::numbers::pi / 2, -normal) * b;
        Matrix frame;
        frame << a, b, normal;
        PlaneTarget const target(n);
        EXPECT_TRUE(near(target.majAxis(), frame.row(0).transpose(), 1e-13));
        EXPECT_TRUE(near(target.minAxis(), frame.row(1).transpose(), 1e-13));
        EXPECT_TRUE(near(target.normal(), frame.row(2).transpose(), 1e-13));
        // The conjugate takes Z to the normal.
        EXPECT_TRUE(near(target.rotation().conjugate() * Vector::UnitZ(), normal, 1e-13));
    }
}

TEST(PlaneTargetFromNormal, NormalOfAnyUsualLengthGivesTheSameRotation)
{
    auto const unit = PlaneTarget(Vector(1, 2, -3).normalized()).rotation();
    for (double const length : {1e-75, 1e-3, 1e3, 1e75}) {
        SCOPED_TRACE(length);
        auto const rotation = PlaneTarget(Vector(1, 2, -3).normalized() * length).rotation();
        EXPECT_TRUE(rotation.coeffs().isApprox(unit.coeffs(), tolerance));
    }
}

TEST(PlaneTargetFromNormal, AxesAreComputedFromTheUnnormalisedNormal)
{
    // a = (0, 1e-120, 0) becomes a unit vector; b = (-1e-240, 0, 0), whose square is zero, stays. In the
    // matrix of a, b and n, four times w squared is 2 and four times w times z is 1 - b.x.
    auto const rotation = PlaneTarget(Vector(0, 0, 1e-120)).rotation();
    EXPECT_DOUBLE_EQ(rotation.w(), std::numbers::sqrt2 / 2);
    EXPECT_DOUBLE_EQ(rotation.z(), -std::numbers::sqrt2 / 4);
    EXPECT_EQ(rotation.x(), 0);
    EXPECT_EQ(rotation.y(), 0);
}

TEST(PlaneTargetFromNormal, ZeroNormalGivesSomeQuaternion)
{
    PlaneTarget const target(Vector::Zero(), Vector(1, 2, 3));
    EXPECT_EQ(target.position(), Vector(1, 2, 3));
    EXPECT_TRUE(target.rotation().coeffs().allFinite());
}

TEST(PlaneTargetFromNormal, NormalOfNaNGivesNaN)
{
    PlaneTarget const target(Vector(notANumber, 0, 1), Vector(1, 2, 3));
    EXPECT_EQ(target.id(), invalidTarget);
    EXPECT_EQ(target.position(), Vector(1, 2, 3));
    EXPECT_TRUE(target.normal().hasNaN());
}

} // namespace
