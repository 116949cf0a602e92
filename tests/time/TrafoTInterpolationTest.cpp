#include "tests/support/RandomPoses.h"
#include "tests/support/Vectors.h"

#include <roamscan/time/TrafoT.h>

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <numbers>

namespace
{

using oV::Roamscan::TrafoT;
using namespace support;

using Vector = Eigen::Vector3d;
using Quaternion = Eigen::Quaterniond; // constructor order: w, x, y, z
using Values = std::array<double, 7>;

// The formula written out, with every step in `T`.
template <typename T>
std::array<T, 7> interpolatedByTheFormula(TrafoT<T> const& a, TrafoT<T> const& b, T f)
{
    auto const& p = a.rotation();
    auto const& q = b.rotation();
    T const dot = p.dot(q);
    T const cosine = std::abs(dot);
    T s0 = T(1) - f;
    T s1 = f;
    if (!(cosine >= T(1) - std::numeric_limits<T>::epsilon())) {
        T const theta = std::acos(cosine);
        T const k = T(1) / std::sin(theta);
        s0 = std::sin((T(1) - f) * theta) * k;
        s1 = std::sin(f * theta) * k;
    }
    s1 = dot >= T(0) ? s1 : -s1;
    auto const linear = [f](T from, T to) { return (to - from) * f + from; };
    auto const mixed = [s0, s1](T from, T to) { return s0 * from + s1 * to; };
    return {linear(a.translation().x(), b.translation().x()),
            linear(a.translation().y(), b.translation().y()),
            linear(a.translation().z(), b.translation().z()),
            mixed(p.w(), q.w()),
            mixed(p.x(), q.x()),
            mixed(p.y(), q.y()),
            mixed(p.z(), q.z())};
}

} // namespace

TEST(TrafoT, InterpolatesHalfWay)
{
    TrafoT<double> const a;
    TrafoT<double> const b(Vector(2, 4, 6), quarterTurn(), true);
    auto const half = a.interpolate(b, 0.5);
    expectNear(half.translation(), Vector(1, 2, 3), 0.0);
    EXPECT_NEAR(half.rotation().w(), std::cos(std::numbers::pi / 8), 1e-15);
    EXPECT_NEAR(half.rotation().z(), std::sin(std::numbers::pi / 8), 1e-15);
    EXPECT_TRUE(half.valid());
}

TEST(TrafoT, InterpolationAtZeroAndOneGivesTheEndsUpToRounding)
{
    RandomPoses random(3);
    for (int i = 0; i < 1000; ++i) {
        auto const a = random.pose();
        auto const b = random.pose();
        EXPECT_TRUE(a.interpolate(b, 0.0) == a);
        EXPECT_TRUE(a.interpolate(b, 1.0) == b);
    }
}

TEST(TrafoT, FractionsOutsideZeroToOneExtrapolate)
{
    TrafoT<double> const a;
    TrafoT<double> const b(Vector(2, 4, 6), quarterTurn(), true);
    auto const beyond = a.interpolate(b, 2.0);
    expectNear(beyond.translation(), Vector(4, 8, 12), 0.0);
    EXPECT_NEAR(beyond.rotation().w(), 0.0, 1e-15);
    EXPECT_NEAR(beyond.rotation().z(), 1.0, 1e-15);
    expectNear(a.interpolate(b, -0.5).translation(), Vector(-1, -2, -3), 0.0);
}

TEST(TrafoT, InterpolationIsValidWhateverTheOperands)
{
    EXPECT_TRUE(TrafoT<double>::Identity().interpolate(TrafoT<double>::Invalid(), 0.5).valid());
    EXPECT_TRUE(TrafoT<double>::Invalid().interpolate(TrafoT<double>::Identity(), 0.5).valid());
    EXPECT_FALSE(TrafoT<double>::Identity().interpolate(TrafoT<double>::Invalid(), 0.5).allFinite());
    EXPECT_TRUE(TrafoT<float>::Identity().interpolate(TrafoT<float>::Invalid(), 0.5).valid());
}

TEST(TrafoT, QuaternionsOfOppositeSignInterpolateAlongTheShorterArc)
{
    Quaternion const turn = quarterTurn();
    TrafoT<double> const a(Vector(0, 0, 0), turn, true);
    TrafoT<double> const b(Vector(0, 0, 0), Quaternion(-turn.w(), 0, 0, -turn.z()), true);
    auto const half = a.interpolate(b, 0.5);
    EXPECT_NEAR(half.rotation().w(), turn.w(), 1e-15);
    EXPECT_NEAR(half.rotation().z(), turn.z(), 1e-15);
}

TEST(TrafoT, InterpolationTakesTheShorterArc)
{
    // 0 and 270 degrees: half way lies at -45 degrees, not at 135.
    double const angle = 1.5 * std::numbers::pi;
    TrafoT<double> const b(Vector(0, 0, 0), Quaternion(std::cos(angle / 2), 0, 0, std::sin(angle / 2)), true);
    auto const half = TrafoT<double>::Identity().interpolate(b, 0.5);
    EXPECT_NEAR(half.rotation().w(), std::cos(std::numbers::pi / 8), 1e-15);
    EXPECT_NEAR(half.rotation().z(), -std::sin(std::numbers::pi / 8), 1e-15);
}

TEST(TrafoT, InterpolationAtADotOfZeroKeepsTheSign)
{
    TrafoT<double> const b(Vector(0, 0, 0), Quaternion(0, 0, 0, 1), true);
    auto const half = TrafoT<double>::Identity().interpolate(b, 0.5);
    EXPECT_NEAR(half.rotation().w(), std::numbers::sqrt2 / 2, 1e-15);
    EXPECT_NEAR(half.rotation().z(), std::numbers::sqrt2 / 2, 1e-15);
}

TEST(TrafoT, NearlyEqualRotationsInterpolateLinearly)
{
    // Far extrapolation distinguishes the branches: linear weights grow with the fraction, spherical ones do
    // not.
    double const threshold = 0.9999999999999998;
    ASSERT_EQ(threshold, 1.0 - std::numeric_limits<double>::epsilon());
    TrafoT<double> const at(Vector(0, 0, 0), Quaternion(threshold, 0, 0, 2.1073424255447017e-08), true);
    EXPECT_EQ(TrafoT<double>::Identity().interpolate(at, 1e8).rotation().z(), 1e8 * at.rotation().z());

    double const below = std::nextafter(threshold, 0.0);
    TrafoT<double> const past(Vector(0, 0, 0), Quaternion(below, 0, 0, 2.58e-08), true);
    double const theta = std::acos(below);
    EXPECT_EQ(TrafoT<double>::Identity().interpolate(past, 1e8).rotation().z(),
              std::sin(1e8 * theta) * (1.0 / std::sin(theta)) * past.rotation().z());

    double const angle = 1e-9;
    TrafoT<double> const near(Vector(0, 0, 0), Quaternion(std::cos(angle), 0, 0, std::sin(angle)), true);
    EXPECT_EQ(TrafoT<double>::Identity().interpolate(near, 0.5).rotation().z(), 0.5 * std::sin(angle));
}

TEST(TrafoT, QuaternionsLongerThanOneInterpolateLinearlyAndAreNotNormalised)
{
    auto const a = TrafoT<double>::Rotation(Quaternion(2, 0, 0, 0));
    auto const b = TrafoT<double>::Rotation(Quaternion(2, 0, 0, 1));
    EXPECT_EQ(a.interpolate(b, 0.25).serialize(), (Values{0, 0, 0, 2, 0, 0, 0.25}));
    auto const opposite = TrafoT<double>::Rotation(Quaternion(-2, 0, 0, -1));
    EXPECT_EQ(a.interpolate(opposite, 0.25).serialize(), (Values{0, 0, 0, 2, 0, 0, 0.25}));
}

TEST(TrafoT, FloatSwitchesToLinearInterpolationAtTheEpsilonOfFloat)
{
    auto const threshold = std::bit_cast<float>(0x3F7FFFFEU);
    TrafoT<float> const at(
        Eigen::Vector3f::Zero(), Eigen::Quaternionf(threshold, 0, 0, 4.8828122e-04F), true);
    EXPECT_EQ(TrafoT<float>::Identity().interpolate(at, 1000.0).rotation().z(), 1000.0F * at.rotation().z());

    auto const below = std::bit_cast<float>(0x3F7FFFFDU);
    TrafoT<float> const past(Eigen::Vector3f::Zero(), Eigen::Quaternionf(below, 0, 0, 5.98e-04F), true);
    float const theta = std::acos(below);
    EXPECT_EQ(TrafoT<float>::Identity().interpolate(past, 1000.0).rotation().z(),
              std::sin(1000.0F * theta) * (1.0F / std::sin(theta)) * past.rotation().z());
}

TEST(TrafoT, InterpolationIsExactlyItsFormula)
{
    RandomPoses random(4);
    for (int i = 0; i < 1000; ++i) {
        auto const a = random.pose();
        auto const b = random.pose();
        double const f = random.number(-1, 2);
        EXPECT_EQ(a.interpolate(b, f).serialize(), interpolatedByTheFormula(a, b, f));
    }
}

TEST(TrafoT, FloatInterpolationNarrowsTheFractionAndComputesInFloat)
{
    RandomPoses random(5);
    int differFromDouble = 0;
    for (int i = 0; i < 1000; ++i) {
        auto const a = random.pose<float>();
        auto const b = random.pose<float>();
        double const f = random.number(-1, 2);
        auto const inFloat = a.interpolate(b, f).serialize();
        EXPECT_EQ(inFloat, interpolatedByTheFormula(a, b, static_cast<float>(f)));

        auto const wide = [](TrafoT<float> const& pose) {
            return TrafoT<double>(pose.translation().cast<double>(), pose.rotation().cast<double>(), true);
        };
        auto const inDouble = wide(a).interpolate(wide(b), f).serialize();
        differFromDouble += inFloat[0] != static_cast<float>(inDouble[0]) ? 1 : 0;
    }
    EXPECT_GT(differFromDouble, 0);
}
