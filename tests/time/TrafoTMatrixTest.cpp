#include "tests/support/RandomPoses.h"
#include "tests/support/SpecialNumbers.h"
#include "tests/support/Vectors.h"

#include <roamscan/time/TrafoT.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>

namespace
{

using oV::Roamscan::TrafoT;
using namespace support;

using Vector = Eigen::Vector3d;
using Quaternion = Eigen::Quaterniond; // constructor order: w, x, y, z

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

} // namespace

TEST(TrafoT, ReadsAMat4dInColumnMajorOrder)
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

TEST(TrafoT, DiscardsTheScaleOfAMat4dAndKeepsTheTranslation)
{
    Eigen::Matrix3d const rotation = quarterTurn().toRotationMatrix();
    TrafoT<double> const pose(columnMajor(2.0 * rotation, Vector(1, 2, 3)), true);
    EXPECT_EQ(pose.translation(), Vector(1, 2, 3));
    EXPECT_LE((pose.rotation().toRotationMatrix() - rotation).norm(), 1e-14);
}

TEST(TrafoT, DiscardsTheShearOfAMat4d)
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

TEST(TrafoT, AReflectionNegatesItsFirstSingularVector)
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
    for (double const bad : {notANumber, infinity}) {
        Eigen::Matrix3d block = Eigen::Matrix3d::Identity();
        block(1, 2) = bad;
        TrafoT<double> const pose(columnMajor(block, Vector(1, 2, 3)), true);
        EXPECT_EQ(pose.translation(), Vector(1, 2, 3));
        EXPECT_TRUE(pose.rotation().coeffs().array().isNaN().all());
        EXPECT_TRUE(pose.valid());
    }
}

TEST(TrafoT, FloatReadsMatrices)
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

TEST(TrafoT, FromEigenTakesTheNearestRotation)
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
    Quaternion const tilt(Eigen::AngleAxisd(0.3, Vector::UnitX())); // about the heading: keeps the yaw
    auto const projected = TrafoT<double>(Vector(1, 2, 3), heading * tilt, true).Project2D();
    Eigen::Matrix3d expected;
    expected << std::cos(yaw), -std::sin(yaw), 1, std::sin(yaw), std::cos(yaw), 2, 0, 0, 1;
    EXPECT_LE((projected.matrix() - expected).norm(), 1e-14);
    EXPECT_EQ(projected.matrix().row(2), Eigen::RowVector3d(0, 0, 1));
}

TEST(TrafoT, Project2DDiscardsThePitch)
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

TEST(TrafoT, Embed3DRotatesAboutZ)
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

TEST(TrafoT, Embed3DOfAReflectionNegatesItsFirstSingularVector)
{
    TrafoT<double>::Transform2D plane = TrafoT<double>::Transform2D::Identity();
    plane.linear() << 2, 0, 0,
        -1; // U V^T = diag(1, -1); with the first column negated diag(-1, -1), a half turn
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
