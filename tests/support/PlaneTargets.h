#pragma once

#include <roamscan/geometry/PlaneTarget.h>

#include <gtest/gtest.h>

namespace support
{

/// Whether the distance of two vectors is at most `within`.
inline testing::AssertionResult near(Eigen::Matrix<double, 3, 1> const& actual,
                                     Eigen::Matrix<double, 3, 1> const& expected,
                                     double within = 1e-14)
{
    if ((actual - expected).norm() <= within) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << actual.transpose() << " instead of " << expected.transpose();
}

/// Expects the axes of a target.
inline void expectFrame(oV::Roamscan::PlaneTarget const& target,
                        Eigen::Matrix<double, 3, 1> const& major,
                        Eigen::Matrix<double, 3, 1> const& minor,
                        Eigen::Matrix<double, 3, 1> const& normal)
{
    EXPECT_TRUE(near(target.majAxis(), major));
    EXPECT_TRUE(near(target.minAxis(), minor));
    EXPECT_TRUE(near(target.normal(), normal));
}

} // namespace support
