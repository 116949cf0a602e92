#include "tools/io/OutputFile.h"

#include "tests/support/Links.h"
#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <sstream>
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
    if (!support::makeLink(file("real.txt"), file("link.txt"))) {
        GTEST_SKIP() << "no links can be made";
    }
    OutputFile output(file("link.txt"));
    output.stream() << "after";
    output.commit();
    EXPECT_TRUE(std::filesystem::is_symlink(file("link.txt")));
    EXPECT_EQ(read("real.txt"), "after");
}

TEST_F(OutputFileTest, KeepsTheModeOfThePreviousFile)
{
    namespace fs = std::filesystem;
    for (auto const wanted : {fs::perms(0600), fs::perms(0640), fs::perms(0755)}) {
        write("a.txt", "before");
        fs::permissions(file("a.txt"), wanted);
        fs::perms const mode = fs::status(file("a.txt")).permissions(); // Windows only knows "read-only"
        OutputFile output(file("a.txt"));
        output.stream() << "after";
        auto const temporary = names().at(1);                       // "a.txt.part-..."
        EXPECT_EQ(fs::status(file(temporary)).permissions(), mode); // also while it is written
        output.commit();
        EXPECT_EQ(read("a.txt"), "after");
        EXPECT_EQ(fs::status(file("a.txt")).permissions(), mode);
        fs::remove(file("a.txt"));
    }
}

TEST_F(OutputFileTest, AReadOnlyFileIsNotReplaced)
{
    write("a.txt", "before");
    std::filesystem::permissions(file("a.txt"), std::filesystem::perms(0444));
    EXPECT_EQ(failureOf([&] { OutputFile output(file("a.txt")); }),
              file("a.txt").string() +
                  ": is read-only and is not replaced; make it writable, or give another name");
    EXPECT_EQ(read("a.txt"), "before");
    EXPECT_EQ(names(), Names{"a.txt"});
    if (support::makeLink(file("a.txt"), file("link.txt"))) {
        EXPECT_NE(failureOf([&] { OutputFile output(file("link.txt")); }).find("is read-only"),
                  std::string::npos);
        EXPECT_EQ(read("a.txt"), "before");
        EXPECT_EQ(names(), (Names{"a.txt", "link.txt"}));
    }
    std::filesystem::permissions(file("a.txt"), std::filesystem::perms(0644)); // Windows removes no other
}

TEST_F(OutputFileTest, ADashIsTheStandardOutput)
{
    std::ostringstream written;
    {
        support::RedirectedStream const redirected(std::cout, written.rdbuf());
        OutputFile output("-");
        output.stream() << "text";
        output.commit();
    }
    EXPECT_EQ(written.str(), "text");
    EXPECT_FALSE(std::filesystem::exists("-"));
}

TEST_F(OutputFileTest, TheStandardOutputReceivesARepositionedStreamAtTheEnd)
{
    std::ostringstream written;
    {
        support::RedirectedStream const redirected(std::cout, written.rdbuf());
        OutputFile output("-", Writing::WithSeeking);
        output.stream() << "count 0\n" << std::string(3'000'000, 'x');
        output.stream().seekp(6);
        output.stream() << '1';
        EXPECT_EQ(written.str(), "");
        output.commit();
    }
    EXPECT_EQ(written.str(), "count 1\n" + std::string(3'000'000, 'x'));
}

TEST_F(OutputFileTest, AFailureOfTheStandardOutputIsReported)
{
    support::RedirectedStream const redirected(std::cout, nullptr); // every write fails
    OutputFile output("-");
    output.stream() << "text";
    EXPECT_NE(failureOf([&] { output.commit(); }).find("-: could not be written to the end"),
              std::string::npos);
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
    if (support::makeLink(file("a.txt"), file("link.txt"))) {
        EXPECT_NE(failureOf([&] { requireDistinctFiles({file("a.txt"), file("link.txt")}); }), "");
    }
}
