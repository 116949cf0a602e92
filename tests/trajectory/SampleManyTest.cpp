#include "tests/support/Bits.h"
#include "tests/support/SpecialNumbers.h"
#include "tests/support/Trajectories.h"

#include <roamscan/trajectory/SampleMany.h>

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

using oV::Roamscan::InterpolatedTrajectoryPathBuilder;
using oV::Roamscan::samplePoses;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;
using support::at;
using support::infinity;
using support::notANumber;
using support::RandomPoses;
using support::randomTrajectory;
using support::sameBits;
using support::sampledAlone;
using support::withGap;

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
    std::vector<double> const times(3);
    std::vector<TrafoT<double>> poses(2);
    EXPECT_THROW(samplePoses(withGap(), times, poses), std::invalid_argument);
}
