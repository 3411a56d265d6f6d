#include "viewer/text_search.h"

#include "TlvnMisc.h"
#include "platform/nls.h"

#include <gtest/gtest.h>

namespace tlvn {
namespace {

constexpr UINT kShiftJis = 932;

// The text in Shift_JIS or UTF-16.
std::string Encode(const std::string& utf8, CodeType codeType)
{
    const WString wide = Utf8ToUtf16(utf8);
    if (codeType == CT_UNICODE)
        return {reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(WCHAR)};
    std::string narrow;
    ConvertFromUtf16(kShiftJis, wide, narrow);
    return narrow;
}

// The hits as "line:start-end", in characters of two bytes for UTF-16.
std::string Find(const std::string& text, const std::string& pattern, const SearchOptions& options,
                 CodeType codeType)
{
    CEditorWnd editor;
    const std::string bytes = Encode(text, codeType);
    editor.SetDocument(codeType, bytes.data(), static_cast<int>(bytes.size()));
    TextSearch search;
    std::string error;
    if (!search.SetPattern(pattern, options, error))
        return error.empty() ? "no reason" : "error";
    HitArray hits;
    std::string found = search.FindAll(editor.GetDoc(), hits) ? "" : "cut ";
    for (int i = 0; i < static_cast<int>(hits.GetSize()); ++i)
        found += std::to_string(hits[i]->start.line) + ':' +
                 std::to_string(hits[i]->start.logicalByte) + '-' +
                 std::to_string(hits[i]->end.logicalByte) + ' ';
    return found;
}

TEST(TextSearch, FindsInEveryLine)
{
    const SearchOptions regexp;
    const SearchOptions matchCase = {true, false};
    const SearchOptions plain = {false, true};
    const struct {
        const char *text, *pattern;
        const SearchOptions& options;
        const char *shiftJis, *wide;
    } cases[] = {
        {"", "a", regexp, "", ""},
        {"ab\nxaby\nab", "ab", regexp, "0:0-2 1:1-3 2:0-2 ", "0:0-4 1:2-6 2:0-4 "},
        {"aaaa", "aa", regexp, "0:0-2 0:2-4 ", "0:0-4 0:4-8 "}, // without overlap
        {"Ab", "aB", regexp, "0:0-2 ", "0:0-4 "},
        {"Ab", "aB", matchCase, "", ""},
        // A trail byte that looks like "\" or a letter is none.
        {"表A ソa", "a", regexp, "0:2-3 0:6-7 ", "0:2-4 0:8-10 "},
        {"表示 表", "表", regexp, "0:0-2 0:5-7 ", "0:0-2 0:6-8 "},
        {"aaa\naab", "^a", regexp, "0:0-1 1:0-1 ", "0:0-2 1:0-2 "}, // once in a line
        {"ab\nb", "b$", regexp, "0:1-2 1:0-1 ", "0:2-4 1:0-2 "},    // without the terminator
        {"ab", "x*", regexp, "", ""},                               // empty ones are none
        {"1.5 115", "1.5", plain, "0:0-3 ", "0:0-6 "},
        {"a{b|(c)\\[d]!^$*+?-", "a{b|(c)\\[d]!^$*+?-", plain, "0:0-18 ", "0:0-36 "},
        {"a", "(", regexp, "error", "error"},
        {"a", "", regexp, "error", "error"},
        {"a", "\xF0\x9F\x8C\xB8", plain, "cut ", ""}, // a cherry blossom, not in Shift_JIS
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Find(c.text, c.pattern, c.options, CT_SJIS), c.shiftJis) << c.pattern;
        EXPECT_EQ(Find(c.text, c.pattern, c.options, CT_UNICODE), c.wide) << c.pattern;
    }
}

TEST(TextSearch, EndsAtItsLimit)
{
    const std::string text(TextSearch::kMaxHits + 1, 'a');
    CEditorWnd editor;
    editor.SetDocument(CT_SJIS, text.data(), static_cast<int>(text.size()));
    TextSearch search;
    std::string error;
    ASSERT_TRUE(search.SetPattern("a", {}, error));
    HitArray hits;
    EXPECT_FALSE(search.FindAll(editor.GetDoc(), hits));
    EXPECT_EQ(static_cast<int>(hits.GetSize()), TextSearch::kMaxHits);
}

// Hits at 2-4, 4-6 and 8-9 of one line. Selecting a hit and going on reaches the next one, also
// where they touch.
TEST(TextSearch, GoesFromHitToHitAndAround)
{
    HitArray hits;
    for (const auto& [from, to] : {std::pair(2, 4), std::pair(4, 6), std::pair(8, 9)})
        hits.Add(new CEditorTextViewRange(CTextPos(0, from), CTextPos(0, to)));
    const struct {
        int start, end, next, previous;
    } cases[] = {{0, 0, 0, 2}, {2, 4, 1, 2}, {4, 6, 2, 0}, {8, 9, 0, 1},
                 {3, 3, 1, 2}, {5, 5, 2, 0}, {9, 9, 0, 2}};
    for (const auto& c : cases) {
        const CTextPos start(0, c.start);
        const CTextPos end(0, c.end);
        EXPECT_EQ(FindNextHit(hits, start, end, false), c.next) << c.start;
        EXPECT_EQ(FindNextHit(hits, start, end, true), c.previous) << c.start;
    }
    EXPECT_EQ(FindNextHit(HitArray(), CTextPos(), CTextPos(), false), -1);
}

} // namespace
} // namespace tlvn
