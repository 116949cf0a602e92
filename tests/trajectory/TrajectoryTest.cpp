#include "tests/support/Bits.h"
#include "tests/support/PoseAt.h"
#include "tests/support/SpecialNumbers.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/failures/InternalErrorException.h>
#include <roamscan/trajectory/Trajectory.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <utility>

namespace
{

using Bv_1_1::Vec3d;
using oV::Roamscan::Duration;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;
using support::at;
using support::notANumber;
using support::sameBits;

// The pose function returns its argument as the translation.
Trajectory clockTrajectory(double start, double stop)
{
    return Trajectory(TimeStamp(start), TimeStamp(stop), [](double t) { return at(t); });
}

Vec3d<double> const fallbackAcceleration{7, 8, 9};

void expectVector(Vec3d<double> const& actual, double x, double y, double z)
{
    EXPECT_EQ(actual.x, x);
    EXPECT_EQ(actual.y, y);
    EXPECT_EQ(actual.z, z);
}

TEST(Trajectory, DefaultConstructedSpansZeroToZeroAndHasNoPose)
{
    Trajectory const trajectory;
    EXPECT_TRUE(trajectory.contains(0.0));
    EXPECT_TRUE(trajectory.empty());
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(0.0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(0.0));
    EXPECT_EQ(trajectory.getDuration(), Duration(0.0));
    EXPECT_FALSE(trajectory.hasGlobalAccelerations());
    EXPECT_THROW((void)trajectory.sample(0.0), std::bad_function_call);
    EXPECT_THROW((void)trajectory.sample(TimeStamp(0.0)), std::bad_function_call);
    EXPECT_THROW((void)trajectory.sample(int64{0}), std::bad_function_call);
}

TEST(Trajectory, DefaultConstructedSampleOrCallsTheFunctionOnlyInside)
{
    Trajectory const trajectory;
    EXPECT_TRUE(sameBits(trajectory.sample_or(TimeStamp(1.0), at(5)), at(5)));
    EXPECT_THROW((void)trajectory.sample_or(TimeStamp(0.0), at(5)), std::bad_function_call);
}

TEST(Trajectory, ReportsItsInterval)
{
    Trajectory const trajectory = clockTrajectory(1.5, 4.0);
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(1.5));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(4.0));
    EXPECT_EQ(trajectory.getDuration(), Duration(2.5));
    EXPECT_FALSE(trajectory.empty());
}

TEST(Trajectory, AcceptsAReversedInterval)
{
    Trajectory const trajectory = clockTrajectory(4.0, 1.5);
    EXPECT_EQ(trajectory.getDuration(), Duration(-2.5));
    EXPECT_FALSE(trajectory.empty());
    EXPECT_FALSE(trajectory.contains(2.0));
}

TEST(Trajectory, ContainsBothEndsWithoutTolerance)
{
    Trajectory const trajectory = clockTrajectory(1.0, 2.0);
    for (double const inside : {1.0, 1.5, 2.0}) {
        EXPECT_TRUE(trajectory.contains(inside));
        EXPECT_TRUE(trajectory.contains(TimeStamp(inside)));
        EXPECT_TRUE(trajectory.contains(static_cast<int64>(inside * 1e8)));
    }
    for (double const outside : {0.99999999, 2.00000001}) {
        EXPECT_FALSE(trajectory.contains(outside));
        EXPECT_FALSE(trajectory.contains(TimeStamp(outside)));
        EXPECT_FALSE(trajectory.contains(static_cast<int64>(std::llround(outside * 1e8))));
    }
}

TEST(Trajectory, ContainsConvertsIntegerTimeByMultiplication)
{
    // 3 ticks are 3 * 1e-8 s, which is not the double 3e-8.
    double const threeTicks = 3.0 * 1e-8;
    ASSERT_NE(threeTicks, 3e-8);
    EXPECT_TRUE(clockTrajectory(threeTicks, threeTicks).contains(int64{3}));
    EXPECT_FALSE(clockTrajectory(3e-8, 3e-8).contains(int64{3}));
}

TEST(Trajectory, DoesNotContainNaN)
{
    EXPECT_FALSE(clockTrajectory(1.0, 2.0).contains(notANumber));
    EXPECT_FALSE(clockTrajectory(1.0, 2.0).contains(TimeStamp(notANumber)));
    EXPECT_FALSE(clockTrajectory(notANumber, notANumber).contains(notANumber));
}

TEST(Trajectory, WithANaNStopNoTimeIsGreaterThanTheStop)
{
    EXPECT_TRUE(clockTrajectory(1.0, notANumber).contains(5.0));
    EXPECT_FALSE(clockTrajectory(1.0, notANumber).contains(0.5));
    EXPECT_FALSE(clockTrajectory(1.0, notANumber).contains(notANumber));
}

TEST(Trajectory, WithANaNStartNothingIsContained)
{
    EXPECT_FALSE(clockTrajectory(notANumber, 2.0).contains(1.0));
}

TEST(Trajectory, IsEmptyWhenItsEndsDoNotDiffer)
{
    EXPECT_TRUE(clockTrajectory(1.0, 1.0).empty());
    EXPECT_TRUE(clockTrajectory(0.0, -0.0).empty());
    EXPECT_FALSE(clockTrajectory(1.0, 1.0000000000000002).empty());
}

TEST(Trajectory, IsEmptyWhenAnEndIsNaN)
{
    EXPECT_TRUE(clockTrajectory(notANumber, 1.0).empty());
    EXPECT_TRUE(clockTrajectory(1.0, notANumber).empty());
    EXPECT_TRUE(clockTrajectory(notANumber, notANumber).empty());
}

TEST(Trajectory, SampleCallsTheFunctionForAnyTime)
{
    Trajectory const trajectory = clockTrajectory(1.0, 2.0);
    EXPECT_EQ(trajectory.sample(-100.0).translation().x(), -100.0);
    EXPECT_EQ(trajectory.sample(TimeStamp(100.0)).translation().x(), 100.0);
    EXPECT_EQ(trajectory.sample(int64{100000000000}).translation().x(), 1000.0);
}

TEST(Trajectory, SampleConvertsIntegerTimeByMultiplication)
{
    EXPECT_EQ(clockTrajectory(0, 1).sample(int64{3}).translation().x(), 3.0 * 1e-8);
}

TEST(Trajectory, ExceptionsOfThePoseFunctionPassThrough)
{
    Trajectory const trajectory(
        TimeStamp(0), TimeStamp(1), [](double) -> TrafoT<double> { throw std::logic_error("broken"); });
    EXPECT_THROW((void)trajectory.sample(0.5), std::logic_error);
    EXPECT_THROW((void)trajectory.sample_or(TimeStamp(0.5), at(0)), std::logic_error);
    EXPECT_NO_THROW((void)trajectory.sample_or(TimeStamp(2.0), at(0)));
}

TEST(Trajectory, SampleOrGivesTheFallbackOutside)
{
    Trajectory const trajectory = clockTrajectory(1.0, 2.0);
    TrafoT<double> const fallback(Eigen::Vector3d(-0.0, 2, 3), Eigen::Quaterniond(4, 5, 6, 7), false);
    EXPECT_TRUE(sameBits(trajectory.sample_or(TimeStamp(0.5), fallback), fallback));
    EXPECT_TRUE(sameBits(trajectory.sample_or(TimeStamp(notANumber), fallback), fallback));
    EXPECT_TRUE(sameBits(trajectory.sample_or(TimeStamp(1.0), fallback), at(1.0)));
}

TEST(Trajectory, ConstructorsCallNeitherFunction)
{
    int calls = 0;
    Trajectory const trajectory(
        TimeStamp(0),
        TimeStamp(1),
        [&calls](double) {
            ++calls;
            return TrafoT<double>();
        },
        [&calls](double) {
            ++calls;
            return Vec3d<double>{};
        });
    Trajectory const copy(trajectory);
    EXPECT_EQ(calls, 0);
    (void)copy.sample(0.0);
    (void)copy.sampleGlobalAcceleration(TimeStamp(0.0));
    EXPECT_EQ(calls, 2);
}

TEST(Trajectory, WithoutAccelerationsSamplingOneThrows)
{
    Trajectory const trajectory = clockTrajectory(0.0, 1.0);
    EXPECT_FALSE(trajectory.hasGlobalAccelerations());
    try {
        (void)trajectory.sampleGlobalAcceleration(TimeStamp(0.5));
        FAIL() << "nothing was thrown";
    } catch (oV::InternalErrorException const& failure) {
        EXPECT_EQ(failure.getDesc().compare(L"No acceleration info provided."), 0);
        EXPECT_EQ(failure.getFunction().compare(L"oV::Roamscan::Trajectory::sampleGlobalAcceleration"), 0);
        EXPECT_EQ(failure.getFile().compare(L"Trajectory"), 0);
        EXPECT_GT(failure.getLine(), 0U);
    }
}

TEST(Trajectory, WithoutAccelerationsTheOrFormGivesTheFallback)
{
    expectVector(
        clockTrajectory(0.0, 1.0).sampleGlobalAcceleration_or(TimeStamp(0.5), fallbackAcceleration), 7, 8, 9);
    expectVector(Trajectory().sampleGlobalAcceleration_or(TimeStamp(0.0), fallbackAcceleration), 7, 8, 9);
}

TEST(Trajectory, SamplesAccelerationsForAnyTimeAndTheOrFormOnlyInside)
{
    Trajectory const trajectory(
        TimeStamp(0),
        TimeStamp(1),
        [](double t) { return at(t); },
        [](double t) {
            return Vec3d<double>{t, 2 * t, 3 * t};
        });
    EXPECT_TRUE(trajectory.hasGlobalAccelerations());
    expectVector(trajectory.sampleGlobalAcceleration(TimeStamp(0.5)), 0.5, 1.0, 1.5);
    expectVector(trajectory.sampleGlobalAcceleration(TimeStamp(50)), 50, 100, 150);
    expectVector(trajectory.sampleGlobalAcceleration_or(TimeStamp(1), fallbackAcceleration), 1, 2, 3);
    expectVector(trajectory.sampleGlobalAcceleration_or(TimeStamp(1.5), fallbackAcceleration), 7, 8, 9);
}

TEST(Trajectory, AnEmptyAccelerationFunctionCountsAsSupplied)
{
    Trajectory const trajectory(
        TimeStamp(0), TimeStamp(1), [](double t) { return at(t); }, Trajectory::AccelerationFunction());
    EXPECT_TRUE(trajectory.hasGlobalAccelerations());
    EXPECT_THROW((void)trajectory.sampleGlobalAcceleration(TimeStamp(5)), std::bad_function_call);
    EXPECT_THROW((void)trajectory.sampleGlobalAcceleration_or(TimeStamp(0.5), fallbackAcceleration),
                 std::bad_function_call);
    expectVector(trajectory.sampleGlobalAcceleration_or(TimeStamp(5), fallbackAcceleration), 7, 8, 9);
}

TEST(Trajectory, CopiesCloneBothFunctions)
{
    // The pose function counts its own calls; a copy starts from the count that it was cloned with.
    struct Counter
    {
        std::unique_ptr<int> calls = std::make_unique<int>(0);
        Counter() = default;
        Counter(Counter const& other) : calls(std::make_unique<int>(*other.calls)) {}
        TrafoT<double> operator()(double) const { return at(++*calls); }
    };
    Trajectory const original(TimeStamp(1), TimeStamp(2), Counter(), [](double) {
        return Vec3d<double>{1, 2, 3};
    });
    EXPECT_EQ(original.sample(1.0).translation().x(), 1);
    Trajectory const copy(original);
    EXPECT_EQ(original.sample(1.0).translation().x(), 2);
    EXPECT_EQ(copy.sample(1.0).translation().x(), 2);
    EXPECT_EQ(copy.getStartTime(), TimeStamp(1));
    EXPECT_EQ(copy.getStopTime(), TimeStamp(2));
    EXPECT_TRUE(copy.hasGlobalAccelerations());

    Trajectory assigned;
    assigned = copy;
    EXPECT_EQ(copy.sample(1.0).translation().x(), 3);
    EXPECT_EQ(assigned.sample(1.0).translation().x(), 3);
    EXPECT_TRUE(assigned.hasGlobalAccelerations());
    EXPECT_EQ(assigned.getStopTime(), TimeStamp(2));
}

TEST(Trajectory, MovesTransferTheFunctions)
{
    Trajectory source = clockTrajectory(1.0, 2.0);
    Trajectory const moved(std::move(source));
    EXPECT_EQ(moved.sample(1.5).translation().x(), 1.5);
    EXPECT_EQ(moved.getStopTime(), TimeStamp(2.0));
}

} // namespace
