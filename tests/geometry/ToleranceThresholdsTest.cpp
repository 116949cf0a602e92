#include "tests/support/SpecialNumbers.h"

#include <roamscan/geometry/ToleranceThresholds.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace
{

using oV::Roamscan::ToleranceThresholds;
using oV::Roamscan::TrafoT;
using support::infinity;
using support::notANumber;
using Name = ToleranceThresholds::ThresholdName;

using Vector = Eigen::Matrix<double, 3, 1>;
using Poses = std::vector<TrafoT<double>>;
using Points = std::vector<Vector>;

constexpr double pi = std::numbers::pi;
constexpr std::array<Name, 4> namesInOrder = {Name::MaxPhi, Name::MinPhi, Name::MaxTheta, Name::MinTheta};

Poses const onlyIdentity = {TrafoT<double>::Identity()};

// A point at this azimuth in the plane of x and y.
Vector at(double distance, double azimuth)
{
    return {distance * std::cos(azimuth), distance * std::sin(azimuth), 0};
}

// From 0.5 rad in bin 100 to 1.5 rad in bin 200: one hundredth of a radian for each bin.
ToleranceThresholds ramp()
{
    return {onlyIdentity, {at(1, 0.5), at(2, 1.5)}};
}

void expectEmpty(ToleranceThresholds thresholds)
{
    EXPECT_THROW((void)thresholds.getThreshold(Name::MaxPhi, 1), std::out_of_range);
}

TEST(ToleranceThresholds, NamesHaveTheirValues)
{
    static_assert(std::is_same_v<std::underlying_type_t<Name>, int>);
    EXPECT_EQ(static_cast<int>(Name::MaxPhi), 0);
    EXPECT_EQ(static_cast<int>(Name::MinPhi), 1);
    EXPECT_EQ(static_cast<int>(Name::MaxTheta), 2);
    EXPECT_EQ(static_cast<int>(Name::MinTheta), 3);
}

// The angles

TEST(ToleranceThresholds, WithoutPosesEveryBinHoldsTheStartingValues)
{
    ToleranceThresholds thresholds({}, {Vector(1, 0, 0), Vector(0, 2, 0)});
    for (double const distance : {0.0, 1.0, 1.5, 2.0, 3.0}) {
        EXPECT_EQ(thresholds.getThreshold(Name::MaxPhi, distance), -1000.0);
        EXPECT_EQ(thresholds.getThreshold(Name::MinPhi, distance), 1000.0);
        EXPECT_EQ(thresholds.getThreshold(Name::MaxTheta, distance), -1000.0);
        EXPECT_EQ(thresholds.getThreshold(Name::MinTheta, distance), 1000.0);
    }
}

TEST(ToleranceThresholds, OnePoseAndPointsAlongXGiveZeroAndAQuarterTurn)
{
    ToleranceThresholds thresholds(onlyIdentity, {Vector(1, 0, 0), Vector(2, 0, 0)});
    for (double const distance : {0.5, 1.0, 1.5, 1.99, 2.0, 10.0}) {
        EXPECT_EQ(thresholds.getThreshold(Name::MaxPhi, distance), 0.0);
        EXPECT_EQ(thresholds.getThreshold(Name::MinPhi, distance), 0.0);
        EXPECT_EQ(thresholds.getThreshold(Name::MaxTheta, distance), std::acos(0.0));
        EXPECT_EQ(thresholds.getThreshold(Name::MinTheta, distance), std::acos(0.0));
    }
}

TEST(ToleranceThresholds, ThetaIsTheAngleFromZ)
{
    ToleranceThresholds up(onlyIdentity, {Vector(0, 0, 1), Vector(0, 0, 2)});
    EXPECT_EQ(up.getThreshold(Name::MaxTheta, 1), 0.0);
    ToleranceThresholds down(onlyIdentity, {Vector(0, 0, -1), Vector(0, 0, -2)});
    EXPECT_EQ(down.getThreshold(Name::MaxTheta, 1), pi);
}

TEST(ToleranceThresholds, SeesAPointInTheFrameOfThePose)
{
    // The scanner is at (1, 0, 0) and looks along y: the point (1, 2, 0) lies ahead of it, on its x axis.
    double const half = std::numbers::sqrt2 / 2;
    TrafoT<double> const pose(Vector(1, 0, 0), Eigen::Quaternion<double>(half, 0, 0, half), true);
    ToleranceThresholds thresholds({pose}, {Vector(1, 2, 0), Vector(1, 3, 0)});
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1), 0, 1e-15);
    EXPECT_NEAR(thresholds.getThreshold(Name::MinPhi, 1), 0, 1e-15);
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxTheta, 1), pi / 2, 1e-15);
}

TEST(ToleranceThresholds, BoundsReachOverAllPoses)
{
    // From (1, 1, 1), (1, -1, 0) and (1, 0, -1) the point (2, 0, 0) is seen in these directions.
    Poses const poses = {TrafoT<double>::Translation({1, 1, 1}),
                         TrafoT<double>::Translation({1, -1, 0}),
                         TrafoT<double>::Translation({1, 0, -1})};
    ToleranceThresholds thresholds(poses, {Vector(2, 0, 0), Vector(2.003, 0, 0)});
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 2), pi / 4, 0.002);
    EXPECT_NEAR(thresholds.getThreshold(Name::MinPhi, 2), -pi / 4, 0.002);
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxTheta, 2), std::acos(-1 / std::sqrt(3)), 0.002);
    EXPECT_NEAR(thresholds.getThreshold(Name::MinTheta, 2), pi / 4, 0.002);
}

TEST(ToleranceThresholds, AzimuthIsNotUnwrappedAcrossPi)
{
    // On the negative x axis, seen from either side of it.
    Poses const poses = {TrafoT<double>::Translation({0, 0.1, 0}), TrafoT<double>::Translation({0, -0.1, 0})};
    ToleranceThresholds thresholds(poses, {Vector(-1, 0, 0), Vector(-1.003, 0, 0)});
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1), pi - 0.1, 0.001);
    EXPECT_NEAR(thresholds.getThreshold(Name::MinPhi, 1), -pi + 0.1, 0.001);
}

TEST(ToleranceThresholds, PointAtThePositionOfAPoseHasNoPolarAngle)
{
    // Two poses and the point in bin 100 at the first one's, in either order.
    TrafoT<double> const there = TrafoT<double>::Translation({1, 0, 0});
    TrafoT<double> const apart = TrafoT<double>::Translation({0, -1, 0});
    for (Poses const& poses : {Poses{there, apart}, Poses{apart, there}, Poses{there}}) {
        ToleranceThresholds thresholds(poses, {Vector(1, 0, 0), Vector(3, 0, 0)});
        EXPECT_TRUE(std::isnan(thresholds.getThreshold(Name::MaxTheta, 1)));
        EXPECT_TRUE(std::isnan(thresholds.getThreshold(Name::MinTheta, 1)));
        EXPECT_EQ(thresholds.getThreshold(Name::MinPhi, 1), 0.0);
        EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1), poses.size() == 1 ? 0 : pi / 4, 1e-15);
    }
}

TEST(ToleranceThresholds, APoseOfNaNMakesAllBoundsNaN)
{
    ToleranceThresholds thresholds({TrafoT<double>::Identity(), TrafoT<double>::Invalid()},
                                   {Vector(1, 0, 0), Vector(2, 0, 0)});
    for (Name const name : namesInOrder) {
        EXPECT_TRUE(std::isnan(thresholds.getThreshold(name, 1)));
    }
}

// The table

TEST(ToleranceThresholds, InterpolatesLinearlyBetweenTheBinsOfThePoints)
{
    ToleranceThresholds thresholds = ramp();
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1.26), 0.75, 1e-14); // bin 125
    EXPECT_NEAR(thresholds.getThreshold(Name::MinPhi, 1.76), 1.25, 1e-14); // bin 175
}

TEST(ToleranceThresholds, LookupLagsOneBin)
{
    ToleranceThresholds thresholds = ramp();
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1.5), 0.99, 1e-14); // bin 150 gives bin 149
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1.01), 0.5, 1e-14); // bin 101 gives bin 100
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1.02), 0.51, 1e-14);
}

TEST(ToleranceThresholds, LookupLagsOneBinAlsoInATableFromBinZero)
{
    ToleranceThresholds thresholds(onlyIdentity, {at(0.001, 0.0), at(1, 1.0)}); // bins 0 and 100
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 0.5), 0.49, 1e-14);
    EXPECT_EQ(thresholds.getThreshold(Name::MaxPhi, 0.0), 0.0);
    EXPECT_EQ(thresholds.getThreshold(Name::MaxPhi, 0.01), 0.0);
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 0.02), 0.01, 1e-14);
}

TEST(ToleranceThresholds, BeyondTheLastBinTheLastBinIsUsed)
{
    ToleranceThresholds thresholds = ramp();
    for (double const distance : {2.0, 2.5, 1e6, 1e300, infinity}) {
        EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, distance), 1.49, 1e-14) << distance;
    }
}

TEST(ToleranceThresholds, BelowTheFirstBinTheFirstBinIsUsed)
{
    ToleranceThresholds thresholds = ramp();
    for (double const distance : {1.0, 0.99, 0.0, -1.0, -1e300, -infinity, notANumber}) {
        EXPECT_EQ(thresholds.getThreshold(Name::MaxPhi, distance), std::atan2(std::sin(0.5), std::cos(0.5)))
            << distance;
    }
}

TEST(ToleranceThresholds, DistancesAreRoundedToTheNearestBin)
{
    ToleranceThresholds thresholds = ramp();
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1.5049), 0.99, 1e-14); // bin 150
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1.4951), 0.99, 1e-14);
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1.5051), 1.0, 1e-14); // bin 151
}

TEST(ToleranceThresholds, HalfABinIsRoundedUp)
{
    // A distance of 112.5 bins is looked up as bin 113, which gives bin 112.
    ToleranceThresholds thresholds = ramp();
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1.125), 0.62, 1e-14);
    // A point as far away is in bin 113: from there to bin 213 it is one hundredth of a radian for each bin.
    ToleranceThresholds sampled(onlyIdentity, {Vector(1.125, 0, 0), at(2.13, 1.0)});
    EXPECT_NEAR(sampled.getThreshold(Name::MaxPhi, 1.63), 0.49, 1e-14);
}

TEST(ToleranceThresholds, BinOfTheLastPointIsOmittedIfRoundedUp)
{
    // 200.7 bins away, in bin 201: the table goes up to bin 200.
    ToleranceThresholds thresholds(onlyIdentity, {at(1.01, 0.0), at(2.007, 1.0)});
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 10), 0.99, 1e-14);
}

TEST(ToleranceThresholds, BinOfTheLastPointIsIncludedIfRoundedDown)
{
    // 200.3 bins away, in bin 200.
    Vector const last = at(2.003, 1.0);
    ToleranceThresholds thresholds(onlyIdentity, {at(1, 0.0), last});
    EXPECT_EQ(thresholds.getThreshold(Name::MaxPhi, 10), std::atan2(last.y(), last.x()));
}

TEST(ToleranceThresholds, OfSeveralPointsInOneBinTheLastIsUsed)
{
    ToleranceThresholds thresholds(onlyIdentity, {at(1, 2.0), at(1.001, -2.0), at(0.999, 0.25), at(2, 0.25)});
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1), 0.25, 1e-15);
    EXPECT_NEAR(thresholds.getThreshold(Name::MinPhi, 1), 0.25, 1e-15);
}

TEST(ToleranceThresholds, TableEndsAtTheDistanceOfTheLastPoint)
{
    // Bins 50 to 150 either way, at one hundredth of a radian each.
    Points const points = {at(0.5, 0.5), at(1.5, 1.5), at(1, 1.0)};
    ToleranceThresholds shorter(onlyIdentity, points);
    EXPECT_NEAR(shorter.getThreshold(Name::MaxPhi, 10), 0.99, 1e-14);
    ToleranceThresholds longer(onlyIdentity, {points[0], points[2], points[1]});
    EXPECT_NEAR(longer.getThreshold(Name::MaxPhi, 10), 1.49, 1e-14);
}

TEST(ToleranceThresholds, NearestPointLastGivesAnEmptyTable)
{
    expectEmpty({onlyIdentity, {at(2, 0), at(1, 0)}});
}

TEST(ToleranceThresholds, LastPointAtTheOriginGivesAnEmptyTable)
{
    expectEmpty({onlyIdentity, {at(1, 0), Vector::Zero()}});
}

TEST(ToleranceThresholds, MissingNameIsEnteredWithZero)
{
    ToleranceThresholds thresholds = ramp();
    EXPECT_EQ(thresholds.getThreshold(static_cast<Name>(4), 1.5), 0.0);
    EXPECT_EQ(thresholds.getThreshold(static_cast<Name>(4), 1.5), 0.0);
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1.5), 0.99, 1e-14);
}

TEST(ToleranceThresholds, CopiesAnswerTheSame)
{
    ToleranceThresholds const source = ramp();
    ToleranceThresholds constructed(source);
    ToleranceThresholds assigned({}, {});
    assigned = source;
    EXPECT_NEAR(constructed.getThreshold(Name::MaxPhi, 1.5), 0.99, 1e-14);
    EXPECT_NEAR(assigned.getThreshold(Name::MaxPhi, 1.5), 0.99, 1e-14);
}

// Meaningless input is safe

TEST(ToleranceThresholds, EmptyTableThrowsWithAMessage)
{
    ToleranceThresholds thresholds(onlyIdentity, {});
    for (int i = 0; i < 2; ++i) {
        try {
            (void)thresholds.getThreshold(Name::MaxPhi, 1);
            FAIL() << "nothing was thrown";
        } catch (std::out_of_range const& failure) {
            EXPECT_EQ(std::string(failure.what()), "Cannot look up a tolerance threshold in an empty table");
        }
    }
}

TEST(ToleranceThresholds, WithoutPointsTheTableIsEmpty)
{
    expectEmpty({{}, {}});
    expectEmpty({onlyIdentity, {}});
}

TEST(ToleranceThresholds, LastPointWithoutADistanceGivesAnEmptyTable)
{
    expectEmpty({onlyIdentity, {at(1, 0), at(2, 0), Vector(notANumber, 0, 0)}});
    expectEmpty({onlyIdentity, {Vector(notANumber, 0, 0)}});
}

TEST(ToleranceThresholds, PointOutsideAllBinsIsIgnored)
{
    for (double const x : {notANumber, infinity, 1e300, 21474836.48}) {
        ToleranceThresholds thresholds(onlyIdentity, {at(1, 0.5), Vector(x, 0, 0), at(2, 1.5)});
        EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 0), 0.5, 1e-14) << x;
        EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1.5), 0.99, 1e-14) << x;
        EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1e9), 1.49, 1e-14) << x;
    }
}

TEST(ToleranceThresholds, FarLastPointEndsTheTableAtTheFarthestSample)
{
    for (double const x : {infinity, 1e300, 1e9}) {
        ToleranceThresholds thresholds(onlyIdentity, {at(1, 0.5), at(2, 1.5), Vector(x, 0, 0)});
        EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1.5), 0.99, 1e-14) << x;
        EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1e9), 1.5, 1e-14) << x;
        expectEmpty({onlyIdentity, {Vector(x, 0, 0)}});
    }
}

TEST(ToleranceThresholds, LargestBinIsUsable)
{
    ToleranceThresholds thresholds(onlyIdentity,
                                   {at(21474836.46, 0.5), at(21474836.47, 0.75), Vector(1e300, 0, 0)});
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 21474836.47), 0.5, 1e-14);
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 1e8), 0.75, 1e-14);
}

TEST(ToleranceThresholds, FarPointBeforeTheLastTakesNoMemory)
{
    // It would fill two thousand million bins.
    ToleranceThresholds thresholds(onlyIdentity, {at(1, 0.0), at(2e7, 1.0), at(2, 0.0)});
    EXPECT_NEAR(thresholds.getThreshold(Name::MaxPhi, 10), 0.0, 1e-6);
}

} // namespace
