#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/KeyTable.h>

#include <gtest/gtest.h>

namespace
{

using Bv_1_1::String;
using oV::KeyTable;

constexpr unsigned int unknown = 0xFFFFFFFF;

} // namespace

TEST(KeyTable, LooksUpBothWays)
{
    KeyTable table;
    EXPECT_TRUE(table.addEntry(3, L"value"));
    EXPECT_TRUE(table.addEntry(0, L""));
    EXPECT_TRUE(table.addEntry(0xFFFFFFFE, L"a.b c"));
    EXPECT_EQ(table.keyToToken(L"value"), 3U);
    EXPECT_EQ(table.keyToToken(L""), 0U);
    EXPECT_EQ(table.keyToToken(L"a.b c"), 0xFFFFFFFEU);
    EXPECT_EQ(table.tokenToKey(3), String(L"value"));
    EXPECT_EQ(table.tokenToKey(0), String::EMPTY);
    EXPECT_EQ(table.tokenToKey(0xFFFFFFFE), String(L"a.b c"));
}

TEST(KeyTable, AnUnknownNameHasNoToken)
{
    KeyTable table;
    EXPECT_EQ(table.keyToToken(L"value"), unknown);
    table.addEntry(3, L"value");
    EXPECT_EQ(table.keyToToken(L"Value"), unknown);
    EXPECT_EQ(table.keyToToken(L"valu"), unknown);
    EXPECT_EQ(table.keyToToken(String::EMPTY), unknown);
    EXPECT_EQ(table.keyToToken(String::NIL), unknown);
}

TEST(KeyTable, NilHasNoTokenAlsoWhereTheEmptyNameHasOne)
{
    KeyTable table;
    table.addEntry(1, String::EMPTY);
    EXPECT_EQ(table.keyToToken(String::NIL), unknown);
}

TEST(KeyTable, AnUnknownTokenHasTheNullString)
{
    KeyTable table;
    table.addEntry(3, L"value");
    EXPECT_TRUE(table.tokenToKey(2).isNil());
    EXPECT_TRUE(table.tokenToKey(unknown).isNil());
}

TEST(KeyTable, AnEntryThatIsThereStays)
{
    KeyTable table;
    table.addEntry(3, L"value");
    EXPECT_FALSE(table.addEntry(3, L"other"));
    EXPECT_FALSE(table.addEntry(4, L"value"));
    EXPECT_FALSE(table.addEntry(3, L"value"));
    EXPECT_EQ(table.tokenToKey(3), String(L"value"));
    EXPECT_EQ(table.keyToToken(L"other"), unknown);
    EXPECT_TRUE(table.tokenToKey(4).isNil());
}

TEST(KeyTable, RefusesTheNullNameAndTheUnknownToken)
{
    KeyTable table;
    EXPECT_FALSE(table.addEntry(1, String::NIL));
    EXPECT_FALSE(table.addEntry(unknown, L"value"));
    EXPECT_TRUE(table.tokenToKey(1).isNil());
    EXPECT_EQ(table.keyToToken(L"value"), unknown);
}

TEST(KeyTable, KeepsNamesThatItsCallerForgets)
{
    KeyTable table;
    for (int i = 0; i < 1000; ++i) {
        String name(L"name ");
        name << i;
        ASSERT_TRUE(table.addEntry(static_cast<unsigned int>(i), name));
    }
    EXPECT_EQ(table.keyToToken(L"name 0"), 0U);
    EXPECT_EQ(table.keyToToken(L"name 999"), 999U);
    EXPECT_EQ(table.tokenToKey(500), String(L"name 500"));
}
