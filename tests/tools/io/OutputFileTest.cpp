#include "tools/io/OutputFile.h"

#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::failureOf;
using support::ToolFixture;
using Names = std::vector<std::string>;

class OutputFileTest : public ToolFixture
{};

} // namespace

TEST_F(OutputFileTest, AppearsOnlyWhenItIsComplete)
{
    OutputFile output(file("a.txt"));
    output.stream() << "text";
    EXPECT_FALSE(std::filesystem::exists(file("a.txt")));
    output.commit();
    EXPECT_EQ(read("a.txt"), "text");
    EXPECT_EQ(names(), Names{"a.txt"});
}

TEST_F(OutputFileTest, LeavesNothingWithoutCommit)
{
    {
        OutputFile output(file("a.txt"));
        output.stream() << "text";
        EXPECT_EQ(names().size(), 1U);
    }
    EXPECT_EQ(names(), Names{});
}

TEST_F(OutputFileTest, KeepsThePreviousFileWithoutCommit)
{
    write("a.txt", "before");
    {
        OutputFile output(file("a.txt"));
        output.stream() << "half";
    }
    EXPECT_EQ(read("a.txt"), "before");
    {
        OutputFile output(file("a.txt"));
        output.stream() << "after";
        output.commit();
    }
    EXPECT_EQ(read("a.txt"), "after");
    EXPECT_EQ(names(), Names{"a.txt"});
}

TEST_F(OutputFileTest, AFailureOfTheStreamIsReported)
{
    OutputFile output(file("a.txt"));
    output.stream().setstate(std::ios::badbit);
    EXPECT_NE(failureOf([&] { output.commit(); }).find("a.txt: could not be written"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(file("a.txt")));
}

TEST_F(OutputFileTest, WritesThroughALink)
{
    write("real.txt", "before");
    std::filesystem::create_symlink(file("real.txt"), file("link.txt"));
    OutputFile output(file("link.txt"));
    output.stream() << "after";
    output.commit();
    EXPECT_TRUE(std::filesystem::is_symlink(file("link.txt")));
    EXPECT_EQ(read("real.txt"), "after");
}

TEST_F(OutputFileTest, RefusesATargetThatIsNotARegularFile)
{
    EXPECT_NE(failureOf([&] { OutputFile output(file(".")); }).find("is a folder"), std::string::npos);
    EXPECT_NE(failureOf([&] { OutputFile output(file("no/such/a.txt")); }).find("cannot be created"),
              std::string::npos);
    if (std::filesystem::exists("/dev/null")) {
        EXPECT_EQ(failureOf([] { OutputFile output("/dev/null"); }),
                  "/dev/null: is not a regular file; name a file");
    }
}

TEST_F(OutputFileTest, TwoNamesOfTheSameFileAreRefused)
{
    write("a.txt", "");
    EXPECT_EQ(failureOf([&] { requireDistinctFiles({file("a.txt"), file("b.txt"), "", ""}); }), "");
    EXPECT_NE(failureOf([&] { requireDistinctFiles({file("a.txt"), file("./a.txt")}); }), "");
    EXPECT_NE(failureOf([&] { requireDistinctFiles({file("new.txt"), file("x/../new.txt")}); }), "");
    std::filesystem::create_symlink(file("a.txt"), file("link.txt"));
    EXPECT_NE(failureOf([&] { requireDistinctFiles({file("a.txt"), file("link.txt")}); }), "");
}
