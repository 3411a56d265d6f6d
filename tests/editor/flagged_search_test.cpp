#include "editor/document.h"
#include "editor/flagged_search.h"
#include "tests/support/test.h"

// Rows: the header block counts; a later line; trail bytes that look like katakana; the other
// kind; none; a kind that is none; text not edited in Shift_JIS.
TEST(FlaggedSearch, FindsTheFirstFromTheTop)
{
    const struct {
        CodeType codeType;
        const char* text;
        int which, line, byte; // line -1: nothing found
    } cases[] = {
        {CT_SJIS, "Subject: \xB1\n\xB1", 1, 0, 9},
        {CT_JIS, "a\n\x82\xB1\nb\xB1\xB1\n\xB1", 1, 2, 1},
        {CT_SJIS, "\xB1\n\x87\x40", 2, 1, 0},
        {CT_SJIS, "\xB1\n\x82\xB1", 2, -1, 0},
        {CT_SJIS, "\x87\x40\n\xB1", 3, -1, 0},
        {CT_SJIS, "\x87\x40\n\xB1", 0, -1, 0},
        {CT_WIN1252, "\xB1\x87\x40", 1, -1, 0},
    };
    for (const auto& c : cases) {
        tlvn::Document document;
        CTextPos found(7, 7);
        EXPECT_EQ(tlvn::FindFlaggedChar(document, c.which, found), 0);
        const std::string text = c.text;
        document.Set(c.codeType, text.data(), static_cast<int>(text.size()));
        document.SetHeaderLineCount(1);
        const int expected = c.line < 0 ? 0 : 1;
        EXPECT_EQ(tlvn::FindFlaggedChar(document, c.which, found), expected) << &c - cases;
        EXPECT_TRUE(tlvn::IsSameL(found, expected != 0 ? CTextPos(c.line, c.byte) : CTextPos(7, 7)))
            << &c - cases;
    }
}
