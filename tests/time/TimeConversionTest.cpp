#include <roamscan/time/TimeConversion.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace
{

using namespace oV::Roamscan::TimeConversion;

_ULARGE_INTEGER txm(std::uint64_t value)
{
    _ULARGE_INTEGER result;
    result.QuadPart = value;
    return result;
}

_LARGE_INTEGER offset(std::int64_t value)
{
    _LARGE_INTEGER result;
    result.QuadPart = value;
    return result;
}

TEST(TimeConversion, ResolutionsAreTicksPerSecond)
{
    static_assert(std::is_same_v<decltype(timeResolution), double const>);
    EXPECT_EQ(timeResolution, 100000000.0);
    EXPECT_EQ(automationTimeResolution, 1000000.0);
}

TEST(TimeConversion, SecondsRoundToTheNearestTick)
{
    EXPECT_EQ(convertToIntegerTime(0.0), 0);
    EXPECT_EQ(convertToIntegerTime(1.0), 100000000);
    EXPECT_EQ(convertToIntegerTime(1.000000014), 100000001);
    EXPECT_EQ(convertToIntegerTime(1.000000016), 100000002);
    EXPECT_EQ(convertToIntegerTime(-1.000000016), -100000002);
    EXPECT_EQ(convertToIntegerTime(1403715524.5), 140371552450000000);
}

TEST(TimeConversion, TheLargestSecondsAreTheLastThatIntegerTimeCounts)
{
    EXPECT_EQ(largestSeconds, 92233720368.0);
    EXPECT_EQ(convertToIntegerTime(largestSeconds), 9223372036800000000);
    EXPECT_EQ(convertToIntegerTime(-largestSeconds), -9223372036800000000);
    EXPECT_GT((largestSeconds + 1.0) * timeResolution, 0x1p63);
}

TEST(TimeConversion, HalfATickRoundsAwayFromZero)
{
    ASSERT_EQ(0.000000005 * 100000000.0, 0.5);
    EXPECT_EQ(convertToIntegerTime(0.000000005), 1);
    EXPECT_EQ(convertToIntegerTime(-0.000000005), -1);
    EXPECT_EQ(convertToIntegerTime(2.5 * 0.00000001), std::llround(2.5 * 0.00000001 * 100000000.0));
    EXPECT_EQ(convertToIntegerTime(0.0000000049), 0);
}

TEST(TimeConversion, IntegerTimeToSecondsMultipliesAndDoesNotDivide)
{
    EXPECT_EQ(convertToSeconds(100000000), 1.0);
    EXPECT_EQ(convertToSeconds(-50000000), -0.5);
    // 3 * 1e-8 and 3 / 1e8 differ in the last bit.
    ASSERT_NE(3.0 * 1e-8, 3.0 / 100000000.0);
    EXPECT_EQ(convertToSeconds(3), 3.0 * 1e-8);
}

TEST(TimeConversion, SecondsToTxmTimeRoundsToTicksAndThenTruncatesToMicroseconds)
{
    EXPECT_EQ(convertToTxmTime(1.5).QuadPart, 1500000U);
    // 1.999 us is 199.9 ticks; as 200 ticks it is 2 us, without the detour it would be 1 us.
    EXPECT_EQ(convertToTxmTime(0.000001999).QuadPart, 2U);
    EXPECT_EQ(convertToTxmTime(0.00000199).QuadPart, 1U);
}

TEST(TimeConversion, IntegerTimeToTxmTimeTruncatesTowardsZero)
{
    EXPECT_EQ(convertToTxmTime(int64{0}).QuadPart, 0U);
    EXPECT_EQ(convertToTxmTime(int64{100}).QuadPart, 1U);
    EXPECT_EQ(convertToTxmTime(int64{199}).QuadPart, 1U);
    EXPECT_EQ(convertToTxmTime(int64{-99}).QuadPart, 0U);
}

TEST(TimeConversion, NegativeTxmTimesWrap)
{
    EXPECT_EQ(convertToTxmTime(int64{-199}).QuadPart, 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(convertToTxmTime(int64{-200}).QuadPart, 0xFFFFFFFFFFFFFFFEU);
    EXPECT_EQ(convertToTxmTime(-0.000002).QuadPart, 0xFFFFFFFFFFFFFFFEU);
}

TEST(TimeConversion, IntegerTimeToTxmTimeIsComputedInDouble)
{
    // Above 2^53 ticks the digits below the double's grid are lost; integer division would keep them.
    int64 const large = (int64{1} << 60) + 100;
    EXPECT_EQ(convertToTxmTime(large).QuadPart, convertToTxmTime(int64{1} << 60).QuadPart);
    // 0.01 is a little above a hundredth, which shows for large counts.
    EXPECT_EQ(convertToTxmTime(std::numeric_limits<int64>::max()).QuadPart,
              static_cast<std::uint64_t>(9223372036854775808.0 * 0.01));
}

TEST(TimeConversion, IntegerTimeToTxmTimeMultipliesAndDoesNotDivide)
{
    // 0.01 is a little above a hundredth; for this count the product is the next double above the quotient.
    int64 const time = (int64{1} << 60) + 384;
    ASSERT_EQ(static_cast<std::uint64_t>(static_cast<double>(time) / 100.0), 11529215046068474U);
    EXPECT_EQ(convertToTxmTime(time).QuadPart, 11529215046068476U);
}

TEST(TimeConversion, TxmTimeToIntegerTimeMultipliesByAHundred)
{
    EXPECT_EQ(convertTxmTimeToIntegerTime(txm(0)), 0);
    EXPECT_EQ(convertTxmTimeToIntegerTime(txm(1)), 100);
    EXPECT_EQ(convertTxmTimeToIntegerTime(txm(1500000)), 150000000);
}

TEST(TimeConversion, TxmTimeToIntegerTimeWraps)
{
    EXPECT_EQ(convertTxmTimeToIntegerTime(txm(0xFFFFFFFFFFFFFFFFU)), -100);
    EXPECT_EQ(convertTxmTimeToIntegerTime(txm(std::uint64_t{1} << 62)), 0);
}

TEST(TimeConversion, TxmTimeToSecondsReadsTheValueAsUnsigned)
{
    EXPECT_EQ(convertTxmTimeToSeconds(txm(1500000)), 1.5);
    EXPECT_EQ(convertTxmTimeToSeconds(txm(3)), 3.0 * 1e-6);
    EXPECT_EQ(convertTxmTimeToSeconds(txm(0xFFFFFFFFFFFFFFFFU)), 18446744073709551616.0 * 1e-6);
    EXPECT_NEAR(convertTxmTimeToSeconds(txm(0xFFFFFFFFFFFFFFFFU)), 18446744073709.55, 0.01);
}

TEST(TimeConversion, TxmTimeToSecondsMultipliesAndDoesNotDivide)
{
    // 5 * 1e-6 and 5 / 1e6 differ in the last bit.
    ASSERT_NE(5.0 * 1e-6, 5.0 / 1000000.0);
    EXPECT_EQ(convertTxmTimeToSeconds(txm(5)), 5.0 * 1e-6);
}

TEST(TimeConversion, AutomationTimeIsShiftedByItsOffset)
{
    EXPECT_EQ(convertAutomationTimeToIntegerTime(txm(10), offset(0)), 1000);
    EXPECT_EQ(convertAutomationTimeToIntegerTime(txm(10), offset(5)), 1500);
    EXPECT_EQ(convertAutomationTimeToIntegerTime(txm(10), offset(-4)), 600);
}

TEST(TimeConversion, AutomationTimeBeforeItsOffsetIsAValidNegativeTime)
{
    EXPECT_EQ(convertAutomationTimeToIntegerTime(txm(10), offset(-11)), -100);
    EXPECT_EQ(convertAutomationTimeToIntegerTime(txm(0xFFFFFFFFFFFFFFFFU), offset(1)), 0);
    EXPECT_EQ(convertAutomationTimeToIntegerTime(txm(0), offset(std::numeric_limits<std::int64_t>::min())),
              0);
}

TEST(TimeConversion, InterpolationFractionOfThreeEqualTimesIsZero)
{
    EXPECT_EQ(getInterpolationFraction(5, 5, 5), 0.0);
}

TEST(TimeConversion, InterpolationFractionOfAnEmptyPairAtAnotherTimeIsInfinite)
{
    EXPECT_EQ(getInterpolationFraction(5, 5, 6), std::numeric_limits<double>::infinity());
    EXPECT_EQ(getInterpolationFraction(5, 5, 4), -std::numeric_limits<double>::infinity());
}

TEST(TimeConversion, InterpolationFractionIsNotClamped)
{
    EXPECT_EQ(getInterpolationFraction(0, 10, 15), 1.5);
    EXPECT_EQ(getInterpolationFraction(0, 10, -5), -0.5);
    EXPECT_EQ(getInterpolationFraction(10, 0, 10), 0.0);
    EXPECT_EQ(getInterpolationFraction(10, 0, 5), 0.5);
}

TEST(TimeConversion, InterpolationFractionTakesItsDifferencesAsIntegers)
{
    // As doubles, these neighbours would be one value.
    int64 const large = int64{1} << 60;
    EXPECT_EQ(getInterpolationFraction(large, large + 4, large + 1), 0.25);
    // The differences wrap: max - min is -1.
    EXPECT_EQ(getInterpolationFraction(std::numeric_limits<int64>::min(),
                                       std::numeric_limits<int64>::max(),
                                       std::numeric_limits<int64>::min() + 1),
              -1.0);
}

} // namespace
