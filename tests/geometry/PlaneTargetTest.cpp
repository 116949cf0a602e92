#include "tests/support/PlaneTargets.h"
#include "tests/support/RandomPoses.h"
#include "tests/support/SpecialNumbers.h"

#include <roamscan/geometry/PlaneTarget.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>
#include <type_traits>
#include <utility>

namespace
{

using oV::BvFitPlane;
using oV::Roamscan::invalidTarget;
using oV::Roamscan::PlaneTarget;
using support::expectFrame;
using support::near;
using support::notANumber;

using Vector = Eigen::Matrix<double, 3, 1>;
using Matrix = Eigen::Matrix<double, 3, 3>;
using Quaternion = Eigen::Quaternion<double>; // constructor order: w, x, y, z
using ParamMatrix = Eigen::Matrix<double, 3, 4>;

constexpr double allowed = 1e-14;

// A right-handed fit: axes along y, z and x.
BvFitPlane::PlaneParam fit()
{
    return {{10, 20, 30}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, 5, 4};
}

ParamMatrix toMatrix(std::array<Vector, 4> const& params)
{
    ParamMatrix matrix;
    matrix << params[0], params[1], params[2], params[3];
    return matrix;
}

// The default, and the single values

TEST(PlaneTarget, InvalidTargetIsMinusOne)
{
    static_assert(std::is_same_v<decltype(invalidTarget), int const>);
    EXPECT_EQ(invalidTarget, -1);
}

TEST(PlaneTarget, DefaultHasNoIdAndNoLengthsAtTheOrigin)
{
    PlaneTarget const target;
    EXPECT_EQ(target.id(), invalidTarget);
    EXPECT_EQ(target.position(), Vector::Zero());
    EXPECT_EQ(target.majAxisLength(), 0.0);
    EXPECT_EQ(target.minAxisLength(), 0.0);
}

TEST(PlaneTarget, DefaultLooksAlongZWithItsMajorAxisAgainstY)
{
    expectFrame(PlaneTarget(), {0, -1, 0}, {1, 0, 0}, {0, 0, 1});
    double const half = std::numbers::sqrt2 / 2;
    EXPECT_TRUE(PlaneTarget().rotation().coeffs().isApprox(Quaternion(half, 0, 0, -half).coeffs(), allowed));
}

TEST(PlaneTarget, TheNormalConstructorStoresThePosition)
{
    PlaneTarget const target(Vector(0, 0, 1), Vector(1, 2, 3));
    EXPECT_EQ(target.position(), Vector(1, 2, 3));
    EXPECT_EQ(target.id(), -1);
    EXPECT_EQ(target.majAxisLength(), 0.0);
    EXPECT_EQ(target.minAxisLength(), 0.0);
    EXPECT_EQ(PlaneTarget(Vector(1, 0, 0)).position(), Vector::Zero());
}

TEST(PlaneTarget, EachValueIsSetAndGot)
{
    PlaneTarget target;
    target.id(7);
    target.position(Vector(1, 2, 3));
    target.rotation(Quaternion(1, 2, 3, 4));
    target.majAxisLength(5);
    target.minAxisLength(6);
    EXPECT_EQ(target.id(), 7);
    EXPECT_EQ(target.position(), Vector(1, 2, 3));
    EXPECT_EQ(target.rotation().coeffs(), Quaternion(1, 2, 3, 4).coeffs()); // not normalised
    EXPECT_EQ(target.majAxisLength(), 5);
    EXPECT_EQ(target.minAxisLength(), 6);
}

TEST(PlaneTarget, GettersReturnReferencesToTheValues)
{
    PlaneTarget const target;
    static_assert(std::is_same_v<decltype(target.id()), int const&>);
    static_assert(std::is_same_v<decltype(target.position()), Vector const&>);
    static_assert(std::is_same_v<decltype(target.rotation()), Quaternion const&>);
    static_assert(std::is_same_v<decltype(target.majAxisLength()), double const&>);
    static_assert(std::is_same_v<decltype(target.minAxisLength()), double const&>);
    EXPECT_EQ(&target.position(), &target.position());
    EXPECT_EQ(&target.rotation(), &target.rotation());
}

TEST(PlaneTarget, HasItsFieldsInTheFixedOrder)
{
    PlaneTarget const target;
    auto const offset = [&target](auto const& field) {
        return reinterpret_cast<char const*>(&field) - reinterpret_cast<char const*>(&target);
    };
    EXPECT_EQ(offset(target.id()), 0);
    EXPECT_LT(offset(target.id()), offset(target.position()));
    EXPECT_LT(offset(target.position()), offset(target.rotation()));
    EXPECT_LT(offset(target.rotation()), offset(target.majAxisLength()));
    EXPECT_LT(offset(target.majAxisLength()), offset(target.minAxisLength()));
}

TEST(PlaneTarget, CopyAndMoveTakeAllValues)
{
    PlaneTarget source(fit());
    source.id(7);
    PlaneTarget const copied = source;
    PlaneTarget assigned;
    assigned = source;
    PlaneTarget const moved = std::move(source);
    for (PlaneTarget const* const target : {&copied, &std::as_const(assigned), &moved}) {
        EXPECT_EQ(target->id(), 7);
        EXPECT_EQ(target->position(), Vector(10, 20, 30));
        EXPECT_EQ(target->majAxisLength(), 5);
        EXPECT_EQ(target->minAxisLength(), 4);
        expectFrame(*target, {0, 1, 0}, {0, 0, 1}, {1, 0, 0});
    }
}

TEST(PlaneTarget, TheAxesHaveUnitLengthWhateverTheirLengthsAre)
{
    PlaneTarget target(fit());
    target.majAxisLength(100);
    target.minAxisLength(0);
    expectFrame(target, {0, 1, 0}, {0, 0, 1}, {1, 0, 0});
}

TEST(PlaneTarget, DoesNotNormaliseTheQuaternion)
{
    // Twice the unit length: x + w c + u cross c, with u = (0, 0, 2 sin), w = 2 cos at half of a quarter
    // turn.
    PlaneTarget target;
    double const part = std::numbers::sqrt2;
    target.rotation(Quaternion(part, 0, 0, part));
    EXPECT_TRUE(near(target.majAxis(), Vector(-3, 4, 0)));
}

// From a plane fit

TEST(PlaneTarget, RightHandedFitIsTakenUnchanged)
{
    PlaneTarget const target(fit());
    EXPECT_EQ(target.id(), invalidTarget);
    EXPECT_EQ(target.position(), Vector(10, 20, 30));
    EXPECT_EQ(target.majAxisLength(), 5);
    EXPECT_EQ(target.minAxisLength(), 4);
    expectFrame(target, {0, 1, 0}, {0, 0, 1}, {1, 0, 0});
}

TEST(PlaneTarget, NegatesTheFirstAxisOfALeftHandedFit)
{
    auto param = fit();
    param.firstAxis = {0, -1, 0};
    expectFrame(PlaneTarget(param), {0, 1, 0}, {0, 0, 1}, {1, 0, 0});
    param = fit();
    param.normal = {-1, 0, 0};
    expectFrame(PlaneTarget(param), {0, -1, 0}, {0, 0, 1}, {-1, 0, 0});
}

TEST(PlaneTarget, AFitWithoutAVolumeCountsAsRightHanded)
{
    // The normal lies in the plane of the axes. Were the first axis negated, x of the quaternion would
    // differ.
    auto param = fit();
    param.firstAxis = {1, 0, 0};
    param.secondAxis = {0, 1, 0};
    param.normal = {0, 1, 0};
    Matrix frame;
    frame << Vector(1, 0, 0), Vector(0, 1, 0), Vector(0, 1, 0);
    EXPECT_EQ(PlaneTarget(param).rotation().coeffs(), Quaternion(frame).coeffs());
}

TEST(PlaneTarget, VectorsOfAFitAreNotNormalised)
{
    // Their matrix with twice, three and four times the unit length, right-handed and left-handed.
    auto param = fit();
    param.firstAxis = {0, 2, 0};
    param.secondAxis = {0, 0, 3};
    param.normal = {4, 0, 0};
    Matrix stretched;
    stretched << Vector(0, 2, 0), Vector(0, 0, 3), Vector(4, 0, 0);
    EXPECT_EQ(PlaneTarget(param).rotation().coeffs(), Quaternion(stretched).coeffs());
    param.firstAxis = {0, -2, 0};
    EXPECT_EQ(PlaneTarget(param).rotation().coeffs(), Quaternion(stretched).coeffs());
    EXPECT_EQ(PlaneTarget(param).majAxisLength(), 5); // the lengths come from elsewhere
    EXPECT_EQ(PlaneTarget(param).minAxisLength(), 4);
}

TEST(PlaneTarget, TheIdSurvivesSetFromPlaneFit)
{
    PlaneTarget target;
    target.id(7);
    target.setFromPlaneFit(fit());
    EXPECT_EQ(target.id(), 7);
    EXPECT_EQ(target.position(), Vector(10, 20, 30));
}

TEST(PlaneTarget, PlaneParamHasItsFieldsInTheFixedOrder)
{
    using Param = BvFitPlane::PlaneParam;
    static_assert(std::is_standard_layout_v<Param> && sizeof(Param) == 14 * sizeof(double));
    static_assert(offsetof(Param, position) == 0);
    static_assert(offsetof(Param, normal) == 3 * sizeof(double));
    static_assert(offsetof(Param, firstAxis) == 6 * sizeof(double));
    static_assert(offsetof(Param, secondAxis) == 9 * sizeof(double));
    static_assert(offsetof(Param, majorLength) == 12 * sizeof(double));
    static_assert(offsetof(Param, minorLength) == 13 * sizeof(double));
}

// To and from vectors

TEST(PlaneTarget, ReturnsPositionNormalAndScaledAxes)
{
    auto const params = PlaneTarget(fit()).planeParams();
    static_assert(std::is_same_v<decltype(params), std::array<Vector, 4> const>);
    EXPECT_EQ(params[0], Vector(10, 20, 30));
    EXPECT_TRUE(near(params[1], Vector(1, 0, 0)));
    EXPECT_TRUE(near(params[2], Vector(0, 5, 0)));
    EXPECT_TRUE(near(params[3], Vector(0, 0, 4)));
}

TEST(PlaneTarget, TakesTheLengthsOfTheAxesFromTheMatrix)
{
    ParamMatrix matrix;
    matrix << Vector(1, 2, 3), Vector(1, 0, 0), Vector(0, 3, 0), Vector(0, 0, 2);
    PlaneTarget target;
    target.planeParams(matrix);
    EXPECT_EQ(target.position(), Vector(1, 2, 3));
    EXPECT_EQ(target.majAxisLength(), 3);
    EXPECT_EQ(target.minAxisLength(), 2);
    expectFrame(target, {0, 1, 0}, {0, 0, 1}, {1, 0, 0});
    EXPECT_NEAR(target.planeParams()[2].norm(), 3, allowed);
    EXPECT_NEAR(target.planeParams()[3].norm(), 2, allowed);
}

TEST(PlaneTarget, TheIdSurvivesTheMatrix)
{
    PlaneTarget target;
    target.id(7);
    target.planeParams(toMatrix(PlaneTarget(fit()).planeParams()));
    EXPECT_EQ(target.id(), 7);
}

TEST(PlaneTarget, TheMatrixIsNotTestedForItsHandedness)
{
    ParamMatrix matrix;
    matrix << Vector::Zero(), Vector(1, 0, 0), Vector(0, -3, 0), Vector(0, 0, 2);
    PlaneTarget target;
    target.planeParams(matrix);
    Matrix leftHanded;
    leftHanded << Vector(0, -1, 0), Vector(0, 0, 1), Vector(1, 0, 0);
    EXPECT_EQ(target.rotation().coeffs(), Quaternion(leftHanded).coeffs());
}

TEST(PlaneTarget, NormalOfTheMatrixIsNotNormalised)
{
    ParamMatrix matrix;
    matrix << Vector::Zero(), Vector(2, 0, 0), Vector(0, 3, 0), Vector(0, 0, 2);
    PlaneTarget target;
    target.planeParams(matrix);
    Matrix stretched;
    stretched << Vector(0, 1, 0), Vector(0, 0, 1), Vector(2, 0, 0);
    EXPECT_EQ(target.rotation().coeffs(), Quaternion(stretched).coeffs());
}

TEST(PlaneTarget, AZeroAxisOfTheMatrixHasTheLengthZero)
{
    ParamMatrix matrix;
    matrix << Vector(1, 2, 3), Vector(0, 0, 1), Vector::Zero(), Vector(0, 2, 0);
    PlaneTarget target;
    target.planeParams(matrix);
    EXPECT_EQ(target.majAxisLength(), 0);
    EXPECT_EQ(target.minAxisLength(), 2);
    EXPECT_TRUE(target.rotation().coeffs().allFinite());
    matrix << Vector(1, 2, 3), Vector(0, 0, 1), Vector(3, 0, 0), Vector::Zero();
    target.planeParams(matrix);
    EXPECT_EQ(target.majAxisLength(), 3);
    EXPECT_EQ(target.minAxisLength(), 0);
    EXPECT_TRUE(target.rotation().coeffs().allFinite());
}

TEST(PlaneTarget, NaNPropagatesThroughFitAndMatrix)
{
    auto param = fit();
    param.normal = {notANumber, 0, 0};
    PlaneTarget const fitted(param);
    EXPECT_TRUE(fitted.normal().hasNaN());
    EXPECT_EQ(fitted.position(), Vector(10, 20, 30));
    EXPECT_EQ(fitted.majAxisLength(), 5);

    ParamMatrix matrix;
    matrix << Vector(1, 2, 3), Vector(1, 0, 0), Vector(0, notANumber, 0), Vector(0, 0, 2);
    PlaneTarget target;
    target.planeParams(matrix);
    EXPECT_TRUE(target.majAxis().hasNaN());
    EXPECT_EQ(target.position(), Vector(1, 2, 3));
    EXPECT_TRUE(std::isnan(target.majAxisLength()));
    EXPECT_EQ(target.minAxisLength(), 2);
}

TEST(PlaneTarget, RightHandedFrameSurvivesTheRoundTripThroughTheParams)
{
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        support::RandomPoses random(seed);
        auto const pose = random.pose();
        PlaneTarget source;
        source.position(pose.translation());
        source.rotation(pose.rotation());
        source.majAxisLength(random.number(0.1, 10));
        source.minAxisLength(random.number(0.1, 10));

        PlaneTarget target;
        target.planeParams(toMatrix(source.planeParams()));
        EXPECT_EQ(target.position(), source.position());
        EXPECT_NEAR(target.majAxisLength(), source.majAxisLength(), 1e-13);
        EXPECT_NEAR(target.minAxisLength(), source.minAxisLength(), 1e-13);
        EXPECT_NEAR(std::abs(target.rotation().dot(source.rotation())), 1, 1e-13); // q and -q are one
    }
}

} // namespace
