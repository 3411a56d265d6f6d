#include "framework/headless/headless.h"
#include "ui/accel_data.h"

#include <gtest/gtest.h>

TEST(AccelResource, IsLoadedByName)
{
    tlvn::headless::Reset();
    const ACCEL entries[] = {{FVIRTKEY | FCONTROL, 'N', 101}, {FVIRTKEY, VK_F5, 102}};
    tlvn::headless::AddAcceleratorResource(TW("MAINKEYS"), entries, 2);
    CAccelData table;
    table.LoadResourceAccelData("MAINKEYS");
    ASSERT_EQ(table.GetSize(), 2);
    EXPECT_EQ(table.GetCmdID(FCONTROL, 'N'), 101);
    table.LoadResourceAccelData("OTHER");
    EXPECT_EQ(table.GetSize(), 0);
    tlvn::headless::Reset();
}
