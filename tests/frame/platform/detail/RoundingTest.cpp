#include "tests/support/SpecialNumbers.h"

#include <roamscan/frame/platform/detail/Rounding.h>

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using oV::detail::roundHalfAway;
using oV::detail::roundToInteger;

struct Rounded
{
    double value;
    double expected;
};

constexpr Rounded roundings[] = {{0.0, 0.0},
                                 {0.49999999999999994, 0.0}, // plus 0.5 it would be rounded to 1
                                 {0.5, 1.0},
                                 {0.50000000000000011, 1.0},
                                 {1.4999999999999998, 1.0},
                                 {1.5, 2.0},
                                 {2.5, 3.0},
                                 {1e10 + 0.5, 1e10 + 1},
                                 {4503599627370495.5, 4503599627370496.0},
                                 {4503599627370497.0, 4503599627370497.0}, // plus 0.5 it would be even
                                 {9007199254740991.0, 9007199254740991.0},
                                 {9.2233720368547748e18, 9.2233720368547748e18}};

} // namespace

TEST(Rounding, IsToTheNearestAndHalvesGoAwayFromZero)
{
    for (auto const& [value, expected] : roundings) {
        EXPECT_EQ(roundHalfAway(value), expected);
        EXPECT_EQ(roundHalfAway(-value), -expected);
        EXPECT_EQ(std::signbit(roundHalfAway(-value)), true);
        EXPECT_EQ(roundToInteger(value), static_cast<long long>(expected));
        EXPECT_EQ(roundToInteger(-value), -static_cast<long long>(expected));
    }
}

TEST(Rounding, KeepsWhatIsNotFinite)
{
    EXPECT_EQ(roundHalfAway(support::infinity), support::infinity);
    EXPECT_EQ(roundHalfAway(-support::infinity), -support::infinity);
    EXPECT_TRUE(std::isnan(roundHalfAway(support::notANumber)));
}
