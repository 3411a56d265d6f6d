#include "TlvnMisc.h"
#include "tests/support/test.h"

// Rows: the borders of each range, and look-alikes: a trail byte that would be a katakana, a lead
// byte whose trail byte lies outside, a code in no range.
TEST(FlaggedChar, RunsAreFoundAndMeasured)
{
    const struct {
        const char* text;
        int katakana, katakanaLen, machine, machineLen;
    } cases[] = {
        {nullptr, -1, 0, -1, 0},
        {"a\xA1\xDF z", 1, 2, -1, 0},
        {"\xA0\xE0", -1, 0, -1, 0},
        {"\x82\xB1\xB1", 2, 1, -1, 0},
        {"\x87\x3F\x86\xFC\x87\x40\x87\x9C\x87\x9D", -1, 0, 4, 4},
        {"\xEC\xFC\xED\x40\xEE\xFC\xEF\x40", -1, 0, 2, 4},
        {"\xF0\x40\xF9\xFC\xFA\x40\xFC\x4B\xFC\x4C", -1, 0, 0, 8},
        {"\x87\x7F\x87\x40", -1, 0, 2, 2},
        {"0123456789abcdef\xB1\xFA\x40", 16, 1, 17, 2},
    };
    for (const auto& c : cases) {
        const auto at = [&c](int pos) { return pos < 0 ? c.text : c.text + pos; };
        EXPECT_EQ(FindHankakuKatakana(c.text, -1), c.katakana) << &c - cases;
        EXPECT_EQ(FindMachineDependChar(c.text, -1), c.machine) << &c - cases;
        EXPECT_EQ(GetHankakuKatakanaLen(at(c.katakana), -1), c.katakanaLen) << &c - cases;
        EXPECT_EQ(GetMachineDependCharLen(at(c.machine), -1), c.machineLen) << &c - cases;
    }
    EXPECT_EQ(GetHankakuKatakanaLen("\xB1\xB2", 1), 1);
    EXPECT_EQ(GetMachineDependCharLen("\x87\x40", 1), 0);
}

// Shift_JIS whatever the multibyte code page: in 936, 81 B1 and B1 B2 are characters.
TEST(FlaggedChar, TheMultibytePageDoesNotMatter)
{
    CApplyLocale chinese(CT_GB2312);
    EXPECT_EQ(FindHankakuKatakana("\xB1\xB2", -1), 0);
    EXPECT_EQ(FindMachineDependChar("\xFD\x87\x40", -1), 1);
}
