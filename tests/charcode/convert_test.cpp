#include "charcode/convert.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

std::string Text(const CBuffer& buffer)
{
    return std::string(buffer, static_cast<std::size_t>(buffer.GetLength()));
}

struct Converted {
    int result;
    std::string text;
    bool operator==(const Converted&) const = default;
};

Converted Convert(CodeType from, const std::string& text, CodeType to, int drop = 0)
{
    CBuffer out("left over");
    const int result =
        ConvertToOtherCodeType2(from, text.data(), static_cast<int>(text.size()), to, out, drop);
    return {result, Text(out)};
}

} // namespace

TEST(Convert, ReportsLossExactly)
{
    const std::string kana = "a\x82\xA0z";
    EXPECT_EQ(Convert(CT_SJIS, kana, CT_SJIS), (Converted{0, kana}));
    EXPECT_EQ(Convert(CT_SJIS, kana, CT_WIN1252), (Converted{1, "a?z"}));
    EXPECT_EQ(Convert(CT_SJIS, kana, CT_WIN1252, 1), (Converted{1, "az"}));
    EXPECT_EQ(Convert(CT_SJIS, "a\x82", CT_UTF8), (Converted{1, "a\xE3\x83\xBB"}));
    EXPECT_EQ(Convert(CT_JIS, "\x1B$B\x7E\x7E\x1B(B", CT_UTF8).result, 1);
    EXPECT_EQ(Convert(CT_UTF8, "caf\xC3\xA9", CT_JIS), (Converted{1, "caf?"}));
    // A zero character of the text is kept when others are dropped.
    EXPECT_EQ(Convert(CT_SJIS, std::string("\0\x82\xA0", 3), CT_WIN1252, 1),
              (Converted{1, std::string(1, '\0')}));
    // The Japanese types and ASCII share a page: nothing is looked at.
    EXPECT_EQ(Convert(CT_SJIS, "a\x82", CT_ASCII), (Converted{0, "a\x82"}));
}

// Bytes that are not of the code are passed on by the arithmetic, but told.
TEST(Convert, TellsInvalidJapaneseText)
{
    const struct {
        CodeType from;
        std::string text;
        int result;
    } cases[] = {
        {CT_JIS, "a\x1B$B\x2D\x21\x79\x21\r\n\x24\x22\x1B(I\x31\x1B(J\x0E\x31\x0F\x1B&@z", 0},
        {CT_JIS, "\x1BK\x24\x22\x1BH\x1B$@\x24\x22\x1B$(D\x24\x22\x1B(H", 0},
        {CT_JIS, "\x80\xFA\x40", 0}, // what the way from Shift_JIS leaves as it is
        {CT_JIS, "\xFA\x7F", 1},
        {CT_JIS, "\xFA", 1},
        {CT_JIS, "\x82\xA0", 1},
        {CT_JIS, "\x1B$B\x24\x22\x24", 1},
        {CT_JIS, "\x1B$B\x24 ", 1},
        {CT_JIS, "\x1B$B\x24\x22 \x22", 1},
        {CT_JIS, "\x1B(I\x60", 1},
        {CT_JIS, "\x1B$B\x24\x22\x1B$", 1},
        {CT_JIS, "a\x1B", 1},
        {CT_JIS, "\x1BX", 1},
        {CT_EUC, "a\xA4\xA2\x8E\xB1\x80\xFA\x40", 0},
        {CT_EUC, "\xA4z", 1},
        {CT_EUC, "\xA4", 1},
        {CT_EUC, "\x8E\x41", 1},
        {CT_EUC, "\x8F\xB0\xA1", 1}, // the supplementary set
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Convert(c.from, c.text, CT_UNICODE).result, c.result)
            << testing::PrintToString(c.text);
        EXPECT_EQ(Convert(c.from, c.text, CT_UTF8).result, c.result)
            << testing::PrintToString(c.text);
        EXPECT_EQ(Convert(c.from, c.text, CT_SJIS).result, 0);
    }
}

// Nothing would be left in Shift_JIS: the text goes to windows-1252.
TEST(Convert, FallsBackToWesternRatherThanToNothing)
{
    EXPECT_EQ(Convert(CT_UTF8, "\xC3\xA9", CT_SJIS, 1), (Converted{1, "\xE9"}));
    EXPECT_EQ(Convert(CT_UTF8, "\xC3\xA9", CT_SJIS, 0), (Converted{1, "?"}));
    EXPECT_EQ(Convert(CT_UTF8, "\xC3\xA9z", CT_SJIS, 1), (Converted{1, "z"}));
}

TEST(Convert, OddInput)
{
    EXPECT_EQ(Convert(CT_SJIS, "", CT_UTF8), (Converted{0, ""}));
    EXPECT_EQ(Convert(CT_UNICODE, "a", CT_UTF8), (Converted{0, ""}));
    EXPECT_EQ(Convert(CT_UNICODE, std::string("a\0b", 3), CT_UTF8), (Converted{0, "a"}));
    EXPECT_LT(Convert(CT_UNKNOWN, "a", CT_UTF8).result, 0);
    EXPECT_LT(Convert(CT_SJIS, "a", CT_UNKNOWN).result, 0);
    EXPECT_LT(Convert(CT_UNICODE, std::string("a\0", 2), CT_UNKNOWN).result, 0);
    EXPECT_EQ(Convert(CT_UNKNOWN, "a", CT_UNKNOWN), (Converted{0, "a"}));

    CBuffer out("left over");
    EXPECT_EQ(ConvertToOtherCodeType2(CT_SJIS, nullptr, 5, CT_UTF8, out, 0), 0);
    EXPECT_TRUE(out.IsEmpty());

    // UTF-16 at an odd address.
    const char unaligned[] = "_\x42\x30";
    EXPECT_EQ(ConvertToOtherCodeType2(CT_UNICODE, unaligned + 1, 2, CT_SJIS, out, 0), 0);
    EXPECT_EQ(Text(out), "\x82\xA0");

    try {
        ConvertToOtherCodeType2(CT_SJIS, "abc", INT_MAX, CT_UNICODE, out, 0);
        ADD_FAILURE();
    } catch (CMemoryException* e) {
        e->Delete();
    }
}

TEST(Convert, BetweenCodePages)
{
    const struct {
        UINT from;
        std::string text;
        UINT to;
        Converted expected;
    } cases[] = {
        {932, "\x82\xA0", 65001, {0, "\xE3\x81\x82"}},
        {50220, "\x1B$B\x24\x22\x1B(B", 932, {0, "\x82\xA0"}},
        {51932, "\xA4\xA2", 50220, {0, "\x1B$B\x24\x22\x1B(B"}},
        {65001, "\xE3\x81\x82", 51932, {0, "\xA4\xA2"}},
        {12345, "abc", 12345, {0, "abc"}},
        {1252, "\xE9", 932, {1, "?"}},
    };
    for (const auto& c : cases) {
        CBuffer out;
        const int result = ConvertToOtherCodePage2(c.from, c.text.data(),
                                                   static_cast<int>(c.text.size()), c.to, out, 0);
        EXPECT_EQ((Converted{result, Text(out)}), c.expected) << c.from << " to " << c.to;
    }
}

TEST(ConvertToWcs, ByTheCodePageOfTheType)
{
    CBuffer out;
    ConvertToWcs(CT_SJIS, "\x82\xA0", 2, out);
    EXPECT_EQ(Text(out), "\x42\x30");
    ConvertToWcs(CT_JIS, "\x82\xA0", 2, out); // held as Shift_JIS
    EXPECT_EQ(Text(out), "\x42\x30");
    ConvertToWcs(CT_UNICODE, "\x42\x30", 2, out);
    EXPECT_EQ(Text(out), "\x42\x30");
    const WCHAR kana[] = {0x3042, 0};
    EXPECT_EQ(ConvertToWcs(CT_UTF8, "\xE3\x81\x82", 3), CStringW(kana));
    EXPECT_TRUE(ConvertToWcs(CT_UTF8, nullptr, 3).IsEmpty());
}

TEST(ConvertToEditable, BringsReceivedTextIntoItsEditForm)
{
    CBuffer out;
    EXPECT_EQ(ConvertToEditable(CT_UNKNOWN, "a", 1, out), 0);
    EXPECT_EQ(ConvertToEditable(CT_EUC, "\xA4\xA2", 2, out), 1);
    EXPECT_EQ(Text(out), "\x82\xA0");
    EXPECT_EQ(ConvertToEditable(CT_KOI8R, "\xF6", 1, out), 1);
    EXPECT_EQ(Text(out), "\xC6");
    EXPECT_EQ(ConvertToEditable(CT_UTF8, "\xE3\x81\x82", 3, out), 1);
    EXPECT_EQ(Text(out), "\x42\x30");
}

TEST(ConvertToEditable, NarrowTextOfUnicodeIsKoreanOrShiftJis)
{
    const struct {
        CodeType t;
        std::string text;
        CodeType resultType;
        std::string result;
    } cases[] = {
        {CT_UTF8, "\xE3\x81\x82", CT_SJIS, "\x82\xA0"},
        {CT_UTF8, "\xEA\xB0\x80", CT_KSC5601, "\xB0\xA1"},
        {CT_UTF8, "z\xC3\xA9", CT_SJIS, "z?"},
        {CT_UTF8, "", CT_SJIS, ""},
        {CT_JIS, "\x1B$B\x24\x22\x1B(B", CT_JIS, "\x82\xA0"},
        {CT_ISO8859_1, "\xE9", CT_ISO8859_1, "\xE9"},
    };
    for (const auto& c : cases) {
        CodeType t = c.t;
        CStringA text = "left over";
        EXPECT_EQ(ConvertToEditableMbs(t, c.text.data(), static_cast<int>(c.text.size()), text, 0),
                  1);
        EXPECT_EQ(t, c.resultType);
        EXPECT_EQ(text, c.result.c_str());
    }
    CodeType unknown = CT_UNKNOWN;
    CStringA text = "left over";
    EXPECT_EQ(ConvertToEditableMbs(unknown, "abc", 3, text, 0), 0);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(ConvertToEditable, FromShiftJisAndFromUnicode)
{
    const CBuffer sjis("\x82\xA0");
    const CBuffer utf16("\x42\x30");
    CBuffer out;
    EXPECT_EQ(ConvertSjisToCTEditable(sjis, CT_UTF8, out, 0), 1);
    EXPECT_EQ(out, utf16);
    EXPECT_EQ(ConvertSjisToCTEditable(sjis, CT_JIS, out, 0), 1);
    EXPECT_EQ(out, sjis);
    EXPECT_EQ(ConvertSjisToCTEditable(sjis, CT_ISO8859_1, out, 0), 1);
    EXPECT_EQ(Text(out), "?");
    EXPECT_EQ(ConvertUnicodeToCTEditable(utf16, CT_UTF7, out, 0), 1);
    EXPECT_EQ(out, utf16);
    EXPECT_EQ(ConvertUnicodeToCTEditable(utf16, CT_EUC, out, 0), 1);
    EXPECT_EQ(out, sjis);
    EXPECT_EQ(ConvertUnicodeToCTEditable(utf16, CT_UNKNOWN, out, 0), 0);
}
