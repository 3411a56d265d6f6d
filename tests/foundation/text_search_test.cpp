#include "TlvnMisc.h"
#include "tests/support/scanner_model.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

TEST(Scanner, AgreesWithItsModelAtRandom)
{
    std::mt19937 random(20);
    std::vector<std::uint8_t> data;
    for (int i = 0; i < 10000; ++i) {
        data.resize(random() % 50);
        for (std::uint8_t& byte : data)
            byte = static_cast<std::uint8_t>(random());
        const char* const fault = CheckScanners(data.data(), data.size());
        ASSERT_EQ(fault, nullptr) << fault << ", round " << i;
    }
}

// Rows: overlapping matches; matches that would begin or end inside a character; case of
// full-width letters; a phrase whose zero ends the comparison but whose length still bounds it.
TEST(TextSearch, FindsFirstAndLast)
{
    const struct {
        std::string text, find;
        int noCase, first, last;
    } cases[] = {
        {"aaa", "aa", 0, 0, 1},
        {"\x83\x41"
         "A",
         "A", 0, 2, 2},
        {"\x82\x82\xA0", "\x82\xA0", 0, -1, -1},
        {"\x82\xA0", "\x82", 0, -1, -1},
        {"\x82", "\x82", 0, 0, 0},
        {"\x82\x60", "\x82\x81", 1, 0, 0},
        {"\x83\x41", "\x83\x61", 1, -1, -1},
        {std::string("a\0xa\0y", 6), std::string("a\0z", 3), 0, 0, 3},
        {std::string("a\0", 2), std::string("a\0z", 3), 0, -1, -1},
    };
    for (const auto& c : cases) {
        const int textLen = static_cast<int>(c.text.size());
        const int findLen = static_cast<int>(c.find.size());
        const char* const p = c.text.data();
        EXPECT_EQ(Offset(mbsnnstr(p, textLen, c.find.data(), findLen, c.noCase), p), c.first)
            << c.text;
        EXPECT_EQ(Offset(mbsrnnstr(p, textLen, c.find.data(), findLen, c.noCase), p), c.last)
            << c.text;
        EXPECT_EQ(Offset(txtnnstr(CT_SJIS, p, textLen, c.find.data(), findLen, c.noCase), p),
                  c.first)
            << c.text;
    }
}

// Only the search that has both lengths to find itself, and minds case, finds an empty phrase.
TEST(TextSearch, NegativeLengthsEndAtTheZero)
{
    const char* const none = nullptr;
    const char text[] = "xbab";
    EXPECT_EQ(mbsnnstr(text, -1, "b", -1, 0), text + 1);
    EXPECT_EQ(mbsnnstr(text, 3, "b?", 1, 0), text + 1);
    EXPECT_EQ(mbsrnnstr(text, -1, "B", -1, 1), text + 3);
    EXPECT_EQ(mbsrnnstr(text, 3, "b", -1, 0), text + 1);
    EXPECT_EQ(mbsnnstr(text, -1, "", -1, 0), text);
    EXPECT_EQ(mbsnnstr(text, -1, "", -1, 1), none);
    EXPECT_EQ(mbsnnstr(text, 4, "", -1, 0), none);
    EXPECT_EQ(mbsrnnstr(text, -1, "", -1, 0), none);
    EXPECT_EQ(mbsnnstr(nullptr, -1, "", -1, 0), none);
    EXPECT_EQ(mbsnnstr(text, -1, nullptr, 0, 0), none);

    const WCHAR wide[] = TW("x\u00C9a\u00E9");
    EXPECT_EQ(wcsnnstr(wide, -1, TW("\u00E9"), -1, 1), wide + 1);
    EXPECT_EQ(wcsrnnstr(wide, -1, TW("\u00C9"), 1, 0), wide + 1);
    EXPECT_EQ(wcsnnstr(wide, -1, TW(""), -1, 0), wide);
    const auto inCodeType = [&](const WCHAR* find, int findLen) {
        return Offset(txtnnstr(CT_UNICODE, wide, -1, find, findLen, 0), wide);
    };
    EXPECT_EQ(inCodeType(TW("a\u00E9"), -1), 4);
    EXPECT_EQ(inCodeType(TW("a\u00EA"), 3), 4); // the odd byte does not count
    EXPECT_EQ(inCodeType(TW("a"), 1), -1);
    EXPECT_EQ(inCodeType(TW(""), -1), 0);
}

// Every text of up to five and pattern of up to four of these letters: the evaluation without
// recursion against the rules as they are told.
TEST(TextCompare, WildcardsAgreeWithTheRecursiveRules)
{
    const auto words = [](const std::string& letters, std::size_t longest) {
        std::vector<std::string> all(1);
        for (std::size_t i = 0; i < all.size() && all[i].size() < longest; ++i) {
            for (const char c : letters)
                all.push_back(all[i] + c);
        }
        return all;
    };
    for (const std::string& text : words("aB*?", 5)) {
        for (const std::string& pattern : words("ab*?", 4)) {
            ASSERT_EQ(wildicmp(text.c_str(), pattern.c_str()),
                      WildcardModel(text.c_str(), pattern.c_str()))
                << text << " " << pattern;
        }
    }
}

TEST(TextCompare, WildcardsMatch)
{
    const struct {
        const char *text, *pattern;
        int result;
    } cases[] = {
        {"", "", 0},         {"", "*", 0},           {"", "**", 1},       {"", "?", 1},
        {"abc", "a*c", 0},   {"abc", "A?C", 0},      {"abxc", "a*?c", 1}, {"ab?c", "a*?c", 0},
        {"abc", "abc**", 1}, {"abc", "ab", 1},       {"abab", "a*b", 0},  {nullptr, nullptr, 0},
        {"\xC0", "\xE0", 1}, {"a\x83\x41", "*A", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(wildicmp(c.text, c.pattern), c.result) << (c.text == nullptr ? "" : c.text);

    // By recursion this takes more steps than the test has time, and more stack than there is.
    const std::string hostile(200000, 'a');
    EXPECT_EQ(wildicmp(hostile.c_str(), "a*a*a*a*a*a*a*a*a*a*b"), 1);
    EXPECT_EQ(wildicmp(hostile.c_str(), ("*" + hostile.substr(0, 1000) + "*a").c_str()), 0);
}

TEST(TextCompare, ComparesAndLooksUp)
{
    EXPECT_EQ(CompareText(nullptr, "", 0), 0);
    EXPECT_EQ(CompareText("\x82\x60", "\x82\x81", 1), 0);
    EXPECT_LT(CompareText("A", "a", 0), 0);

    const struct {
        const char *text, *tail;
        int noCase, result;
    } cases[] = {
        {"a.TXT", ".txt", 1, 1},  {"a.TXT", ".txt", 0, 0},  {"ab", "cab", 0, 0},
        {"a", "", 0, 1},          {nullptr, nullptr, 0, 1}, {nullptr, "a", 0, 0},
        {"\x95\x5C", "\\", 0, 0}, {"\x95\\\\", "\\", 0, 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(EndsWith(c.text, c.tail, c.noCase), c.result) << (c.tail ? c.tail : "");
    EXPECT_EQ(EndsWith(TW("x\u00C9"), TW("\u00E9"), 1), 1);
    EXPECT_EQ(EndsWith(TW("x\u00C9"), TW("\u00E9"), 0), 0);
    EXPECT_EQ(EndsWith(static_cast<const WCHAR*>(nullptr), TW("a"), 0), 0);

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
    EXPECT_EQ(LookupStringArray(names, "c", 1), -1);
    EXPECT_EQ(LookupStringArray(wideNames, TW("a"), 0), 2);
    EXPECT_EQ(LookupStringArray(wideNames, TW("B"), 1), 0);
}

// Rows: by value; blanks before digits do not count but those behind do; zeros in front do not;
// values above nine digits neither overflow nor are cut; the empty text.
TEST(TextCompare, NumbersCountByValue)
{
    const struct {
        const char *a, *b;
        int order;
    } cases[] = {
        {"item 9", "item 10", -1},
        {"item  9", "item9", 0},
        {"9 ", "9", 1},
        {"a007b", "a7b", 0},
        {"1.10", "1.9", 1},
        {"x0", "x", 1},
        {"99999999999999999998", "99999999999999999999", -1},
        {"4294967297", "1", 1},
        {"abc", "abd", -1},
        {"", "0", -1},
        {"0", nullptr, 1},
        {nullptr, "", 0},
    };
    for (const auto& c : cases) {
        const int order = lstrcmp_num(c.a, CT_SJIS, c.b, CT_UTF8);
        EXPECT_EQ((order > 0) - (order < 0), c.order)
            << (c.a ? c.a : "") << " " << (c.b ? c.b : "");
    }
}
