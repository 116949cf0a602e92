/// @file
/// Points along recorded trajectories at map coordinates, compared with an independent computation in numpy.

#include "tests/support/SharedData.h"
#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using support::ToolFixture;
using support::ToolRun;

class PlacedRecordings : public ToolFixture
{
protected:
    /// A Python that has numpy.
    [[nodiscard]] static std::optional<std::string> python()
    {
        for (std::string const name : {"python3", "/usr/bin/python3"}) {
            if (std::system((name + " -c 'import numpy' >/dev/null 2>&1").c_str()) == 0) {
                return name;
            }
        }
        return std::nullopt;
    }

    /// Runs the script; its output is in the file out.txt.
    [[nodiscard]] bool script(std::string const& python, std::vector<std::string> const& words) const
    {
        std::string command = python + " '" ROAMSCAN_TEST_SOURCE_DIR "/tools/placing/placed_points.py'";
        for (std::string const& word : words) {
            command += " '" + word + "'";
        }
        return std::system((command + " >'" + file("out.txt").string() + "'").c_str()) == 0;
    }

    void compare(std::string const& recording, std::string const& format) const
    {
        auto const poses = support::sharedData("trajectories/" + recording);
        if (!std::filesystem::exists(poses)) {
            GTEST_SKIP() << "there is no recording " << poses;
        }
        auto const interpreter = python();
        if (!interpreter) {
            GTEST_SKIP() << "no Python with numpy (python3-numpy)";
        }
        ASSERT_TRUE(script(
            *interpreter,
            {"make", poses, format, "5400000", file("poses.txt"), file("scan.ply"), file("placed.npy")}));
        ToolRun const imported = run({"import", "--format", "tum", file("poses.txt"), file("a.trajectory")});
        ASSERT_EQ(imported.status, 0) << imported.err;
        ToolRun const placing = run({"place",
                                     "--trajectory",
                                     file("a.trajectory"),
                                     "--from",
                                     "0",
                                     "--to",
                                     "0",
                                     "--points",
                                     file("scan.ply"),
                                     "--cloud",
                                     file("cloud.ply")});
        ASSERT_EQ(placing.status, 0) << placing.err;
        ASSERT_TRUE(script(*interpreter, {"compare", file("placed.npy"), file("cloud.ply")})) << placing.out;
        std::istringstream out(read("out.txt"));
        std::size_t count = 0;
        double largest = 1.0;
        out >> count >> largest;
        EXPECT_GT(count, 10'000U);
        EXPECT_LT(largest, 1e-6);
    }
};

} // namespace

TEST_F(PlacedRecordings, OfACarriedCamera)
{
    compare("fr2_desk_groundtruth.txt", "tum");
}

TEST_F(PlacedRecordings, OfAFlyingVehicle)
{
    compare("V102_groundtruth.csv", "euroc");
}
