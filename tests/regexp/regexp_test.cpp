#include "TlvnMisc.h"
#include "persist/regexp/listing.h"
#include "persist/regexp/machine.h"
#include "platform/nls.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const char* Bytes(const tlvn::WString& text)
{
    return reinterpret_cast<const char*>(text.c_str());
}

// "start,end" in units, "" for no match, or "error: " and the number of the message from 3300 on.
template <typename String>
std::string Match(const String& pattern, const String& text, CodeType codeType, int caseSensitive)
{
    const auto chars = [](const String& s) { return reinterpret_cast<const char*>(s.c_str()); };
    CRegExp regexp;
    CString message, known;
    if (regexp.ParseRegExp(chars(pattern), codeType, caseSensitive, message) == 0) {
        for (UINT id = 3300; id < 3312; ++id)
            if (known.LoadString(id) != 0 && known == message)
                return "error: " + std::to_string(id - 3300);
        return "error: unknown message";
    }
    const char *start = nullptr, *end = nullptr;
    if (regexp.Match(chars(text), codeType, &start, &end) == 0)
        return "";
    const auto unit = static_cast<std::ptrdiff_t>(sizeof text[0]);
    return std::to_string((start - chars(text)) / unit) + "," +
           std::to_string((end - chars(text)) / unit);
}

std::string MatchNarrow(const std::string& pattern, const std::string& text, int caseSensitive = 1)
{
    return Match(pattern, text, CT_SJIS, caseSensitive);
}

std::string MatchWide(const std::string& pattern, const std::string& text, int caseSensitive = 1)
{
    return Match(tlvn::WidenText(pattern), tlvn::WidenText(text), CT_UNICODE, caseSensitive);
}

constexpr char kHiraganaA[] = "\x82\xA0";
constexpr char kSmallHiraganaA[] = "\x82\x9F";

// The list without the two instructions that begin every program, one instruction after the
// other.
std::string Body(const char* pattern)
{
    std::string error;
    const std::string list = tlvn::ListRegExp(pattern, 1, error);
    std::string body;
    std::size_t line = 0;
    for (int i = 0; line < list.size(); ++i) {
        const std::size_t end = list.find('\n', line);
        const std::size_t name = list.find_first_not_of(" 0123456789", line);
        if (i > 1 && end + 1 < list.size())
            body += (body.empty() ? "" : "; ") + list.substr(name, end - name);
        line = end + 1;
    }
    return error.empty() ? body : error;
}

} // namespace

TEST(RegExp, Language)
{
    const struct {
        const char* pattern;
        const char* text;
        const char* expected;
    } cases[] = {
        // "|" binds single atoms
        {"ab|cd", "xabd", "1,4"},
        {"ab|cd", "acd", "0,3"},
        {"ab|cd", "ab", ""},
        {"a|b|c", "xc", "1,2"},
        {"a|", "b", "0,0"},
        {"|a", "|a", "0,2"},
        // the first match in order of priority, not the longest
        {"a|(ab)", "ab", "0,1"},
        {"a*?", "aa", "0,0"},
        {"a+?", "aa", "0,1"},
        {"a?", "aa", "0,1"},
        {"a\?\?b", "ab", "0,2"},
        {".*c", "abcbc", "0,5"},
        {".*?c", "abcbc", "0,3"},
        {"a**", "aa*", "0,3"},
        // a loop that is not greedy goes on from where what follows it failed, behind "ab"
        {".*?abc", "ababc", "1,5"},
        {"(.|x)*?abc", "ababxabc", "0,8"},
        // escapes, inside a class and outside
        {"\\t", "\tt", "1,2"},
        {"[\\f]", "f\f\n", "2,3"},
        {"[\\n]", "\nn", "1,2"},
        {"[\\]\\-]+", "a]-", "1,3"},
        {"a\\", "a\\", "0,2"},
        {"[+--]+", "*+,-.", "1,4"},
        // anchors, only at the ends of the pattern
        {"^a", "ba", ""},
        {"^a", "ab", "0,1"},
        {"a^", "a^", "0,2"},
        {"a$", "ax", ""},
        {"$", "a", ""},
        {"$a", "$a", "0,2"},
        {"a|$", "ba", "1,2"},
        // what follows an unmatched closing bracket is not read
        {"abc)def", "abc", "0,3"},
        {"a]b", "a", "0,1"},
        // references
        {"{a}\\0", "xaa", "1,3"},
        {"{a|b}{c}\\1\\0", "bccb", "0,4"},
        {"({a}|b)\\0c", "bc", "0,2"},
        {"{}{a}\\1", "aa", "0,2"},
        {"{ab}+\\0c", "abababc", "0,7"},
        // abbreviations
        {"\\q", "'a' \"b\"", "4,7"},
        {"x\\ny", "x\r\ny", "0,4"},
        {"x\\ny", "x\ny", "0,3"},
        {"\\z-\\d", "ab12-3", "2,6"},
        {"\\h+", "xyzBeef", "3,7"},
        {"\\w", "12ab", "2,4"},
        {"\\b+", "a \tb", "1,3"},
        // negation takes nothing
        {"a!b.", "abac", "2,4"},
        {"!!a.", "ba", "1,2"},
        {"a!$", "a", ""},
        {"a!", "a", "0,1"},
        {".", "\n", "0,1"},
        {"[^a]", "a", ""},
        {"(a*)?b", "aab", "0,3"},
        // errors
        {"{a", "", "error: 2"},
        {"(a", "", "error: 3"},
        {"[a", "", "error: 4"},
        {"[a-]", "", "error: 4"},
        {"[", "", "error: 4"},
        {"[]", "", "error: 6"},
        {"[^]", "", "error: 6"},
        {"\\0", "", "error: 7"},
        {"{a}\\1", "", "error: 7"},
        {"{a}\\99999999999999999999", "", "error: 7"},
        {"{a}+\\1", "", "error: 7"},
        {"[z-a]", "", "error: 8"},
        {"[a-\\]]", "", "error: 8"},
        {"(a*)*", "", "error: 9"},
        {"(a?)+?", "", "error: 9"},
        {"(!a)*", "", "error: 9"},
        {"", "", "error: 11"},
        {"\\0(", "", "error: 7"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(MatchNarrow(c.pattern, c.text), c.expected) << c.pattern << " in " << c.text;
        EXPECT_EQ(MatchWide(c.pattern, c.text), c.expected) << c.pattern << ", wide";
    }
}

TEST(RegExp, DoubleByteCharactersStayWhole)
{
    // 0x41 is a trail byte here, and the second character's halves lie across two others.
    EXPECT_EQ(MatchNarrow("A", "\x83\x41"), "");
    EXPECT_EQ(MatchNarrow("\x9F\x88", "\x88\x9F\x88\x9F"), "");
    EXPECT_EQ(MatchNarrow(".A", "\x83\x41\x41"), "0,3");
    EXPECT_EQ(MatchNarrow("[\x82\x9F-\x82\xF1]+", "a\x82\xA0\x82\xA2"
                                                  "b"),
              "1,5");
    // A lead byte without a trail byte is a character of its own.
    EXPECT_EQ(MatchNarrow("\x81", "\x81\x81\x81"), "2,3");
    // A reference compares as many characters as the group has bytes.
    EXPECT_EQ(MatchNarrow("{\x82\xA0}\\0", "\x82\xA0\x82\xA0"), "");
    EXPECT_EQ(MatchNarrow("{\x82\xA0}\\0", "\x82\xA0\x82\xA0\x82\xA0"), "0,4");
    EXPECT_EQ(MatchWide("{\x82\xA0}\\0", "\x82\xA0\x82\xA0"), "0,2");
}

TEST(RegExp, CaseInsensitive)
{
    EXPECT_EQ(MatchNarrow(kHiraganaA, kSmallHiraganaA, 0), "0,2");
    EXPECT_EQ(MatchNarrow(kHiraganaA, kSmallHiraganaA, 1), "");
    EXPECT_EQ(MatchWide(kHiraganaA, kSmallHiraganaA, 0), "");
    const std::string fullA = "\x82\x60";
    const std::string fullSmallA = "\x82\x81";
    EXPECT_EQ(MatchNarrow(fullSmallA, fullA, 0), "0,2");
    EXPECT_EQ(MatchWide(fullSmallA, fullA, 0), "0,1");
    EXPECT_EQ(MatchNarrow("\xB1", "\xA7", 0), "0,1"); // half-width
    EXPECT_EQ(MatchNarrow("{Ab}\\0", "aBAb", 0), "0,4");
    EXPECT_EQ(MatchNarrow("[A-C]+", "xABCabcd", 0), "1,7");
    // The letter of an abbreviation is folded with the pattern.
    EXPECT_EQ(MatchNarrow("\\D", "xD1", 0), "2,3");
    EXPECT_EQ(MatchNarrow("\\D", "xD1", 1), "1,2");
}

TEST(RegExp, CodeTypes)
{
    CRegExp regexp;
    CStringA message;
    const char* start = nullptr;
    EXPECT_EQ(regexp.IsParsed(), 0);
    EXPECT_EQ(regexp.Match("a", CT_SJIS, nullptr, nullptr), 0);
    ASSERT_EQ(regexp.ParseRegExp(kHiraganaA, CT_SJIS, 1, message), 1);
    EXPECT_NE(regexp.IsParsed(), 0);

    // Converted on first use: to UTF-16 for every Unicode type, to EUC-JP.
    const tlvn::WString wide = TW("x\u3042");
    for (const CodeType t : {CT_UNICODE, CT_UTF8, CT_UTF7}) {
        EXPECT_EQ(regexp.Match(Bytes(wide), t, &start, nullptr), 1);
        EXPECT_EQ(start, Bytes(wide) + 2);
    }
    EXPECT_EQ(regexp.Match("x\xA4\xA2", CT_EUC, nullptr, nullptr), 1);
    EXPECT_EQ(regexp.IsParsedOK(CT_SJIS, message), 1);

    // What does not convert stays failed, and "?" does not stand for it.
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(regexp.Match("?", CT_WIN1252, nullptr, nullptr), 0);
        EXPECT_EQ(regexp.IsParsedOK(CT_WIN1252, message), 0);
        EXPECT_TRUE(message.IsEmpty());
    }
    EXPECT_EQ(regexp.Match("", CT_SJIS, nullptr, nullptr), 0);
    EXPECT_EQ(regexp.Match(nullptr, CT_SJIS, nullptr, nullptr), 0);

    // A failed pattern is a pattern, remembered as failed; the next one starts afresh.
    EXPECT_EQ(regexp.ParseRegExp("(", CT_SJIS, 1, message), 0);
    EXPECT_FALSE(message.IsEmpty());
    EXPECT_NE(regexp.IsParsed(), 0);
    EXPECT_EQ(regexp.IsParsedOK(CT_SJIS, message), 0);
    EXPECT_TRUE(message.IsEmpty());
    EXPECT_EQ(regexp.ParseRegExp(Bytes(wide), CT_UTF8, 1, message), 1);
    EXPECT_EQ(regexp.Match("x\x82\xA0", CT_SJIS, nullptr, nullptr), 1);
    regexp.ClearRegExp();
    EXPECT_EQ(regexp.IsParsed(), 0);
    EXPECT_EQ(GetMultibyteCodePage(), 932U);
}

// A code type without a page of its own follows the process's: the plan must, too.
TEST(RegExp, FollowsTheCodePage)
{
    CRegExp regexp;
    CStringA message;
    ASSERT_EQ(regexp.ParseRegExp("A", CT_UNKNOWN, 1, message), 1);
    EXPECT_EQ(regexp.Match("\x83\x41", CT_UNKNOWN, nullptr, nullptr), 0);
    SetMultibyteCodePage(1252);
    EXPECT_EQ(regexp.Match("\x83\x41", CT_UNKNOWN, nullptr, nullptr), 1);
    SetMultibyteCodePage(932);
}

// The forms that every construct compiles to; the numbers are indices of instructions.
TEST(RegExp, Programs)
{
    const struct {
        const char* pattern;
        const char* expected;
    } cases[] = {
        {"a$", "Symbol a; Symbol end of text; MatchFound"},
        {"[^a-cx]", "NotRangeList 7  a-c x; MatchFound"},
        {"{a}", "PushGroup 0; GroupStart 0; Call 7; PopGroup 0; Return; Symbol a; GroupEnd 0; "
                "MatchFound"},
        {"{}", "Nop; MatchFound"},
        {"(a)", "Call 4; Return; Symbol a; MatchFound"},
        {"a|b|c", "PushPosition; Call 6; PopPosition; Jump 8; Symbol a; Jump 15; PushPosition; "
                  "Call 12; PopPosition; Jump 14; Symbol b; Jump 15; Symbol c; MatchFound"},
        {"a*", "PushMemory 0; StorePosition 0; PushPosition; Call 9; PopPosition; PopMemory 0; "
               "Jump 13; Symbol a; FailIfNoProgress 0; StorePosition 0; Jump 2; MatchFound"},
        {"(!a.)+", "Call 4; Return; StorePosition 0; StoreStackDepth 1; Call 10; LoadPosition 0; "
                   "LoadStackDepth 1; Jump 14; Symbol a; LoadPosition 0; LoadStackDepth 1; "
                   "Return; Any; PushMemory 2; StorePosition 2; PushPosition; Call 22; "
                   "PopPosition; PopMemory 2; Jump 38; Call 24; Return; StorePosition 3; "
                   "StoreStackDepth 4; Call 30; LoadPosition 3; LoadStackDepth 4; Jump 34; "
                   "Symbol a; LoadPosition 3; LoadStackDepth 4; Return; Any; "
                   "FailIfNoProgress 2; StorePosition 2; Jump 15; MatchFound"},
        {"a+?", "Symbol a; Call 6; Symbol a; Jump 3; MatchFound"},
        {"a??", "Call 4; Symbol a; MatchFound"},
        {"\\d", "Call 4; Return; RangeList 7  0-9; MatchFound"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Body(c.pattern), c.expected) << c.pattern;
    std::string error;
    EXPECT_TRUE(tlvn::ListRegExp("^", 1, error).starts_with("     0  Call 2\n     1  Fail\n"));
    EXPECT_TRUE(tlvn::ListRegExp("a", 1, error).starts_with("     0  Call 2\n     1  Advance"));
    EXPECT_TRUE(tlvn::ListRegExp("(", 1, error).empty());
    EXPECT_FALSE(error.empty());
}

// The two kinds of instruction that no pattern compiles to.
TEST(RegExp, Bitmaps)
{
    const auto program = [](REKind kind) {
        // 'a' is bit 1 of the fourth word, 0xFF the last of all.
        return std::vector<REInstruction>{{REKind::Call, 2},
                                          {REKind::AdvanceStart, 0},
                                          {kind, 0},
                                          {REKind{0}, 0},
                                          {REKind{0}, 2},
                                          {REKind{0}, 0},
                                          {REKind{0}, 1U << 31},
                                          {REKind::MatchFound, 0}};
    };
    int start = -1;
    int end = -1;
    EXPECT_TRUE(tlvn::RunInstructions(program(REKind::RangeBitmap), "xya", start, end));
    EXPECT_EQ(start, 2);
    EXPECT_EQ(end, 3);
    EXPECT_TRUE(tlvn::RunInstructions(program(REKind::RangeBitmap), "\x7F\xFF", start, end));
    EXPECT_EQ(start, 1);
    EXPECT_FALSE(tlvn::RunInstructions(program(REKind::RangeBitmap), "xyz\x7F", start, end));
    EXPECT_TRUE(tlvn::RunInstructions(program(REKind::NotRangeBitmap), "aab", start, end));
    EXPECT_EQ(start, 2);
    EXPECT_FALSE(tlvn::RunInstructions(program(REKind::NotRangeBitmap), "aa", start, end));
}

// Deep patterns and long ways back end in a match or an error.
TEST(RegExp, HostilePatterns)
{
    const auto repeated = [](const std::string& s, int count) {
        std::string out;
        for (int i = 0; i < count; ++i)
            out += s;
        return out;
    };
    constexpr int kDeep = 100000;
    const std::string text = "xa";
    EXPECT_EQ(MatchNarrow(repeated("(", kDeep) + "a" + repeated(")", kDeep), text), "1,2");
    EXPECT_EQ(MatchNarrow(repeated("{", kDeep) + "a" + repeated("}", kDeep), text), "1,2");
    EXPECT_EQ(MatchNarrow(repeated("(", kDeep) + "a" + repeated(")?", kDeep), text), "0,0");
    EXPECT_EQ(MatchNarrow(repeated("(b|", kDeep) + "a" + repeated(")", kDeep), text), "1,2");
    EXPECT_EQ(MatchNarrow(repeated("b|", kDeep) + "a", text), "1,2");
    EXPECT_EQ(MatchNarrow(repeated("!", kDeep) + "a.", text), "1,2");
    EXPECT_EQ(MatchNarrow(repeated("(", kDeep), text), "error: 3");
    EXPECT_EQ(MatchNarrow(repeated("{", kDeep), text), "error: 2");
    EXPECT_EQ(MatchNarrow(repeated("[", kDeep), text), "error: 4");
    // Every "+" doubles what it repeats.
    EXPECT_EQ(MatchNarrow(repeated("(", 10) + "a" + repeated(")+", 10), text), "1,2");
    EXPECT_EQ(MatchNarrow(repeated("(", 500) + "a" + repeated(")+", 500), text), "error: 1");

    const std::string longText(1 << 20, 'a');
    const std::string all = "0," + std::to_string(longText.size());
    EXPECT_EQ(MatchNarrow("(a|b)*", longText), all);
    EXPECT_EQ(MatchNarrow(".*", longText), all);
    EXPECT_EQ(MatchNarrow("^.*b", longText), "");
    EXPECT_EQ(MatchNarrow("^(a|b)*c", longText), "");
    EXPECT_EQ(MatchWide("^{.}*a$", longText), "0," + std::to_string(longText.size() + 1));
}
