#include "TlvnMisc.h"
#include "tests/support/scanner_model.h"
#include "tests/support/test.h"

// Rows: a match that would begin inside a character; a phrase whose zero ends the comparison but
// whose length still bounds it.
TEST(TextSearch, FindsFirstAndLast)
{
    const std::tuple<std::string, std::string, int, int> cases[] = {
        {"\x83\x5C\\", "\\", 2, 2},
        {{"a\0xa\0y", 6}, {"a\0z", 3}, 0, 3},
        {{"a\0", 2}, {"a\0z", 3}, -1, -1},
    };
    for (const auto& [text, find, first, last] : cases) {
        const int textLen = static_cast<int>(text.size()), findLen = static_cast<int>(find.size());
        const char *const p = text.data(), *const f = find.data();
        EXPECT_EQ(Offset(mbsnnstr(p, textLen, f, findLen, 0), p), first) << text;
        EXPECT_EQ(Offset(mbsrnnstr(p, textLen, f, findLen, 0), p), last) << text;
        EXPECT_EQ(Offset(txtnnstr(CT_SJIS, p, textLen, f, findLen, 0), p), first) << text;
    }
}

// Only the search that has both lengths to find itself, and minds case, finds an empty phrase.
TEST(TextSearch, NegativeLengthsEndAtTheZero)
{
    const char* const none = nullptr;
    const char text[] = "xbab";
    EXPECT_EQ(mbsnnstr(text, -1, "b", -1, 0), text + 1);
    EXPECT_EQ(mbsrnnstr(text, -1, "B", -1, 1), text + 3);
    EXPECT_EQ(mbsnnstr(text, -1, "", -1, 0), text);
    EXPECT_EQ(mbsnnstr(text, -1, "", -1, 1), none);
    EXPECT_EQ(mbsnnstr(text, 4, "", -1, 0), none);

    const WCHAR wide[] = TW("x\u00C9a\u00E9");
    EXPECT_EQ(wcsnnstr(wide, -1, TW("\u00E9"), -1, 1), wide + 1);
    EXPECT_EQ(wcsnnstr(wide, -1, TW(""), -1, 0), wide);
    const auto inCodeType = [&](const WCHAR* find, int findLen) {
        return Offset(txtnnstr(CT_UNICODE, wide, -1, find, findLen, 0), wide);
    };
    EXPECT_EQ(inCodeType(TW("a\u00E9"), -1), 4);
    EXPECT_EQ(inCodeType(TW("a\u00EA"), 3), 4); // the odd byte does not count
}

TEST(TextCompare, WildcardsMatch)
{
    const std::tuple<const char*, const char*, int> cases[] = {
        {"", "*", 0},        {"abxc", "a*?c", 1},    {"abc", "abc**", 1},
        {"\xC0", "\xE0", 1}, {"a\x83\x41", "*A", 0}, {nullptr, nullptr, 0},
    };
    for (const auto& [text, pattern, result] : cases)
        EXPECT_EQ(wildicmp(text, pattern), result) << (text == nullptr ? "" : text);

    // By recursion this takes more steps than the test has time, and more stack than there is.
    const std::string hostile(200000, 'a');
    EXPECT_EQ(wildicmp(hostile.c_str(), "a*a*a*a*a*a*a*a*a*a*b"), 1);
    EXPECT_EQ(wildicmp(hostile.c_str(), ("*" + hostile.substr(0, 1000) + "*a").c_str()), 0);
}

TEST(TextCompare, ComparesAndLooksUp)
{
    EXPECT_EQ(CompareText(nullptr, "", 0), 0);
    EXPECT_EQ(CompareText("\x82\x60", "\x82\x81", 1), 0);

    const std::tuple<const char*, const char*, int, int> cases[] = {
        {"a.TXT", ".txt", 1, 1}, {"a.TXT", ".txt", 0, 0},  {"ab", "cab", 0, 0},
        {"a", "", 0, 1},         {nullptr, nullptr, 0, 1}, {"\x95\x5C", "\\", 0, 0},
    };
    for (const auto& [text, tail, noCase, result] : cases)
        EXPECT_EQ(EndsWith(text, tail, noCase), result) << (tail ? tail : "");
    EXPECT_EQ(EndsWith(TW("x\u00C9"), TW("\u00E9"), 1), 1);

    CStringArray names;
    EXPECT_EQ(LookupStringArray(names, "a", 1), -1);
    CArray<CStringW> wideNames;
    for (const char* name : {"b", "A", "a", ""}) {
        names.Add(name);
        wideNames.Add(CStringW(name));
    }
    EXPECT_EQ(LookupStringArray(names, "a", 0), 2);
    EXPECT_EQ(LookupStringArray(names, "a", 1), 1);
    EXPECT_EQ(LookupStringArray(names, nullptr, 0), 3);
    EXPECT_EQ(LookupStringArray(wideNames, TW("a"), 0), 2);
}

// Rows: by value; blanks before digits do not count but those behind do; zeros in front do not;
// values above nine digits neither overflow nor are cut; the empty text.
TEST(TextCompare, NumbersCountByValue)
{
    const std::tuple<const char*, const char*, int> cases[] = {
        {"item  9", "item9", 0},
        {"9 ", "9", 1},
        {"a007b", "a7b", 0},
        {"1.10", "1.9", 1},
        {"", "0", -1},
        {"0", nullptr, 1},
        {"99999999999999999998", "99999999999999999999", -1},
    };
    for (const auto& [a, b, expected] : cases) {
        const int order = lstrcmp_num(a, CT_SJIS, b, CT_UTF8);
        EXPECT_EQ((order > 0) - (order < 0), expected) << (a ? a : "") << " " << (b ? b : "");
    }
}
