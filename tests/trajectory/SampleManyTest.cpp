#include "tests/support/Bits.h"
#include "tests/support/RandomPoses.h"

#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>
#include <roamscan/trajectory/SampleMany.h>
#include <roamscan/trajectory/Trajectory.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
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
using oV::Roamscan::samplePoses;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;
using support::RandomPoses;
using support::sameBits;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TrafoT<double> at(double x, bool valid = true)
{
    return {Eigen::Vector3d(x, 0, 0), Eigen::Quaterniond::Identity(), valid};
}

/// Poses at 1 s, 2 s and, after a gap, 12 s.
Trajectory withGap()
{
    return InterpolatedTrajectoryPathBuilder()
        .addPose(TimeStamp(1.0), at(10))
        .addPose(TimeStamp(2.0), at(20))
        .addPose(TimeStamp(12.0), at(120))
        .build();
}

/// The pose as sample() gives it, or Invalid() where it finds none.
TrafoT<double> sampledAlone(Trajectory const& trajectory, double time)
{
    try {
        return trajectory.sample(time);
    } catch (std::out_of_range const&) {
        return TrafoT<double>::Invalid();
    }
}

void expectPosesOfSample(Trajectory const& trajectory, std::vector<double> const& times)
{
    std::vector<TrafoT<double>> poses(times.size());
    std::size_t const without = samplePoses(trajectory, times, poses);
    std::size_t expectedWithout = 0;
    for (std::size_t i = 0; i < times.size(); ++i) {
        TrafoT<double> const expected = sampledAlone(trajectory, times[i]);
        expectedWithout += std::isnan(expected.translation().x()) ? 1U : 0U;
        ASSERT_TRUE(sameBits(poses[i], expected)) << "time " << i << " is " << times[i];
    }
    EXPECT_EQ(without, expectedWithout);
}

/// A trajectory over poses at random times, some close together and some far apart.
Trajectory randomTrajectory(RandomPoses& random, int poses)
{
    InterpolatedTrajectoryPathBuilder builder;
    double time = random.number(-5, 5);
    for (int i = 0; i < poses; ++i) {
        builder.addPose(TimeStamp(time), random.pose());
        time += std::pow(10.0, random.number(-6, 1));
    }
    return builder.build();
}

std::vector<double> randomTimes(RandomPoses& random, Trajectory const& trajectory, int count)
{
    double const start = trajectory.getStartTime().get();
    double const stop = trajectory.getStopTime().get();
    std::vector<double> times{
        start, stop, stop + 4e-6, stop + 6e-6, std::nextafter(start, -infinity), notANumber};
    for (int i = 0; i < count; ++i) {
        times.push_back(random.number(start - 0.1, stop + 0.1));
    }
    return times;
}

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

} // namespace

TEST(SampleMany, GivesThePosesOfSampleForAscendingTimes)
{
    RandomPoses random(20);
    for (int round = 0; round < 50; ++round) {
        Trajectory const trajectory = randomTrajectory(random, 1 + round);
        std::vector<double> times = randomTimes(random, trajectory, 400);
        std::sort(times.begin(), times.end(), [](double a, double b) { return a < b || std::isnan(a); });
        expectPosesOfSample(trajectory, times);
    }
}

TEST(SampleMany, GivesThePosesOfSampleForTimesInAnyOrder)
{
    RandomPoses random(21);
    for (int round = 0; round < 50; ++round) {
        Trajectory const trajectory = randomTrajectory(random, 1 + round);
        expectPosesOfSample(trajectory, randomTimes(random, trajectory, 400));
    }
}

TEST(SampleMany, GivesThePosesOfSampleForDescendingTimes)
{
    RandomPoses random(22);
    Trajectory const trajectory = randomTrajectory(random, 40);
    std::vector<double> times = randomTimes(random, trajectory, 400);
    std::erase_if(times, [](double time) { return std::isnan(time); });
    std::sort(times.begin(), times.end(), std::greater<>());
    expectPosesOfSample(trajectory, times);
}

TEST(SampleMany, GivesThePosesOfSampleAfterEachVisitToTheLastPose)
{
    RandomPoses random(27);
    Trajectory const trajectory = randomTrajectory(random, 6);
    std::vector<double> times;
    for (double const time : randomTimes(random, trajectory, 200)) {
        times.push_back(time);
        times.push_back(trajectory.getStopTime().get());
    }
    expectPosesOfSample(trajectory, times);
}

TEST(SampleMany, ATimeAtAPoseIsInterpolatedAndSoIsValid)
{
    Trajectory const trajectory = InterpolatedTrajectoryPathBuilder()
                                      .addPose(TimeStamp(1.0), at(10, false))
                                      .addPose(TimeStamp(2.0), at(20, false))
                                      .build();
    std::vector<TrafoT<double>> poses(2);
    std::vector<double> const times{1.0, 2.0};
    EXPECT_EQ(samplePoses(trajectory, times, poses), 0U);
    EXPECT_TRUE(poses[0].valid());
    EXPECT_FALSE(poses[1].valid()); // the last pose is returned as stored, with its flag
}

TEST(SampleMany, HasNoPosesWithoutATable)
{
    Trajectory const empty = InterpolatedTrajectoryPathBuilder().build();
    std::vector<TrafoT<double>> poses(2, at(1));
    std::vector<double> const times{0.0, 1.0};
    EXPECT_EQ(samplePoses(empty, times, poses), 2U);
    EXPECT_TRUE(sameBits(poses[0], TrafoT<double>::Invalid()));
}

TEST(SampleMany, AcceptsEmptySpans)
{
    EXPECT_EQ(samplePoses(withGap(), {}, {}), 0U);
}

TEST(SampleMany, CallsAnyPoseFunction)
{
    Trajectory const trajectory(TimeStamp(0.0), TimeStamp(1.0), [](double time) {
        if (time > 1.0) {
            throw std::out_of_range("beyond");
        }
        return at(time);
    });
    std::vector<TrafoT<double>> poses(3);
    std::vector<double> const times{0.5, 1.5, -7.0};
    EXPECT_EQ(samplePoses(trajectory, times, poses), 1U);
    EXPECT_EQ(poses[0].translation().x(), 0.5);
    EXPECT_TRUE(sameBits(poses[1], TrafoT<double>::Invalid()));
    EXPECT_EQ(poses[2].translation().x(), -7.0);
}

TEST(SampleMany, PassesOtherExceptionsOn)
{
    Trajectory const trajectory(
        TimeStamp(0.0), TimeStamp(1.0), [](double) -> TrafoT<double> { throw std::runtime_error("broken"); });
    std::vector<TrafoT<double>> poses(1);
    std::vector<double> const times{0.5};
    EXPECT_THROW(samplePoses(trajectory, times, poses), std::runtime_error);
    EXPECT_THROW(samplePoses(Trajectory(), times, poses), std::bad_function_call);
}

TEST(SampleMany, RefusesSpansOfDifferentSizes)
{
    std::vector<double> const times{1.0, 1.5};
    std::vector<TrafoT<double>> poses(1);
    EXPECT_THROW(samplePoses(withGap(), times, poses), std::invalid_argument);

    std::vector<Vec3d<double>> points(2);
    std::vector<Vec3d<double>> places(2);
    std::vector<Vec3d<double>> one(1);
    std::vector<PointPlacement> placements(3);
    EXPECT_THROW((void)placePoints(withGap(), times, one, places), std::invalid_argument);
    EXPECT_THROW((void)placePoints(withGap(), times, points, one), std::invalid_argument);
    EXPECT_THROW((void)placePoints(withGap(), times, points, places, placements), std::invalid_argument);
}

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
