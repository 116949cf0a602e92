#include "tools/mounts/MountText.h"

#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::failureOf;

std::string refusalOfMount(std::string const& text)
{
    return failureOf([&] { static_cast<void>(parseMount(text, "--set")); });
}

std::string const form = "; write --set DEVICE=x,y,z,qw,qx,qy,qz, for example 1=0.1,0,0.25,1,0,0,0";

} // namespace

TEST(MountText, HasADeviceAPlaceAndAQuaternionWithItsRealPartFirst)
{
    Mount const mount = parseMount("2=1.5,-2,3e-1,0.5,-0.5,0.5,0.5", "--set");
    EXPECT_EQ(mount.device, Device::Device2);
    EXPECT_EQ(mount.position.translation(), Eigen::Vector3d(1.5, -2.0, 0.3));
    EXPECT_EQ(mount.position.rotation().w(), 0.5);
    EXPECT_EQ(mount.position.rotation().x(), -0.5);
    EXPECT_TRUE(mount.position.valid());
    EXPECT_EQ(mountText(mount), "2=1.5,-2,0.3,0.5,-0.5,0.5,0.5");
}

TEST(MountText, QuaternionsAreNormalized)
{
    EXPECT_EQ(mountText(parseMount(" 0 = 0, 0, 0, 1.05, 0, 0, 0", "--set")), "0=0,0,0,1,0,0,0");
    EXPECT_EQ(refusalOfMount("0=0,0,0,1.2,0,0,0"),
              "--set \"0=0,0,0,1.2,0,0,0\": the norm of the quaternion is 1.2000 instead of 1" + form);
}

TEST(MountText, AnotherFormIsRefused)
{
    EXPECT_EQ(refusalOfMount("1"), "--set \"1\": there is no '='" + form);
    EXPECT_EQ(refusalOfMount("4=0,0,0,1,0,0,0"),
              "--set \"4=0,0,0,1,0,0,0\": the device must be 0, 1, 2 or 3" + form);
    EXPECT_TRUE(
        refusalOfMount("-1=0,0,0,1,0,0,0").starts_with("--set \"-1=0,0,0,1,0,0,0\": the device must be 0"));
    EXPECT_EQ(refusalOfMount("1=0,0,0"), "--set \"1=0,0,0\": 3 numbers instead of 7" + form);
    EXPECT_EQ(refusalOfMount("1=0,0,0,1,0,0,nan"),
              "--set \"1=0,0,0,1,0,0,nan\": \"nan\" is not a finite number" + form);
    EXPECT_NE(refusalOfMount("1=0,0,0,0,0,0,0"), "");
}

TEST(MountText, ADeviceIsNamedOnce)
{
    TrajectoryData data;
    std::string const one = "1=1,0,0,1,0,0,0";
    EXPECT_EQ(failureOf([&] {
                  setMounts(data, {one, one}, "--mount");
              }),
              "--mount \"1=1,0,0,1,0,0,0\": the device is named twice; name it once");
    setMounts(data, {one, "0=2,0,0,1,0,0,0"}, "--mount");
    auto const mounts = mountsOf(data);
    ASSERT_EQ(mounts.size(), 2U);
    EXPECT_EQ(mounts[0].device, Device::Device0);
    EXPECT_EQ(mounts[0].position.translation().x(), 2.0);
    EXPECT_EQ(mounts[1].device, Device::Device1);
}
