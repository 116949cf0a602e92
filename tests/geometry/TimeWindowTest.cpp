#include "tests/support/TimeWindows.h"

#include <roamscan/geometry/TimeWindow.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <type_traits>
#include <utility>

namespace
{

using oV::Roamscan::TimeWindow;
using support::lowest;
using support::unset;

constexpr int64 highest = unset - 1; // the last time that is not the marker

// The value

TEST(TimeWindow, UnsetTimeIsTheLargestSigned64BitNumber)
{
    EXPECT_EQ(TimeWindow::unsetTime, 9223372036854775807);
}

TEST(TimeWindow, DefaultHasBothTimesUnset)
{
    EXPECT_EQ(TimeWindow().start, unset);
    EXPECT_EQ(TimeWindow().end, unset);
}

TEST(TimeWindow, IsAPairOfStartAndEndInThisOrder)
{
    static_assert(std::is_standard_layout_v<TimeWindow> && std::is_trivially_copyable_v<TimeWindow>);
    static_assert(sizeof(TimeWindow) == 16);
    static_assert(offsetof(TimeWindow, start) == 0 && offsetof(TimeWindow, end) == 8);
    TimeWindow const window(3, 7);
    EXPECT_EQ(window.start, 3);
    EXPECT_EQ(window.end, 7);
}

TEST(TimeWindow, AcceptsAnEndAtOrBeforeItsStart)
{
    TimeWindow const reversed(7, 3);
    EXPECT_EQ(reversed.start, 7);
    EXPECT_EQ(reversed.end, 3);
    TimeWindow const empty(5, 5);
    EXPECT_EQ(empty.start, 5);
    EXPECT_EQ(empty.end, 5);
}

TEST(TimeWindow, CopyAndMoveTakeBothTimes)
{
    TimeWindow const source(3, 7);
    TimeWindow copied;
    copied = source;
    EXPECT_EQ(copied, source);
    TimeWindow moved;
    moved = std::move(copied);
    EXPECT_EQ(moved, source);
}

TEST(TimeWindow, EqualsOnlyWithBothTimesEqual)
{
    EXPECT_TRUE(TimeWindow(3, 7) == TimeWindow(3, 7));
    EXPECT_FALSE(TimeWindow(3, 7) == TimeWindow(3, 8));
    EXPECT_FALSE(TimeWindow(3, 7) == TimeWindow(4, 7));
    EXPECT_TRUE(TimeWindow() == TimeWindow());
}

// valid()

TEST(TimeWindow, DefaultIsNotValid)
{
    EXPECT_FALSE(TimeWindow().valid());
}

TEST(TimeWindow, ValidNeedsTheStartBeforeTheEnd)
{
    EXPECT_TRUE(TimeWindow(3, 4).valid());
    EXPECT_TRUE(TimeWindow(lowest, highest).valid());
    EXPECT_FALSE(TimeWindow(4, 4).valid());
    EXPECT_FALSE(TimeWindow(4, 3).valid());
}

TEST(TimeWindow, ValidNeedsBothTimesSet)
{
    EXPECT_FALSE(TimeWindow(3, unset).valid());
    EXPECT_FALSE(TimeWindow(unset, 3).valid());
}

// contains() and isBefore()

TEST(TimeWindow, ContainsItsStartButNotItsEnd)
{
    TimeWindow const window(-10, 20);
    EXPECT_FALSE(window.contains(-11));
    EXPECT_TRUE(window.contains(-10));
    EXPECT_TRUE(window.contains(19));
    EXPECT_FALSE(window.contains(20));
}

TEST(TimeWindow, ContainsNothingWhenEmptyReversedOrDefault)
{
    EXPECT_FALSE(TimeWindow(5, 5).contains(5));
    EXPECT_FALSE(TimeWindow(7, 3).contains(5));
    EXPECT_FALSE(TimeWindow().contains(unset));
    EXPECT_FALSE(TimeWindow().contains(0));
}

TEST(TimeWindow, ContainsEveryLaterTimeWhileItsEndIsUnset)
{
    EXPECT_TRUE(TimeWindow(3, unset).contains(3));
    EXPECT_TRUE(TimeWindow(3, unset).contains(highest));
    EXPECT_FALSE(TimeWindow(3, unset).contains(unset));
}

TEST(TimeWindow, IsBeforeATimeAtItsEndOrLater)
{
    TimeWindow const window(10, 20);
    EXPECT_FALSE(window.isBefore(9));
    EXPECT_FALSE(window.isBefore(19));
    EXPECT_TRUE(window.isBefore(20));
    EXPECT_TRUE(window.isBefore(21));
}

// overlap() and overlaps()

TEST(TimeWindow, OverlapReachesFromTheGreaterStartToTheLesserEnd)
{
    EXPECT_EQ(TimeWindow(0, 10).overlap({5, 20}), TimeWindow(5, 10));
    EXPECT_EQ(TimeWindow(5, 20).overlap({0, 10}), TimeWindow(5, 10));
    EXPECT_EQ(TimeWindow(0, 30).overlap({5, 20}), TimeWindow(5, 20));
}

TEST(TimeWindow, OverlapOfSeparateWindowsIsNotValid)
{
    TimeWindow const none = TimeWindow(0, 5).overlap({10, 20});
    EXPECT_EQ(none, TimeWindow(10, 5));
    EXPECT_FALSE(none.valid());
}

TEST(TimeWindow, OverlapsWhereBothHaveAnInstant)
{
    EXPECT_TRUE(TimeWindow(0, 10).overlaps({9, 20}));
    EXPECT_TRUE(TimeWindow(9, 20).overlaps({0, 10}));
    EXPECT_TRUE(TimeWindow(0, 10).overlaps({0, 10}));
    EXPECT_FALSE(TimeWindow(0, 5).overlaps({10, 20}));
}

TEST(TimeWindow, WindowsThatOnlyTouchDoNotOverlap)
{
    EXPECT_FALSE(TimeWindow(0, 10).overlaps({10, 20}));
    EXPECT_FALSE(TimeWindow(10, 20).overlaps({0, 10}));
}

TEST(TimeWindow, DefaultOverlapsNothing)
{
    for (TimeWindow const other :
         {TimeWindow(), TimeWindow(0, 5), TimeWindow(lowest, highest), TimeWindow(0, unset)})
    {
        EXPECT_FALSE(TimeWindow().overlaps(other));
        EXPECT_FALSE(other.overlaps(TimeWindow()));
    }
}

TEST(TimeWindow, AnUnsetEndOverlapsWhereTheOtherEndIsSet)
{
    // Only the greater start and the lesser end are looked at.
    EXPECT_TRUE(TimeWindow(0, unset).overlaps({5, 10}));
    EXPECT_FALSE(TimeWindow(0, unset).overlaps({5, unset}));
    EXPECT_FALSE(TimeWindow(unset, 20).overlaps({5, 10}));
}

// distance()

TEST(TimeWindow, DistanceOfSeparateWindowsIsTheGap)
{
    EXPECT_EQ(TimeWindow(0, 5).distance({10, 20}), 5);
    EXPECT_EQ(TimeWindow(10, 20).distance({0, 5}), 5);
}

TEST(TimeWindow, DistanceOfTouchingWindowsIsZero)
{
    EXPECT_EQ(TimeWindow(0, 10).distance({10, 20}), 0);
}

TEST(TimeWindow, DistanceOfOverlappingWindowsIsNegative)
{
    EXPECT_EQ(TimeWindow(0, 10).distance({7, 20}), -3);
    EXPECT_EQ(TimeWindow(0, 10).distance({2, 5}), -3);
}

TEST(TimeWindow, DistanceWrapsAroundAtTheLimits)
{
    // In constant expressions, where an overflow would not compile.
    static_assert(TimeWindow().distance({}) == 0);
    static_assert(TimeWindow().distance({0, 5}) == unset - 5);
    static_assert(TimeWindow(0, unset).distance({0, unset}) == -unset);
    static_assert(TimeWindow(lowest, highest).distance({lowest, highest}) == 2);  // -2^64 + 2
    static_assert(TimeWindow(lowest, unset).distance({lowest, unset}) == 1);      // -2^64 + 1
    static_assert(TimeWindow(highest, highest).distance({lowest, lowest}) == -2); // 2^64 - 2
    static_assert(TimeWindow(unset, unset).distance({lowest, lowest}) == -1);     // 2^64 - 1
    EXPECT_EQ(TimeWindow(highest, unset).distance({lowest, lowest + 1}), -3);     // 2^64 - 3
}

} // namespace
