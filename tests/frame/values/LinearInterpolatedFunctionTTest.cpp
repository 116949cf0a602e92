#include "tests/support/SpecialNumbers.h"

#include <roamscan/frame/values/LinearInterpolatedFunctionT.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <utility>

namespace
{

using support::infinity;
using support::notANumber;

using Function = oV::LinearInterpolatedFunctionT<double>;
using Samples = std::initializer_list<std::pair<double, double>>;

constexpr double greatest = std::numeric_limits<double>::max();

Function functionOf(Samples samples)
{
    Function function;
    for (auto const& [x, y] : samples) {
        function.addSample(x, y);
    }
    return function;
}

std::optional<double> valueAt(Function const& function, double x)
{
    double y = 0;
    return function.evaluateAt(x, y) ? std::optional(y) : std::nullopt;
}

TEST(LinearInterpolatedFunctionT, HasNoValueWithoutSamples)
{
    EXPECT_EQ(valueAt(Function(), 0), std::nullopt);
}

TEST(LinearInterpolatedFunctionT, IsLinearBetweenSamples)
{
    Function const function = functionOf({{0, 10}, {4, 30}, {5, -10}});
    EXPECT_EQ(valueAt(function, 1), 15);
    EXPECT_EQ(valueAt(function, 3), 25);
    EXPECT_EQ(valueAt(function, 4.5), 10);
}

TEST(LinearInterpolatedFunctionT, IsExactAtTheSamplesBothEndsIncluded)
{
    Function const function = functionOf({{0.1, 0.3}, {0.2, 0.7}, {0.7, 0.1}});
    EXPECT_EQ(valueAt(function, 0.1), 0.3);
    EXPECT_EQ(valueAt(function, 0.2), 0.7);
    EXPECT_EQ(valueAt(function, 0.7), 0.1);
}

TEST(LinearInterpolatedFunctionT, HasNoValueOutsideItsSamples)
{
    Function const function = functionOf({{1, 10}, {2, 20}});
    EXPECT_EQ(valueAt(function, std::nextafter(1.0, 0.0)), std::nullopt);
    EXPECT_EQ(valueAt(function, std::nextafter(2.0, 3.0)), std::nullopt);
    EXPECT_EQ(valueAt(function, -infinity), std::nullopt);
    EXPECT_EQ(valueAt(function, infinity), std::nullopt);
    EXPECT_EQ(valueAt(function, notANumber), std::nullopt);
}

TEST(LinearInterpolatedFunctionT, LeavesTheResultUnchangedWithoutAValue)
{
    double y = 7;
    EXPECT_FALSE(functionOf({{1, 10}, {2, 20}}).evaluateAt(3, y));
    EXPECT_EQ(y, 7);
    EXPECT_FALSE(functionOf({{1, 10}, {2, 20}}).evaluateAt(notANumber, y));
    EXPECT_EQ(y, 7);
    EXPECT_FALSE(Function().evaluateAt(3, y));
    EXPECT_EQ(y, 7);
}

TEST(LinearInterpolatedFunctionT, OneSampleHasAValueOnlyAtItsX)
{
    Function const function = functionOf({{1, 10}});
    EXPECT_EQ(valueAt(function, 1), 10);
    EXPECT_EQ(valueAt(function, 0.5), std::nullopt);
    EXPECT_EQ(valueAt(function, 1.5), std::nullopt);
}

TEST(LinearInterpolatedFunctionT, AcceptsSamplesInAnyOrder)
{
    Function const function = functionOf({{5, -10}, {0, 10}, {4, 30}});
    EXPECT_EQ(valueAt(function, 1), 15);
    EXPECT_EQ(valueAt(function, 4.5), 10);
    EXPECT_EQ(valueAt(function, -1), std::nullopt);
}

TEST(LinearInterpolatedFunctionT, ALaterSampleAtTheSameXReplacesTheEarlierOne)
{
    Function const function = functionOf({{0, 10}, {2, 20}, {4, 40}, {2, 0}, {4, 4}, {0, 6}});
    EXPECT_EQ(valueAt(function, 0), 6);
    EXPECT_EQ(valueAt(function, 2), 0);
    EXPECT_EQ(valueAt(function, 3), 2);
    EXPECT_EQ(valueAt(function, 4), 4);
}

TEST(LinearInterpolatedFunctionT, NegativeZeroIsTheSameXAsZero)
{
    EXPECT_EQ(valueAt(functionOf({{0.0, 1}, {-0.0, 2}}), 0.0), 2);
}

TEST(LinearInterpolatedFunctionT, IgnoresASampleAtNaN)
{
    Function const function =
        functionOf({{notANumber, 1}, {0, 10}, {notANumber, 2}, {4, 30}, {2, 0}, {notANumber, 3}});
    EXPECT_EQ(valueAt(function, 0), 10);
    EXPECT_EQ(valueAt(function, 1), 5);
    EXPECT_EQ(valueAt(function, 3), 15);
    EXPECT_EQ(valueAt(function, 4), 30);
    EXPECT_EQ(valueAt(function, notANumber), std::nullopt);
    EXPECT_EQ(valueAt(functionOf({{notANumber, 1}}), 0), std::nullopt);
}

TEST(LinearInterpolatedFunctionT, IgnoresASampleAtInfinity)
{
    Function const function = functionOf({{-infinity, 1}, {0, 10}, {4, 30}, {infinity, 2}});
    EXPECT_EQ(valueAt(function, -1), std::nullopt);
    EXPECT_EQ(valueAt(function, 2), 20);
    EXPECT_EQ(valueAt(function, 5), std::nullopt);
    EXPECT_EQ(valueAt(function, infinity), std::nullopt);
}

TEST(LinearInterpolatedFunctionT, IsExactAtASampleWhoseNeighbourIsNaN)
{
    Function const function = functionOf({{0, 10}, {1, notANumber}, {2, 20}});
    EXPECT_EQ(valueAt(function, 0), 10);
    EXPECT_EQ(valueAt(function, 2), 20);
    for (double const x : {0.5, 1.0, 1.5}) {
        ASSERT_TRUE(valueAt(function, x).has_value());
        EXPECT_TRUE(std::isnan(*valueAt(function, x)));
    }
}

TEST(LinearInterpolatedFunctionT, InfiniteValuesReachUpToTheNextSample)
{
    Function const function = functionOf({{0, 10}, {1, infinity}, {2, infinity}, {3, 20}});
    EXPECT_EQ(valueAt(function, 0), 10);
    EXPECT_EQ(valueAt(function, 0.5), infinity);
    EXPECT_EQ(valueAt(function, 1.5), infinity);
    EXPECT_EQ(valueAt(function, 2.5), infinity);
    EXPECT_EQ(valueAt(function, 3), 20);
}

TEST(LinearInterpolatedFunctionT, DoesNotOverflowBetweenTheLargestNumbers)
{
    Function const function = functionOf({{-greatest, -greatest}, {greatest, greatest}});
    EXPECT_EQ(valueAt(function, 0), 0);
    EXPECT_DOUBLE_EQ(valueAt(function, greatest / 2).value_or(notANumber), greatest / 2);
}

TEST(LinearInterpolatedFunctionT, IsLinearBetweenSubnormalNumbers)
{
    double const least = std::numeric_limits<double>::denorm_min();
    Function const function = functionOf({{3 * least, 10}, {5 * least, 30}});
    EXPECT_EQ(valueAt(function, 4 * least), 20);
}

TEST(LinearInterpolatedFunctionT, IsExactBetweenSamplesOfEqualValue)
{
    Function const function = functionOf({{0, 0.9}, {5, 0.9}}); // by weights it would be off at 1, 2 and 3
    for (double const x : {1.0, 2.0, 3.0, 4.0}) {
        EXPECT_EQ(valueAt(function, x), 0.9);
    }
}

TEST(LinearInterpolatedFunctionT, FunctionsOrderedAtEachSampleAreOrderedBetween)
{
    std::mt19937_64 generator(1);
    std::uniform_real_distribution<double> value(-1, 1);
    std::uniform_real_distribution<double> place(0, 3);
    for (int i = 0; i < 1000; ++i) {
        double const y = value(generator);
        Function const below = functionOf({{0, y}, {3, value(generator)}});
        double const last = valueAt(below, 3).value_or(notANumber);
        Function const above = functionOf({{0, std::nextafter(y, 2)}, {3, last}});
        double const x = place(generator);
        EXPECT_LE(valueAt(below, x).value_or(notANumber), valueAt(above, x).value_or(notANumber)) << x;
    }
}

TEST(LinearInterpolatedFunctionT, EqualsAReferenceOnAMap)
{
    for (std::uint64_t seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937_64 generator(seed);
        std::uniform_int_distribution<int> place(-20, 20);
        std::uniform_real_distribution<double> value(-1, 1);
        Function function;
        std::map<double, double> map;
        for (int i = 0; i < 30; ++i) {
            double const x = place(generator);
            double const y = value(generator);
            function.addSample(x, y);
            map[x] = y;
            for (double at = -21; at <= 21; at += 0.25) {
                auto const upper = map.lower_bound(at);
                auto const actual = valueAt(function, at);
                if (upper != map.end() && upper->first == at) {
                    ASSERT_EQ(actual, upper->second);
                } else if (upper == map.end() || upper == map.begin()) {
                    ASSERT_EQ(actual, std::nullopt);
                } else {
                    auto const lower = std::prev(upper);
                    double const f = (at - lower->first) / (upper->first - lower->first);
                    ASSERT_TRUE(actual.has_value());
                    ASSERT_NEAR(*actual, lower->second * (1 - f) + upper->second * f, 1e-15);
                }
            }
        }
    }
}

} // namespace
