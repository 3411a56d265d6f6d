// What the editor draws, from the record of the windows in memory.

#include "framework/headless/headless.h"
#include "tests/support/editor_fixture.h"

#include <map>

using namespace tlvn;

namespace {

class EditorPaint : public EditorFixture {
protected:
    EditorPaint() { headless::Reset(); }

    // The texts in row `row`, as "text:colour" with "_" for an underlined one.
    std::string Row(int row)
    {
        editor.UpdateWindow();
        std::string out;
        const int y = editor.GetColRulerHeight() + row * editor.GetLineHeight();
        for (const auto& drawn : headless::GetDrawnTexts(editor.m_hWnd)) {
            if (drawn.position.y != y)
                continue;
            char color[16];
            std::snprintf(color, sizeof color, ":%06X ", static_cast<unsigned>(drawn.color));
            out += NarrowText(drawn.text) + (drawn.underline ? "_" : "") + color;
        }
        return out;
    }
    COLORREF BackAt(int line, int byte)
    {
        editor.UpdateWindow();
        const CPoint point = PointOf(line, byte);
        return headless::GetDrawnColor(editor.m_hWnd, point.x, point.y);
    }
};

} // namespace

TEST_F(EditorPaint, DrawsEachRunInItsColour)
{
    colors.SetTextColor(0x111111);
    colors.SetBackColor(0xFEFEFE);
    colors.SetSelTextColor(0x222222);
    colors.SetSelBackColor(0x333333);
    Create();
    SetText("a http://b.c/ d\r\n> q\r\n>> r\r\n\xB1\xB2 x\r\nmark hit sel");
    editor.InsertHeaderText("Subject", 7);
    editor.AddFoundArray(CTextPos(5, 5), CTextPos(5, 8));
    editor.DrawLineMarker(1, CTextPos(5, 0), CTextPos(5, 4));
    editor.SelectText(CTextPos(5, 9), CTextPos(5, 12), 1, 0);
    EXPECT_EQ(Row(0), "Subject:111111 ");
    EXPECT_EQ(Row(1), "a :111111 http://b.c/_:FF0000  d:111111 ");
    EXPECT_EQ(Row(2), "> q:008000 ");
    EXPECT_EQ(Row(3), ">> r:004080 ");
    EXPECT_EQ(Row(4), "\xB1\xB2:0000FF  x:111111 ");
    EXPECT_EQ(Row(5), "mark:000000  :111111 hit:FFFFFF  :111111 sel:222222 ");
    EXPECT_EQ(BackAt(0, 0), 0xD0FFD0u);
    EXPECT_EQ(BackAt(5, 6), 0xFF00FFu);
    EXPECT_EQ(BackAt(5, 10), 0x333333u);
    EXPECT_EQ(BackAt(5, 8), 0xFEFEFEu);
}

TEST_F(EditorPaint, DrawsMarks)
{
    metrics.SetShowTab(1);
    metrics.SetShowSpace(1);
    metrics.SetShowZenSpace(1);
    metrics.SetShowCR(1);
    metrics.SetShowEOF(1);
    Create();
    SetText("a\tb \x81\x40\r\nc");
    editor.UpdateWindow();
    int marks = 0;
    for (const auto& op : headless::GetDrawing(editor.m_hWnd)->Operations())
        marks += op.kind == headless::DrawKind::Polyline && op.color == 0x808000;
    EXPECT_EQ(marks, 4); // tab, blank, full-width blank, line end
    EXPECT_NE(Row(1).find("[EOF]:808000"), std::string::npos);
}

TEST_F(EditorPaint, ShowsACaretWhereItIsUsed)
{
    Create();
    editor.SetFocus();
    EXPECT_TRUE(headless::GetCaretState().visible);
    editor.SetReadOnly(1); // the metrics ask for a caret
    EXPECT_TRUE(headless::GetCaretState().visible);
    metrics.SetShowCaret(0);
    editor.ChangeEditorMetrics(metrics);
    EXPECT_EQ(headless::GetCaretState().window, nullptr);
    editor.SetReadOnly(0);
    EXPECT_EQ(headless::GetCaretState().window, editor.m_hWnd);
}

TEST_F(EditorPaint, ScrollsUnderAMouseThatIsDraggedOnOutside)
{
    Create();
    SetLines(200);
    headless::UseTestClock();
    Mouse(WM_LBUTTONDOWN, PointOf(2, 1), MK_LBUTTON);
    for (int i = 0; i < 50; ++i) {
        Mouse(WM_MOUSEMOVE, CPoint(60 + i % 2, 310), MK_LBUTTON);
        headless::AdvanceClock(20);
    }
    EXPECT_GE(editor.GetVertScrollPos(), 15);
}

TEST_F(EditorPaint, FollowsTheDisplaySettings)
{
    Create();
    SetText("> \xB1 http://a.example/");
    const int height = editor.GetCharHeight();
    headless::SetWindowDpi(192);
    ::SendMessageW(editor.m_hWnd, 0x02E3, 0, 0);
    EXPECT_EQ(editor.GetCharHeight(), 2 * height);
    headless::SetHighContrast(true);
    ::SendMessageW(editor.m_hWnd, WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(Row(0), "> :000000 \xB1:000000  :000000 http://a.example/_:CC6600 ");
    EXPECT_EQ(editor.GetEditorColors(), colors);
}

// After each of hundreds of random steps what stands in the window is what painting all of it
// anew gives: nothing is left out when only what changed is painted.
TEST_F(EditorPaint, PaintsWhatChanged)
{
    metrics.SetAutoTurn(CEditorMetrics::kTurnAtWindow);
    Create(220, 160);
    std::mt19937 random(7);
    const auto pick = [&](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    const auto place = [&] {
        CTextPos pos(pick(editor.GetLogicalLineCt(1)), 0);
        pos.logicalByte = pick(editor.GetDoc().GetLineByteCountL(pos.line) + 1);
        editor.GetDoc().ToCharTop(pos);
        return pos;
    };
    // What shows at every third pixel: a colour, or a text by what it is and where it begins.
    const auto take = [&] {
        editor.UpdateWindow();
        std::map<std::pair<LONG, LONG>, std::size_t> picture;
        const headless::DisplayList& list = *headless::GetDrawing(editor.m_hWnd);
        for (const auto& op : list.Operations()) {
            std::size_t value = op.color;
            if (op.kind == headless::DrawKind::Text) {
                value = std::hash<WStringView>()(list.TextOf(op)) + op.color * 31 +
                        static_cast<std::size_t>(op.bounds.left * 1000 + op.bounds.top) * 977 +
                        op.underline;
            }
            const RECT visible = op.Visible();
            for (LONG y = (visible.top + 2) / 3 * 3; y < visible.bottom; y += 3)
                for (LONG x = (visible.left + 2) / 3 * 3; x < visible.right; x += 3)
                    picture[{x, y}] = value;
        }
        return picture;
    };
    static const char* const kTexts[] = {
        "x",  "> quoted\r\n",     "\r\n\r\n\r\n", "http://a.example/ ",
        "\t", "\x93\xFA\x96\x7B", "\r\n",         "words and words "};
    SetText("start\r\n");
    for (int step = 0; step < 300; ++step) {
        const int kind = pick(14);
        const CTextPos a = place();
        const CTextPos b = place();
        const char* const text = kTexts[pick(static_cast<int>(std::size(kTexts)))];
        if (kind < 5)
            editor.InsertText(a, text, static_cast<int>(std::strlen(text)));
        else if (kind == 5)
            editor.DeleteText(a, b.line > a.line + 3 ? CTextPos(a.line + 1, 0) : b);
        else if (kind == 6)
            editor.SelectText(a, b, 1, pick(2));
        else if (kind == 7)
            editor.MoveCaret(a, pick(2), pick(2), CaretMoveText);
        else if (kind == 8)
            editor.ScrollLineUpDown(pick(9) - 4, pick(2));
        else if (kind == 9)
            editor.DrawLineMarker(pick(7) - 1, a, b);
        else if (kind == 10)
            (editor.*(pick(3) > 0 ? &CEditorWnd::Undo : &CEditorWnd::Redo))();
        else if (kind == 11 && pick(4) == 0)
            editor.MoveWindow(0, 0, 150 + pick(80), 100 + pick(70), TRUE);
        else if (kind == 12 && pick(4) == 0)
            editor.AddFoundArray(a, b);
        else if (kind == 13 && pick(8) == 0) {
            metrics.SetShowLineRuler(pick(2));
            metrics.SetShowColRuler(pick(2));
            metrics.SetShowEOF(pick(2));
            editor.ChangeEditorMetrics(metrics);
        }
        const auto partly = take();
        editor.Invalidate(FALSE);
        ASSERT_EQ(partly, take()) << "step " << step << " kind " << kind;
    }
}
