#include "tools/simulation/RandomNumbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

TEST(RandomNumbers, AreTheSameForTheSameSeedPositionAndPurpose)
{
    RandomNumbers const random(5);
    EXPECT_EQ(random.bits(3, 1), RandomNumbers(5).bits(3, 1));
    EXPECT_NE(random.bits(3, 1), RandomNumbers(6).bits(3, 1));
    EXPECT_NE(random.bits(3, 1), random.bits(4, 1));
    EXPECT_NE(random.bits(3, 1), random.bits(3, 2));
}

TEST(RandomNumbers, HaveTheMomentsOfTheirDistributions)
{
    RandomNumbers const random(1);
    constexpr int count = 200'000;
    double uniformSum = 0.0;
    double normalSum = 0.0;
    double squares = 0.0;
    int beyondTwo = 0;
    for (std::uint64_t i = 0; i < count; ++i) {
        double const u = random.uniform(i, 1);
        ASSERT_TRUE(u >= 0.0 && u < 1.0);
        uniformSum += u;
        double const n = random.normal(i, 2);
        normalSum += n;
        squares += n * n;
        beyondTwo += std::abs(n) > 2.0 ? 1 : 0;
    }
    // Five standard errors or more each.
    EXPECT_NEAR(uniformSum / count, 0.5, 0.004);
    EXPECT_NEAR(normalSum / count, 0.0, 0.012);
    EXPECT_NEAR(squares / count, 1.0, 0.02);
    EXPECT_NEAR(static_cast<double>(beyondTwo) / count, 0.0455, 0.004);
}
