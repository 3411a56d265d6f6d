// The road of text between every two code types: what both can hold arrives, what the target
// cannot hold is told and replaced or dropped, character by character.

#include "charcode/charset.h"
#include "charcode/convert.h"
#include "tests/support/code_types.h"
#include "tests/support/test.h"

#include <map>
#include <string_view>

namespace {

using Lines = std::vector<std::string>;

Lines Split(CodeType t, std::string_view text)
{
    const std::size_t step = t == CT_UNICODE ? 2 : 1;
    Lines lines(1);
    for (std::size_t i = 0; i + step <= text.size(); i += step) {
        const std::string_view unit = text.substr(i, step);
        if (unit == std::string_view("\n\0", step))
            lines.emplace_back();
        else
            lines.back() += unit;
    }
    lines.pop_back(); // every line ends in a line feed
    return lines;
}

void AddLine(CodeType t, const std::string& line, std::string& text)
{
    text += line;
    text.append("\n\0", t == CT_UNICODE ? 2 : 1);
}

std::string Convert(CodeType from, const std::string& text, CodeType to, int drop, int& result)
{
    return Output([&](CBuffer& out) {
        result = ConvertToOtherCodeType2(from, text.data(), static_cast<int>(text.size()), to, out,
                                         drop);
    });
}

// Every character of the plane, and one beyond it, as lines of UTF-16. Not: the line feed and
// the controls that are the mode changes of ISO-2022-JP; halves of surrogate pairs; the
// private-use units in which Windows keeps bytes without a character.
const Lines& AllCharacters()
{
    static const Lines all = [] {
        Lines lines;
        for (unsigned c = 0; c < 0x10000; ++c) {
            const bool control = c == '\n' || c == 0x1B || c == 0x0E || c == 0x0F;
            if (!control && !(c >= 0xD800 && c < 0xE000) && !(c >= 0xF700 && c < 0xF900))
                lines.push_back({static_cast<char>(c), static_cast<char>(c >> 8)});
        }
        lines.emplace_back("\x3D\xD8\x00\xDE", 4);
        return lines;
    }();
    return all;
}

// The forms of AllCharacters in a type, empty for what it cannot hold.
const Lines& FormsIn(CodeType t)
{
    static std::map<CodeType, Lines> all;
    const auto [found, added] = all.try_emplace(t);
    if (!added)
        return found->second;
    std::string text;
    for (const std::string& line : AllCharacters())
        AddLine(CT_UNICODE, line, text);
    int result = 0;
    const std::string inType = Convert(CT_UNICODE, text, t, 1, result);
    const Lines back = Split(CT_UNICODE, Convert(t, inType, CT_UNICODE, 0, result));
    Lines& forms = found->second = Split(t, inType);
    EXPECT_EQ(forms.size(), AllCharacters().size()) << t;
    EXPECT_EQ(back.size(), AllCharacters().size()) << t;
    for (std::size_t i = 0; i < std::min(back.size(), forms.size()); ++i) {
        if (back[i] != AllCharacters()[i])
            forms[i].clear();
    }
    return forms;
}

} // namespace

// The repertoires are not empty by mistake, and no larger than the codes. EUC-JP goes without those
// of F0-FC that look like a row.
TEST(Road, EveryTypeHoldsItsCharacters)
{
    // ASCII, 80 and half-width katakana; JIS X 0208, NEC row 13 and IBM extensions without what
    // is twice there, and the user-defined characters.
    constexpr std::size_t kSingle = 124 + 1 + 63;
    constexpr std::size_t kShiftJis = kSingle + 6879 + 83 - 9 + 388 - 15 + 1880;
    const std::size_t all = AllCharacters().size();
    const std::tuple<CodeType, std::size_t, std::size_t> cases[] = {
        {CT_SJIS, kShiftJis, kShiftJis},
        {CT_JIS, kShiftJis, kShiftJis},
        {CT_EUC, kShiftJis - 2300, kShiftJis - 1},
        {CT_KSC5601, 17000, 17400},
        {CT_KOI8R, 252, 252},
        {CT_UTF8, all, all},
    };
    for (const auto& [t, least, most] : cases) {
        const Lines& forms = FormsIn(t);
        const auto held =
            all - static_cast<std::size_t>(std::count(forms.begin(), forms.end(), ""));
        EXPECT_TRUE(held >= least && held <= most) << t << ": " << held;
    }
}

TEST(Road, BetweenEveryTwoTypes)
{
    for (const CodeType from : kCodeTypes) {
        const Lines& source = FormsIn(from);
        for (const CodeType to : kCodeTypes) {
            const Lines& target = FormsIn(to);
            // Within a page nothing is looked at, and to EUC-JP what has no row passes as it is.
            const bool toldExactly =
                to != CT_EUC && CharSetCode2CodePage(from) != CharSetCode2CodePage(to);
            std::string text, replaced, dropped;
            bool lost = false;
            for (std::size_t i = 0; i < source.size(); ++i) {
                if (source[i].empty() || (target[i].empty() && !toldExactly))
                    continue;
                const bool held = !target[i].empty();
                lost = lost || !held;
                AddLine(from, source[i], text);
                AddLine(to, held ? target[i] : std::string(AllCharacters()[i].size() / 2, '?'),
                        replaced);
                AddLine(to, target[i], dropped);
            }
            for (const int drop : {0, 1}) {
                int result = -1;
                const std::string converted = Convert(from, text, to, drop, result);
                EXPECT_TRUE(converted == (drop != 0 ? dropped : replaced)) << from << " to " << to;
                EXPECT_EQ(result, lost ? 1 : 0) << from << " to " << to;
            }
        }
    }
}
