#include <roamscan/time/EigenConversion.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace
{

using Bv_1_1::Vec3d;
using mapping::Rigid3;
using mapping::Vector3;
using oV::Roamscan::toEigen;
using oV::Roamscan::toRigid3;
using oV::Roamscan::toVec3d;
using oV::Roamscan::toVector3;

TEST(EigenConversion, VectorsKeepTheirComponentsAndTheirScalarType)
{
    EXPECT_EQ(toEigen(Vec3d<double>{1, 2, 3}), Eigen::Vector3d(1, 2, 3));
    EXPECT_EQ(toEigen(Vec3d<float>{1, 2, 3}), Eigen::Vector3f(1, 2, 3));
    EXPECT_EQ(toEigen(Vector3<double>{1, 2, 3}), Eigen::Vector3d(1, 2, 3));
    EXPECT_EQ(toEigen(Vector3<float>{1, 2, 3}), Eigen::Vector3f(1, 2, 3));
    EXPECT_EQ(toVec3d(Eigen::Vector3d(1, 2, 3)), (Vec3d<double>{1, 2, 3}));
    EXPECT_EQ(toVec3d(Eigen::Vector3f(1, 2, 3)), (Vec3d<float>{1, 2, 3}));
    EXPECT_EQ(toVector3(Eigen::Vector3d(1, 2, 3)), (Vector3<double>{1, 2, 3}));
    EXPECT_EQ(toVector3(Eigen::Vector3f(1, 2, 3)), (Vector3<float>{1, 2, 3}));
}

TEST(EigenConversion, TakesUnevaluatedExpressions)
{
    Eigen::Matrix3d const turn = (Eigen::Matrix3d() << 0, -1, 0, 1, 0, 0, 0, 0, 1).finished();
    EXPECT_EQ(toVector3(turn * toEigen(Vector3<double>{1, 2, 3})), (Vector3<double>{-2, 1, 3}));
    EXPECT_EQ(toVec3d(Eigen::Vector3d(1, 2, 3).cast<float>() + Eigen::Vector3f::UnitX()),
              (Vec3d<float>{2, 2, 3}));
    EXPECT_EQ(toVec3d(turn.col(0)), (Vec3d<double>{0, 1, 0}));
}

TEST(EigenConversion, QuaternionComponentsMatchByName)
{
    auto const rotation = toEigen(mapping::Quaternion<float>{1, 2, 3, 4});
    static_assert(std::is_same_v<decltype(rotation), Eigen::Quaternionf const>);
    EXPECT_EQ(rotation.x(), 1);
    EXPECT_EQ(rotation.y(), 2);
    EXPECT_EQ(rotation.z(), 3);
    EXPECT_EQ(rotation.w(), 4);
}

TEST(EigenConversion, RigidPosesKeepAllSevenNumbers)
{
    Rigid3<double> const rigid{{1, 2, 3}, {4, 5, 6, 7}};
    EXPECT_EQ(toRigid3(Eigen::Vector3d(1, 2, 3), Eigen::Quaterniond(7, 4, 5, 6)), rigid);
    EXPECT_EQ(toRigid3(toEigen(rigid.translation), toEigen(rigid.rotation)), rigid);
}

} // namespace
