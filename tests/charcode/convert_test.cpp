#include "charcode/convert.h"
#include "tests/support/test.h"

namespace {

using Converted = std::pair<int, std::string>;

Converted Convert(CodeType from, const std::string& text, CodeType to, int drop = 0)
{
    CBuffer out("left over");
    const int result =
        ConvertToOtherCodeType2(from, text.data(), static_cast<int>(text.size()), to, out, drop);
    return {result, Text(out)};
}

} // namespace

// A zero character is kept when others are dropped. Types of one page copy without a look. When
// nothing would be left in Shift_JIS, the text goes to windows-1252.
TEST(Convert, ReportsLossExactly)
{
    const std::tuple<CodeType, std::string, CodeType, int, Converted> cases[] = {
        {CT_SJIS, "a\x82\xA0z", CT_WIN1252, 0, {1, "a?z"}},
        {CT_SJIS, "a\x82\xA0z", CT_WIN1252, 1, {1, "az"}},
        {CT_SJIS, {"\0\x82\xA0", 3}, CT_WIN1252, 1, {1, {"\0", 1}}},
        {CT_SJIS, "a\x82", CT_ASCII, 0, {0, "a\x82"}},
        {CT_UTF8, "\xC3\xA9", CT_SJIS, 1, {1, "\xE9"}},
        {CT_UTF8, "\xC3\xA9", CT_SJIS, 0, {1, "?"}},
        {CT_JIS, "\x1B$B\x7E\x7E\x1B(B", CT_UTF8, 0, {1, "\xE3\x83\xBB"}},
        {CT_UNICODE, {"a\0b", 3}, CT_UTF8, 0, {0, "a"}},
    };
    for (const auto& [from, text, to, drop, expected] : cases)
        EXPECT_EQ(Convert(from, text, to, drop), expected) << testing::PrintToString(text) << to;
}

// Bytes that are not of the code are passed on by the arithmetic, but told. EUC-JP has no
// supplementary set here; the first texts hold what the way from Shift_JIS leaves as it is.
TEST(Convert, TellsInvalidJapaneseText)
{
    const std::tuple<CodeType, int, std::vector<std::string>> cases[] = {
        {CT_JIS,
         0,
         {"\x80\xFA\x40", "\x1BK\x24\x22\x1BH\x1B$@\x24\x22\x1B$(D\x24\x22\x1B(H",
          "a\x1B$B\x2D\x21\x79\x21\r\n\x24\x22\x1B(I\x31\x1B(J\x0E\x31\x0F\x1B&@z"}},
        {CT_JIS,
         1,
         {"\xFA\x7F", "\xFA", "\x82\xA0", "\x1B$B\x24\x22\x24", "\x1B$B\x24 ",
          "\x1B$B\x24\x22 \x22", "\x1B(I\x60", "\x1B$B\x24\x22\x1B$", "a\x1B", "\x1BX"}},
        {CT_EUC, 0, {"a\xA4\xA2\x8E\xB1\x80\xFA\x40"}},
        {CT_EUC, 1, {"\xA4z", "\xA4", "\x8E\x41", "\x8F\xB0\xA1"}},
    };
    for (const auto& [from, result, texts] : cases) {
        for (const std::string& text : texts) {
            EXPECT_EQ(Convert(from, text, CT_UTF8).first, result) << testing::PrintToString(text);
            EXPECT_EQ(Convert(from, text, CT_SJIS).first, 0);
        }
    }
}

// EUC-JP and ISO-2022-JP are converted by arithmetic; a page unknown to the system copies to
// itself.
TEST(Convert, BetweenCodePages)
{
    const std::tuple<UINT, const char*, UINT, int, const char*> cases[] = {
        {51932, "\xA4\xA2", 50220, 0, "\x1B$B\x24\x22\x1B(B"},
        {12345, "abc", 12345, 0, "abc"},
        {1252, "\xE9", 932, 1, "?"},
    };
    for (const auto& [from, text, to, result, expected] : cases) {
        CBuffer out("left over");
        const int length = static_cast<int>(std::string(text).size());
        EXPECT_EQ(ConvertToOtherCodePage2(from, text, length, to, out, 0), result) << from;
        EXPECT_EQ(Text(out), expected);
    }
    CBuffer out("left over");
    const char unaligned[] = "_\x42\x30"; // UTF-16 at an odd address
    EXPECT_EQ(ConvertToOtherCodeType2(CT_UNICODE, unaligned + 1, 2, CT_SJIS, out, 0), 0);
    EXPECT_EQ(Text(out), "\x82\xA0");
    EXPECT_LT(ConvertToOtherCodeType2(CT_UNICODE, "a\0", 2, CT_UNKNOWN, out, 0), 0);
    EXPECT_THROW(ConvertToOtherCodeType2(CT_SJIS, "abc", INT_MAX, CT_UNICODE, out, 0),
                 CMemoryException*);
    EXPECT_EQ(ConvertToWcs(CT_JIS, "\x82\xA0", 2), CStringW(TW("\u3042"))); // held as Shift_JIS
    EXPECT_EQ(ConvertToWcs(CT_UNICODE, "\x42\x30", 2), CStringW(TW("\u3042")));
}

// Received text, and the narrow form of it: what is Unicode becomes Korean or Shift_JIS.
TEST(ConvertToEditable, BringsReceivedTextIntoItsEditForm)
{
    const std::tuple<CodeType, std::string, std::string, CodeType, const char*> cases[] = {
        {CT_KOI8R, "\xF6", "\xC6", CT_KOI8R, "\xC6"},
        {CT_UTF8, "\xE3\x81\x82", "\x42\x30", CT_SJIS, "\x82\xA0"},
        {CT_UTF8, "\xEA\xB0\x80", {"\0\xAC", 2}, CT_KSC5601, "\xB0\xA1"},
        {CT_UTF8, "z\xC3\xA9", {"z\0\xE9\0", 4}, CT_SJIS, "z?"},
        {CT_ISO8859_1, "\xE9", "\xE9", CT_ISO8859_1, "\xE9"},
    };
    for (const auto& [type, in, edited, narrowType, narrow] : cases) {
        const int length = static_cast<int>(in.size());
        CBuffer out("left over");
        EXPECT_EQ(ConvertToEditable(type, in.data(), length, out), 1);
        EXPECT_EQ(Text(out), edited);
        CodeType t = type;
        CStringA text = "left over";
        EXPECT_EQ(ConvertToEditableMbs(t, in.data(), length, text, 0), 1);
        EXPECT_EQ(t, narrowType);
        EXPECT_EQ(text, narrow);
    }
}

TEST(ConvertToEditable, FromShiftJisAndFromUnicode)
{
    const CBuffer sjis("\x82\xA0"), utf16("\x42\x30"), lost("?");
    CBuffer out;
    for (const auto& [t, expected] :
         {std::pair(CT_UTF8, utf16), {CT_JIS, sjis}, {CT_ISO8859_1, lost}}) {
        EXPECT_EQ(ConvertSjisToCTEditable(sjis, t, out, 0), 1);
        EXPECT_EQ(out, expected) << t;
        EXPECT_EQ(ConvertUnicodeToCTEditable(utf16, t, out, 0), 1);
        EXPECT_EQ(out, expected) << t;
    }
}
