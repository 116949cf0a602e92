#include "tests/support/SpecialNumbers.h"
#include "tests/support/Vectors.h"

#include <roamscan/time/TrafoT.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace
{

using oV::Roamscan::TrafoT;
using support::notANumber;
using support::quarterTurn;

using Vector = Eigen::Vector3d;
using Quaternion = Eigen::Quaterniond; // constructor order: w, x, y, z

} // namespace

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

TEST(TrafoT, RotationsCompareAsMatricesSoTheSignOfAQuaternionIsIgnored)
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

TEST(TrafoT, RotationsCompareRelativeToTheSmallerFrobeniusNorm)
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
    TrafoT<double> const lost(Vector(notANumber, 0, 0), quarterTurn(), true);
    EXPECT_TRUE(lost == TrafoT<double>(Vector(1, 2, 3), quarterTurn(), true));
    EXPECT_FALSE(lost == TrafoT<double>(Vector(1, 2, 3), Quaternion::Identity(), true));
}

TEST(TrafoT, ANaNRotationEqualsNothing)
{
    TrafoT<double> const lost(Vector(1, 2, 3), Quaternion(notANumber, 0, 0, 0), true);
    EXPECT_FALSE(lost == lost);
}

TEST(TrafoT, FloatComparisonNarrowsThePrecisionAndComputesInFloat)
{
    // The precision 1e-30 squares to zero in float, so that only equal values pass; in double it would not.
    auto const at = [](float x) { return TrafoT<float>::Translation(Eigen::Vector3f(x, 0, 0)); };
    EXPECT_TRUE(at(1.0F).isApprox(at(1.0F), 1e-30));
    EXPECT_FALSE(at(1.0F).isApprox(at(1.0000001F), 1e-30));
    // 1e200 narrows to infinity, and everything is within that.
    EXPECT_TRUE(at(1.0F).isApprox(at(1e10F), 1e200));
}
