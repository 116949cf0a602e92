#include "tools/geometry/GroundPlane.h"

#include <Eigen/LU>
#include <gtest/gtest.h>

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

TEST(GroundPlane, UsuallyZIsUp)
{
    EXPECT_EQ(planRotation({}), Eigen::Matrix3d::Identity());
    EXPECT_EQ(planRotation({{1, 2, 3}}), Eigen::Matrix3d::Identity());
    EXPECT_EQ(planRotation({{0, 0, 0}, {10, 8, 1}}), Eigen::Matrix3d::Identity());
    EXPECT_EQ(planRotation({{0, 0, 0}, {10, 0.1, 0.1}}), Eigen::Matrix3d::Identity()) << "along a corridor";
    EXPECT_EQ(planRotation({{0, 0, 0}, {0.5, 0.5, 30}}), Eigen::Matrix3d::Identity()) << "in a lift";
}

TEST(GroundPlane, ACamerasPathIsSeenFromAboveToo)
{
    Eigen::Matrix3d const turn = planRotation({{0, 0, 0}, {10, 1, 8}});
    EXPECT_EQ(turn * Eigen::Vector3d::UnitX(), Eigen::Vector3d::UnitX());
    EXPECT_EQ(turn * Eigen::Vector3d::UnitZ(), Eigen::Vector3d::UnitY());
    EXPECT_EQ(turn * Eigen::Vector3d::UnitY(), -Eigen::Vector3d::UnitZ());
    EXPECT_EQ(turn.determinant(), 1.0);
}

TEST(GroundPlane, APathAcrossXIsTurned)
{
    Eigen::Matrix3d const turn = planRotation({{0, 0, 0}, {1, 10, 8}});
    EXPECT_EQ(turn * Eigen::Vector3d::UnitX(), Eigen::Vector3d::UnitZ());
    EXPECT_EQ(turn.determinant(), 1.0);
}
