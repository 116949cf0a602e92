#include "tests/support/SharedData.h"
#include "tests/tools/support/ToolFixture.h"
#include "tools/io/PoseTextFormats.h"
#include "tools/io/RecordingFile.h"

#include <roamscan/trajectory/TrajectoryFromNodes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::lineCount;
using support::ToolFixture;
using support::ToolRun;
using testing::HasSubstr;

class SampleCommandTest : public ToolFixture
{
protected:
    /// A body that goes from x = 0 to x = 10 between 100 s and 110 s.
    [[nodiscard]] support::TestPath trajectory() const
    {
        auto const poses = write("poses.txt", "100 0 0 0 0 0 0 1\n110 10 0 0 0 0 0 1\n");
        EXPECT_EQ(
            run({"import", "--format", "tum", "--mount", "1=0,2,0,1,0,0,0", poses, file("a.trajectory")})
                .status,
            0);
        return file("a.trajectory");
    }
};

} // namespace

TEST_F(SampleCommandTest, PrintsThePosesAtGivenTimes)
{
    auto const times = write("times.txt", "# s\n105\n101.5\n\n100\n110\n");
    ToolRun const sample = run({"sample", "--trajectory", trajectory(), "--at", times, "--format", "csv"});
    EXPECT_EQ(sample.status, 0) << sample.err;
    EXPECT_EQ(sample.err, "");
    EXPECT_EQ(sample.out,
              "time,x,y,z,qw,qx,qy,qz\n105,5,0,0,1,0,0,0\n101.5,1.5,0,0,1,0,0,0\n100,0,0,0,1,0,0,0\n"
              "110,10,0,0,1,0,0,0\n");
}

TEST_F(SampleCommandTest, PrintsSoManyPosesPerSecondInTumFormat)
{
    ToolRun const sample = run({"sample", "--trajectory", trajectory(), "--rate", "0.25"});
    EXPECT_EQ(sample.status, 0) << sample.err;
    EXPECT_EQ(sample.out,
              "# time tx ty tz qx qy qz qw\n100 0 0 0 0 0 0 1\n104 4 0 0 0 0 0 1\n108 8 0 0 0 0 0 1\n");
    EXPECT_EQ(lineCount(run({"sample", "--trajectory", trajectory(), "--rate", "7000"}).out), 1 + 70'001);
}

TEST_F(SampleCommandTest, TakesDevices)
{
    ToolRun const sample =
        run({"sample", "--trajectory", trajectory(), "--rate", "0.1", "--from", "1", "--format", "csv"});
    EXPECT_EQ(sample.out, "time,x,y,z,qw,qx,qy,qz\n100,0,2,0,1,0,0,0\n110,10,2,0,1,0,0,0\n");
}

TEST_F(SampleCommandTest, TimesOutsideAreLeftOutAndCounted)
{
    auto const times = write("times.txt", "99\n105\n111\n");
    ToolRun const sample = run({"sample", "--trajectory", trajectory(), "--at", times, "--format", "csv"});
    EXPECT_EQ(sample.status, 0);
    EXPECT_EQ(sample.out, "time,x,y,z,qw,qx,qy,qz\n105,5,0,0,1,0,0,0\n");
    EXPECT_EQ(
        sample.err,
        "roamscan: times left out: 2 of 3 outside the trajectory, which is from 100.000 s to 110.000 s (do "
        "both use the same clock?)\n");
}

TEST_F(SampleCommandTest, TimesInGapsAreLeftOutAndCounted)
{
    std::string poses;
    for (char const* const time : {"100", "101", "102", "120", "121"}) {
        poses += std::string(time) + " 0 0 0 0 0 0 1\n";
    }
    ASSERT_EQ(run({"import", "--format", "tum", write("poses.txt", poses), file("a.trajectory")}).status, 0);
    auto const sample = [&](std::vector<std::string> const& more) {
        std::vector<std::string> words{
            "sample", "--trajectory", file("a.trajectory"), "--rate", "0.5", "--format", "csv"};
        words.insert(words.end(), more.begin(), more.end());
        return run(words);
    };
    ToolRun const usual = sample({});
    EXPECT_EQ(usual.status, 0);
    EXPECT_EQ(usual.out, "time,x,y,z,qw,qx,qy,qz\n100,0,0,0,1,0,0,0\n102,0,0,0,1,0,0,0\n120,0,0,0,1,0,0,0\n");
    EXPECT_EQ(
        usual.err,
        "roamscan: times left out: 8 of 11 in gaps of the trajectory longer than 10.000000 s (ten usual "
        "steps) (--max-gap sets the longest gap, --across-gaps interpolates them)\n");
    EXPECT_EQ(lineCount(sample({"--across-gaps"}).out), 12);
    EXPECT_EQ(sample({"--across-gaps"}).err, "");
    EXPECT_EQ(lineCount(sample({"--max-gap", "18"}).out), 12);
    EXPECT_THAT(sample({"--max-gap", "0.5"}).err, HasSubstr("longer than 0.500000 s ("));
}

TEST_F(SampleCommandTest, WithoutAnyPoseItFails)
{
    auto const outside = write("outside.txt", "99\n");
    ToolRun const none = run({"sample", "--trajectory", trajectory(), "--at", outside});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err,
              "roamscan: " + outside.string() +
                  ": there is a pose at none of its times: 1 of 1 outside the trajectory, which is from "
                  "100.000 s to "
                  "110.000 s (do both use the same clock?)\n");
    auto const empty = write("empty.txt", "");
    EXPECT_THAT(run({"sample", "--trajectory", trajectory(), "--at", empty}).err,
                HasSubstr("empty.txt: there is no time in it"));
}

TEST_F(SampleCommandTest, ReadsFromAPipe)
{
    ToolRun const atTimes =
        runInPipe({"sample", "--trajectory", trajectory(), "--at", "-", "--format", "csv"}, "105\n");
    EXPECT_THAT(atTimes.out, HasSubstr("105,5,0,0,"));
    (void)trajectory();
    ToolRun const fromPipe = runInPipe({"sample", "--trajectory", "-", "--rate", "1"}, read("a.trajectory"));
    EXPECT_EQ(fromPipe.status, 0) << fromPipe.err;
    EXPECT_EQ(lineCount(fromPipe.out), 12);
    EXPECT_EQ(run({"sample", "--trajectory", "-", "--at", "-"}).status, 1);
}

TEST_F(SampleCommandTest, WrongValuesAreRefused)
{
    for (std::vector<std::string> const& words : std::vector<std::vector<std::string>>{
             {"sample", "--trajectory", trajectory()},
             {"sample", "--rate", "1"},
             {"sample", "--trajectory", trajectory(), "--rate", "1", "--at", "x"},
             {"sample", "--trajectory", trajectory(), "--rate", "0"},
             {"sample", "--trajectory", trajectory(), "--rate", "nan"},
             {"sample", "--trajectory", trajectory(), "--rate", "1e300"},
             {"sample", "--trajectory", trajectory(), "--rate", "1e8"},
             {"sample", "--trajectory", trajectory(), "--rate", "1", "--from", "2"},
             {"sample", "--trajectory", trajectory(), "--rate", "1", "--from", "4"},
             {"sample", "--trajectory", trajectory(), "--at", file("none")},
             {"sample", "--trajectory", trajectory(), "--rate", "1", "--format", "ply"},
         })
    {
        ToolRun const wrong = run(words);
        EXPECT_EQ(wrong.status, 1) << wrong.out;
        EXPECT_EQ(lineCount(wrong.err), 1) << wrong.err;
    }
}

TEST_F(SampleCommandTest, PosesOfARealRecordingAreThoseOfTheTrajectory)
{
    auto const tum = support::sharedData("trajectories/fr2_desk_groundtruth.txt");
    if (!std::filesystem::exists(tum)) {
        GTEST_SKIP() << "missing: " << tum;
    }
    ASSERT_EQ(run({"import", "--format", "tum", tum, file("a.trajectory")}).status, 0);
    ToolRun const sample =
        run({"sample", "--trajectory", file("a.trajectory"), "--rate", "50", "--across-gaps"});
    ASSERT_EQ(sample.status, 0) << sample.err;
    std::istringstream text(sample.out);
    auto const poses = readPoses(PoseFormat::Tum, text, "sample").nodes;
    auto const reference =
        buildTrajectoryFromTrajectoryNodes(readTrajectoryFile(file("a.trajectory")).data->nodes);
    EXPECT_GT(poses.size(), 4000U);
    for (TrajectoryNode const& node : poses) {
        ASSERT_EQ(node.pose.translation(), reference.sample(node.time).translation());
    }
}
