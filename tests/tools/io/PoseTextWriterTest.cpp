#include "tools/io/PoseTextWriter.h"

#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::failureOf;

std::string written(PoseFormat format, double time, TrafoT<double> const& pose)
{
    std::ostringstream text;
    PoseTextWriter writer(format, text, "poses.txt");
    writer.add(time, pose);
    return text.str();
}

TrafoT<double> const pose({1.5, -2.0, 0.1}, Eigen::Quaterniond(0.5, -0.5, 0.5, 0.5), true); // w, x, y, z

} // namespace

TEST(PoseTextWriter, WritesTheColumnsOfEachFormat)
{
    EXPECT_EQ(written(PoseFormat::Tum, 1311868163.8696, pose),
              "# time tx ty tz qx qy qz qw\n1311868163.8696 1.5 -2 0.1 -0.5 0.5 0.5 0.5\n");
    EXPECT_EQ(written(PoseFormat::Euroc, 1.25, pose),
              "#timestamp [ns],p_x [m],p_y [m],p_z [m],q_w,q_x,q_y,q_z\n"
              "1250000000,1.5,-2,0.1,0.5,-0.5,0.5,0.5\n");
    EXPECT_EQ(written(PoseFormat::Csv, 1.25, pose),
              "time,x,y,z,qw,qx,qy,qz\n1.25,1.5,-2,0.1,0.5,-0.5,0.5,0.5\n");
    // The rotation takes x to -z, y to -x and z to y.
    EXPECT_EQ(written(PoseFormat::Kitti, 1.25, pose), "0 -1 0 1.5 0 0 1 -2 -1 0 0 0.1\n");
}

TEST(PoseTextWriter, ATimeBeyondTheNanosecondsOfEurocIsRefused)
{
    EXPECT_EQ(
        failureOf([] { static_cast<void>(written(PoseFormat::Euroc, 1e10, pose)); }),
        "poses.txt: the time 10000000000 s is too large for the nanoseconds of EuRoC; choose another format");
}
