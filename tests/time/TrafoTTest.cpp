#include "tests/support/Bits.h"
#include "tests/support/RandomPoses.h"

#include <roamscan/time/TrafoT.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <numbers>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{

using oV::Roamscan::TrafoT;
using support::RandomPoses;
using support::sameBits;

using Vector = Eigen::Vector3d;
using Quaternion = Eigen::Quaterniond; // constructor order: w, x, y, z
using Values = std::array<double, 7>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

// A quarter turn about z.
Quaternion quarterTurn()
{
    double const half = std::numbers::sqrt2 / 2;
    return {half, 0, 0, half};
}

void expectNear(Vector const& actual, Vector const& expected, double tolerance)
{
    EXPECT_LE((actual - expected).norm(), tolerance) << actual.transpose() << " and " << expected.transpose();
}

// Values and layout

TEST(TrafoT, DefaultIsTheValidIdentity)
{
    EXPECT_EQ(TrafoT<double>().serialize(), (Values{0, 0, 0, 1, 0, 0, 0}));
    EXPECT_TRUE(TrafoT<double>().valid());
    EXPECT_TRUE(sameBits(TrafoT<double>::Identity(), TrafoT<double>()));
}

TEST(TrafoT, InvalidIsAllNaNAndNotValid)
{
    auto const invalid = TrafoT<double>::Invalid();
    for (double const value : invalid.serialize()) {
        EXPECT_TRUE(std::isnan(value));
    }
    EXPECT_FALSE(invalid.valid());
    EXPECT_FALSE(invalid.allFinite());
    EXPECT_FALSE(TrafoT<float>::Invalid().valid());
    EXPECT_FALSE(TrafoT<float>::Invalid().allFinite());
}

TEST(TrafoT, StoresWhatItIsGivenWithoutNormalising)
{
    TrafoT<double> const pose(Vector(1, 2, 3), Quaternion(4, 5, 6, 7), true);
    EXPECT_EQ(pose.serialize(), (Values{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_TRUE(pose.valid());
    EXPECT_FALSE((TrafoT<double>(Vector(1, 2, 3), Quaternion(4, 5, 6, 7), false).valid()));
}

TEST(TrafoT, TakesRotationAndTranslationInEitherOrder)
{
    TrafoT<double> const pose(Quaternion(4, 5, 6, 7), Vector(1, 2, 3), false);
    EXPECT_EQ(pose.serialize(), (Values{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_FALSE(pose.valid());
}

TEST(TrafoT, CopiesTheSevenNumbersOfARigid3)
{
    mapping::Rigid3<double> const rigid{{1, 2, 3}, {5, 6, 7, 4}};
    EXPECT_EQ((TrafoT<double>(rigid, true).serialize()), (Values{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_TRUE((TrafoT<double>(rigid, true).valid()));
    EXPECT_FALSE((TrafoT<double>(rigid, false).valid()));
}

TEST(TrafoT, FactoriesOfPureMotionsAreValid)
{
    EXPECT_EQ(TrafoT<double>::Translation(Vector(1, 2, 3)).serialize(), (Values{1, 2, 3, 1, 0, 0, 0}));
    EXPECT_TRUE(TrafoT<double>::Translation(Vector(1, 2, 3)).valid());
    EXPECT_EQ(TrafoT<double>::Rotation(Quaternion(4, 5, 6, 7)).serialize(), (Values{0, 0, 0, 4, 5, 6, 7}));
    EXPECT_TRUE(TrafoT<double>::Rotation(Quaternion(4, 5, 6, 7)).valid());
}

TEST(TrafoT, FromArraysTakesTheScalarPartLastAlthoughSerializeGivesItFirst)
{
    double const translation[] = {1, 2, 3};
    double const rotation[] = {5, 6, 7, 4};
    auto const pose = TrafoT<double>::FromArrays(translation, rotation);
    EXPECT_EQ(pose.serialize(), (Values{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_TRUE(pose.valid());

    auto const flat = pose.serialize();
    EXPECT_NE(TrafoT<double>::FromArrays(flat.data(), flat.data() + 3).serialize(), flat);
}

TEST(TrafoT, FieldsCanBeWrittenThroughTheAccessors)
{
    TrafoT<double> pose;
    pose.translation().y() = 5;
    pose.rotation().z() = 6;
    EXPECT_EQ(pose.serialize(), (Values{0, 5, 0, 1, 0, 0, 6}));
}

TEST(TrafoT, AllFiniteLooksAtTheNumbersAndNotAtTheFlag)
{
    EXPECT_TRUE((TrafoT<double>(Vector(1, 2, 3), Quaternion(1, 0, 0, 0), false).allFinite()));
    for (double const bad : {nan, infinity, -infinity}) {
        for (int i = 0; i < 3; ++i) {
            TrafoT<double> pose;
            pose.translation()[i] = bad;
            EXPECT_FALSE(pose.allFinite());
            EXPECT_TRUE(pose.valid());
        }
        for (int i = 0; i < 4; ++i) {
            TrafoT<double> pose;
            pose.rotation().coeffs()[i] = bad;
            EXPECT_FALSE(pose.allFinite());
        }
    }
}

TEST(TrafoT, IsAPlainValueAlignedForVectorLoads)
{
    static_assert(alignof(TrafoT<double>) == 16 && sizeof(TrafoT<double>) == 80);
    static_assert(std::is_copy_constructible_v<TrafoT<double>> && !std::is_polymorphic_v<TrafoT<double>>);
    std::vector<TrafoT<double>> poses(3);
    for (auto const& pose : poses) {
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(&pose) % 16, 0U);
    }
}

TEST(TrafoT, CopiesAndMovesCarryTheFlag)
{
    TrafoT<double> const source(Vector(1, 2, 3), Quaternion(4, 5, 6, 7), false);
    TrafoT<double> const copy(source);
    EXPECT_TRUE(sameBits(copy, source));
    TrafoT<double> assigned;
    assigned = source;
    EXPECT_TRUE(sameBits(assigned, source));
    TrafoT<double> moved;
    moved = std::move(assigned);
    EXPECT_TRUE(sameBits(moved, source));
    EXPECT_TRUE(sameBits(TrafoT<double>(std::move(moved)), source));
}

// Composition, inverse, points

TEST(TrafoT, MapsAPointByRotationAndThenTranslation)
{
    TrafoT<double> const pose(Vector(10, 20, 30), quarterTurn(), true);
    expectNear(pose * Vector(1, 2, 3), Vector(8, 21, 33), 1e-14);
}

TEST(TrafoT, RotatesByTheCrossProductFormWhateverTheNorm)
{
    // v + w c + u x c with u = (0,0,2), w = 3, v = (1,0,0): c = (0,4,0), w c = (0,12,0), u x c = (-8,0,0).
    TrafoT<double> const pose(Vector(0, 0, 0), Quaternion(3, 0, 0, 2), true);
    EXPECT_EQ(Vector(pose * Vector(1, 0, 0)), Vector(-7, 12, 0));
    EXPECT_EQ((pose * TrafoT<double>::Translation(Vector(1, 0, 0))).translation(), Vector(-7, 12, 0));
}

// v + w c + u x c with c = 2 (u x v), summed from the left.
template <typename T>
Eigen::Matrix<T, 3, 1> rotatedByTheFormula(Eigen::Quaternion<T> const& rotation,
                                           Eigen::Matrix<T, 3, 1> const& v)
{
    auto const& q = rotation;
    auto const cx = 2 * (q.y() * v.z() - q.z() * v.y());
    auto const cy = 2 * (q.z() * v.x() - q.x() * v.z());
    auto const cz = 2 * (q.x() * v.y() - q.y() * v.x());
    return {(v.x() + q.w() * cx) + (q.y() * cz - q.z() * cy),
            (v.y() + q.w() * cy) + (q.z() * cx - q.x() * cz),
            (v.z() + q.w() * cz) + (q.x() * cy - q.y() * cx)};
}

template <typename T>
void expectRotationsByTheFormula(std::uint64_t seed)
{
    RandomPoses random(seed);
    for (int i = 0; i < 1000; ++i) {
        auto const a = random.pose<T>();
        auto const b = random.pose<T>();
        Eigen::Matrix<T, 3, 1> const rotated = rotatedByTheFormula(a.rotation(), b.translation());
        ASSERT_EQ((a * b.translation()).eval(), rotated + a.translation());
        ASSERT_EQ((a * b).translation(), a.translation() + rotated);
        ASSERT_EQ(a.inverse().translation(), -rotatedByTheFormula(a.rotation().conjugate(), a.translation()));
    }
}

TEST(TrafoT, RotatesByItsFormulaToTheLastBitInDoubleAndInFloat)
{
    expectRotationsByTheFormula<double>(8);
    expectRotationsByTheFormula<float>(9);
}

TEST(TrafoT, ComposesTranslationsThroughTheLeftRotation)
{
    TrafoT<double> const a(Vector(10, 20, 30), quarterTurn(), true);
    TrafoT<double> const b(Vector(1, 2, 3), Quaternion(2, 3, 4, 5), true);
    auto const composed = a * b;
    expectNear(composed.translation(), Vector(8, 21, 33), 1e-14);
    // (w, z) = (h, h) times (2,3,4,5) by Hamilton: w = 2h - 5h, x = 3h - 4h, y = 4h + 3h, z = 5h + 2h.
    double const h = std::numbers::sqrt2 / 2;
    EXPECT_NEAR(composed.rotation().w(), -3 * h, 1e-14);
    EXPECT_NEAR(composed.rotation().x(), -1 * h, 1e-14);
    EXPECT_NEAR(composed.rotation().y(), 7 * h, 1e-14);
    EXPECT_NEAR(composed.rotation().z(), 7 * h, 1e-14);
}

TEST(TrafoT, CompositionDoesNotNormalise)
{
    auto const turn = TrafoT<double>::Rotation(Quaternion(3, 0, 0, 2));
    EXPECT_EQ((turn * turn).serialize(), (Values{0, 0, 0, 5, 0, 0, 12}));
}

TEST(TrafoT, CompositionIsValidIfBothAre)
{
    TrafoT<double> const good;
    TrafoT<double> const bad(Vector(0, 0, 0), Quaternion::Identity(), false);
    EXPECT_TRUE((good * good).valid());
    EXPECT_FALSE((good * bad).valid());
    EXPECT_FALSE((bad * good).valid());
    EXPECT_FALSE((bad * bad).valid());
    EXPECT_FALSE((TrafoT<double>::Identity() * TrafoT<double>::Invalid()).valid());
}

TEST(TrafoT, ComposedAppliesTheRightOneFirst)
{
    RandomPoses random(1);
    for (int i = 0; i < 1000; ++i) {
        auto const a = random.pose();
        auto const b = random.pose();
        Vector const point = random.pose().translation();
        expectNear((a * b) * point, a * (b * point), 1e-12);
    }
}

TEST(TrafoT, InverseConjugatesTheRotation)
{
    TrafoT<double> const pose(Vector(8, 21, 33), quarterTurn(), true);
    auto const inverse = pose.inverse();
    double const h = std::numbers::sqrt2 / 2;
    EXPECT_EQ(inverse.rotation().w(), h);
    EXPECT_EQ(inverse.rotation().z(), -h);
    expectNear(inverse.translation(), Vector(-21, 8, -33), 1e-14);
    EXPECT_TRUE(inverse.valid());
}

TEST(TrafoT, InverseConjugatesAndDoesNotNormalise)
{
    // The conjugate of w = 3, z = 2 maps (1, 0, 0) to (-7, -12, 0).
    TrafoT<double> const pose(Vector(1, 0, 0), Quaternion(3, 0, 0, 2), true);
    EXPECT_EQ(pose.inverse().serialize(), (Values{7, 12, 0, 3, 0, 0, -2}));
}

TEST(TrafoT, InverseOfATransformThatIsNotValidIsValid)
{
    EXPECT_TRUE(TrafoT<double>::Invalid().inverse().valid());
    EXPECT_TRUE(TrafoT<float>::Invalid().inverse().valid());
    EXPECT_FALSE(TrafoT<double>::Invalid().inverse().allFinite());
}

TEST(TrafoT, TimesItsInverseIsTheIdentity)
{
    RandomPoses random(2);
    for (int i = 0; i < 1000; ++i) {
        auto const pose = random.pose();
        EXPECT_LE((pose * pose.inverse()).translation().norm(), 1e-13);
        EXPECT_NEAR((pose * pose.inverse()).rotation().w(), 1.0, 1e-14);
        EXPECT_LE((pose.inverse() * pose).translation().norm(), 1e-13);
    }
}

// Interpolation

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

TEST(TrafoT, InterpolationMeetsItsEndsUpToRounding)
{
    RandomPoses random(3);
    for (int i = 0; i < 1000; ++i) {
        auto const a = random.pose();
        auto const b = random.pose();
        EXPECT_TRUE(a.interpolate(b, 0.0) == a);
        EXPECT_TRUE(a.interpolate(b, 1.0) == b);
    }
}

TEST(TrafoT, InterpolationExtrapolatesWithoutComplaint)
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

TEST(TrafoT, QuaternionsOfOppositeSignInterpolateWithoutADetour)
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

TEST(TrafoT, NearlyEqualRotationsInterpolateLinearlyAndComeOutSlightlyShort)
{
    // Far extrapolation tells the branches apart: linear weights grow with the fraction, spherical ones do
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

TEST(TrafoT, QuaternionsBeyondUnitLengthInterpolateLinearlyAndAreNotNormalised)
{
    auto const a = TrafoT<double>::Rotation(Quaternion(2, 0, 0, 0));
    auto const b = TrafoT<double>::Rotation(Quaternion(2, 0, 0, 1));
    EXPECT_EQ(a.interpolate(b, 0.25).serialize(), (Values{0, 0, 0, 2, 0, 0, 0.25}));
    auto const opposite = TrafoT<double>::Rotation(Quaternion(-2, 0, 0, -1));
    EXPECT_EQ(a.interpolate(opposite, 0.25).serialize(), (Values{0, 0, 0, 2, 0, 0, 0.25}));
}

TEST(TrafoT, FloatSwitchesToLinearWeightsAtItsOwnEpsilon)
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

TEST(TrafoT, InterpolationIsItsFormulaToTheLastBit)
{
    RandomPoses random(4);
    for (int i = 0; i < 1000; ++i) {
        auto const a = random.pose();
        auto const b = random.pose();
        double const f = random.number(-1, 2);
        EXPECT_EQ(a.interpolate(b, f).serialize(), interpolatedByTheFormula(a, b, f));
    }
}

TEST(TrafoT, FloatInterpolationNarrowsTheFractionAndStaysInFloat)
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

// Comparison

TEST(TrafoT, TranslationsCompareRelativeToTheirSize)
{
    auto const at = [](double x) { return TrafoT<double>::Translation(Vector(x, 0, 0)); };
    EXPECT_TRUE(at(1e9).isApprox(at(1e9 + 0.5), 1e-9));
    EXPECT_FALSE(at(1.0).isApprox(at(1.0 + 1e-8), 1e-9));
    EXPECT_TRUE(at(1.0).isApprox(at(1.0 + 1e-10), 1e-9));
    // The smaller of the two sizes counts: 2 is 100 % away from 1, but only 50 % from the other side.
    EXPECT_FALSE(at(1.0).isApprox(at(2.0), 0.75));
    EXPECT_FALSE(at(2.0).isApprox(at(1.0), 0.75));
    EXPECT_TRUE(at(2.0).isApprox(at(1.0), 1.0));
}

TEST(TrafoT, AZeroTranslationEqualsOnlyAZeroTranslation)
{
    EXPECT_TRUE(TrafoT<double>::Identity() == TrafoT<double>::Identity());
    EXPECT_FALSE(TrafoT<double>::Identity() == TrafoT<double>::Translation(Vector(1e-150, 0, 0)));
    EXPECT_FALSE(TrafoT<double>::Translation(Vector(1e-150, 0, 0)) == TrafoT<double>::Identity());
    EXPECT_TRUE(TrafoT<double>::Identity() != TrafoT<double>::Translation(Vector(0, 1e-20, 0)));
}

TEST(TrafoT, EveryFiniteTranslationEqualsItself)
{
    for (double const x : {1e-100, 1.0, -3.5, 1e100}) {
        EXPECT_TRUE(TrafoT<double>::Translation(Vector(x, 0, 0)) ==
                    TrafoT<double>::Translation(Vector(x, 0, 0)));
    }
}

TEST(TrafoT, EqualityHasAPrecisionOf1em12)
{
    auto const at = [](double x) { return TrafoT<double>::Translation(Vector(x, 0, 0)); };
    EXPECT_TRUE(at(1.0) == at(1.0 + 5e-13));
    EXPECT_FALSE(at(1.0) == at(1.0 + 5e-12));
    EXPECT_TRUE(at(1.0) != at(1.0 + 5e-12));
    EXPECT_FALSE(at(1.0) != at(1.0));
}

TEST(TrafoT, RotationsCompareAsMatricesSoTheSignOfAQuaternionDoesNotCount)
{
    Quaternion const turn = quarterTurn();
    TrafoT<double> const a(Vector(1, 2, 3), turn, true);
    TrafoT<double> const b(Vector(1, 2, 3), Quaternion(-turn.w(), 0, 0, -turn.z()), true);
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a == TrafoT<double>(Vector(1, 2, 3), Quaternion::Identity(), true));
}

TEST(TrafoT, RotationsCompareRelativeToTheirFrobeniusNorm)
{
    // A small turn by an angle e changes the matrix by sqrt(2) e, and its norm is sqrt(3).
    double const e = 1e-3;
    auto const turned = TrafoT<double>::Rotation(Quaternion(std::cos(e / 2), 0, 0, std::sin(e / 2)));
    double const limit = std::numbers::sqrt2 * e / std::numbers::sqrt3;
    EXPECT_TRUE(turned.isApprox(TrafoT<double>::Identity(), limit * 1.001));
    EXPECT_FALSE(turned.isApprox(TrafoT<double>::Identity(), limit * 0.999));
}

TEST(TrafoT, OfTwoRotationMatricesTheSmallerNormCounts)
{
    // diag(-1, -1, 1) and diag(-7, -7, 1): squared norms 3 and 99, squared distance 72.
    auto const small = TrafoT<double>::Rotation(Quaternion(0, 0, 0, 1));
    auto const large = TrafoT<double>::Rotation(Quaternion(0, 0, 0, 2));
    EXPECT_FALSE(small.isApprox(large, 1.0));
    EXPECT_FALSE(large.isApprox(small, 1.0));
    EXPECT_TRUE(large.isApprox(small, 5.0));
}

TEST(TrafoT, ComparisonIgnoresTheFlags)
{
    EXPECT_TRUE((TrafoT<double>(Vector(1, 2, 3), Quaternion::Identity(), false)) ==
                (TrafoT<double>(Vector(1, 2, 3), Quaternion::Identity(), true)));
}

TEST(TrafoT, InvalidIsNotEqualToItself)
{
    EXPECT_FALSE(TrafoT<double>::Invalid() == TrafoT<double>::Invalid());
    EXPECT_TRUE(TrafoT<double>::Invalid() != TrafoT<double>::Invalid());
    EXPECT_FALSE(TrafoT<float>::Invalid() == TrafoT<float>::Invalid());
}

TEST(TrafoT, ANaNTranslationEqualsAnyTranslationOfTheSameRotation)
{
    TrafoT<double> const lost(Vector(nan, 0, 0), quarterTurn(), true);
    EXPECT_TRUE(lost == TrafoT<double>(Vector(1, 2, 3), quarterTurn(), true));
    EXPECT_FALSE(lost == TrafoT<double>(Vector(1, 2, 3), Quaternion::Identity(), true));
}

TEST(TrafoT, ANaNRotationEqualsNothing)
{
    TrafoT<double> const lost(Vector(1, 2, 3), Quaternion(nan, 0, 0, 0), true);
    EXPECT_FALSE(lost == lost);
}

TEST(TrafoT, FloatComparisonNarrowsThePrecisionAndStaysInFloat)
{
    // The precision 1e-30 squares to zero in float, so that only equal values pass; in double it would not.
    auto const at = [](float x) { return TrafoT<float>::Translation(Eigen::Vector3f(x, 0, 0)); };
    EXPECT_TRUE(at(1.0F).isApprox(at(1.0F), 1e-30));
    EXPECT_FALSE(at(1.0F).isApprox(at(1.0000001F), 1e-30));
    // 1e200 narrows to infinity, and everything is within that.
    EXPECT_TRUE(at(1.0F).isApprox(at(1e10F), 1e200));
}

// Matrices

Bv_1_1::Mat4d<double> columnMajor(Eigen::Matrix3d const& block, Vector const& translation)
{
    Eigen::Matrix4d matrix = Eigen::Matrix4d::Identity();
    matrix.topLeftCorner<3, 3>() = block;
    matrix.topRightCorner<3, 1>() = translation;
    Bv_1_1::Mat4d<double> result;
    for (std::size_t i = 0; i < 16; ++i) {
        result[i] = matrix.data()[i];
    }
    return result;
}

TEST(TrafoT, ReadsAMat4dByColumns)
{
    // A quarter turn about z maps x to y: element 1 is 1, element 4 is -1.
    Bv_1_1::Mat4d<double> matrix;
    double const elements[16] = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1};
    for (std::size_t i = 0; i < 16; ++i) {
        matrix[i] = elements[i];
    }
    TrafoT<double> const pose(matrix, false);
    EXPECT_EQ(pose.translation(), Vector(7, 8, 9));
    expectNear(pose.rotation() * Vector(1, 0, 0), Vector(0, 1, 0), 1e-15);
    EXPECT_FALSE(pose.valid());
}

TEST(TrafoT, DropsScaleFromAMat4dAndLeavesTheTranslation)
{
    Eigen::Matrix3d const rotation = quarterTurn().toRotationMatrix();
    TrafoT<double> const pose(columnMajor(2.0 * rotation, Vector(1, 2, 3)), true);
    EXPECT_EQ(pose.translation(), Vector(1, 2, 3));
    EXPECT_LE((pose.rotation().toRotationMatrix() - rotation).norm(), 1e-14);
}

TEST(TrafoT, DropsShearFromAMat4d)
{
    RandomPoses random(6);
    for (int i = 0; i < 100; ++i) {
        // M = R S with a symmetric positive S: the nearest rotation is R.
        Eigen::Matrix3d const rotation = random.pose().rotation().toRotationMatrix();
        Eigen::Matrix3d stretch =
            Eigen::Vector3d(random.number(1, 2), random.number(3, 4), random.number(5, 6)).asDiagonal();
        Eigen::Matrix3d const basis = random.pose().rotation().toRotationMatrix();
        stretch = (basis * stretch * basis.transpose()).eval();
        TrafoT<double> const pose(columnMajor(rotation * stretch, Vector(0, 0, 0)), true);
        EXPECT_LE((pose.rotation().toRotationMatrix() - rotation).norm(), 1e-13);
    }
}

TEST(TrafoT, AMirroringBlockTurnsItsFirstSingularColumnRound)
{
    // diag(3, 2, -1) has the product U V^T = diag(1, 1, -1), of determinant -1; dividing the first column by
    // that gives diag(-1, 1, -1), half a turn about y.
    Eigen::Matrix3d const block = Eigen::Vector3d(3, 2, -1).asDiagonal();
    TrafoT<double> const pose(columnMajor(block, Vector(0, 0, 0)), true);
    EXPECT_LE((pose.rotation().toRotationMatrix() - Eigen::Matrix3d(Eigen::Vector3d(-1, 1, -1).asDiagonal()))
                  .norm(),
              1e-14);
}

TEST(TrafoT, QuaternionsComeFromMatricesByTheTraceRule)
{
    // Positive trace: w leads and is positive. Otherwise the largest diagonal element leads and its
    // coefficient is positive.
    auto const rotationOf = [](Quaternion const& q) {
        return TrafoT<double>(columnMajor(q.normalized().toRotationMatrix(), Vector(0, 0, 0)), true)
            .rotation();
    };
    EXPECT_GT(rotationOf(Quaternion(-0.9, 0.1, 0.2, 0.3)).w(), 0);
    EXPECT_GT(rotationOf(Quaternion(0.1, -0.9, 0.2, 0.3)).x(), 0);
    EXPECT_GT(rotationOf(Quaternion(0.1, 0.2, -0.9, 0.3)).y(), 0);
    EXPECT_GT(rotationOf(Quaternion(0.1, 0.2, 0.3, -0.9)).z(), 0);
}

TEST(TrafoT, NonFiniteBlocksGiveNaNRotations)
{
    for (double const bad : {nan, infinity}) {
        Eigen::Matrix3d block = Eigen::Matrix3d::Identity();
        block(1, 2) = bad;
        TrafoT<double> const pose(columnMajor(block, Vector(1, 2, 3)), true);
        EXPECT_EQ(pose.translation(), Vector(1, 2, 3));
        EXPECT_TRUE(pose.rotation().coeffs().array().isNaN().all());
        EXPECT_TRUE(pose.valid());
    }
}

TEST(TrafoT, FloatReadsMatricesToo)
{
    Bv_1_1::Mat4d<float> matrix;
    float const elements[16] = {0, 3, 0, 0, -3, 0, 0, 0, 0, 0, 3, 0, 7, 8, 9, 1};
    for (std::size_t i = 0; i < 16; ++i) {
        matrix[i] = elements[i];
    }
    TrafoT<float> const pose(matrix, true);
    EXPECT_EQ(pose.translation(), Eigen::Vector3f(7, 8, 9));
    EXPECT_LE((pose.rotation() * Eigen::Vector3f(1, 0, 0) - Eigen::Vector3f(0, 1, 0)).norm(), 1e-6F);
}

TEST(TrafoT, FromEigenFollowsTheMatrixRule)
{
    TrafoT<double>::Transform3D transform = TrafoT<double>::Transform3D::Identity();
    transform.linear() = 5.0 * quarterTurn().toRotationMatrix();
    transform.translation() = Vector(1, 2, 3);
    auto const pose = TrafoT<double>::FromEigen(transform);
    EXPECT_EQ(pose.translation(), Vector(1, 2, 3));
    EXPECT_LE((pose.rotation().toRotationMatrix() - quarterTurn().toRotationMatrix()).norm(), 1e-14);
    EXPECT_TRUE(pose.valid());
}

TEST(TrafoT, ToEigenGivesAHomogeneousMatrix)
{
    TrafoT<double> const pose(Vector(1, 2, 3), Quaternion(0, 0, 0, 1), false);
    Eigen::Matrix4d expected;
    expected << -1, 0, 0, 1, 0, -1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1;
    EXPECT_EQ(pose.ToEigen().matrix(), expected);
}

TEST(TrafoT, ToEigenDoesNotNormalise)
{
    Eigen::Matrix3d expected;
    expected << -7, -12, 0, 12, -7, 0, 0, 0, 1;
    EXPECT_EQ(Eigen::Matrix3d(TrafoT<double>::Rotation(Quaternion(3, 0, 0, 2)).ToEigen().linear()), expected);
}

TEST(TrafoT, ToEigenAndBackIsTheSamePose)
{
    RandomPoses random(7);
    for (int i = 0; i < 100; ++i) {
        auto const pose = random.pose();
        EXPECT_TRUE(TrafoT<double>::FromEigen(pose.ToEigen()) == pose);
    }
}

// The plane

TEST(TrafoT, Project2DKeepsYawXAndY)
{
    double const yaw = 0.7;
    Quaternion const heading(std::cos(yaw / 2), 0, 0, std::sin(yaw / 2));
    Quaternion const tilt(Eigen::AngleAxisd(0.3, Vector::UnitX())); // about the heading: leaves the yaw alone
    auto const projected = TrafoT<double>(Vector(1, 2, 3), heading * tilt, true).Project2D();
    Eigen::Matrix3d expected;
    expected << std::cos(yaw), -std::sin(yaw), 1, std::sin(yaw), std::cos(yaw), 2, 0, 0, 1;
    EXPECT_LE((projected.matrix() - expected).norm(), 1e-14);
    EXPECT_EQ(projected.matrix().row(2), Eigen::RowVector3d(0, 0, 1));
}

TEST(TrafoT, Project2DDropsThePitch)
{
    Quaternion const pitched(Eigen::AngleAxisd(0.7, Vector::UnitZ()) *
                             Eigen::AngleAxisd(0.4, Vector::UnitY()));
    auto const projected = TrafoT<double>::Rotation(pitched).Project2D();
    EXPECT_LE((projected.linear() - Eigen::Rotation2Dd(0.7).toRotationMatrix()).norm(), 1e-14);
}

TEST(TrafoT, Project2DTakesTheYawOfTheRotatedXAxisWhateverTheNorm)
{
    // w = 3, z = 2 maps (1, 0, 0) to (-7, 12, 0); brought to unit length it would turn it to (5, 12, 0) / 13.
    auto const projected = TrafoT<double>::Rotation(Quaternion(3, 0, 0, 2)).Project2D();
    double const length = std::hypot(-7.0, 12.0);
    Eigen::Matrix2d expected;
    expected << -7 / length, -12 / length, 12 / length, -7 / length;
    EXPECT_LE((projected.linear() - expected).norm(), 1e-14);
}

TEST(TrafoT, Embed3DTurnsAboutZ)
{
    TrafoT<double>::Transform2D plane = TrafoT<double>::Transform2D::Identity();
    plane.linear() = 3.0 * Eigen::Rotation2Dd(0.7).toRotationMatrix();
    plane.translation() = Eigen::Vector2d(1, 2);
    auto const pose = TrafoT<double>::Embed3D(plane);
    EXPECT_EQ(pose.translation(), Vector(1, 2, 0));
    EXPECT_NEAR(pose.rotation().w(), std::cos(0.35), 1e-15);
    EXPECT_NEAR(pose.rotation().z(), std::sin(0.35), 1e-15);
    EXPECT_EQ(pose.rotation().x(), 0.0);
    EXPECT_EQ(pose.rotation().y(), 0.0);
    EXPECT_TRUE(pose.valid());
}

TEST(TrafoT, Embed3DGivesItsZerosTheSignOfTheSine)
{
    TrafoT<double>::Transform2D plane = TrafoT<double>::Transform2D::Identity();
    plane.linear() = Eigen::Rotation2Dd(-0.7).toRotationMatrix();
    auto const pose = TrafoT<double>::Embed3D(plane);
    EXPECT_TRUE(std::signbit(pose.rotation().x()));
    EXPECT_TRUE(std::signbit(pose.rotation().y()));
}

TEST(TrafoT, Embed3DOfAMirroringBlockTurnsItsFirstSingularColumnRound)
{
    TrafoT<double>::Transform2D plane = TrafoT<double>::Transform2D::Identity();
    plane.linear() << 2, 0, 0,
        -1; // U V^T = diag(1, -1); with the first column turned round diag(-1, -1), half a turn
    auto const pose = TrafoT<double>::Embed3D(plane);
    EXPECT_NEAR(pose.rotation().w(), 0.0, 1e-15);
    EXPECT_NEAR(std::abs(pose.rotation().z()), 1.0, 1e-15);
}

TEST(TrafoT, Project2DAfterEmbed3DReturnsTheYaw)
{
    for (double yaw = -3.1; yaw < 3.2; yaw += 0.1) {
        TrafoT<double>::Transform2D plane = TrafoT<double>::Transform2D::Identity();
        plane.linear() = Eigen::Rotation2Dd(yaw).toRotationMatrix();
        plane.translation() = Eigen::Vector2d(4, 5);
        EXPECT_LE((TrafoT<double>::Embed3D(plane).Project2D().matrix() - plane.matrix()).norm(), 1e-14);
    }
}

// Random

TEST(TrafoT, RandomIsSixDrawsOf15BitsInOrder)
{
    auto const draw = [] {
        return static_cast<double>(std::rand() >> (std::bit_width(static_cast<unsigned>(RAND_MAX)) - 15));
    };
    std::srand(12345);
    double const x = draw() * 6.103701895199438e-05 - 1;
    double const y = draw() * 6.103701895199438e-05 - 1;
    double const z = draw() * 6.103701895199438e-05 - 1;
    double const u1 = draw() * 3.051850947599719e-05;
    double const u2 = draw() * 0.00019175345033660654;
    double const u3 = draw() * 0.00019175345033660654;
    int const next = std::rand();

    std::srand(12345);
    auto const pose = TrafoT<double>::Random();
    EXPECT_EQ(std::rand(), next) << "six draws, no more and no fewer";
    double const a = std::sqrt(1 - u1);
    double const b = std::sqrt(u1);
    EXPECT_EQ(pose.serialize(),
              (Values{x, y, z, a * std::sin(u2), a * std::cos(u2), b * std::sin(u3), b * std::cos(u3)}));
    EXPECT_TRUE(pose.valid());
}

TEST(TrafoT, RandomFillsTheCubeAndTheUnitSphere)
{
    std::srand(1);
    Vector lowest = Vector::Constant(2);
    Vector highest = Vector::Constant(-2);
    for (int i = 0; i < 2000; ++i) {
        auto const pose = TrafoT<double>::Random();
        EXPECT_NEAR(pose.rotation().norm(), 1.0, 1e-14);
        lowest = lowest.cwiseMin(pose.translation());
        highest = highest.cwiseMax(pose.translation());
    }
    EXPECT_GE(lowest.minCoeff(), -1.0);
    EXPECT_LE(highest.maxCoeff(), 1.0);
    EXPECT_LT(lowest.maxCoeff(), -0.95);
    EXPECT_GT(highest.minCoeff(), 0.95);
}

TEST(TrafoT, FloatRandomTakesTheSameSteps)
{
    std::srand(99);
    auto const wide = TrafoT<double>::Random().serialize();
    std::srand(99);
    auto const narrow = TrafoT<float>::Random().serialize();
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_NEAR(narrow[i], wide[i], 1e-5);
    }
}

} // namespace
