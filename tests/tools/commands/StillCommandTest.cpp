#include "tests/tools/support/ToolFixture.h"
#include "tools/io/RecordingFile.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <limits>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::lineCount;
using support::ToolFixture;
using support::ToolRun;

/// Eight poses a second, so that a window is a second: four poses before, and five from the time on. At 13.75
/// s the middle of the five is that of 14 s, at 20.375 s the two in the middle of the four are those from 20
/// s on.
class StillCommandTest : public ToolFixture
{
protected:
    /// At rest from 10 s to 14 s, a metre each eighth of a second to 20 s, at rest to 22 s.
    static TrajectoryData handMade()
    {
        TrajectoryData data;
        for (int i = 0; i <= 96; ++i) {
            int const metres = i <= 32 ? 0 : (i <= 80 ? i - 32 : 48);
            data.nodes.emplace_back(10.0 + 0.125 * i,
                                    TrafoT<double>::Translation({static_cast<double>(metres), 0, 0}));
        }
        return data;
    }

    [[nodiscard]] support::TestPath save(TrajectoryData const& data,
                                         std::string const& name = "a.trajectory") const
    {
        std::ofstream stream(file(name), std::ios::binary);
        writeTrajectory(data, stream, name);
        return file(name);
    }
};

} // namespace

TEST_F(StillCommandTest, PrintsATable)
{
    std::string const name = save(handMade());
    ToolRun const still = run({"still", "--trajectory", name});
    EXPECT_EQ(still.status, 0) << still.err;
    EXPECT_EQ(still.err, "");
    EXPECT_EQ(still.out,
              name + ": slower than 0.050 m/s and 3.000 degrees/s for 1.000 s or longer\n"
                     "           start (s)             end (s)    duration (s)\n"
                     "           10.000000           13.750000        3.750000\n"
                     "           20.375000           22.000000        1.625000\n"
                     "               total         2 stretches        5.375000\n"
                     "  12.000000 s of the recording were measured, with a window of 1.000 s\n");
}

TEST_F(StillCommandTest, PrintsJson)
{
    std::string const name = save(handMade());
    ToolRun const still = run(
        {"still", "--trajectory", name, "--min-seconds", "2", "--speed", "0.25", "--rate", "1.5", "--json"});
    EXPECT_EQ(still.status, 0) << still.err;
    EXPECT_EQ(nlohmann::ordered_json::parse(still.out).dump(),
              R"({"file":)" + support::quoted(name) +
                  R"(,"speed":0.25,"rate":1.5,"minSeconds":2.0,"window":1.0,"poses":97,"unusableNodes":0,)"
                  R"("gaps":0,"largestGap":0.0,"measured":12.0,)"
                  R"("stretches":[{"start":10.0,"end":13.75,"duration":3.75,)"
                  R"("startTicks":1000000000,"endTicks":1375000000}],"total":3.75})");
}

TEST_F(StillCommandTest, PrintsThatThereWasNoStop)
{
    std::string const name = save(handMade());
    ToolRun const still = run({"still", "--trajectory", name, "--min-seconds", "5"});
    EXPECT_EQ(still.status, 0) << still.err;
    EXPECT_NE(still.out.find("               total         0 stretches        0.000000\n"), std::string::npos)
        << still.out;
    ToolRun const json = run({"still", "--trajectory", name, "--min-seconds", "5", "--json"});
    EXPECT_EQ(nlohmann::json::parse(json.out).at("stretches"), nlohmann::json::array());
}

TEST_F(StillCommandTest, PrintsGapsAndUnusableNodes)
{
    TrajectoryData data = handMade();
    data.nodes.emplace_back(32.0);
    data.nodes.emplace_back(std::numeric_limits<double>::quiet_NaN());
    data.nodes.emplace_back(15.0625, TrafoT<double>::Invalid());
    ToolRun const still = run({"still", "--trajectory", save(data)});
    EXPECT_EQ(still.status, 0) << still.err;
    EXPECT_NE(still.out.find("               total         2 stretches        5.375000\n"
                             "  12.000000 s of the recording were measured, with a window of 1.000 s\n"
                             "  1 gap between poses, 10.000000 s at most, without any information\n"
                             "  2 nodes ignored: the time or the pose is not finite or out of range\n"),
              std::string::npos)
        << still.out;
}

TEST_F(StillCommandTest, PrintsThatOnePoseIsTooFew)
{
    TrajectoryData data;
    data.nodes.emplace_back(5.0);
    ToolRun const still = run({"still", "--trajectory", save(data)});
    EXPECT_EQ(still.status, 0) << still.err;
    EXPECT_NE(still.out.find(
                  "  nothing was measured: no 0.500 s of the recording are without a gap between poses\n"),
              std::string::npos)
        << still.out;
}

TEST_F(StillCommandTest, ATrajectoryWithoutPosesIsAFailure)
{
    std::string const empty = save({}, "empty.trajectory");
    ToolRun const still = run({"still", "--trajectory", empty});
    EXPECT_EQ(still.status, 1);
    EXPECT_EQ(still.out, "");
    EXPECT_EQ(still.err, "roamscan: " + empty + ": there is no usable pose with a time in it\n");
    TrajectoryData data;
    data.nodes.emplace_back(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(run({"still", "--trajectory", save(data)}).status, 1);
}

TEST_F(StillCommandTest, SettingsMustBeFiniteNumbersAboveZero)
{
    std::string const name = save(handMade());
    for (std::string const option : {"--speed", "--rate", "--min-seconds"}) {
        for (std::string const value : {"0", "-1", "nan", "inf", "1e999"}) {
            ToolRun const still = run({"still", "--trajectory", name, option, value});
            EXPECT_EQ(still.status, 1) << option << ' ' << value;
            EXPECT_EQ(still.out, "");
            EXPECT_EQ(lineCount(still.err), 1) << still.err;
            EXPECT_NE(still.err.find(option), std::string::npos) << still.err;
        }
        EXPECT_EQ(run({"still", "--trajectory", name, option, "x"}).status, 1);
    }
    EXPECT_EQ(run({"still", "--trajectory", name, "--speed", "0"}).err,
              "roamscan: --speed: must be a number above 0 (see roamscan still --help)\n");
}

TEST_F(StillCommandTest, AFileThatIsNoTrajectoryIsAFailure)
{
    ToolRun const still = run({"still", "--trajectory", write("a", "rubbish that is no stream")});
    EXPECT_EQ(still.status, 1);
    EXPECT_EQ(still.out, "");
    EXPECT_EQ(lineCount(still.err), 1) << still.err;
    EXPECT_EQ(run({"still", "--trajectory", file("none")}).status, 1);
}
