#include "tests/support/Bits.h"
#include "tests/support/MapPoseFunction.h"
#include "tests/support/PoseAt.h"
#include "tests/support/RandomPoses.h"
#include "tests/support/SpecialNumbers.h"

#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>
#include <roamscan/trajectory/Trajectory.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace
{

using oV::Roamscan::Duration;
using oV::Roamscan::InterpolatedTrajectoryPathBuilder;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;
using support::at;
using support::notANumber;
using support::sameBits;

double xAt(Trajectory const& trajectory, double time)
{
    return trajectory.sample(time).translation().x();
}

TEST(InterpolatedTrajectoryPathBuilder, IsAPolymorphicValue)
{
    static_assert(std::is_polymorphic_v<InterpolatedTrajectoryPathBuilder>);
    static_assert(!std::has_virtual_destructor_v<InterpolatedTrajectoryPathBuilder>);
    static_assert(std::is_nothrow_move_constructible_v<InterpolatedTrajectoryPathBuilder> &&
                  std::is_nothrow_move_assignable_v<InterpolatedTrajectoryPathBuilder>);
    struct Shifted : InterpolatedTrajectoryPathBuilder
    {
        [[nodiscard]] Trajectory build() const override { return Trajectory(TimeStamp(5), TimeStamp(6), at); }
        static TrafoT<double> at(double) { return {}; }
    };
    Shifted const shifted;
    InterpolatedTrajectoryPathBuilder const& base = shifted;
    EXPECT_EQ(base.build().getStartTime(), TimeStamp(5));
}

TEST(InterpolatedTrajectoryPathBuilder, RelativePosesCountFromTheLastWrite)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .addPose(TimeStamp(1.0), at(10))
                                .addPose(Duration(1.0), at(20))
                                .build();
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(1.0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(2.0));
    EXPECT_EQ(xAt(trajectory, 2.0), 20);
    EXPECT_EQ(xAt(trajectory, 1.25), 12.5);
}

TEST(InterpolatedTrajectoryPathBuilder, RelativePoseOnANewBuilderCountsFromZero)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder().addPose(Duration(1.0), at(10)).build();
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(1.0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(1.0));
    EXPECT_THROW((void)trajectory.sample(0.0), std::out_of_range);
}

TEST(InterpolatedTrajectoryPathBuilder, SettingTheInitialPoseIsAddingAPose)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .addPose(TimeStamp(5.0), at(50))
                                .setInitialPose(TimeStamp(3.0), at(30))
                                .addPose(Duration(1.0), at(40))
                                .build();
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(3.0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(5.0));
    EXPECT_EQ(xAt(trajectory, 4.0), 40);
}

TEST(InterpolatedTrajectoryPathBuilder, WaitingHoldsThePose)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .setInitialPose(TimeStamp(0.0), at(7))
                                .waitFor(Duration(2.0))
                                .build();
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(0.0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(2.0));
    EXPECT_EQ(xAt(trajectory, 1.0), 7);
    EXPECT_EQ(xAt(trajectory, 2.0), 7);
}

TEST(InterpolatedTrajectoryPathBuilder, WaitingAdvancesTheCurrentTime)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .setInitialPose(TimeStamp(1.0), at(7))
                                .waitFor(Duration(2.0))
                                .addPose(Duration(1.0), at(8))
                                .build();
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(4.0));
    EXPECT_EQ(xAt(trajectory, 3.0), 7);
}

TEST(InterpolatedTrajectoryPathBuilder, WaitingKeepsTheFlagOfThePose)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .setInitialPose(TimeStamp(0.0), at(7, false))
                                .waitFor(Duration(1.0))
                                .build();
    EXPECT_FALSE(trajectory.sample(1.0).valid());
}

void expectNoPoseToHold(InterpolatedTrajectoryPathBuilder& builder)
{
    try {
        builder.waitFor(Duration(1.0));
        FAIL() << "nothing was thrown";
    } catch (std::out_of_range const& failure) {
        EXPECT_STREQ(failure.what(), "invalid map<K, T> key");
    }
}

TEST(InterpolatedTrajectoryPathBuilder, WaitingOnANewBuilderThrowsAndChangesNothing)
{
    InterpolatedTrajectoryPathBuilder builder;
    expectNoPoseToHold(builder);
    builder.addPose(Duration(1.0), at(1));
    EXPECT_EQ(builder.build().getStartTime(), TimeStamp(1.0));
    EXPECT_EQ(builder.build().getStopTime(), TimeStamp(1.0));
}

TEST(InterpolatedTrajectoryPathBuilder, WaitingOnAMovedFromBuilderThrowsAndKeepsTheCurrentTime)
{
    InterpolatedTrajectoryPathBuilder builder;
    builder.addPose(TimeStamp(3.0), at(3));
    InterpolatedTrajectoryPathBuilder const moved(std::move(builder));
    expectNoPoseToHold(
        builder); // NOLINT(bugprone-use-after-move): the moved-from state is part of the contract
    builder.addPose(Duration(1.0), at(4));
    EXPECT_EQ(builder.build().getStartTime(), TimeStamp(4.0));
    EXPECT_EQ(moved.build().getStartTime(), TimeStamp(3.0));
}

TEST(InterpolatedTrajectoryPathBuilder, MoveAssignmentEmptiesTheSourceAndKeepsItsCurrentTime)
{
    InterpolatedTrajectoryPathBuilder source;
    source.addPose(TimeStamp(3.0), at(3));
    InterpolatedTrajectoryPathBuilder target;
    target.addPose(TimeStamp(9.0), at(9));
    target = std::move(source);
    EXPECT_EQ(target.build().getStopTime(), TimeStamp(3.0));
    target.addPose(Duration(0.5), at(3.5));
    EXPECT_EQ(target.build().getStopTime(), TimeStamp(3.5));
    // NOLINTNEXTLINE(bugprone-use-after-move): the moved-from state is part of the contract
    EXPECT_THROW((void)source.build().sample(3.0), std::out_of_range);
    source.addPose(Duration(1.0), at(4));
    EXPECT_EQ(source.build().getStopTime(), TimeStamp(4.0));
}

TEST(InterpolatedTrajectoryPathBuilder, CopiesAreIndependent)
{
    InterpolatedTrajectoryPathBuilder original;
    original.addPose(TimeStamp(1.0), at(1));
    InterpolatedTrajectoryPathBuilder copy(original);
    copy.addPose(Duration(1.0), at(2));
    EXPECT_EQ(original.build().getStopTime(), TimeStamp(1.0));
    EXPECT_EQ(copy.build().getStopTime(), TimeStamp(2.0));
    original = copy;
    original = *&original;
    EXPECT_EQ(original.build().getStopTime(), TimeStamp(2.0));
    original.waitFor(Duration(1.0));
    EXPECT_EQ(xAt(original.build(), 3.0), 2);
    EXPECT_EQ(copy.build().getStopTime(), TimeStamp(2.0));
}

TEST(InterpolatedTrajectoryPathBuilder, TheSameTimeTwiceKeepsTheLaterPoseAndOneKey)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .addPose(TimeStamp(1.0), at(1))
                                .addPose(TimeStamp(1.0), at(2))
                                .build();
    EXPECT_TRUE(trajectory.empty());
    EXPECT_EQ(xAt(trajectory, 1.0), 2);
}

TEST(InterpolatedTrajectoryPathBuilder, ALaterWriteOfAnEarlierTimeWins)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .addPose(TimeStamp(1.0), at(1))
                                .addPose(TimeStamp(2.0), at(2))
                                .addPose(TimeStamp(1.0), at(100))
                                .build();
    EXPECT_EQ(xAt(trajectory, 1.0), 100);
    EXPECT_EQ(xAt(trajectory, 1.5), 51);
}

TEST(InterpolatedTrajectoryPathBuilder, AZeroDurationOverwrites)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .addPose(TimeStamp(1.0), at(1))
                                .addPose(Duration(0.0), at(2))
                                .build();
    EXPECT_EQ(xAt(trajectory, 1.0), 2);
}

TEST(InterpolatedTrajectoryPathBuilder, ANegativeDurationGoesBack)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .addPose(TimeStamp(5.0), at(5))
                                .addPose(Duration(-2.0), at(3))
                                .addPose(Duration(1.0), at(4))
                                .waitFor(Duration(-3.0))
                                .build();
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(1.0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(5.0));
    EXPECT_EQ(xAt(trajectory, 1.0), 4);
    EXPECT_EQ(xAt(trajectory, 4.0), 4);
}

TEST(InterpolatedTrajectoryPathBuilder, WaitsWhereTheLastWriteWentBackTo)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .addPose(TimeStamp(1.0), at(1))
                                .addPose(TimeStamp(2.0), at(2))
                                .addPose(TimeStamp(1.0), at(11))
                                .waitFor(Duration(0.5))
                                .build();
    EXPECT_EQ(xAt(trajectory, 1.5), 11);
}

TEST(InterpolatedTrajectoryPathBuilder, KeepsTheFlagsOfPoses)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder().addPose(TimeStamp(1.0), at(1, false)).build();
    EXPECT_FALSE(trajectory.sample(1.0).valid());
}

TEST(InterpolatedTrajectoryPathBuilder, LaterWritesDoNotChangeABuiltTrajectory)
{
    InterpolatedTrajectoryPathBuilder builder;
    builder.addPose(TimeStamp(1.0), at(1));
    Trajectory const trajectory = builder.build();
    builder.addPose(TimeStamp(1.0), at(2)).addPose(TimeStamp(5.0), at(5));
    EXPECT_EQ(xAt(trajectory, 1.0), 1);
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(1.0));
}

TEST(InterpolatedTrajectoryPathBuilder, ASinglePoseGivesAnEmptyIntervalWithAPose)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder().addPose(TimeStamp(3.0), at(3)).build();
    EXPECT_EQ(trajectory.getStartTime(), trajectory.getStopTime());
    EXPECT_TRUE(trajectory.empty());
    EXPECT_EQ(xAt(trajectory, 3.0), 3);
}

TEST(InterpolatedTrajectoryPathBuilder, WithoutPosesSpansZeroToZero)
{
    Trajectory const trajectory = InterpolatedTrajectoryPathBuilder().build();
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(0.0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(0.0));
    EXPECT_THROW((void)trajectory.sample(0.0), std::out_of_range);
}

TEST(InterpolatedTrajectoryPathBuilder, BuildsWithoutAccelerations)
{
    EXPECT_FALSE(
        InterpolatedTrajectoryPathBuilder().addPose(TimeStamp(1), at(1)).build().hasGlobalAccelerations());
}

TEST(InterpolatedTrajectoryPathBuilder, ZeroAndMinusZeroAreOneTimeWithTheSignOfTheFirst)
{
    auto const trajectory = InterpolatedTrajectoryPathBuilder()
                                .addPose(TimeStamp(-0.0), at(1))
                                .addPose(TimeStamp(1.0), at(2))
                                .addPose(TimeStamp(0.0), at(3))
                                .build();
    EXPECT_TRUE(std::signbit(trajectory.getStartTime().get()));
    EXPECT_EQ(xAt(trajectory, 0.0), 3);
}

TEST(InterpolatedTrajectoryPathBuilder, PoseAtNaNIsDroppedAndCannotBeHeld)
{
    InterpolatedTrajectoryPathBuilder builder;
    builder.addPose(TimeStamp(1.0), at(1)).addPose(TimeStamp(notANumber), at(2));
    expectNoPoseToHold(builder);
    builder.addPose(Duration(1.0), at(3)); // NaN plus 1 is NaN
    expectNoPoseToHold(builder);
    auto const trajectory = builder.addPose(TimeStamp(2.0), at(4)).waitFor(Duration(1.0)).build();
    EXPECT_EQ(trajectory.getStartTime(), TimeStamp(1.0));
    EXPECT_EQ(trajectory.getStopTime(), TimeStamp(3.0));
    EXPECT_EQ(xAt(trajectory, 2.5), 4);
}

TEST(InterpolatedTrajectoryPathBuilder, RandomCallsGiveTheTableOfAnOrderedMap)
{
    support::RandomPoses random(40);
    for (int round = 0; round < 100; ++round) {
        InterpolatedTrajectoryPathBuilder builder;
        std::map<TimeStamp, TrafoT<double>> map;
        TimeStamp current;
        for (int step = 0; step < 60; ++step) {
            auto const pose = random.pose();
            double const kind = random.number(0, 3);
            if (kind < 1) {
                current = TimeStamp(std::floor(random.number(-10, 10)));
                builder.addPose(current, pose);
                map[current] = pose;
            } else if (kind < 2) {
                Duration const after(std::floor(random.number(-2, 3)));
                builder.addPose(after, pose);
                current = current + after;
                map[current] = pose;
            } else if (map.contains(current)) {
                Duration const duration(std::floor(random.number(-2, 3)));
                builder.waitFor(duration);
                auto const held = map.at(current);
                current = current + duration;
                map[current] = held;
            } else {
                expectNoPoseToHold(builder);
            }
        }
        Trajectory const trajectory = builder.build();
        support::MapPoseFunction const reference{map};
        ASSERT_EQ(trajectory.getStartTime(), map.begin()->first);
        ASSERT_EQ(trajectory.getStopTime(), map.rbegin()->first);
        for (double time = map.begin()->first.get(); time <= map.rbegin()->first.get(); time += 0.25) {
            ASSERT_TRUE(sameBits(trajectory.sample(time), reference(time)));
        }
    }
}

TEST(InterpolatedTrajectoryPathBuilder, RepeatedWritesOfTheSameTimesGiveTheLastPoses)
{
    // More writes than the builder keeps unsorted.
    InterpolatedTrajectoryPathBuilder builder;
    int const writes = 20000;
    for (int i = 0; i < writes; ++i) {
        builder.addPose(TimeStamp(static_cast<double>(i % 7)), at(i));
    }
    builder.waitFor(Duration(0.5)); // holds the last pose, written at (writes - 1) % 7
    Trajectory const trajectory = builder.build();
    for (int i = writes - 7; i < writes; ++i) {
        EXPECT_EQ(xAt(trajectory, static_cast<double>(i % 7)), i);
    }
    EXPECT_EQ(xAt(trajectory, static_cast<double>((writes - 1) % 7) + 0.5), writes - 1);
}

} // namespace
