#include "editor/run_color.h"
#include "platform/multibyte.h"
#include "tests/support/test.h"

#include <deque>

namespace {

using tlvn::DrawRun;
using tlvn::RunColor;

constexpr COLORREF kText = 0x111111; // of the line
constexpr COLORREF kBack = 0x222222;

// Everything that colours a line.
struct Scene {
    CEditorColor colors;
    std::string text;
    CodeType codeType = CT_JIS; // edited in Shift_JIS
    std::pair<CTextPos, CTextPos> selection;
    CEditorTextViewRangeArray found;
    CEditorLineMarkerArray markers;
    std::deque<CEditorLineMarker> marks;
    std::vector<CEditorLineRange> links;
    tlvn::DrawLine line;

    ~Scene() { ClearTextViewRangeArray(found); }

    void AddHit(const CTextPos& a, const CTextPos& b)
    {
        tlvn::AddTextRanges({CEditorTextViewRange(a, b)}, found);
    }
    void AddMark(const CTextPos& a, const CTextPos& b, int kind)
    {
        markers.Add(&marks.emplace_back(a, b, kind));
    }
    void SetLine(int index, int start, int end)
    {
        line = {index, text.data(), start, end, &links, kText, kBack};
    }
    RunColor MakeColoring() const
    {
        RunColor coloring(colors, codeType);
        coloring.SetSelection(selection.first, selection.second);
        coloring.SetFoundRanges(&found);
        coloring.SetMarkers(&markers);
        coloring.SetLine(line);
        return coloring;
    }
};

bool LooksSame(const DrawRun& a, const DrawRun& b)
{
    return a.text == b.text && a.back == b.back && a.underline == b.underline &&
           a.special == b.special;
}

} // namespace

// Each rule against the next weaker one: letters for the colours, a run's first one large, "_"
// behind it where it is underlined.
TEST(RunColor, TheStrongerRuleDecides)
{
    Scene scene;
    scene.text = "ab\xB1\xB2\x87\x40 http://x \xB1z";
    scene.colors.SetSelTextColor('s');
    scene.colors.SetFindedTextColor('f');
    scene.colors.SetLineMarkerTextColor(3, 'm');
    scene.colors.SetKatakanaColor('k');
    scene.colors.SetMacnDependColor('d');
    scene.colors.SetUrlColor('u');
    scene.links = {{7, 8, CEditorLineRange::ElRangeUrl}};
    scene.AddMark(CTextPos(2, 9), CTextPos(2, 13), 3);
    scene.AddMark(CTextPos(2, 17), CTextPos(3, 0), 3);
    scene.AddHit(CTextPos(2, 12), CTextPos(2, 8)); // ends exchanged, both made one
    scene.AddHit(CTextPos(2, 11), CTextPos(2, 10));
    scene.AddHit(CTextPos(2, 1), CTextPos(2, 1)); // nothing
    scene.selection = {CTextPos(2, 9), CTextPos(1, 99)};
    const auto describe = [&] {
        std::string out;
        RunColor coloring = scene.MakeColoring();
        DrawRun run;
        for (int byte = scene.line.start; byte < scene.line.end; byte += run.length) {
            coloring.GetRun(byte, run);
            const char letter = run.text == kText ? '.' : static_cast<char>(run.text);
            out += letter + std::to_string(run.length) + (run.underline ? "_ " : " ");
            EXPECT_EQ(run.special, letter != '.');
        }
        return out;
    };
    scene.SetLine(2, 0, 18);
    EXPECT_EQ(describe(), "s7 s2_ f3_ m1_ u2_ .1 k1 m1 ");
    scene.selection = {};
    EXPECT_EQ(describe(), ".2 k2 d2 .1 u1_ f4_ m1_ u2_ .1 k1 m1 ");
    scene.codeType = CT_ASCII; // no letters of Shift_JIS
    scene.SetLine(2, 2, 9);
    EXPECT_EQ(describe(), ".5 u1_ f1_ ");
}

// Ranges of every kind in and around a line. Asked in any order, a run is as one asked for alone;
// it ends where something changes, and not before.
TEST(RunColor, IsTheSameInAnyOrder)
{
    static const char* const pieces[] = {
        "a", " ", "\xB1", "\xB2\xB3", "xyz", "\x87\x40", "\x82\xB1", "\xFA\x40\xFB\x40", "\x87"};
    std::mt19937 random(1);
    const auto number = [&](std::size_t below) { return static_cast<int>(random() % below); };
    for (int round = 0; round < 1000; ++round) {
        Scene scene;
        for (int i = number(40); i >= 0; --i)
            scene.text += pieces[random() % std::size(pieces)];
        const char* const end = scene.text.data() + scene.text.size();
        std::vector<int> starts; // of characters
        for (const char* p = scene.text.data(); p < end; p += tlvn::CharLength(p, end))
            starts.push_back(static_cast<int>(p - scene.text.data()));
        const auto boundary = [&] { return starts[random() % starts.size()]; };
        const auto position = [&] { return CTextPos((number(5) + 4) / 3, boundary()); };

        scene.selection = {position(), position()};
        for (int i = number(4); i > 0; --i)
            scene.AddHit(position(), position());
        for (int at = boundary(), to = boundary(); at < to; at = to, to = boundary())
            scene.links.push_back({at, to - at, CEditorLineRange::ElRangeUrl});
        const auto [start, stop] = std::minmax({boundary(), boundary()});
        scene.SetLine(2, start, stop);

        std::vector<int> asked(std::lower_bound(starts.begin(), starts.end(), start),
                               std::lower_bound(starts.begin(), starts.end(), stop));
        std::shuffle(asked.begin(), asked.end(), random);
        RunColor coloring = scene.MakeColoring();
        DrawRun run, alone;
        for (const int outside : {start - 1, stop, INT_MAX}) {
            coloring.GetRun(outside, run);
            ASSERT_EQ(run.length, 0);
        }
        for (const int byte : asked) {
            coloring.GetRun(byte, run);
            for (auto i = std::lower_bound(starts.begin(), starts.end(), byte);
                 i != starts.end() && *i < byte + run.length; ++i) {
                scene.MakeColoring().GetRun(*i, alone);
                ASSERT_TRUE(LooksSame(run, alone)) << round;
                ASSERT_EQ(alone.length, byte + run.length - *i) << round;
            }
        }
    }
}

// One machine-dependent character at the far end, katakana in between: looking for it anew in
// every run takes hours.
TEST(RunColor, WalksOverALongLineInLinearTime)
{
    Scene scene;
    while (scene.text.size() < 1500000)
        scene.text += "a\xB1.";
    scene.text += "\x87\x40";
    const int length = static_cast<int>(scene.text.size());
    scene.SetLine(0, 0, length);
    RunColor coloring = scene.MakeColoring();
    int runs = 0;
    DrawRun run;
    for (int byte = 0; byte < length; byte += run.length, ++runs)
        coloring.GetRun(byte, run);
    EXPECT_EQ(runs, 1000002);
}
