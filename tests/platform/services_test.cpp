// Character properties, collation, date texts and the string table.

#include "platform/clock.h"
#include "platform/multibyte.h"
#include "platform/nls.h"
#include "platform/string_table.h"

#include <gtest/gtest.h>

namespace tlvn {
namespace {

TEST(Services, WhiteSpaceIsThatOfTheTable)
{
    const WString expected =
        TW("\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008"
           "\u2009\u200A\u2028\u2029\u202F\u205F\u3000");
    WString found;
    for (unsigned c = 0; c < 0x10000; c++)
        if (IsSpaceW(static_cast<WCHAR>(c)))
            found += static_cast<WCHAR>(c);
    EXPECT_EQ(found, expected);
}

// Letters of several scripts. What does not lead back to itself stays as it is: Kelvin sign,
// long s, dotless i, micro sign, sharp s.
TEST(Services, CaseOfOneUnit)
{
    const struct {
        WCHAR upper, lower;
    } pairs[] = {{TW('A'), TW('a')},           {TW('Z'), TW('z')},
                 {TW('\u00C0'), TW('\u00E0')}, {TW('\u0391'), TW('\u03B1')},
                 {TW('\u042F'), TW('\u044F')}, {TW('\uFF21'), TW('\uFF41')}};
    for (const auto& p : pairs) {
        EXPECT_EQ(ToLowerW(p.upper), p.lower);
        EXPECT_EQ(ToUpperW(p.lower), p.upper);
    }
    for (const WCHAR c : TW("[@`{\u212A\u017F\u0131\u00B5\u00DF\u3042\u4E00\uFF71")) {
        EXPECT_EQ(ToLowerW(c), c);
        EXPECT_EQ(ToUpperW(c), c);
    }
}

TEST(Services, DefinedCharacters)
{
    for (const WCHAR c : TW(" A~\u00E9\u3042\u4E9C\uFF71\u2460\u20AC\uE000"))
        EXPECT_TRUE(IsDefinedCharacter(c)) << static_cast<unsigned>(c);
    for (const WCHAR c : {TW('\u0378'), TW('\u2E9A'), TW('\uFFFE')})
        EXPECT_FALSE(IsDefinedCharacter(c)) << static_cast<unsigned>(c);
}

// Collation is not the order of codes: a lower-case letter comes before the next upper-case one.
TEST(Services, CollatesLikeADictionary)
{
    EXPECT_EQ(CollateTexts("abc", "abc"), 0);
    EXPECT_LT(CollateTexts("a", "B"), 0);
    EXPECT_GT(CollateTexts("b", "A"), 0);
    EXPECT_LT(CollateTexts("", "a"), 0);
}

// Fails when keys are compared as signed bytes, or made without the locale's order.
TEST(Services, CollationKeysCompareAsTheTextsDo)
{
    const WStringView texts[] = {TW(""),       TW("a"),      TW("A"),
                                 TW("B"),      TW("\u3042"), TW("\u30A2"),
                                 TW("\u6F22"), TW("10"),     TW("\u3042\u6F22"),
                                 TW("\uFF42"), TW("-")};
    const auto sign = [](int n) { return (n > 0) - (n < 0); };
    for (const WStringView a : texts) {
        for (const WStringView b : texts) {
            std::string keyA, keyB;
            MakeCollationKey(a, keyA);
            MakeCollationKey(b, keyB);
            EXPECT_EQ(sign(keyA.compare(keyB)),
                      sign(CollateTexts(NarrowText(a).c_str(), NarrowText(b).c_str())))
                << NarrowText(a) << ' ' << NarrowText(b);
        }
    }
}

// One directive in each row; the last fails when quoted letters are formatted.
TEST(Services, DatePictures)
{
    std::tm fields{};
    fields.tm_year = 105;
    fields.tm_mon = 1;
    fields.tm_mday = 3;
    fields.tm_hour = 4;
    fields.tm_min = 5;
    fields.tm_sec = 6;
    fields.tm_isdst = -1;
    const INT64 time = FromLocalTime(fields);
    const struct {
        const WCHAR* picture;
        const WCHAR* expected;
    } dates[] = {
        {TW("yyyy/MM/dd"), TW("2005/02/03")}, {TW("d.M.yy"), TW("3.2.05")}, {TW("dd"), TW("03")},
        {TW("yyyy-MM"), TW("2005-02")},       {TW("'d''M'd"), TW("d'M3")},
    };
    const struct {
        const WCHAR* picture;
        const WCHAR* expected;
    } times[] = {
        {TW("HH:mm:ss"), TW("04:05:06")},
        {TW("H:m:s"), TW("4:5:6")},
        {TW("hh'h'mm"), TW("04h05")},
    };
    for (const auto& d : dates) {
        WString text;
        EXPECT_TRUE(FormatLocalDate(time, d.picture, text));
        EXPECT_EQ(text, d.expected);
    }
    for (const auto& t : times) {
        WString text;
        EXPECT_TRUE(FormatLocalTime(time, t.picture, text));
        EXPECT_EQ(text, t.expected);
    }
    WString text;
    EXPECT_TRUE(FormatLocalDate(time, nullptr, text));
    EXPECT_NE(text.find(TW('3')), WString::npos);
    EXPECT_TRUE(FormatLocalTime(time, nullptr, text));
    EXPECT_NE(text.find(TW('5')), WString::npos);
    EXPECT_FALSE(FormatLocalDate(INT64_MAX, nullptr, text));
}

TEST(Services, MessagesByNumber)
{
    EXPECT_EQ(FindMessage(112), TW("%s \u304C\u898B\u3064\u304B\u308A\u307E\u305B\u3093\u3002"));
    EXPECT_FALSE(FindMessage(3100).empty());
    EXPECT_TRUE(FindMessage(0).empty());
    EXPECT_TRUE(FindMessage(65535).empty());
}

} // namespace
} // namespace tlvn
