#include "tests/support/Bits.h"
#include "tests/support/RandomPoses.h"
#include "tests/support/SpecialNumbers.h"
#include "tests/support/Vectors.h"

#include <roamscan/time/TrafoT.h>

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
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
using support::expectNear;
using support::infinity;
using support::notANumber;
using support::quarterTurn;
using support::RandomPoses;
using support::sameBits;

using Vector = Eigen::Vector3d;
using Quaternion = Eigen::Quaterniond; // constructor order: w, x, y, z
using Values = std::array<double, 7>;

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

} // namespace

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

TEST(TrafoT, StoresItsArgumentsWithoutNormalising)
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

TEST(TrafoT, TranslationsAndRotationsAreValid)
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

TEST(TrafoT, AllFiniteDependsOnTheNumbersAndNotOnTheFlag)
{
    EXPECT_TRUE((TrafoT<double>(Vector(1, 2, 3), Quaternion(1, 0, 0, 0), false).allFinite()));
    for (double const bad : {notANumber, infinity, -infinity}) {
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

TEST(TrafoT, CopiesAndMovesKeepTheFlag)
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

TEST(TrafoT, RotatesExactlyByItsFormulaInDoubleAndFloat)
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

// Random

TEST(TrafoT, RandomUsesSixNumbersOf15BitsInOrder)
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

TEST(TrafoT, FloatRandomFollowsTheSameSteps)
{
    std::srand(99);
    auto const wide = TrafoT<double>::Random().serialize();
    std::srand(99);
    auto const narrow = TrafoT<float>::Random().serialize();
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_NEAR(narrow[i], wide[i], 1e-5);
    }
}
