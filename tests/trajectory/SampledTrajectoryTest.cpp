#include "tests/support/Bits.h"
#include "tests/support/PoseAt.h"
#include "tests/support/SpecialNumbers.h"

#include <roamscan/trajectory/InterpolatedTrajectoryPathBuilder.h>
#include <roamscan/trajectory/SampledTrajectoryIterator.h>
#include <roamscan/trajectory/SampledTrajectoryRange.h>
#include <roamscan/trajectory/Trajectory.h>

#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <limits>
#include <ranges>
#include <stdexcept>
#include <vector>

namespace
{

using oV::Roamscan::Duration;
using oV::Roamscan::InterpolatedTrajectoryPathBuilder;
using oV::Roamscan::SampledTrajectoryIterator;
using oV::Roamscan::SampledTrajectoryRange;
using oV::Roamscan::TimeStamp;
using oV::Roamscan::TrafoT;
using oV::Roamscan::Trajectory;
using oV::Roamscan::TrajectoryNode;
using support::at;
using support::notANumber;

// The pose function returns its argument as the translation, and counts its calls.
Trajectory clock(double start, double stop, int* calls = nullptr)
{
    return Trajectory(TimeStamp(start), TimeStamp(stop), [calls](double t) {
        if (calls != nullptr) {
            ++*calls;
        }
        return at(t);
    });
}

std::vector<double> timesOf(SampledTrajectoryRange const& range)
{
    std::vector<double> times;
    for (TrajectoryNode const& node : range) {
        times.push_back(node.time);
    }
    return times;
}

void expectInitial(TrajectoryNode const& node)
{
    EXPECT_EQ(node.time, 0.0);
    EXPECT_TRUE(support::sameBits(node.pose, TrafoT<double>::Identity()));
}

void expectDefaultPayload(TrajectoryNode const& node)
{
    EXPECT_EQ(static_cast<unsigned>(node.type), 0U);
    EXPECT_TRUE(node.matrixA.isZero(0));
    EXPECT_TRUE(node.matrixB.isZero(0));
    EXPECT_TRUE(node.flag);
}

TEST(SampledTrajectory, WalksFromStartToStopWithBothEnds)
{
    Trajectory const trajectory = clock(0.0, 10.0);
    EXPECT_EQ(timesOf(trajectory.sampled(Duration(1.0))),
              (std::vector<double>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST(SampledTrajectory, EachNodeHoldsThePoseOfItsTimeAndDefaultPayload)
{
    Trajectory const trajectory = clock(0.0, 2.0);
    for (TrajectoryNode const& node : trajectory.sampled(Duration(0.5))) {
        EXPECT_EQ(node.pose.translation().x(), node.time);
        expectDefaultPayload(node);
    }
}

TEST(SampledTrajectory, CountRoundsDownAndTheLastPositionIsBeforeTheStop)
{
    Trajectory const trajectory = clock(0.0, 1.0);
    EXPECT_EQ(timesOf(trajectory.sampled(Duration(0.3))), (std::vector<double>{0.0, 0.3, 0.6, 3 * 0.3}));
}

TEST(SampledTrajectory, CountRoundsUpAndThePositionAfterTheStopRepeatsTheNode)
{
    Trajectory const trajectory = clock(0.0, 1.0);
    EXPECT_EQ(timesOf(trajectory.sampled(Duration(0.4))), (std::vector<double>{0.0, 0.4, 0.8, 0.8}));
}

TEST(SampledTrajectory, StartOutsideGivesDefaultNodesUntilTheIntervalBegins)
{
    Trajectory const trajectory = clock(0.0, 10.0);
    auto const range = trajectory.sampled_over(TimeStamp(-1.0), TimeStamp(1.0), Duration(1.0));
    EXPECT_EQ(timesOf(range).size(), 3U);
    auto position = range.begin();
    expectInitial(*position);
    expectDefaultPayload(*position);
    ++position;
    EXPECT_EQ(position->time, 0.0);
    ++position;
    EXPECT_EQ(position->time, 1.0);
    EXPECT_EQ(position->pose.translation().x(), 1.0);
}

TEST(SampledTrajectory, IntervalOfTheTrajectoryDecidesNotThatOfTheRange)
{
    Trajectory const trajectory = clock(2.0, 3.0);
    EXPECT_EQ(timesOf(trajectory.sampled_over(TimeStamp(0), TimeStamp(5), Duration(1))),
              (std::vector<double>{0, 0, 2, 3, 3, 3}));
}

TEST(SampledTrajectory, TimesAreIndexTimesStepPlusStart)
{
    Trajectory const trajectory = clock(0.0, 10.0);
    auto position = trajectory.sampled_over(TimeStamp(0.7), TimeStamp(9), Duration(0.1)).begin();
    double summed = 0.7;
    bool differs = false;
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(position->time, static_cast<double>(i) * 0.1 + 0.7);
        differs = differs || position->time != summed;
        summed += 0.1;
        ++position;
    }
    EXPECT_TRUE(differs) << "adding the step up would have done";
}

TEST(SampledTrajectory, EveryPositionIncludingTheEndEvaluatesThePoseFunctionOnce)
{
    int calls = 0;
    Trajectory const trajectory = clock(0.0, 10.0, &calls);
    auto const range = trajectory.sampled_over(TimeStamp(0), TimeStamp(3), Duration(1));
    EXPECT_EQ(calls, 0);
    auto const end = range.end(); // its time, 4, lies in the trajectory
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(end->time, 4.0);
    auto position = range.begin();
    EXPECT_EQ(calls, 2);
    for (; position != end; ++position) {
        (void)*position;
        (void)position->time;
    }
    EXPECT_EQ(calls, 6);
}

TEST(SampledTrajectory, AnEndOutsideTheTrajectoryEvaluatesNothing)
{
    int calls = 0;
    Trajectory const trajectory = clock(0.0, 3.0, &calls);
    expectInitial(*trajectory.sampled(Duration(1)).end());
    EXPECT_EQ(calls, 0);
}

TEST(SampledTrajectory, IteratorsCompareByIndexOnly)
{
    Trajectory const one = clock(0.0, 10.0);
    Trajectory const other = clock(5.0, 7.0);
    SampledTrajectoryIterator const a(&one, TimeStamp(0), 3, Duration(1));
    SampledTrajectoryIterator const b(&other, TimeStamp(5), 3, Duration(0.1));
    SampledTrajectoryIterator const c(&one, TimeStamp(0), 4, Duration(1));
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
    EXPECT_TRUE(a != c);
    EXPECT_FALSE(a == c);
    EXPECT_TRUE(one.sampled(Duration(1)).end() ==
                SampledTrajectoryIterator(&other, TimeStamp(0), 11, Duration(1)));
}

TEST(SampledTrajectory, PostfixIncrementReturnsTheOldPosition)
{
    Trajectory const trajectory = clock(0.0, 10.0);
    auto position = trajectory.sampled(Duration(1)).begin();
    ++position;
    auto const before = position++;
    EXPECT_EQ(before->time, 1.0);
    EXPECT_EQ(position->time, 2.0);
    EXPECT_EQ(&++position, &position);
}

TEST(SampledTrajectory, CopiesKeepTheirNodeWithoutEvaluatingAgain)
{
    int calls = 0;
    Trajectory const trajectory = clock(0.0, 10.0, &calls);
    SampledTrajectoryIterator const original(&trajectory, TimeStamp(0), 3, Duration(1));
    SampledTrajectoryIterator const copy(original);
    SampledTrajectoryIterator assigned;
    assigned = original;
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(copy->time, 3.0);
    EXPECT_EQ(assigned->time, 3.0);
}

TEST(SampledTrajectory, IndexBeyondTheSignedRangeIsUnsigned)
{
    std::uint64_t const index = std::uint64_t{1} << 63;
    Trajectory const trajectory = clock(0.0, 1e19);
    EXPECT_EQ(SampledTrajectoryIterator(&trajectory, TimeStamp(0), index, Duration(1))->time,
              9223372036854775808.0);
}

TEST(SampledTrajectory, ATimeThatIsNaNKeepsTheNode)
{
    int calls = 0;
    Trajectory const trajectory = clock(0.0, 10.0, &calls);
    expectInitial(*SampledTrajectoryIterator(&trajectory, TimeStamp(notANumber), 0, Duration(1)));
    expectInitial(*SampledTrajectoryIterator(&trajectory, TimeStamp(0), 1, Duration(notANumber)));
    EXPECT_EQ(calls, 0);
}

TEST(SampledTrajectory, StepsOfZeroAndBelowAreNotChecked)
{
    Trajectory const trajectory = clock(0.0, 10.0);
    // llround(10 / -5) + 1 is -1, the largest unsigned count.
    auto const range = trajectory.sampled(Duration(-5.0));
    EXPECT_TRUE(range.end() ==
                SampledTrajectoryIterator(
                    &trajectory, TimeStamp(0), std::numeric_limits<std::uint64_t>::max(), Duration(1)));
    EXPECT_NO_THROW((void)trajectory.sampled(Duration(0.0)).begin());
}

TEST(SampledTrajectory, WithoutAPoseFunctionTheFirstPositionInsideThrows)
{
    Trajectory const trajectory;
    EXPECT_THROW((void)trajectory.sampled(Duration(1)).begin(), std::bad_function_call);
}

TEST(SampledTrajectory, ExceptionsOfThePoseFunctionPassThroughTheIncrement)
{
    // The interval is wider than the table.
    auto const table =
        InterpolatedTrajectoryPathBuilder().addPose(TimeStamp(0), at(0)).addPose(TimeStamp(1), at(1)).build();
    Trajectory const wide(TimeStamp(0), TimeStamp(5), [table](double t) { return table.sample(t); });
    auto position = wide.sampled(Duration(1)).begin();
    ++position;
    EXPECT_THROW(++position, std::out_of_range);
}

TEST(SampledTrajectory, IsAnInputRangeOfNodes)
{
    static_assert(std::input_iterator<SampledTrajectoryIterator>);
    static_assert(std::ranges::input_range<SampledTrajectoryRange const>);
    Trajectory const trajectory = clock(0.0, 4.0);
    EXPECT_EQ(std::ranges::count_if(trajectory.sampled(Duration(1)),
                                    [](TrajectoryNode const& node) { return node.time > 1.5; }),
              3);
}

} // namespace
