#include "TlvnMisc.h"
#include "persist/regexp/listing.h"
#include "persist/regexp/machine.h"
#include "platform/nls.h"
#include "tests/support/test.h"

#include <sstream>

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

// The list without the two instructions that begin every program and the line that ends it, one
// instruction after the other.
std::string Body(const char* pattern)
{
    std::string error, line, body;
    std::istringstream list(tlvn::ListRegExp(pattern, 1, error));
    for (int i = 0; std::getline(list, line); ++i) {
        if (i > 1 && list.peek() != EOF)
            body += (body.empty() ? "" : "; ") + line.substr(line.find_first_not_of(" 0123456789"));
    }
    return error.empty() ? body : error;
}

} // namespace

// What the random patterns of the reference do not reach, or what is easily held for a mistake.
TEST(RegExp, Language)
{
    const std::tuple<const char*, const char*, const char*> cases[] = {
        // "|" binds single atoms
        {"ab|cd", "xabd", "1,4"},
        {"a|", "b", "0,0"},
        {"|a", "|a", "0,2"},
        // the first match in order of priority, not the longest
        {"a|(ab)", "ab", "0,1"},
        {"a\?\?b", "ab", "0,2"},
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
        {"{}{a}\\1", "aa", "0,2"},
        // abbreviations
        {"\\q", "'a' \"b\"", "4,7"},
        {"x\\ny", "x\r\ny", "0,4"},
        {"\\z-\\d", "ab12-3", "2,6"},
        {"\\h+", "xyzBeef", "3,7"},
        {"\\b+", "a \tb", "1,3"},
        // negation takes nothing
        {"!!a.", "ba", "1,2"},
        {"a!$", "a", ""},
        {"a!", "a", "0,1"},
        {"(a*)?b", "aab", "0,3"},
        // errors
        {"{a", "", "error: 2"},
        {"(a", "", "error: 3"},
        {"[a", "", "error: 4"},
        {"[a-]", "", "error: 4"},
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
    for (const auto& [pattern, text, expected] : cases) {
        EXPECT_EQ(MatchNarrow(pattern, text), expected) << pattern << " in " << text;
        EXPECT_EQ(MatchWide(pattern, text), expected) << pattern << ", wide";
    }
}

// Pattern, text and whether case counts -> the match in Shift_JIS and, unless null, in UTF-16.
TEST(RegExp, CharactersAndTheirCase)
{
    const std::tuple<const char*, const char*, int, const char*, const char*> cases[] = {
        // 0x41 is a trail byte here, and the second character's halves lie across two others.
        {"A", "\x83\x41", 1, "", nullptr},
        {"\x9F\x88", "\x88\x9F\x88\x9F", 1, "", nullptr},
        // A lead byte without a trail byte is a character of its own.
        {"\x81", "\x81\x81\x81", 1, "2,3", nullptr},
        // A reference compares as many characters as the group has bytes.
        {"{\x82\xA0}\\0", "\x82\xA0\x82\xA0", 1, "", "0,2"},
        {"{\x82\xA0}\\0", "\x82\xA0\x82\xA0\x82\xA0", 1, "0,4", "0,2"},
        // Small kana are the case of others in Shift_JIS only.
        {"\x82\xA0", "\x82\x9F", 0, "0,2", ""},
        {"\x82\xA0", "\x82\x9F", 1, "", ""},
        {"\xB1", "\xA7", 0, "0,1", nullptr},
        {"\x82\x81", "\x82\x60", 0, "0,2", "0,1"},
        // The letter of an abbreviation is folded with the pattern.
        {"\\D", "xD1", 0, "2,3", "2,3"},
        {"\\D", "xD1", 1, "1,2", "1,2"},
    };
    for (const auto& [pattern, text, caseSensitive, narrow, wide] : cases) {
        EXPECT_EQ(MatchNarrow(pattern, text, caseSensitive), narrow) << pattern;
        if (wide != nullptr) {
            EXPECT_EQ(MatchWide(pattern, text, caseSensitive), wide) << pattern;
        }
    }
}

TEST(RegExp, CodeTypes)
{
    CRegExp regexp;
    CStringA message;
    const char* start = nullptr;
    EXPECT_EQ(regexp.IsParsed(), 0);
    EXPECT_EQ(regexp.Match("a", CT_SJIS, nullptr, nullptr), 0);
    ASSERT_EQ(regexp.ParseRegExp("\x82\xA0", CT_SJIS, 1, message), 1);
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
    const std::pair<const char*, const char*> cases[] = {
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
        {"a+?", "Symbol a; Call 6; Symbol a; Jump 3; MatchFound"},
        {"a??", "Call 4; Symbol a; MatchFound"},
        {"\\d", "Call 4; Return; RangeList 7  0-9; MatchFound"},
    };
    for (const auto& [pattern, expected] : cases)
        EXPECT_EQ(Body(pattern), expected) << pattern;
    std::string error;
    EXPECT_TRUE(tlvn::ListRegExp("^", 1, error).starts_with("     0  Call 2\n     1  Fail\n"));
    EXPECT_TRUE(tlvn::ListRegExp("a", 1, error).starts_with("     0  Call 2\n     1  Advance"));
    EXPECT_TRUE(tlvn::ListRegExp("(", 1, error).empty());
    EXPECT_FALSE(error.empty());
}

// The two kinds of instruction that no pattern compiles to.
TEST(RegExp, Bitmaps)
{
    const std::tuple<REKind, const char*, int> cases[] = {
        {REKind::RangeBitmap, "xya", 2},      {REKind::RangeBitmap, "\x7F\xFF", 1},
        {REKind::RangeBitmap, "xyz\x7F", -1}, {REKind::NotRangeBitmap, "aab", 2},
        {REKind::NotRangeBitmap, "aa", -1},
    };
    for (const auto& [kind, text, expected] : cases) {
        // 'a' is bit 1 of the fourth word, 0xFF the last of all.
        const std::vector<REInstruction> program = {{REKind::Call, 2},
                                                    {REKind::AdvanceStart, 0},
                                                    {kind, 0},
                                                    {REKind{0}, 0},
                                                    {REKind{0}, 2},
                                                    {REKind{0}, 0},
                                                    {REKind{0}, 1U << 31},
                                                    {REKind::MatchFound, 0}};
        int start = -1, end = -1;
        EXPECT_EQ(tlvn::RunInstructions(program, text, start, end), expected >= 0) << text;
        EXPECT_TRUE(expected < 0 || (start == expected && end == start + 1)) << text;
    }
}

// Deep patterns and long ways back end in a match or an error.
TEST(RegExp, HostilePatterns)
{
    const auto nested = [](const char* open, int count, const char* close) {
        std::string out;
        for (int i = 0; i < count; ++i)
            out += open;
        out += "a";
        for (int i = 0; i < count; ++i)
            out += close;
        return out;
    };
    constexpr int kDeep = 100000;
    const std::tuple<const char*, int, const char*, const char*> cases[] = {
        {"(", kDeep, ")", "1,2"},
        {"{", kDeep, "}", "1,2"},
        {"(", kDeep, ")?", "0,0"},
        {"(b|", kDeep, ")", "1,2"},
        {"b|", kDeep, "", "1,2"},
        {"!", kDeep, "", "1,1"},
        {"(", kDeep, "", "error: 3"},
        {"{", kDeep, "", "error: 2"},
        {"[", kDeep, "", "error: 4"},
        // Every "+" doubles what it repeats.
        {"(", 10, ")+", "1,2"},
        {"(", 500, ")+", "error: 1"},
    };
    for (const auto& [open, count, close, expected] : cases)
        EXPECT_EQ(MatchNarrow(nested(open, count, close), "xa"), expected) << open << close;

    const std::string longText(1 << 20, 'a');
    const std::string all = "0," + std::to_string(longText.size());
    EXPECT_EQ(MatchNarrow("(a|b)*", longText), all);
    EXPECT_EQ(MatchNarrow(".*", longText), all);
    EXPECT_EQ(MatchNarrow("^.*b", longText), "");
    EXPECT_EQ(MatchNarrow("^(a|b)*c", longText), "");
    EXPECT_EQ(MatchWide("^{.}*a$", longText), "0," + std::to_string(longText.size() + 1));
}
