#include "tools/CommandLine.h"

#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <regex>
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

class CommandLineTest : public ToolFixture
{};

} // namespace

TEST_F(CommandLineTest, PrintsItsVersion)
{
    ToolRun const version = run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(std::regex_match(version.out, std::regex("roamscan \\d+\\.\\d+\\.\\d+\n"))) << version.out;
}

TEST_F(CommandLineTest, HelpHasAnExampleOfEveryCommand)
{
    ToolRun const help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    for (std::string const command : {"import", "simulate", "place", "still", "line", "info"}) {
        EXPECT_NE(help.out.find("  roamscan " + command + " "), std::string::npos) << help.out;
        ToolRun const one = run({command, "--help"});
        EXPECT_EQ(one.status, 0);
        EXPECT_NE(one.out.find("Example:\n  roamscan " + command + " "), std::string::npos) << one.out;
    }
}

TEST_F(CommandLineTest, AWrongCallIsOneLineAndStatusOne)
{
    for (std::vector<std::string> const& words : std::vector<std::vector<std::string>>{
             {},
             {"--nope"},
             {"fly"},
             {"info"},
             {"info", "--nope", "x"},
             {"import", "--format", "csv", "a", "b"},
             {"import", "a", "b"},
             {"place", "--trajectory", "a", "--from", "4", "--to", "0", "--points", "b"},
             {"place", "--trajectory", "a", "--from", "1", "--to", "0"},
             {"place", "--trajectory", "a", "--from", "1", "--to", "0", "--points", "b", "--sensors", "c"},
             {"place",
              "--trajectory",
              "a",
              "--from",
              "1",
              "--to",
              "0",
              "--points",
              "b",
              "--rangefinder",
              "c"},
             {"simulate", file("a"), "--seconds", "5", "--along", "b"},
             {"simulate", file("a"), "--seed", "-1"},
             {"line", "--trajectory", "a.trajectory", "--from", "1", "--to", "0"},
             {"line", "--trajectory", "a.trajectory", "--from", "1", "b.glb"},
             {"line", "--trajectory", "a.trajectory", "--from", "4", "--to", "0", "b.glb"},
             {"still"},
             {"still", "a.trajectory"},
             {"still", "--trajectory", "a.trajectory", "--speed", "walking"},
         })
    {
        ToolRun const wrong = run(words);
        EXPECT_EQ(wrong.status, 1);
        EXPECT_EQ(wrong.out, "");
        EXPECT_EQ(wrong.err.substr(0, 10), "roamscan: ");
        EXPECT_EQ(lineCount(wrong.err), 1) << wrong.err;
    }
}

TEST_F(CommandLineTest, AnUnknownWordIsNamedBeforeWhatIsMissing)
{
    auto const errorOf = [](std::vector<std::string> const& words) { return run(words).err; };
    EXPECT_EQ(errorOf({"imports"}),
              "roamscan: unknown command 'imports'; did you mean 'import'? (see roamscan --help)\n");
    EXPECT_EQ(errorOf({"imports", "--format", "tum", "a", "b"}), errorOf({"imports"}));
    EXPECT_EQ(errorOf({"fly"}), "roamscan: unknown command 'fly' (see roamscan --help)\n");
    EXPECT_EQ(errorOf({"--nope"}), "roamscan: unknown option '--nope' (see roamscan --help)\n");
    EXPECT_EQ(errorOf({"--versoin"}),
              "roamscan: unknown option '--versoin'; did you mean '--version'? (see roamscan --help)\n");
    std::string const place =
        "roamscan: unknown option '--form'; did you mean '--from'? (see roamscan place --help)\n";
    EXPECT_EQ(errorOf({"place", "--trajectory", "a", "--form", "1"}), place);
    EXPECT_EQ(errorOf({"place", "--form=1"}), place);
    EXPECT_EQ(errorOf({"place", "x", "--form", "-1"}), place);
    EXPECT_EQ(errorOf({"place", "--point", "x"}),
              "roamscan: unknown option '--point'; did you mean '--points'? (see roamscan place --help)\n");
    EXPECT_EQ(errorOf({"import", "--format", "tum", "a", "b", "c"}),
              "roamscan: unexpected argument 'c' (see roamscan import --help)\n");
    EXPECT_EQ(errorOf({"panorama", "joint", "a"}),
              "roamscan: unknown command 'joint'; did you mean 'join'? (see roamscan panorama --help)\n");
    EXPECT_EQ(errorOf({"panorama", "join", "--tile", "a"}),
              "roamscan: unknown option '--tile' (see roamscan panorama join --help)\n");
}

TEST_F(CommandLineTest, HelpIsPrintedDespiteAnUnknownWord)
{
    EXPECT_EQ(run({"import", "--nope", "--help"}).status, 0);
    EXPECT_EQ(run({"--help", "imports"}).status, 0);
}

TEST_F(CommandLineTest, FileNamesCannotBreakTheLine)
{
    ToolRun const info = run({"info", "no\nsuch\x1b[31mfile"});
    EXPECT_EQ(info.status, 1);
    EXPECT_EQ(info.err, "roamscan: no?such?[31mfile: there is no such file; check the name\n");
}

TEST_F(CommandLineTest, ResultsThatCannotBePrintedAreAFailure)
{
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    std::ostringstream err;
    std::vector<char const*> const arguments{"roamscan", "--version"};
    EXPECT_EQ(runTool(2, arguments.data(), out, err), 1);
    EXPECT_EQ(err.str(), "roamscan: the results could not be printed to standard output\n");
}
