#include "tests/support/SpecialNumbers.h"
#include "tests/support/Trajectories.h"

#include <roamscan/trajectory/SampleMany.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>
#include <stdexcept>
#include <vector>

namespace
{

using Bv_1_1::Vec3d;
using oV::Roamscan::InterpolatedTrajectoryPathBuilder;
using oV::Roamscan::PlacementCounts;
using oV::Roamscan::PlacementSettings;
using oV::Roamscan::placePoints;
using oV::Roamscan::PointPlacement;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;
using support::at;
using support::infinity;
using support::notANumber;
using support::RandomPoses;
using support::randomTrajectory;
using support::sampledAlone;
using support::withGap;

struct Placed
{
    PlacementCounts counts;
    std::vector<Vec3d<double>> places;
    std::vector<PointPlacement> placements;
};

template <typename Scalar>
Placed place(Trajectory const& trajectory,
             std::vector<double> const& times,
             std::vector<Vec3d<Scalar>> const& points,
             PlacementSettings const& settings = {})
{
    Placed result;
    result.places.resize(times.size());
    result.placements.resize(times.size());
    result.counts = placePoints(trajectory, times, points, result.places, result.placements, settings);
    return result;
}

bool isNaN(Vec3d<double> const& place)
{
    return std::isnan(place.x) && std::isnan(place.y) && std::isnan(place.z);
}

/// Times with stretches of 1 to 200 in one interval; ascending or descending.
std::vector<double> timesInStretches(RandomPoses& random, std::vector<double> const& keys, bool ascending)
{
    std::vector<double> times;
    for (std::size_t i = 0; i + 1 < keys.size(); ++i) {
        times.push_back(keys[i]);
        for (int left = static_cast<int>(random.number(0, 200)); left > 0; --left) {
            times.push_back(random.number(keys[i], keys[i + 1]));
        }
    }
    times.push_back(keys.back());
    times.push_back(keys.back() + 1.0);
    std::ranges::sort(times);
    if (!ascending) {
        std::ranges::reverse(times);
    }
    return times;
}

/// What becomes of one point, from the documentation.
PointPlacement placedAlone(Trajectory const& trajectory,
                           std::vector<double> const& keys,
                           double longestGap,
                           double time,
                           Eigen::Vector3d const& point,
                           Eigen::Vector3d& place)
{
    if (!point.allFinite()) {
        return PointPlacement::NotFinite;
    }
    TrafoT<double> const pose = sampledAlone(trajectory, time);
    if (std::isnan(pose.translation().x())) {
        return PointPlacement::Outside;
    }
    auto const after = std::ranges::upper_bound(keys, time);
    if (after != keys.end() && time != *(after - 1) && *after - *(after - 1) > longestGap) {
        return PointPlacement::InGap;
    }
    place = pose * point;
    return PointPlacement::Placed;
}

template <typename Scalar>
void expectPlacesOfEach(RandomPoses& random, bool ascending)
{
    std::vector<double> keys{0.0};
    InterpolatedTrajectoryPathBuilder builder;
    for (int i = 0; i < 100; ++i) {
        builder.addPose(TimeStamp(keys.back()), random.pose());
        keys.push_back(keys.back() + random.number(0.01, 1.0));
    }
    keys.pop_back();
    Trajectory const trajectory = builder.build();
    auto const times = timesInStretches(random, keys, ascending);
    std::vector<Vec3d<Scalar>> points;
    for (std::size_t i = 0; i < times.size(); ++i) {
        auto const coordinate = [&] { return static_cast<Scalar>(random.number(-9, 9)); };
        points.push_back({coordinate(), coordinate(), coordinate()});
        if (i % 301 == 300) {
            points.back().z = std::numeric_limits<Scalar>::infinity();
        }
    }
    PlacementSettings settings;
    settings.longestGap = 0.8;
    Placed const placed = place(trajectory, times, points, settings);
    PlacementCounts counts;
    for (std::size_t i = 0; i < times.size(); ++i) {
        Eigen::Vector3d expected;
        Eigen::Vector3d const point(points[i].x, points[i].y, points[i].z);
        PointPlacement const placement =
            placedAlone(trajectory, keys, settings.longestGap, times[i], point, expected);
        ASSERT_EQ(placed.placements[i], placement) << i;
        if (placement == PointPlacement::Placed) {
            auto const& got = placed.places[i];
            ASSERT_EQ(Eigen::Vector3d(got.x, got.y, got.z), expected) << i;
        } else {
            ASSERT_TRUE(isNaN(placed.places[i])) << i;
        }
        counts.placed += placement == PointPlacement::Placed ? 1U : 0U;
        counts.outside += placement == PointPlacement::Outside ? 1U : 0U;
        counts.inGap += placement == PointPlacement::InGap ? 1U : 0U;
        counts.notFinite += placement == PointPlacement::NotFinite ? 1U : 0U;
    }
    EXPECT_EQ(placed.counts.placed, counts.placed);
    EXPECT_EQ(placed.counts.outside, counts.outside);
    EXPECT_EQ(placed.counts.inGap, counts.inGap);
    EXPECT_EQ(placed.counts.notFinite, counts.notFinite);
    EXPECT_GT(counts.inGap, 0U);
    EXPECT_GT(counts.notFinite, 0U);
}

} // namespace

TEST(PlacePoints, GivesPoseTimesPointToTheLastBit)
{
    RandomPoses random(23);
    Trajectory const trajectory = randomTrajectory(random, 60);
    std::vector<double> times;
    std::vector<Vec3d<double>> points;
    std::vector<Vec3d<float>> floatPoints;
    double const start = trajectory.getStartTime().get();
    double const stop = trajectory.getStopTime().get();
    for (int i = 0; i < 50'000; ++i) { // several ranges of the parallel loop
        times.push_back(i % 7 == 6 ? stop : random.number(start, stop));
        points.push_back({random.number(-9, 9), random.number(-9, 9), random.number(-9, 9)});
        floatPoints.push_back({static_cast<float>(points.back().x),
                               static_cast<float>(points.back().y),
                               static_cast<float>(points.back().z)});
    }
    for (bool const parallel : {false, true}) {
        PlacementSettings settings;
        settings.parallel = parallel;
        Placed const placed = place(trajectory, times, points, settings);
        Placed const placedFloats = place(trajectory, times, floatPoints, settings);
        EXPECT_EQ(placed.counts.placed, times.size());
        EXPECT_EQ(placedFloats.counts.placed, times.size());
        for (std::size_t i = 0; i < times.size(); ++i) {
            TrafoT<double> const pose = trajectory.sample(times[i]);
            Eigen::Vector3d const expected = pose * Eigen::Vector3d(points[i].x, points[i].y, points[i].z);
            Eigen::Vector3d const expectedOfFloat =
                pose * Eigen::Vector3d(floatPoints[i].x, floatPoints[i].y, floatPoints[i].z);
            auto const& got = placed.places[i];
            auto const& gotOfFloat = placedFloats.places[i];
            ASSERT_EQ(Eigen::Vector3d(got.x, got.y, got.z), expected) << i;
            ASSERT_EQ(Eigen::Vector3d(gotOfFloat.x, gotOfFloat.y, gotOfFloat.z), expectedOfFloat) << i;
        }
    }
}

TEST(PlacePoints, SaysWhatBecameOfEachPoint)
{
    std::vector<double> const times{1.5, 0.5, 5.0, 12.0, 12.1, notANumber, 1.5, 1.5};
    std::vector<Vec3d<double>> points(times.size(), Vec3d<double>{1, 2, 3});
    points[6].y = infinity;
    points[7].x = notANumber;
    PlacementSettings settings;
    settings.longestGap = 5.0;
    Placed const placed = place(withGap(), times, points, settings);

    std::vector<PointPlacement> const expected{PointPlacement::Placed,
                                               PointPlacement::Outside,
                                               PointPlacement::InGap,
                                               PointPlacement::Placed,
                                               PointPlacement::Outside,
                                               PointPlacement::NotFinite,
                                               PointPlacement::NotFinite,
                                               PointPlacement::NotFinite};
    EXPECT_EQ(placed.placements, expected);
    EXPECT_EQ(placed.counts.placed, 2U);
    EXPECT_EQ(placed.counts.outside, 2U);
    EXPECT_EQ(placed.counts.inGap, 1U);
    EXPECT_EQ(placed.counts.notFinite, 3U);
    EXPECT_EQ(placed.places[0].x, 16.0);
    EXPECT_EQ(placed.places[0].y, 2.0);
    EXPECT_EQ(placed.places[3].x, 121.0);
    for (std::size_t const i : {1U, 2U, 4U, 5U, 6U, 7U}) {
        EXPECT_TRUE(isNaN(placed.places[i])) << i;
    }
}

TEST(PlacePoints, GivesTheSameForStretchesOfAnyLengthBetweenTwoPoses)
{
    RandomPoses random(31);
    for (bool const ascending : {true, false}) {
        expectPlacesOfEach<double>(random, ascending);
        expectPlacesOfEach<float>(random, ascending);
    }
}

TEST(PlacePoints, SaysWhatBecameOfPointsBetweenTheSamePoses)
{
    std::vector<double> const times(70, 1.5); // more than are transformed together
    for (std::size_t const bad : {0U, 1U, 63U, 64U, 69U}) {
        std::vector<Vec3d<float>> points(times.size(), {1, 2, 3});
        points[bad].x = std::numeric_limits<float>::quiet_NaN();
        Placed const placed = place(withGap(), times, points);
        EXPECT_EQ(placed.counts.placed, 69U);
        EXPECT_EQ(placed.counts.notFinite, 1U);
        for (std::size_t i = 0; i < times.size(); ++i) {
            EXPECT_EQ(placed.placements[i] == PointPlacement::NotFinite, i == bad) << i;
            EXPECT_TRUE(i == bad ? isNaN(placed.places[i]) : placed.places[i].x == 16.0) << i;
        }
    }
}

TEST(PlacePoints, APlaceThatOverflowsIsNotFinite)
{
    Trajectory const trajectory = InterpolatedTrajectoryPathBuilder()
                                      .addPose(TimeStamp(0.0), at(1e308))
                                      .addPose(TimeStamp(1.0), at(1e308))
                                      .build();
    Placed const placed = place(trajectory, {0.5}, std::vector<Vec3d<double>>{{1.7e308, 0, 0}});
    EXPECT_EQ(placed.placements[0], PointPlacement::NotFinite);
    EXPECT_TRUE(isNaN(placed.places[0]));
}

TEST(PlacePoints, ATimeAtAPoseIsInNoGap)
{
    PlacementSettings settings;
    settings.longestGap = 0.0;
    std::vector<Vec3d<double>> const points(4);
    Placed const placed =
        place(withGap(), {2.0, 12.0, 12.000004, std::nextafter(2.0, 3.0)}, points, settings);
    EXPECT_EQ(
        placed.placements,
        (std::vector{
            PointPlacement::Placed, PointPlacement::Placed, PointPlacement::Placed, PointPlacement::InGap}));
    EXPECT_EQ(placed.places[0].x, 20.0);
}

TEST(PlacePoints, AGapOfTheLongestLengthIsInterpolatedAcross)
{
    std::vector<Vec3d<double>> const points(1);
    PlacementSettings settings;
    settings.longestGap = 10.0;
    EXPECT_EQ(place(withGap(), {7.0}, points, settings).places[0].x, 70.0);
    settings.longestGap = std::nextafter(10.0, 0.0);
    EXPECT_EQ(place(withGap(), {7.0}, points, settings).counts.inGap, 1U);
}

TEST(PlacePoints, InterpolatesAcrossAnyGapByDefault)
{
    std::vector<Vec3d<double>> const points(1);
    EXPECT_EQ(place(withGap(), {7.0}, points).places[0].x, 70.0);
}

TEST(PlacePoints, WritesTheirPlacesOverThePoints)
{
    std::vector<double> const times{1.5, 7.0};
    std::vector<Vec3d<double>> points{{1, 2, 3}, {4, 5, 6}};
    PlacementCounts const counts = placePoints(withGap(), times, points, points);
    EXPECT_EQ(counts.placed, 2U);
    EXPECT_EQ(points[0].x, 16.0);
    EXPECT_EQ(points[1].x, 74.0);
    EXPECT_EQ(points[1].z, 6.0);

    std::vector<Vec3d<double>> many(100, {1, 2, 3});
    EXPECT_EQ(placePoints(withGap(), std::vector(many.size(), 1.5), many, many).placed, many.size());
    EXPECT_EQ(many, std::vector(many.size(), Vec3d<double>{16, 2, 3}));
}

TEST(PlacePoints, CallsAnyPoseFunction)
{
    Trajectory const trajectory(TimeStamp(0.0), TimeStamp(1.0), [](double time) { return at(time); });
    PlacementSettings settings;
    settings.longestGap = 0.0; // no table, no gaps
    std::vector<Vec3d<double>> const points(2);
    Placed const placed = place(trajectory, {0.5, 9.0}, points, settings);
    EXPECT_EQ(placed.counts.placed, 2U);
    EXPECT_EQ(placed.places[1].x, 9.0);
}

TEST(PlacePoints, PassesOtherExceptionsOnFromParallelRanges)
{
    Trajectory const trajectory(
        TimeStamp(0.0), TimeStamp(1.0), [](double) -> TrafoT<double> { throw std::runtime_error("broken"); });
    std::vector<double> const times(40'000, 0.5);
    std::vector<Vec3d<double>> const points(times.size());
    std::vector<Vec3d<double>> places(times.size());
    EXPECT_THROW((void)placePoints(trajectory, times, points, places), std::runtime_error);
}

TEST(PlacePoints, AcceptsEmptySpans)
{
    PlacementCounts const counts =
        placePoints(withGap(), {}, std::span<Vec3d<double> const>(), std::span<Vec3d<double>>());
    EXPECT_EQ(counts.placed + counts.outside + counts.inGap + counts.notFinite, 0U);
}

TEST(PlacePoints, RefusesSpansOfDifferentSizes)
{
    std::vector<double> const times{1.0, 1.5};
    std::vector<Vec3d<double>> points(2);
    std::vector<Vec3d<double>> places(2);
    std::vector<Vec3d<double>> one(1);
    std::vector<PointPlacement> placements(3);
    EXPECT_THROW((void)placePoints(withGap(), times, one, places), std::invalid_argument);
    EXPECT_THROW((void)placePoints(withGap(), times, points, one), std::invalid_argument);
    EXPECT_THROW((void)placePoints(withGap(), times, points, places, placements), std::invalid_argument);
}
