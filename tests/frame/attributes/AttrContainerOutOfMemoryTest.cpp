#include "tests/support/Attributes.h"
#include "tests/support/FailingAllocation.h"

#include <gtest/gtest.h>

namespace
{

using namespace support::attributes;

} // namespace

TEST(OutOfMemory, AnAttributeThatCannotBeAddedLeavesTheContainer)
{
    String const name(L"speed");
    long allocations = 0;
    for (bool isAdded = false; !isAdded; ++allocations) {
        auto const container = initialisedContainer();
        auto* const attribute = new CustAttr<int>(CreateType::Fresh, nullptr);
        isAdded = !support::runsOutOfMemory(allocations, [&] { container->addAttribute(attribute, name); });
        if (!isAdded) {
            EXPECT_EQ(container->getNumAttributes(), 1U) << allocations;
            EXPECT_EQ(container->getAttrToken(name), AttrContainer::unknownToken) << allocations;
            add(*container, name, 5);
            EXPECT_EQ(valueOf<int>(*container, name), 5) << allocations;
        }
        EXPECT_EQ(container->getNumAttributes(), 2U) << allocations;
    }
    EXPECT_GT(allocations, 2); // one for the list and one for the index at least
}
