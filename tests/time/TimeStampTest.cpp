#include <roamscan/time/TimeStamp.h>

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>
#include <vector>

namespace
{

using oV::Roamscan::Duration;
using oV::Roamscan::TimeStamp;

TEST(TimeStamp, ContainsOnlyOneDouble)
{
    static_assert(sizeof(TimeStamp) == sizeof(double) && sizeof(Duration) == sizeof(double));
    static_assert(std::is_trivially_copyable_v<TimeStamp> && std::is_trivially_copyable_v<Duration>);
    EXPECT_EQ(TimeStamp().get(), 0.0);
    EXPECT_EQ(TimeStamp(1.5).get(), 1.5);
    EXPECT_EQ(static_cast<double>(TimeStamp(1.5)), 1.5);
}

TEST(TimeStamp, InstantsDurationsAndNumbersDoNotMix)
{
    static_assert(!std::is_convertible_v<double, TimeStamp>);
    static_assert(!std::is_convertible_v<TimeStamp, double>);
    static_assert(!std::is_convertible_v<TimeStamp, Duration>);
    static_assert(!std::is_constructible_v<TimeStamp, Duration>);
    SUCCEED();
}

TEST(TimeStamp, InstantPlusOrMinusDurationIsAnInstant)
{
    static_assert(std::is_same_v<decltype(TimeStamp() + Duration()), TimeStamp>);
    EXPECT_EQ(TimeStamp(1.5) + Duration(0.25), TimeStamp(1.75));
    EXPECT_EQ(TimeStamp(1.5) - Duration(0.25), TimeStamp(1.25));
}

TEST(TimeStamp, InstantMinusInstantIsADuration)
{
    static_assert(std::is_same_v<decltype(TimeStamp() - TimeStamp()), Duration>);
    EXPECT_EQ(TimeStamp(1.5) - TimeStamp(1.0), Duration(0.5));
}

TEST(TimeStamp, DurationsAddUp)
{
    Duration total(1.0);
    (total += Duration(0.5)) += Duration(0.25);
    EXPECT_EQ(total, Duration(1.75));
}

template <typename Alias>
void expectTotalOrder()
{
    Alias const one(1.0);
    Alias const two(2.0);
    EXPECT_TRUE(one < two && one <= two && one <= one && two > one && two >= one && one == one && one != two);
    EXPECT_FALSE(two < one || two <= one || one > two || one >= two || one == two || one != one || one < one);
}

TEST(TimeStamp, InstantsAndDurationsAreOrdered)
{
    expectTotalOrder<TimeStamp>();
    expectTotalOrder<Duration>();
}

TEST(TimeStamp, NaNIsNeitherEqualToNorOrderedAgainstAnything)
{
    TimeStamp const nan(std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(nan == nan || nan < TimeStamp(0.0) || nan >= TimeStamp(0.0));
    EXPECT_TRUE(nan != nan);
}

struct ListTag;

TEST(StrongAlias, ConvertsImplicitlyToAReferenceUnlessItWrapsANumber)
{
    using List = mapping::StrongAlias<std::vector<int>, ListTag>;
    List const list(std::vector<int>{1, 2, 3});
    std::vector<int> const& wrapped = list;
    EXPECT_EQ(&wrapped, &list.get());
    EXPECT_EQ(wrapped.size(), 3U);
}

} // namespace
