#pragma once

#include <Eigen/Core>
#include <Eigen/Geometry>
#include <gtest/gtest.h>

#include <numbers>

/// Vectors and rotations for tests.
namespace support
{

/// A rotation by 90 degrees about z.
inline Eigen::Quaterniond quarterTurn()
{
    double const half = std::numbers::sqrt2 / 2;
    return {half, 0, 0, half};
}

/// Expects a distance of at most `tolerance` between two vectors.
inline void expectNear(Eigen::Vector3d const& actual, Eigen::Vector3d const& expected, double tolerance)
{
    EXPECT_LE((actual - expected).norm(), tolerance) << actual.transpose() << " and " << expected.transpose();
}

} // namespace support
