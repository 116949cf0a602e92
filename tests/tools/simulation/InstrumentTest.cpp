#include "tools/simulation/Instrument.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

using Eigen::Vector3d;

TEST(Instrument, HasTwoHeadsThatAreTiltedDifferently)
{
    auto const devices = instrument();
    ASSERT_EQ(devices.size(), 4U);
    EXPECT_TRUE(devices.at(Device::Device0).isApprox(Eigen::Isometry3d::Identity()));
    Vector3d const first = devices.at(Device::Device1).linear().col(2);
    Vector3d const second = devices.at(Device::Device2).linear().col(2);
    EXPECT_GT(std::acos(first.dot(second)), 0.5);
    EXPECT_GT(devices.at(Device::Device3).translation().z(), devices.at(Device::Device2).translation().z());
}

TEST(Instrument, TheScannersAreTheHeads)
{
    auto const devices = instrument();
    auto const heads = rangefinders();
    ASSERT_EQ(heads.size(), 2U);
    EXPECT_TRUE(heads.at("scanner1").isApprox(devices.at(Device::Device1)));
    EXPECT_TRUE(heads.at("scanner2").isApprox(devices.at(Device::Device2)));
}

TEST(Instrument, TheInertialUnitsAreTurnedAgainstTheBodyAndEachOther)
{
    auto const units = inertialUnits();
    ASSERT_EQ(units.size(), 2U);
    Eigen::Matrix3d const first = units.at("imu1").linear();
    Eigen::Matrix3d const second = units.at("imu2").linear();
    EXPECT_FALSE(first.isApprox(Eigen::Matrix3d::Identity(), 0.1));
    EXPECT_FALSE(second.isApprox(Eigen::Matrix3d::Identity(), 0.1));
    EXPECT_FALSE(first.isApprox(second, 0.1));
}
