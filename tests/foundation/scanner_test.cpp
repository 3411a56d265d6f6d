#include "TlvnMisc.h"
#include "tests/support/test.h"

namespace {

using Skipper = int (*)(const char*, int, int&);

} // namespace

// A double-byte character is stepped over as if it were blank by SkipSpace, and is none for
// SkipNotSpace; also where its trail byte is a white-space look-alike or is cut off.
TEST(Scanner, SkipsTellBlanksFromWords)
{
    const std::tuple<Skipper, const char*, int, int, int, int> cases[] = {
        {SkipSpace, "\x82\xA0 a", -1, 0, 1, 3},  {SkipSpace, "  a", 2, 0, 0, 2},
        {SkipSpace, "\x81\x40\x82", 3, 0, 1, 2}, {SkipSpace, "a", -1, 3, 0, 1},
        {SkipSpace, "a", -1, -1, 0, -1},         {SkipNotSpace, "a\x81\x40 b", -1, 0, 1, 3},
    };
    for (const auto& [skip, text, len, from, result, expected] : cases) {
        int pos = from;
        EXPECT_EQ(skip(text, len, pos), result) << (text ? text : "");
        EXPECT_EQ(pos, expected) << (text ? text : "");
    }
    int pos = 0;
    EXPECT_EQ(SkipSpace(TW("\u3000\u00A0\u3042"), -1, pos), 1);
    EXPECT_EQ(pos, 2);
    EXPECT_EQ(SkipNotSpace(TW("\u3042\u3000"), -1, pos = 0), 1);
    EXPECT_EQ(pos, 1);
}

TEST(Scanner, LinesBeginAndEnd)
{
    const char text[] = "a\r\nb";
    const int heads[] = {0, 1, 0, 1, 1, 0, 0}; // positions -1 to 5
    const int tails[] = {0, 0, 1, 1, 0, 1, 0};
    for (int pos = -1; pos <= 5; ++pos) {
        EXPECT_EQ(IsLineHead(text, 4, pos), heads[pos + 1]) << pos;
        EXPECT_EQ(IsLineTail(text, 4, pos), tails[pos + 1]) << pos;
        EXPECT_EQ(IsLineHead(TW("a\r\nb"), -1, pos), heads[pos + 1]) << pos;
        EXPECT_EQ(IsLineTail(TW("a\r\nb"), -1, pos), tails[pos + 1]) << pos;
    }
    EXPECT_EQ(IsLineHead("\n", 0, 1), 0);
}

TEST(Scanner, SetsAndCounts)
{
    EXPECT_EQ(ispbrk('\\', "\x95\x5C"), 1);
    EXPECT_EQ(istpbrk('\\', "\x95\x5C"), 0);
    EXPECT_EQ(ispbrk('\0', "a") + istpbrk('\0', "a") + iswpbrk(0, TW("a")), 0);

    EXPECT_EQ(CountMoji(nullptr, 4) + CountMoji(nullptr, 4, CT_UTF8), 0);
    EXPECT_EQ(CountMoji("a\x82\xA0", 3, CT_GB2312), 2);
    EXPECT_EQ(CountMoji(TW("abc"), 5, CT_UTF7), 2);

    CStringW wide(TW("abc"));
    EXPECT_EQ(TruncateEx(wide, 3), 0);
    EXPECT_EQ(TruncateEx(wide, 2), 1);
}

// The character 95 5C has a backslash for its trail byte. A closing quote stays when a backslash
// stands before it, escaped or not.
TEST(QuotedText, QuotesComeAndGo)
{
    const std::tuple<void (*)(CStringA&), const char*, const char*> cases[] = {
        {EnquoteText, "a\"\\\x95\x5C", "\"a\\\"\\\\\x95\x5C\""},
        {DequoteText, R"("a\"b")", R"(a"b)"},
        {DequoteText, R"(a\\b\c")", R"(a\b\c)"},
        {DequoteText, R"("a\")", R"(a")"},
        {DequoteText, R"("a\\")", R"(a\")"},
        {DequoteText, "\"", ""},
        {GetQuotedToken, R"(\a\\\"\)", R"(a\")"},
        {GetQuotedToken, "\x95\x5C\\\x95\x5C", "\x95\x5C\x95\x5C"},
    };
    for (const auto& [change, text, result] : cases) {
        CStringA s(text);
        change(s);
        EXPECT_STREQ(s, result) << text;
    }
    EXPECT_EQ(GetEnquotedLength(R"("a\"b"c)"), 6);
    EXPECT_EQ(GetEnquotedLength("\"\\\x95\x5C\"x"), 5);
    EXPECT_EQ(GetEnquotedLength(R"("a\")"), -1);
}

TEST(QuotedText, ParenthesesAreMatched)
{
    const std::tuple<const char*, const char*, const char*, int> cases[] = {
        {"a (b (c) d)", "c) d", "a (b ", 5},
        {")(x)(y)", "x", ")(y)", 1},
        {"((a)", "", "((a)", -1},
        {"()", "", "", 0},
    };
    for (const auto& [text, inside, outside, position] : cases) {
        CStringA inner("old"), rest(text);
        EXPECT_EQ(GetParenthesisToken(rest, inner, rest), position) << text;
        EXPECT_STREQ(inner, inside);
        EXPECT_STREQ(rest, outside);
    }

    const std::tuple<const char*, int, int, int, int> pairs[] = {
        {"(a(b)c)d", -1, 0, 0, 6}, {"(a(b)c)d", -1, 2, 0, 4}, {"(a(b)c)d", 6, 0, 0, -1},
        {"(\")\")", -1, 0, 0, 4},  {"(\")\")", -1, 0, 1, 2},  {"(\"(\" \")", -1, 0, 0, -1},
        {"()", -1, 2, 0, -1},      {"()", -1, -1, 0, -1},     {nullptr, 2, 0, 0, -1},
    };
    for (const auto& [text, len, open, noQuotes, result] : pairs)
        EXPECT_EQ(GetCorrespondParen(text, len, open, noQuotes), result) << len << open;
}

// Rows: quotes on and off; a backslash inside quotes and outside, in each escape mode; a quote
// behind an escaped backslash, which does not close all the same; 95 5C is no backslash, 83 7C
// no bar; what is unclosed, or outside the text.
TEST(QuotedText, DelimitersAreFoundOutsideQuotes)
{
    const std::tuple<const char*, int, char, int, int, int> cases[] = {
        {"\",\",", 0, ',', 1, 1, 3},        {R"("\",",)", 0, ',', 1, 1, 5},
        {R"("\",",)", 0, ',', 1, 0, 3},     {R"("a\\",)", 0, ',', 1, 1, -1},
        {R"("a\\",)", 0, ',', 1, 2, -1},    {R"(\",",")", 0, ',', 1, 1, 2},
        {"\"\x95\x5C\",", 0, ',', 1, 1, 4}, {"\"\\\x95\x5C\",", 0, ',', 1, 1, 5},
        {"\x83|a|", 0, '|', 1, 0, 3},       {"\"a\\", 0, ',', 1, 1, -1},
        {"\",\",", 0, ',', 0, 1, 1},        {"a,", -1, ',', 1, 0, -1},
        {nullptr, 0, ',', 1, 0, -1},
    };
    for (const auto& [text, start, delim, quotes, escapeMode, result] : cases)
        EXPECT_EQ(FindDelimiter(text, start, delim, quotes, escapeMode), result)
            << (text ? text : "") << " " << quotes << escapeMode;
}
