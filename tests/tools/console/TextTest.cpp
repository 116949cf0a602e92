#include "tools/console/Text.h"

#include <gtest/gtest.h>

#include <string>

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;

TEST(Text, FixedKeepsTheDecimals)
{
    EXPECT_EQ(fixed(1.0, 4), "1.0000");
    EXPECT_EQ(fixed(-0.00349, 3), "-0.003");
    EXPECT_EQ(fixed(1403715524.907143, 6), "1403715524.907143");
    EXPECT_EQ(fixed(2.5, 0), "2");
}

TEST(Text, OneLineHasNoControlCharacters)
{
    EXPECT_EQ(oneLine("a\nb\tc\x1b[31m\x7f"), "a?b?c?[31m?");
    EXPECT_EQ(oneLine("größe"), "größe");
}

TEST(Text, PlainIsPrintableAscii)
{
    EXPECT_EQ(plain("aZ 09~\x7f\x1f\n"), "aZ 09~???");
    EXPECT_EQ(plain("\xc3\xb6\x9b\xff"), "????");
}

TEST(Text, ExcerptIsShortAndPlain)
{
    EXPECT_EQ(excerpt("1.5x"), "\"1.5x\"");
    EXPECT_EQ(excerpt(std::string(41, 'a')), "\"" + std::string(40, 'a') + "...\"");
    EXPECT_EQ(excerpt("\xff\x01"), "\"??\"");
}

TEST(Text, ListsReadAsASentence)
{
    EXPECT_EQ(listed({}), "none");
    EXPECT_EQ(listed({"a"}), "a");
    EXPECT_EQ(listed({"a", "b"}), "a and b");
    EXPECT_EQ(listed({"a", "b", "c"}), "a, b and c");
}

TEST(Text, CountsUseTheSingularForOne)
{
    EXPECT_EQ(counted(0, "node", "nodes"), "0 nodes");
    EXPECT_EQ(counted(1, "node", "nodes"), "1 node");
    EXPECT_EQ(counted(2, "node", "nodes"), "2 nodes");
}
