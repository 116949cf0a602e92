#include "tests/support/FailingAllocation.h"

#include <roamscan/frame/formats/KeyTable.h>

#include <gtest/gtest.h>

TEST(OutOfMemory, AnEntryThatCannotBeAddedLeavesTheKeyTable)
{
    Bv_1_1::String const name(L"value");
    long allocations = 0;
    for (bool isAdded = false; !isAdded; ++allocations) {
        oV::KeyTable table;
        isAdded = !support::runsOutOfMemory(allocations, [&] { table.addEntry(3, name); });
        if (!isAdded) {
            EXPECT_TRUE(table.tokenToKey(3).isNil()) << allocations;
            EXPECT_EQ(table.keyToToken(name), oV::KeyTable::unknownToken) << allocations;
            EXPECT_TRUE(table.addEntry(3, name)) << allocations;
        }
        EXPECT_EQ(table.keyToToken(name), 3U) << allocations;
    }
    EXPECT_GT(allocations, 2); // one for each direction at least
}
