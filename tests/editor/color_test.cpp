#include "editor/color.h"
#include "persist/setting_data.h"
#include "tests/support/test.h"

namespace {

constexpr COLORREF kDefault = 0xFFFFFFFF;

struct Slot {
    const char* key;
    COLORREF initial, monochrome;
};
// In the order in which settings have them.
const Slot kSlots[] = {{"Text", kDefault, 0},
                       {"Back", kDefault, 0xFFFFFF},
                       {"SelText", kDefault, 0xFFFFFF},
                       {"SelBack", kDefault, 0},
                       {"QuotedText0", 0x008000, 0},
                       {"QuotedText1", 0x004080, 0},
                       {"QuotedText2", 0x804000, 0},
                       {"QuotedText3", 0x800080, 0},
                       {"Symbol", 0x808000, 0},
                       {"URL", 0xFF0000, 0},
                       {"Katakana", 0x0000FF, 0},
                       {"MachineDepend", 0x0000FF, 0},
                       {"HeaderBack", 0xD0FFD0, 0xFFFFFF},
                       {"FindedText", 0xFFFFFF, 0xFFFFFF},
                       {"FindedBack", 0xFF00FF, 0},
                       {"LineMarkerText0", 0, 0xFFFFFF},
                       {"LineMarkerText1", 0, 0xFFFFFF},
                       {"LineMarkerText2", 0, 0xFFFFFF},
                       {"LineMarkerText3", 0, 0xFFFFFF},
                       {"LineMarkerText4", 0, 0xFFFFFF},
                       {"LineMarkerText5", 0, 0xFFFFFF},
                       {"LineMarkerBack0", 0x00FFFF, 0},
                       {"LineMarkerBack1", 0xFF00FF, 0},
                       {"LineMarkerBack2", 0xFFFF00, 0},
                       {"LineMarkerBack3", 0x4040FF, 0},
                       {"LineMarkerBack4", 0x40FF40, 0},
                       {"LineMarkerBack5", 0xFF4040, 0}};

// Checks what is written, and that it is read back into another object.
template <class Expected>
void ExpectWritten(const CEditorColor& colors, Expected expected)
{
    CSettingData settings;
    colors.SetEditorColor(&settings, "Editor");
    EXPECT_EQ(settings.GetPairList("Editor")->GetSize(), static_cast<int>(std::size(kSlots)));
    for (const Slot& slot : kSlots) {
        DWORD color = 1;
        EXPECT_EQ(settings.GetHexValue("Editor", slot.key, color), 1) << slot.key;
        EXPECT_EQ(color, expected(slot)) << slot.key;
    }
    CEditorColor read;
    read.SetUrlColor(~colors.GetUrlColor());
    read.GetEditorColor(&settings, "Editor");
    EXPECT_EQ(read, colors);
}

} // namespace

TEST(EditorColor, EverySlotHasItsKeyAndItsColours)
{
    CEditorColor colors;
    ExpectWritten(colors, [](const Slot& slot) { return slot.initial; });
    colors.SetMonochromeColor();
    ExpectWritten(colors, [](const Slot& slot) { return slot.monochrome; });

    colors.SetTextColor(0);
    colors.SetBackColor(1);
    colors.SetSelTextColor(2);
    colors.SetSelBackColor(3);
    for (int i = 0; i < 4; ++i)
        colors.SetQuotedTextColor(i, static_cast<COLORREF>(4 + i));
    colors.SetSymbolColor(8);
    colors.SetUrlColor(9);
    colors.SetKatakanaColor(10);
    colors.SetMacnDependColor(11);
    colors.SetHeaderBackColor(12);
    colors.SetFindedTextColor(13);
    colors.SetFindedBackColor(14);
    for (int i = 0; i < CEditorColor::GetLineMarkerKindCt(); ++i) {
        colors.SetLineMarkerTextColor(i, static_cast<COLORREF>(15 + i));
        colors.SetLineMarkerBackColor(i, static_cast<COLORREF>(21 + i));
    }
    ExpectWritten(colors, [](const Slot& slot) { return static_cast<COLORREF>(&slot - kSlots); });
}

// Outside the indexed slots there is a fixed colour and nothing to set; -1 is a default in them,
// the system's colour in four others, and itself in the rest.
TEST(EditorColor, IndexesAndDefaults)
{
    CEditorColor colors;
    for (const int i : {INT_MIN, -1, 6, INT_MAX}) {
        EXPECT_EQ(colors.GetQuotedTextColor(i), 0x808080U);
        EXPECT_EQ(colors.GetLineMarkerTextColor(i), 0U);
        EXPECT_EQ(colors.GetLineMarkerBackColor(i), 0x808080U);
        colors.SetQuotedTextColor(i, 1);
        colors.SetLineMarkerTextColor(i, 1);
        colors.SetLineMarkerBackColor(i, 1);
    }
    EXPECT_EQ(colors.GetQuotedTextColor(4), 0x808080U);
    EXPECT_EQ(colors, CEditorColor());
    EXPECT_EQ(colors.GetTextColor(), GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(colors.GetSelBackColor(), GetSysColor(COLOR_HIGHLIGHT));

    colors.SetMonochromeColor();
    colors.SetTextColor(kDefault);
    colors.SetUrlColor(kDefault);
    colors.SetQuotedTextColor(3, kDefault);
    EXPECT_EQ(colors.GetTextColorOrg(), kDefault);
    EXPECT_EQ(colors.GetUrlColor(), kDefault);
    EXPECT_EQ(colors.GetQuotedTextColor(3), 0x800080U);
}

// The settings of an older client; the new name wins, also with the value for the default.
TEST(EditorColor, MissingKeysGiveDefaults)
{
    CSettingData settings;
    settings.SetValue("S", "QuoteText", "FF0000");
    CEditorColor expected, colors;
    expected.SetQuotedTextColor(0, 0xFF0000);
    colors.SetMonochromeColor();
    colors.GetEditorColor(&settings, "S");
    EXPECT_EQ(colors, expected);
    settings.SetValue("S", "QuotedText0", "FFFFFFFF");
    colors.GetEditorColor(&settings, "S");
    EXPECT_EQ(colors, CEditorColor());
}
