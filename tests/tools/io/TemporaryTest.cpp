#include "tools/io/Temporary.h"

#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan::tool;
using support::ToolFixture;
using Names = std::vector<std::string>;

class TemporaryTest : public ToolFixture
{};

volatile std::sig_atomic_t signalsHandled = 0;

} // namespace

TEST_F(TemporaryTest, RemovesWhatHasItsName)
{
    {
        Temporary const missing(file("missing"));
        Temporary const temporary(file("a"));
        write("a", "text");
        Temporary const tiles(file("tiles"), Temporary::Kind::Tiles, ".png");
        std::filesystem::create_directory(file("tiles"));
        write("tiles/0.png", "tile");
        Temporary const folder(file("folder"), Temporary::Kind::EmptyFolder);
        std::filesystem::create_directory(file("folder"));
        EXPECT_EQ(names(), (Names{"a", "folder", "tiles"}));
    }
    EXPECT_EQ(names(), Names{});
}

TEST_F(TemporaryTest, LeavesAFolderWithSomethingElseInIt)
{
    {
        Temporary const folder(file("folder"), Temporary::Kind::EmptyFolder);
        std::filesystem::create_directory(file("folder"));
        write("folder/a", "text");
    }
    EXPECT_EQ(read("folder/a"), "text");
}

TEST_F(TemporaryTest, LeavesWhatWasReleased)
{
    {
        Temporary temporary(file("a"));
        write("a", "text");
        temporary.release();
    }
    EXPECT_EQ(read("a"), "text");
}

TEST_F(TemporaryTest, MayEndInAnyOrder)
{
    auto first = std::make_unique<Temporary>(file("a"));
    auto second = std::make_unique<Temporary>(file("b"));
    auto third = std::make_unique<Temporary>(file("c"));
    for (std::string const name : {"a", "b", "c"}) {
        write(name, "text");
    }
    second.reset();
    EXPECT_EQ(names(), (Names{"a", "c"}));
    first.reset();
    EXPECT_EQ(names(), Names{"c"});
    third.reset();
    EXPECT_EQ(names(), Names{});
}

#if !defined(_WIN32)

TEST(SignalsHeldTest, ASignalTakesEffectAtTheEndOfTheOutermostScope)
{
    auto* const previous = std::signal(SIGTERM, [](int /*signal*/) { signalsHandled = signalsHandled + 1; });
    signalsHandled = 0;
    {
        SignalsHeld const held;
        {
            SignalsHeld const inner;
            std::raise(SIGTERM);
        }
        EXPECT_EQ(signalsHandled, 0);
    }
    EXPECT_EQ(signalsHandled, 1);
    std::signal(SIGTERM, previous);
}

#endif
