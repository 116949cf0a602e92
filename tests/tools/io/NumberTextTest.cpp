#include "tools/io/NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <string_view>
#include <vector>

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

TEST(NumberText, NumbersFillTheirText)
{
    EXPECT_EQ(parseNumber("1.5"), 1.5);
    EXPECT_EQ(parseNumber("-2e3"), -2000.0);
    EXPECT_EQ(parseNumber("+7"), 7.0);
    EXPECT_EQ(parseNumber(""), std::nullopt);
    EXPECT_EQ(parseNumber("1,5"), std::nullopt);
    EXPECT_EQ(parseNumber("1.5 "), std::nullopt);
    EXPECT_EQ(parseNumber("+-1"), std::nullopt);
    EXPECT_EQ(parseNumber("+"), std::nullopt);
    EXPECT_EQ(parseNumber("0x10"), std::nullopt);
}

TEST(NumberText, NumbersAreFinite)
{
    EXPECT_EQ(parseNumber("nan"), std::nullopt);
    EXPECT_EQ(parseNumber("-inf"), std::nullopt);
    EXPECT_EQ(parseNumber("1e999"), std::nullopt);
}

TEST(NumberText, IntegersFitIn64Bits)
{
    EXPECT_EQ(parseInteger("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parseInteger("9223372036854775808"), std::nullopt);
    EXPECT_EQ(parseInteger("12.0"), std::nullopt);
}

TEST(NumberText, NanosecondsAreRoundedOnce)
{
    EXPECT_EQ(secondsOfNanoseconds(1403715524907143168), 1403715524.907143168);
    EXPECT_EQ(secondsOfNanoseconds(0), 0.0);
    EXPECT_EQ(secondsOfNanoseconds(7), 7e-9);
    EXPECT_EQ(secondsOfNanoseconds(-7), -7e-9);
    EXPECT_EQ(secondsOfNanoseconds(-1500000000), -1.5);
    EXPECT_EQ(secondsOfNanoseconds(std::numeric_limits<std::int64_t>::min()), -9223372036.854775808);
    // Here converting the count first and dividing then gives the neighbouring number.
    constexpr std::int64_t treacherous = 1430257678620673558;
    EXPECT_EQ(secondsOfNanoseconds(treacherous), 1430257678.620673558);
    EXPECT_NE(static_cast<double>(treacherous) / 1e9, 1430257678.620673558);
}

TEST(NumberText, TheShortestTextReadsBack)
{
    EXPECT_EQ(shortestText(0.0), "0");
    EXPECT_EQ(shortestText(-0.0), "-0");
    EXPECT_EQ(shortestText(0.1), "0.1");
    EXPECT_EQ(shortestText(-1311868163.8696), "-1311868163.8696");
    EXPECT_EQ(shortestText(1e9), "1000000000");
    EXPECT_EQ(shortestText(1e-5), "0.00001");
    EXPECT_EQ(shortestText(1e-6), "1e-06");
    EXPECT_EQ(shortestText(1e17), "1e+17");
    EXPECT_EQ(shortestText(1.0 / 3.0), "0.3333333333333333");
    std::mt19937_64 random(5);
    for (int i = 0; i < 10'000; ++i) {
        auto const number = std::bit_cast<double>(random());
        if (std::isfinite(number)) {
            EXPECT_EQ(parseNumber(shortestText(number)), number);
        }
    }
}

TEST(NumberText, SecondsAreNanosecondsRoundedOnce)
{
    EXPECT_EQ(nanosecondsText(0.0), "0");
    EXPECT_EQ(nanosecondsText(-0.0), "0");
    EXPECT_EQ(nanosecondsText(1.5), "1500000000");
    EXPECT_EQ(nanosecondsText(-1.5), "-1500000000");
    EXPECT_EQ(nanosecondsText(7e-9), "7");
    EXPECT_EQ(nanosecondsText(-7e-9), "-7");
    EXPECT_EQ(nanosecondsText(4e-10), "0");
    EXPECT_EQ(nanosecondsText(-4e-10), "0");
    EXPECT_EQ(nanosecondsText(1403715524.907143168), "1403715524907143116"); // the double nearest to it
    EXPECT_EQ(nanosecondsText(9.3e9), std::nullopt);
    EXPECT_EQ(nanosecondsText(std::nan("")), std::nullopt);
}

TEST(NumberText, ColumnsAreSeparatedByBlanksOrCommas)
{
    using Columns = std::vector<std::string_view>;
    EXPECT_EQ(columnsOf("  a\tbc  d "), (Columns{"a", "bc", "d"}));
    EXPECT_EQ(columnsOf(" \t "), Columns{});
    EXPECT_EQ(commaColumnsOf(" a,b c ,,\td"), (Columns{"a", "b c", "", "d"}));
    EXPECT_EQ(commaColumnsOf("a,"), (Columns{"a", ""}));
    EXPECT_EQ(trimmed(" \t x y\t"), "x y");
    EXPECT_EQ(trimmed(" \t "), "");
}
