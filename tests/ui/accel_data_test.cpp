#include "ui/accel_data.h"

#include "platform/nls.h"
#include "tests/support/test.h"

#include <array>

namespace {

CAccelData MakeTable(const std::vector<ACCEL>& entries)
{
    CAccelData table;
    table.SetSize(static_cast<int>(entries.size()));
    std::copy(entries.begin(), entries.end(), table.GetData());
    return table;
}

using Entry = std::array<int, 3>; // flags, key, command

std::vector<Entry> EntriesOf(const CAccelData& table)
{
    std::vector<Entry> entries;
    for (int i = 0; i < table.GetSize(); ++i) {
        const ACCEL& e = table.GetData()[i];
        entries.push_back({e.fVirt, e.key, e.cmd});
    }
    return entries;
}

std::string TextAt(const CAccelData& table, int index)
{
    char buffer[CAccelData::kTextSize];
    return table.GetAccelTextAt(index, buffer);
}

// The rows at both ends of each run of codes.
TEST(AccelData, NamesOfKeys)
{
    ASSERT_EQ(CAccelData::GetVkCount(), 87);
    const struct {
        int row, code;
        const char* name;
    } rows[] = {
        {0, 65, "A"},           {25, 90, "Z"},          {26, 48, "0"},
        {35, 57, "9"},          {47, 96, "0(Tenkey)"},  {56, 105, "9(Tenkey)"},
        {58, 107, "+(Tenkey)"}, {59, 109, "-(Tenkey)"}, {61, 111, "/(Tenkey)"},
        {62, 112, "F1"},        {73, 123, "F12"},       {74, 32, "Space"},
        {80, 40, "Down"},       {81, 37, "Left"},       {86, 19, "Pause"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CAccelData::GetVkCode(row.row), row.code) << row.row;
        EXPECT_STREQ(CAccelData::GetVkName(row.row), row.name) << row.row;
    }
    // Punctuation is named by the keyboard layout that there is, with at most four bytes.
    CAccelData::InitOemVkName();
    const int punctuation[] = {187, 188, 189, 190, 186, 191, 192, 219, 220, 221, 222};
    for (int i = 0; i < 11; ++i) {
        EXPECT_EQ(CAccelData::GetVkCode(36 + i), punctuation[i]);
        const UINT scan = ::MapVirtualKeyW(static_cast<UINT>(punctuation[i]), MAPVK_VK_TO_VSC);
        WCHAR wide[64] = {};
        ::GetKeyNameTextW(static_cast<LONG>(scan << 16), wide, 64);
        const std::string name = tlvn::NarrowText(wide).substr(0, 4);
        EXPECT_EQ(CAccelData::GetVkName(36 + i), name.empty() ? "    " : name);
    }
}

// Text -> flags and key -> text. Prefixes fold case, names do not.
TEST(AccelData, TextsOfEntries)
{
    const struct {
        const char* text;
        int flags, key;
        const char* back;
    } cases[] = {
        {"Ctrl+Shift+F5", 15, 116, "Ctrl+Shift+F5"},
        {"shift+ctrl+F5", 15, 116, "Ctrl+Shift+F5"},
        {"ALT+alt+Ctrl+Shift+PageDown", 31, 34, "Ctrl+Shift+Alt+PageDown"},
        {"+(Tenkey)", 3, 107, "+(Tenkey)"},
        {"Ctrl+f5", 11, 0, "Ctrl+"},
        {"Ctrl +A", 3, 0, ""},
        {"F13", 3, 0, ""},
        {"Ct", 3, 0, ""},
        {nullptr, 3, 0, ""},
    };
    for (const auto& c : cases) {
        CAccelData table = MakeTable({{0x80, 1, 77}});
        table.SetAccelTextAt(0, c.text);
        EXPECT_EQ(EntriesOf(table)[0], Entry({c.flags, c.key, 77})) << c.back;
        EXPECT_EQ(TextAt(table, 0), c.back);
    }
    // Every name leads back to its key; none but the first of equal names can.
    for (int row = 0; row < CAccelData::GetVkCount(); ++row) {
        CAccelData table = MakeTable({{7, static_cast<WORD>(CAccelData::GetVkCode(row)), 1}});
        const std::string text = TextAt(table, 0);
        EXPECT_EQ(text, std::string("Shift+") + CAccelData::GetVkName(row));
        table.SetAccelTextAt(0, text.c_str());
        EXPECT_EQ(TextAt(table, 0), text);
    }
}

TEST(AccelData, WhatIsNotThereStays)
{
    CAccelData table = MakeTable({{FVIRTKEY | FCONTROL | 0x80, 65, 7}});
    BYTE modifiers = 99;
    int key = 99;
    for (const int index : {-1, 1, INT_MAX, INT_MIN}) {
        table.GetKeyAt(index, &modifiers, &key);
        EXPECT_EQ(modifiers + key, 198);
        table.SetAccelTextAt(index, "A");
        EXPECT_EQ(TextAt(table, index), "");
        EXPECT_EQ(table.GetNextIndex(index, 7, 1), 0);
    }
    table.GetKeyAt(0, &modifiers, &key);
    EXPECT_EQ(modifiers, FCONTROL | 0x80) << "all flags but the two that every key has";
    const CAccelData copy(table);
    table.SetSize(-5);
    EXPECT_EQ(EntriesOf(copy).size(), 1u) << "a copy has entries of its own";
    table.SetCmdID(0, 65536 + 65, 1);
    table.SetCmdID(0, 65, 65536);
    table.SetCmdID(0, -1, 1);
    EXPECT_EQ(table.GetSize(), 0) << "what an entry cannot hold is not cut to fit";
}

// Key, command -> the commands of all entries: a key has one command, -1 is none, a slot that
// became free is taken first.
TEST(AccelData, BindsKeys)
{
    const struct {
        int modifiers, key, cmd;
        std::vector<int> expected;
    } steps[] = {
        {0, 65, 0, {}},
        {0, 65, -1, {}},
        {0, 65, 1, {1}},
        {FCONTROL, 65, 1, {1, 1}},
        {0, 66, 2, {1, 1, 2}},
        {0, 65, 3, {3, 1, 2}},
        {FCONTROL, 65, 0, {3, 0, 2}},
        {0, 66, -1, {3, 0, 2}},
        {FALT, 67, 4, {3, 4, 2}},
        {FALT, 68, 5, {3, 4, 2, 5}},
    };
    CAccelData table;
    for (const auto& step : steps) {
        table.SetCmdID(static_cast<BYTE>(step.modifiers), step.key, step.cmd);
        std::vector<int> commands;
        for (const Entry& entry : EntriesOf(table))
            commands.push_back(entry[2]);
        EXPECT_EQ(commands, step.expected) << &step - steps;
    }
    EXPECT_EQ(EntriesOf(table)[1], Entry({FALT | 3, 67, 4}));
}

// From an index, for a command, with or without going around -> the next index.
TEST(AccelData, FindsTheKeysOfACommand)
{
    const CAccelData table = MakeTable({{3, 65, 7}, {3, 66, 8}, {3, 67, 7}, {3, 68, 0}});
    const int cases[][4] = {{-1, 7, 0, 0}, {0, 7, 0, 2},  {2, 7, 0, -1},  {2, 7, 1, 0},
                            {1, 8, 1, 1},  {1, 8, 0, -1}, {-1, 9, 1, -1}, {3, 7, 1, 0}};
    for (const auto& c : cases)
        EXPECT_EQ(table.GetNextIndex(c[0], c[1], c[2]), c[3]) << c[0] << ", " << c[1];
    EXPECT_STREQ(table.GetKeyString(7, "|").GetString(), "A|C");
    EXPECT_STREQ(table.GetKeyString(9, "|").GetString(), "");
}

tlvn::WString ItemText(HMENU menu, UINT position)
{
    WCHAR text[100] = {};
    ::GetMenuStringW(menu, position, text, 100, MF_BYPOSITION);
    return text;
}

// Keys in place of older ones, none where there is no key; what no code page has stays.
TEST(AccelData, WritesKeysIntoMenus)
{
    CAccelData table =
        MakeTable({{11, 'C', 11}, {11, VK_INSERT, 11}, {7, VK_F2, 12}, {3, VK_F9, 0x8003}});
    CMenu inner;
    inner.CreatePopupMenu();
    inner.AppendMenu(MF_STRING | MF_GRAYED | MF_CHECKED, 12, TW("\u5F15\u7528\U0001F4E7\tF3\tx"));
    const HMENU innerMenu = inner.Detach();
    CMenu edit;
    edit.CreatePopupMenu();
    edit.AppendMenu(MF_STRING, 11, TW("&Copy"));
    edit.AppendMenu(MF_SEPARATOR);
    edit.AppendMenu(MF_STRING, 13, TW("Unbound\tCtrl+U"));
    edit.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(innerMenu), TW("More\tkept"));
    edit.AppendMenu(MF_STRING, 0x8003, TW("High"));
    edit.AppendMenu(MF_OWNERDRAW, 11, static_cast<LPCWSTR>(nullptr));
    const auto texts = [&] {
        tlvn::WString all = ItemText(innerMenu, 0);
        for (UINT item = 0; item < 6; ++item)
            all += TW("|") + ItemText(edit, item);
        return all;
    };
    for (int i = 0; i < 2; ++i) { // a second time changes nothing
        table.UpdateMenuString(&edit);
        EXPECT_EQ(texts(), TW("\u5F15\u7528\U0001F4E7\tShift+F2|&Copy\tCtrl+C, Ctrl+Insert||"
                              "Unbound|More\tkept|High\tF9|"));
    }
    EXPECT_EQ(::GetMenuState(innerMenu, 0, MF_BYPOSITION) & (MF_GRAYED | MF_CHECKED),
              MF_GRAYED | MF_CHECKED);
    table.UpdateMenuString(static_cast<CMenu*>(nullptr));
    table.UpdateMenuString(static_cast<CWnd*>(nullptr));

    // By the window; a child window has no menu, only a number where others have one.
    CWnd frame, child;
    ASSERT_TRUE(frame.CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr));
    child.Create(nullptr, "", WS_CHILD, CRect(0, 0, 9, 9), &frame, 5);
    table.UpdateMenuString(&child);
    CMenu bar;
    bar.CreateMenu();
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(edit.Detach()), TW("Edit"));
    frame.SetMenu(&bar);
    table.SetCmdID(FCONTROL, 'C', 0);
    table.UpdateMenuString(&frame);
    EXPECT_EQ(ItemText(::GetSubMenu(bar, 0), 0), TW("&Copy\tCtrl+Insert"));
    bar.Detach();
    frame.DestroyWindow();
}

} // namespace
