/// @file
/// Trajectories over a table of poses, as the builder creates them.

#include "tests/support/Bits.h"
#include "tests/support/MapPoseFunction.h"
#include "tests/support/PoseAt.h"
#include "tests/support/RandomPoses.h"
#include "tests/support/SpecialNumbers.h"

#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>
#include <roamscan/trajectory/Trajectory.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using oV::Roamscan::InterpolatedTrajectoryPathBuilder;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;
using support::at;
using support::infinity;
using support::MapPoseFunction;
using support::notANumber;
using support::RandomPoses;
using support::sameBits;

Trajectory fromOneToTwo()
{
    return InterpolatedTrajectoryPathBuilder()
        .addPose(TimeStamp(1.0), at(10))
        .addPose(TimeStamp(2.0), at(20))
        .build();
}

std::string failureOf(auto const& function, double time)
{
    try {
        (void)function(time);
    } catch (std::out_of_range const& failure) {
        return failure.what();
    }
    return "";
}

std::string failureAt(Trajectory const& trajectory, double time)
{
    return failureOf([&](double t) { return trajectory.sample(t); }, time);
}

TEST(PoseTable, TheFirstKeyGivesTheFirstPose)
{
    EXPECT_EQ(fromOneToTwo().sample(1.0).translation().x(), 10);
}

TEST(PoseTable, HalfWayBetweenTwoKeysIsTheMidpoint)
{
    EXPECT_EQ(fromOneToTwo().sample(1.5).translation().x(), 15);
}

TEST(PoseTable, TheLastKeyGivesTheLastPose)
{
    EXPECT_EQ(fromOneToTwo().sample(2.0).translation().x(), 20);
}

TEST(PoseTable, TimeJustPastTheLastKeyCountsAsTheLastKey)
{
    EXPECT_EQ(fromOneToTwo().sample(2.000001).translation().x(), 20);
    EXPECT_EQ(fromOneToTwo().sample(2.0000049).translation().x(), 20);
}

TEST(PoseTable, TimePastTheToleranceIsPastTheEnd)
{
    EXPECT_EQ(failureAt(fromOneToTwo(), 2.00001), "Time point past the trajectory end");
    EXPECT_EQ(failureAt(fromOneToTwo(), 2.0000051), "Time point past the trajectory end");
    EXPECT_EQ(failureAt(fromOneToTwo(), 3.0), "Time point past the trajectory end");
}

TEST(PoseTable, FarPastTheEndIsOutsideEvenWhereAnIntegerWouldOverflow)
{
    for (double const past : {42949.67296, 21474.83648, 42949672.96, 1e15, 1e300, infinity}) {
        EXPECT_EQ(failureAt(fromOneToTwo(), 2.0 + past), "Time point past the trajectory end");
    }
}

TEST(PoseTable, TheToleranceEndsAtHalfAHundredThousandthOfASecond)
{
    // With the last key at 0 the product with 100000 is exactly 0.5 at 0.000005, and halves round away from
    // zero.
    Trajectory const trajectory = InterpolatedTrajectoryPathBuilder().addPose(TimeStamp(0.0), at(5)).build();
    ASSERT_EQ(0.000005 * 100000.0, 0.5);
    EXPECT_EQ(failureAt(trajectory, 0.000005), "Time point past the trajectory end");
    EXPECT_EQ(trajectory.sample(std::nextafter(0.000005, 0.0)).translation().x(), 5);
}

TEST(PoseTable, BeforeTheFirstKeyThereIsNoTolerance)
{
    EXPECT_EQ(failureAt(fromOneToTwo(), 0.9999999), "Time point before the trajectory begin");
    EXPECT_EQ(failureAt(fromOneToTwo(), std::nextafter(1.0, 0.0)), "Time point before the trajectory begin");
    EXPECT_EQ(failureAt(fromOneToTwo(), -infinity), "Time point before the trajectory begin");
}

TEST(PoseTable, NaNCountsAsBeforeTheFirstKey)
{
    EXPECT_EQ(failureAt(fromOneToTwo(), notANumber), "Time point before the trajectory begin");
}

TEST(PoseTable, WithoutPosesEveryTimeThrows)
{
    Trajectory const trajectory = InterpolatedTrajectoryPathBuilder().build();
    for (double const time : {0.0, 1.0, -1.0, notANumber}) {
        EXPECT_EQ(failureAt(trajectory, time), "Cannot query transformation from an empty trajectory");
    }
}

TEST(PoseTable, TimeAtAnInteriorKeyIsValidEvenIfTheStoredPoseIsNot)
{
    Trajectory const trajectory = InterpolatedTrajectoryPathBuilder()
                                      .addPose(TimeStamp(1.0), at(10, false))
                                      .addPose(TimeStamp(2.0), at(20, false))
                                      .addPose(TimeStamp(3.0), at(30, false))
                                      .build();
    EXPECT_TRUE(trajectory.sample(1.0).valid());
    EXPECT_TRUE(trajectory.sample(2.0).valid());
    EXPECT_EQ(trajectory.sample(2.0).translation().x(), 20);
}

TEST(PoseTable, TimeAtAnInteriorKeyIsInterpolatedWithFractionZero)
{
    // At the fraction 0 an infinite neighbour still gives NaN: infinity * 0.
    Trajectory const trajectory = InterpolatedTrajectoryPathBuilder()
                                      .addPose(TimeStamp(1.0), at(10))
                                      .addPose(TimeStamp(2.0), at(infinity))
                                      .build();
    EXPECT_TRUE(std::isnan(trajectory.sample(1.0).translation().x()));
}

TEST(PoseTable, TimeAtTheLastKeyIsTheStoredPoseWithItsFlag)
{
    Trajectory const trajectory = InterpolatedTrajectoryPathBuilder()
                                      .addPose(TimeStamp(1.0), at(10))
                                      .addPose(TimeStamp(2.0), at(20, false))
                                      .build();
    EXPECT_FALSE(trajectory.sample(2.0).valid());
    EXPECT_FALSE(trajectory.sample(2.000001).valid());
    EXPECT_TRUE(trajectory.sample(1.999999).valid());
}

TEST(PoseTable, OneKeyAnswersThereAndWithinTheTolerance)
{
    Trajectory const trajectory = InterpolatedTrajectoryPathBuilder().addPose(TimeStamp(7.0), at(70)).build();
    EXPECT_TRUE(trajectory.empty());
    EXPECT_EQ(trajectory.sample(7.0).translation().x(), 70);
    EXPECT_EQ(trajectory.sample(7.000001).translation().x(), 70);
    EXPECT_EQ(failureAt(trajectory, 6.9999999), "Time point before the trajectory begin");
    EXPECT_EQ(failureAt(trajectory, 7.00001), "Time point past the trajectory end");
}

TEST(PoseTable, SampleOrHasNoToleranceWhereSampleHas)
{
    Trajectory const trajectory = fromOneToTwo();
    EXPECT_EQ(trajectory.sample(TimeStamp(2.000001)).translation().x(), 20);
    EXPECT_EQ(trajectory.sample_or(TimeStamp(2.000001), at(-1)).translation().x(), -1);
    EXPECT_EQ(trajectory.sample_or(TimeStamp(2.0), at(-1)).translation().x(), 20);
}

TEST(PoseTable, CopyIsIndependentOfTheOriginal)
{
    std::optional<Trajectory> original = fromOneToTwo();
    Trajectory const copy(*original);
    Trajectory assigned;
    assigned = *original;
    original.reset();
    EXPECT_EQ(copy.sample(1.5).translation().x(), 15);
    EXPECT_EQ(assigned.sample(1.5).translation().x(), 15);
}

// Against the ordered map, over tables of every kind of spacing.

struct Answer
{
    std::optional<TrafoT<double>> pose;
    std::string failure;
};

Answer answerOf(auto const& function, double time)
{
    std::string failure = failureOf(function, time);
    if (failure.empty()) {
        return {function(time), ""};
    }
    return {std::nullopt, failure};
}

testing::AssertionResult sameAnswer(Answer const& a, Answer const& b)
{
    if (a.failure != b.failure) {
        return testing::AssertionFailure() << "'" << a.failure << "' and '" << b.failure << "'";
    }
    return a.pose ? sameBits(*a.pose, *b.pose) : testing::AssertionSuccess();
}

void expectToAnswerAsTheMap(std::vector<double> const& times, RandomPoses& random)
{
    InterpolatedTrajectoryPathBuilder builder;
    MapPoseFunction map;
    for (double const time : times) {
        auto const pose = random.pose();
        builder.addPose(TimeStamp(time), pose);
        map.poses[TimeStamp(time)] = pose;
    }
    Trajectory const trajectory = builder.build();
    EXPECT_EQ(trajectory.getStartTime(), map.poses.begin()->first);
    EXPECT_EQ(trajectory.getStopTime(), map.poses.rbegin()->first);

    std::vector<double> queries{notANumber, infinity, -infinity, 0.0};
    for (double const time : times) {
        for (double const query : {time, std::nextafter(time, -infinity), std::nextafter(time, infinity)}) {
            queries.push_back(query);
        }
    }
    double const first = map.poses.begin()->first.get();
    double const last = map.poses.rbegin()->first.get();
    if (std::isfinite(last - first)) {
        double const margin = 0.01 * (last - first) + 1e-5;
        for (int i = 0; i < 500; ++i) {
            queries.push_back(random.number(first - margin, last + margin));
        }
    }
    auto const sample = [&](double t) { return trajectory.sample(t); };
    for (double const query : queries) {
        ASSERT_TRUE(sameAnswer(answerOf(sample, query), answerOf(map, query)))
            << "at " << query << " of " << times.size() << " keys from " << first << " to " << last;
    }
}

std::vector<double> shuffled(std::vector<double> times, RandomPoses& random)
{
    std::shuffle(times.begin(), times.end(), random.generator());
    return times;
}

TEST(PoseTable, AnswersAsAnOrderedMapForEvenTimes)
{
    RandomPoses random(20);
    for (std::size_t const count : {1U, 2U, 3U, 10U, 257U, 1000U}) {
        for (double const origin : {0.0, -5.0, 1403715524.907}) {
            std::vector<double> times;
            for (std::size_t i = 0; i < count; ++i) {
                times.push_back(origin + 0.005 * static_cast<double>(i));
            }
            expectToAnswerAsTheMap(times, random);
            expectToAnswerAsTheMap(shuffled(times, random), random);
        }
    }
}

TEST(PoseTable, AnswersAsAnOrderedMapForNearlyEvenTimes)
{
    RandomPoses random(21);
    for (double const jitter : {0.1, 0.49, 0.51, 0.99, 1.5}) {
        std::vector<double> times;
        for (int i = 0; i < 1000; ++i) {
            times.push_back(0.01 * (i + random.number(-jitter, jitter)));
        }
        expectToAnswerAsTheMap(times, random);
    }
}

TEST(PoseTable, AnswersAsAnOrderedMapForRandomTimesWithDuplicates)
{
    RandomPoses random(22);
    for (int round = 0; round < 50; ++round) {
        std::vector<double> times;
        for (int i = 0; i < 200; ++i) {
            times.push_back(std::floor(random.number(-50, 50)) / 8);
        }
        expectToAnswerAsTheMap(times, random);
    }
}

TEST(PoseTable, AnswersAsAnOrderedMapForFewUnevenTimes)
{
    RandomPoses random(26);
    for (std::size_t count = 2; count <= 12; ++count) {
        for (int round = 0; round < 20; ++round) {
            std::vector<double> times;
            for (std::size_t i = 0; i < count; ++i) {
                times.push_back(std::exp(random.number(0, 12)));
            }
            expectToAnswerAsTheMap(times, random);
        }
    }
}

TEST(PoseTable, AnswersAsAnOrderedMapForBurstsAndGaps)
{
    RandomPoses random(23);
    std::vector<double> times;
    for (int burst = 0; burst < 20; ++burst) {
        for (int i = 0; i < 50; ++i) {
            times.push_back(1000.0 * burst + 1e-7 * i);
        }
    }
    expectToAnswerAsTheMap(times, random);
    expectToAnswerAsTheMap(shuffled(times, random), random);
}

TEST(PoseTable, AnswersAsAnOrderedMapForGeometricTimes)
{
    RandomPoses random(24);
    std::vector<double> times;
    for (double time = 1e-300; time < 1e300; time *= 3) {
        times.push_back(time);
    }
    expectToAnswerAsTheMap(times, random);
}

TEST(PoseTable, AnswersAsAnOrderedMapForTimesAtTheEndsOfTheNumberRange)
{
    RandomPoses random(25);
    double const largest = std::numeric_limits<double>::max();
    double const smallest = std::numeric_limits<double>::denorm_min();
    expectToAnswerAsTheMap({-largest, 0.0, largest}, random);
    expectToAnswerAsTheMap({-infinity, -1.0, 0.0, 1.0, infinity}, random);
    expectToAnswerAsTheMap({0.0, smallest, 2 * smallest, 3 * smallest}, random);
    expectToAnswerAsTheMap({1.0, std::nextafter(1.0, 2.0), std::nextafter(std::nextafter(1.0, 2.0), 2.0)},
                           random);
    expectToAnswerAsTheMap({infinity}, random);
    expectToAnswerAsTheMap({-infinity, infinity}, random);
    expectToAnswerAsTheMap({-infinity, 1.0, 2.0, infinity}, random);
}

} // namespace
