#include <roamscan/frame/startup/LoadTimeObjects.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>

using oV::Roamscan::startup::roamText;
using oV::Roamscan::startup::scaleTable;

TEST(LoadTimeObjects, TheConstantStringIsRoam)
{
    EXPECT_EQ(roamText, Bv_1_1::String(L"ROAM"));
}

// The squares of x, y and z add up to the integer in each row.
TEST(LoadTimeObjects, TheScaleTableHasTheseEntries)
{
    EXPECT_EQ(scaleTable[0], 0.007936507936507936);    // (0, 0, 126): 15876
    EXPECT_EQ(scaleTable[126], 0.007936507936507936);  // (126, 0, 0)
    EXPECT_EQ(scaleTable[127], 0.00787377166440497);   // (0, 127, -1): 16130
    EXPECT_EQ(scaleTable[5418], 0.013746434980705375); // (42, 42, 42): 5292
    EXPECT_EQ(scaleTable[8128], 0.011134504398372281); // (63, 64, -1): 8066
    EXPECT_EQ(scaleTable.back(), 0.01122250348108084); // (0, 64, 62): 7940
}

TEST(LoadTimeObjects, TheScaleTableFollowsItsFormula)
{
    ASSERT_EQ(scaleTable.size(), 8192U);
    for (std::size_t i = 0; i < scaleTable.size(); ++i) {
        int const a = static_cast<int>(i & 0x7F);
        int const b = static_cast<int>(i >> 7);
        int const x = a + b < 127 ? a : 127 - a;
        int const y = a + b < 127 ? b : 127 - b;
        int const z = 126 - x - y;
        EXPECT_EQ(scaleTable[i], 1.0 / std::sqrt(static_cast<double>(x * x + y * y + z * z))) << i;
    }
}
