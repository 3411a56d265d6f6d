// Accelerator tables out of the resources of a program (window_test.rc).

#include "ui/accel_data.h"

#include <gtest/gtest.h>

TEST(AccelResource, IsLoadedByNameAndNumber)
{
    CAccelData table;
    table.LoadResourceAccelData("MAINKEYS");
    ASSERT_EQ(table.GetSize(), 3);
    EXPECT_EQ(table.GetCmdID(FCONTROL, 'N'), 101);
    EXPECT_EQ(table.GetCmdID(FCONTROL | FSHIFT, VK_F5), 102);
    char buffer[CAccelData::kTextSize];
    EXPECT_STREQ(table.GetAccelTextAt(2, buffer), "Alt+Back");

    table.LoadResourceAccelData(reinterpret_cast<const char*>(UINT_PTR{7}));
    ASSERT_EQ(table.GetSize(), 1);
    EXPECT_EQ(table.GetCmdID(0, VK_F1), 104);
    table.LoadResourceAccelData("OTHER");
    EXPECT_EQ(table.GetSize(), 0);
}
