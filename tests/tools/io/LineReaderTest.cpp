#include "tools/io/LineReader.h"

#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::failureOf;
using support::ToolFixture;

std::vector<std::string> linesOf(std::string const& text)
{
    std::istringstream stream(text);
    LineReader reader(stream, "text");
    std::vector<std::string> lines;
    std::string_view line;
    while (reader.next(line)) {
        lines.emplace_back(line);
        EXPECT_EQ(reader.number(), lines.size());
    }
    EXPECT_FALSE(reader.next(line));
    return lines;
}

using Lines = std::vector<std::string>;

} // namespace

TEST(LineReader, LinesEndWithLfOrCrLf)
{
    EXPECT_EQ(linesOf("a\nb\r\n\nc\n"), (Lines{"a", "b", "", "c"}));
}

TEST(LineReader, TheLastLineMayLackItsEnd)
{
    EXPECT_EQ(linesOf("a\nb"), (Lines{"a", "b"}));
    EXPECT_EQ(linesOf("a\nb\r"), (Lines{"a", "b"}));
    EXPECT_EQ(linesOf(""), Lines{});
    EXPECT_EQ(linesOf("\n"), Lines{""});
}

TEST(LineReader, AByteOrderMarkIsSkippedAtTheStartOnly)
{
    EXPECT_EQ(linesOf("\xEF\xBB\xBF"
                      "1\n\xEF\xBB\xBF"
                      "2\n"),
              (Lines{"1",
                     "\xEF\xBB\xBF"
                     "2"}));
}

TEST(LineReader, ZeroBytesBelongToTheLine)
{
    EXPECT_EQ(linesOf(std::string("a\0b\n", 4)), Lines{std::string("a\0b", 3)});
}

TEST(LineReader, TheLongestLineFitsAndNoLonger)
{
    std::string const longest(LineReader::longestLine, 'x');
    EXPECT_EQ(linesOf(longest), Lines{longest});
    EXPECT_EQ(linesOf("a\n" + longest + "\r\nb\n"), (Lines{"a", longest, "b"}));
    for (std::size_t const more : {1U, 2U, 3U, 4U, 1000U}) {
        std::string const tooLong = "a\n" + longest + std::string(more, 'x');
        EXPECT_EQ(failureOf([&] { static_cast<void>(linesOf(tooLong)); }).substr(0, 22),
                  "text:2: the line is lo")
            << more;
        EXPECT_EQ(failureOf([&] { static_cast<void>(linesOf(tooLong + "\n")); }).substr(0, 22),
                  "text:2: the line is lo")
            << more;
    }
}
