#include <roamscan/time/TrafoT.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <type_traits>

// The comparison of translations whose squares underflow or overflow.

namespace
{

using oV::Roamscan::TrafoT;

template <typename T>
using VectorOf = Eigen::Matrix<T, 3, 1>;

template <typename T>
class TrafoTExtremeTranslations : public testing::Test
{
protected:
    static TrafoT<T> at(T x, T y = 0, T z = 0) { return TrafoT<T>::Translation(VectorOf<T>(x, y, z)); }
};

using Scalars = testing::Types<float, double>;
TYPED_TEST_SUITE(TrafoTExtremeTranslations, Scalars);

// The comparison of translations by its defining formula, with the squares as they are in `T`.
template <typename T>
bool passesByTheFormula(VectorOf<T> const& a, VectorOf<T> const& b, double precision)
{
    auto const narrowed = static_cast<T>(precision);
    return !((a - b).squaredNorm() > narrowed * narrowed * std::min(a.squaredNorm(), b.squaredNorm()));
}

// Random translations and precisions of all magnitudes from 2^-range to 2^range.
template <typename T>
class RandomComparisons
{
public:
    RandomComparisons(std::uint64_t seed, int range) : generator_(seed), exponent_(-range, range) {}

    T number() { return std::ldexp(sign() * significand_(generator_), exponent_(generator_)); }
    double precision() { return std::abs(static_cast<double>(number())); }

    /// Coefficients of one magnitude or of three, some of them zero.
    VectorOf<T> translation()
    {
        VectorOf<T> result(number(), number(), number());
        if (choice_(generator_) < 4) {
            result = VectorOf<T>(result.x(), result.x() * significand_(generator_), -result.x());
        }
        for (T& coefficient : result) {
            coefficient = choice_(generator_) == 0 ? T(0) : coefficient;
        }
        return result;
    }

    /// Another translation, or one whose distance is about `precision` times the length.
    VectorOf<T> near(VectorOf<T> const& translation, double precision)
    {
        switch (choice_(generator_)) {
        case 0:
            return translation;
        case 1:
            return this->translation();
        default:
            return translation * (T(1) + static_cast<T>(precision) * significand_(generator_));
        }
    }

    std::size_t below(std::size_t count) { return generator_() % count; }

private:
    T sign() { return generator_() % 2 == 0 ? T(1) : T(-1); }

    std::mt19937_64 generator_;
    std::uniform_int_distribution<int> exponent_;
    std::uniform_real_distribution<T> significand_{T(0.5), T(1.5)};
    std::uniform_int_distribution<int> choice_{0, 7};
};

} // namespace

TYPED_TEST(TrafoTExtremeTranslations, TheIdentityDiffersFromTheSmallestTranslations)
{
    using T = TypeParam;
    auto const identity = TrafoT<T>::Identity();
    for (T tiny = std::numeric_limits<T>::denorm_min(); tiny < T(1); tiny *= T(2)) {
        for (auto const& moved : {this->at(tiny), this->at(0, -tiny), this->at(0, 0, tiny)}) {
            ASSERT_FALSE(identity == moved) << tiny;
            ASSERT_FALSE(moved == identity) << tiny;
            ASSERT_TRUE(moved == moved) << tiny;
        }
    }
    EXPECT_TRUE(identity == this->at(T(-0.0)));
}

TYPED_TEST(TrafoTExtremeTranslations, SmallTranslationsCompareByRelativeSize)
{
    using T = TypeParam;
    T const small = std::numeric_limits<T>::min();
    EXPECT_TRUE(this->at(small).isApprox(this->at(T(1.0625) * small), 0.0626));
    EXPECT_FALSE(this->at(small).isApprox(this->at(T(1.0625) * small), 0.0624));
    T const smallest = std::numeric_limits<T>::denorm_min();
    EXPECT_TRUE(this->at(smallest).isApprox(this->at(T(2) * smallest), 1.0));
    EXPECT_FALSE(this->at(smallest).isApprox(this->at(T(2) * smallest), 0.99));
    EXPECT_FALSE(this->at(smallest) == this->at(0, smallest));
}

TYPED_TEST(TrafoTExtremeTranslations, LargeTranslationsCompareByRelativeSize)
{
    using T = TypeParam;
    T const large = std::numeric_limits<T>::max() / T(2);
    EXPECT_TRUE(this->at(large) == this->at(large));
    EXPECT_FALSE(this->at(large) == this->at(T(0.99) * large));
    EXPECT_FALSE(this->at(large) == this->at(0, large));
    EXPECT_TRUE(this->at(large).isApprox(this->at(T(1.0625) * large), 0.0626));
    EXPECT_FALSE(this->at(large).isApprox(this->at(T(1.0625) * large), 0.0624));
    EXPECT_FALSE(this->at(large).isApprox(this->at(1), 1000.0));
    EXPECT_FALSE(this->at(large).isApprox(this->at(std::numeric_limits<T>::denorm_min()), 1000.0));
}

TYPED_TEST(TrafoTExtremeTranslations, ADifferenceThatOverflowsComparesByRelativeSize)
{
    using T = TypeParam;
    T const largest = std::numeric_limits<T>::max();
    EXPECT_FALSE(this->at(largest) == this->at(-largest));
    EXPECT_FALSE(this->at(largest).isApprox(this->at(-largest), 1.9));
    EXPECT_TRUE(this->at(largest).isApprox(this->at(-largest), 2.1));
}

TYPED_TEST(TrafoTExtremeTranslations, AnInfiniteTranslationDiffersFromEveryFiniteOne)
{
    using T = TypeParam;
    T const infinite = std::numeric_limits<T>::infinity();
    for (T const finite : {T(0), T(1), std::numeric_limits<T>::max()}) {
        EXPECT_FALSE(this->at(infinite).isApprox(this->at(finite), 1000.0));
        EXPECT_FALSE(this->at(finite).isApprox(this->at(infinite), 1000.0));
    }
    EXPECT_TRUE(this->at(infinite) == this->at(infinite)); // their difference is NaN
    EXPECT_TRUE(this->at(infinite) == this->at(0, infinite));
}

TYPED_TEST(TrafoTExtremeTranslations, OtherwiseTheFormulaDecides)
{
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    // With exponents within a sixth of the type's range no square and no product underflows or overflows.
    constexpr std::uint64_t seed = 20;
    RandomComparisons<T> random(seed, Limits::max_exponent / 6);
    std::array<T, 9> const specials{
        0, T(-0.0), 1, -1, 2, T(1e-12), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()};
    std::array<double, 6> const precisions{0, 1e-12, 0.5, 1, 2, std::numeric_limits<double>::infinity()};
    int passed = 0;
    constexpr int count = 200'000;
    for (int i = 0; i < count; ++i) {
        double precision = random.precision();
        VectorOf<T> a = random.translation();
        if (i % 2 == 0) { // precisions for which near values lie at the limit
            precision = std::ldexp(precision,
                                   -std::ilogb(precision) - static_cast<int>(random.below(Limits::digits)));
        }
        VectorOf<T> b = random.near(a, precision);
        if (i % 4 == 0) {
            precision = precisions[random.below(precisions.size())];
            a[static_cast<Eigen::Index>(random.below(3))] = specials[random.below(specials.size())];
            b[static_cast<Eigen::Index>(random.below(3))] = specials[random.below(specials.size())];
        }
        bool const expected = passesByTheFormula<T>(a, b, precision);
        passed += expected ? 1 : 0;
        ASSERT_EQ(TrafoT<T>::Translation(a).isApprox(TrafoT<T>::Translation(b), precision), expected)
            << "seed " << seed << ": " << a.transpose() << " and " << b.transpose() << " within "
            << precision;
    }
    EXPECT_GT(passed, count / 5);
    EXPECT_LT(passed, count * 4 / 5);
}

TYPED_TEST(TrafoTExtremeTranslations, OverTheWholeRangeTheAnswerIsThatOfAWiderType)
{
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    using Wide = std::conditional_t<std::is_same_v<T, float>, double, long double>;
    if (std::numeric_limits<Wide>::max_exponent < 4 * Limits::max_exponent) {
        GTEST_SKIP() << "this platform has no type with the range of the squares";
    }
    constexpr std::uint64_t seed = 21;
    RandomComparisons<T> random(seed, Limits::max_exponent);
    RandomComparisons<T> randomPrecisions(seed + 1, Limits::digits);
    int passed = 0;
    int decided = 0;
    constexpr int count = 200'000;
    for (int i = 0; i < count; ++i) {
        double const precision = randomPrecisions.precision();
        VectorOf<T> const a = random.translation();
        VectorOf<T> const b = random.near(a, precision);
        if (!a.allFinite() || !b.allFinite()) {
            continue;
        }
        VectorOf<Wide> const wideA = a.template cast<Wide>();
        VectorOf<Wide> const wideB = b.template cast<Wide>();
        Wide const distance = (wideA - wideB).norm();
        Wide const limit = static_cast<Wide>(precision) * std::min(wideA.norm(), wideB.norm());
        if (std::abs(distance - limit) <= limit * 100 * Limits::epsilon()) {
            continue; // rounding decides
        }
        ++decided;
        passed += distance <= limit ? 1 : 0;
        ASSERT_EQ(TrafoT<T>::Translation(a).isApprox(TrafoT<T>::Translation(b), precision), distance <= limit)
            << "seed " << seed << ": " << a.transpose() << " and " << b.transpose() << " within "
            << precision;
    }
    EXPECT_GT(decided, count / 2);
    EXPECT_GT(passed, decided / 10);
    EXPECT_LT(passed, decided * 9 / 10);
}
