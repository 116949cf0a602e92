#include "tools/console/ClosestWord.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using oV::Roamscan::tool::closestWord;

std::vector<std::string> const words{"import", "info", "place", "panorama", "export"};

} // namespace

TEST(ClosestWord, FindsAWordWithALetterTooManyTooFewOrWrong)
{
    EXPECT_EQ(closestWord("imports", words), "import");
    EXPECT_EQ(closestWord("imort", words), "import");
    EXPECT_EQ(closestWord("exparts", words), "export");
    EXPECT_EQ(closestWord("plcae", words), "place");
    EXPECT_EQ(closestWord("panoramma", words), "panorama");
}

TEST(ClosestWord, TheNearestOneIsChosen)
{
    EXPECT_EQ(closestWord("eimport", words), "import");
    EXPECT_EQ(closestWord("exmport", words), "export");
}

TEST(ClosestWord, NothingIsCloseToAnotherWord)
{
    EXPECT_EQ(closestWord("fly", words), "");
    EXPECT_EQ(closestWord("", words), "");
    EXPECT_EQ(closestWord("imxxxt", words), "");
    EXPECT_EQ(closestWord("import", {}), "");
    EXPECT_EQ(closestWord(std::string(100'000, 'i'), words), "");
}
