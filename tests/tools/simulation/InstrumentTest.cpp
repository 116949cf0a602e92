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
    for (std::size_t i = 0; i < devices.size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(devices[i].device), i);
    }
    EXPECT_TRUE(devices[0].bodyFromDevice.isApprox(Eigen::Isometry3d::Identity()));
    Vector3d const first = devices[1].bodyFromDevice.linear().col(2);
    Vector3d const second = devices[2].bodyFromDevice.linear().col(2);
    EXPECT_GT(std::acos(first.dot(second)), 0.5);
    EXPECT_GT(devices[3].bodyFromDevice.translation().z(), devices[2].bodyFromDevice.translation().z());
}

TEST(Instrument, TheScannersAreTheHeads)
{
    auto const devices = instrument();
    auto const heads = rangefinders();
    ASSERT_EQ(heads.size(), 2U);
    EXPECT_EQ(heads[0].name, "scanner1");
    EXPECT_TRUE(heads[0].bodyFromSensor.isApprox(devices[1].bodyFromDevice));
    EXPECT_EQ(heads[1].name, "scanner2");
    EXPECT_TRUE(heads[1].bodyFromSensor.isApprox(devices[2].bodyFromDevice));
}

TEST(Instrument, TheInertialUnitsAreTurnedAgainstTheBodyAndEachOther)
{
    auto const units = inertialUnits();
    ASSERT_EQ(units.size(), 2U);
    EXPECT_EQ(units[0].name, "imu1");
    EXPECT_EQ(units[1].name, "imu2");
    Eigen::Matrix3d const first = units[0].bodyFromSensor.linear();
    Eigen::Matrix3d const second = units[1].bodyFromSensor.linear();
    EXPECT_FALSE(first.isApprox(Eigen::Matrix3d::Identity(), 0.1));
    EXPECT_FALSE(second.isApprox(Eigen::Matrix3d::Identity(), 0.1));
    EXPECT_FALSE(first.isApprox(second, 0.1));
}
