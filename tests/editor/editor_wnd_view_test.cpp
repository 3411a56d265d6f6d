// The view of the editor: what fits, scrolling, the caret and what the mouse does.

#include "editor/open_url.h"
#include "tests/support/editor_fixture.h"

class EditorView : public tlvn::EditorFixture {
protected:
    EditorView()
    {
        m_opener = tlvn::SetLinkOpener([](const char* target) {
            s_opened.push_back(target);
            return 1;
        });
        s_opened.clear();
    }
    ~EditorView() override { tlvn::SetLinkOpener(m_opener); }

    SCROLLINFO GetScroll(int bar)
    {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        editor.GetScrollInfo(bar, &info, SIF_ALL);
        return info;
    }

    static inline std::vector<std::string> s_opened;

private:
    tlvn::LinkOpener m_opener;
};

TEST_F(EditorView, CountsLinesThatFitBelowTheRuler)
{
    Create(400, 300, WS_POPUP | WS_VISIBLE);
    const int line = editor.GetCharHeight() + 2;
    EXPECT_EQ(editor.GetVisibleLineCt(), (300 + 2 - 8) / line);
    metrics.SetShowColRuler(1);
    metrics.SetLineSpace(0);
    editor.ChangeEditorMetrics(metrics);
    EXPECT_EQ(editor.GetVisibleLineCt(), (300 - 15) / (line - 2));
    editor.SetForPrint(1);
    metrics.SetShowLineRuler(0);
    metrics.SetShowColRuler(0);
    editor.ChangeEditorMetrics(metrics);
    EXPECT_EQ(editor.GetLineRulerWidth(), 4);
}

// No number of theirs overflows.
TEST_F(EditorView, WithstandsSettingsOutOfProportion)
{
    metrics.SetShowColRuler(1);
    metrics.SetLineSpace(INT_MAX);
    metrics.SetTabColumn(INT_MAX);
    Create();
    SetText("a\tb\r\nc");
    editor.InvalidateColIndicator(INT_MAX);
    const RECT endless = {0, 0, INT_MAX, INT_MAX};
    editor.SetLClientRect(&endless);
    EXPECT_GT(editor.GetVisibleLineCt(), 1000);
}

// By pages, by no step, and with the control key where its owner has no use for it.
TEST_F(EditorView, TurnsTheWheel)
{
    Create();
    SetLines(500);
    UINT before = 3;
    ::SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &before, 0);
    ::SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, WHEEL_PAGESCROLL, nullptr, 0);
    const auto old =
        SetCtrlMouseWheelProc([](CWnd*, UINT, short delta, CPoint) { return delta > 0 ? 1 : 0; });
    const int page = editor.GetVisibleLineCt() - 2;
    const int cases[][3] = {
        {-120, 0, page}, {0, 0, 0}, {-120, MK_CONTROL, page}, {120, MK_CONTROL, 0}};
    for (const auto& [delta, flags, lines] : cases) {
        editor.ScrollToVertPos(100);
        ::SendMessageW(
            editor.m_hWnd, WM_MOUSEWHEEL,
            static_cast<WPARAM>(static_cast<UINT>(delta) << 16 | static_cast<UINT>(flags)), 0);
        EXPECT_EQ(editor.GetVertScrollPos(), 100 + lines) << delta << " " << flags;
    }
    SetCtrlMouseWheelProc(old);
    ::SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, before, nullptr, 0);
}

// The caret keeps its row on screen; not when it is fixed to the text or text is selected, and
// by no more than was scrolled.
TEST_F(EditorView, MovesTheCaretAlongWithPages)
{
    Create();
    SetLines(100);
    const int page = editor.GetVisibleLineCt() - 2;
    MoveTo(4, 3);
    editor.ScrollPageDown();
    EXPECT_EQ(editor.GetVertScrollPos(), page);
    EXPECT_EQ(Caret(), std::to_string(4 + page) + ",3");
    editor.ScrollPageUp();
    editor.ScrollPageUp();
    EXPECT_EQ(Caret(), "4,3");
    editor.ScrollLineUpDown(-5, 1);
    editor.ScrollLineUpDown(-5, 0);
    EXPECT_EQ(Caret(), "9,3");
    editor.SelectText(CTextPos(10, 0), CTextPos(10, 2), 1, 0);
    editor.ScrollPageDown();
    EXPECT_EQ(Caret(), "10,2");
    metrics.SetFixCursorPos(1);
    editor.ChangeEditorMetrics(metrics);
    editor.ClearTextSelect(1);
    editor.ScrollPageDown();
    EXPECT_EQ(Caret(), "10,2");
    editor.ScrollToVertPos(20);
    Click(CPoint(10, 2)); // above the text: its first line in sight
    EXPECT_EQ(Caret(), "20,0");
}

TEST_F(EditorView, ScrollsByItsBarsBeyondSixteenBits)
{
    Create();
    SetText(std::string(300, 'w') + std::string(100000, '\n'));
    const int visible = static_cast<int>(GetScroll(SB_VERT).nPage);
    EXPECT_EQ(GetScroll(SB_VERT).nMax, 100000);
    const struct {
        UINT code;
        int expected;
    } steps[] = {
        {SB_LINEUP, 0},
        {SB_LINEDOWN, 1},
        {SB_PAGEDOWN, 1 + visible - 2},
        {SB_PAGEUP, 1},
        {SB_BOTTOM, 100001 - visible},
        {SB_LINEDOWN, 100001 - visible},
        {SB_TOP, 0},
        {MAKELONG(SB_THUMBTRACK, 700), 700}, // sent by a program: nobody drags
    };
    for (const auto& step : steps) {
        editor.SendMessage(WM_VSCROLL, step.code);
        EXPECT_EQ(GetScroll(SB_VERT).nPos, step.expected) << step.code;
    }
    editor.SendMessage(WM_HSCROLL, SB_RIGHT);
    EXPECT_EQ(editor.GetHorzScrollPos(), 300 + 2 - editor.GetVisibleColCt());
}

// Two lines stay between the caret and the edges, as far as there is text.
TEST_F(EditorView, FollowsTheCaret)
{
    Create();
    SetLines(100);
    const int rows = static_cast<int>(GetScroll(SB_VERT).nPage);
    const std::pair<int, int> cases[] = {
        {rows - 3, 0}, {rows - 2, 1}, {50, 50 - rows + 3}, {30, 28}, {99, 100 - rows}};
    for (const auto& [line, top] : cases) {
        MoveTo(line, 7);
        EXPECT_EQ(editor.GetVertScrollPos(), top) << line;
    }

    // Without scrolling it is the caret that moves.
    editor.ScrollToVertPos(40);
    editor.EnsureCaretVisible(0);
    EXPECT_EQ(Caret(), std::to_string(40 + rows - 3) + ",7");

    SetText(std::string(300, 'w'));
    const int columns = editor.GetVisibleColCt();
    MoveTo(0, 200);
    EXPECT_GE(editor.GetHorzScrollPos() + columns, 202);
}

// Six columns wide: "abcdef" "ghijkl" "mn". The end of a physical line is shown in its row, though
// it is the start of the next; up and down keep to the column where that began.
TEST_F(EditorView, MovesTheCaretByKeys)
{
    metrics.SetAutoTurn(CEditorMetrics::kTurnAtColumn);
    metrics.SetTurnCols(10);
    metrics.SetWordWrap(0);
    Create();
    SetText("abcdefghijklmnopqrstuvwx\r\n\x82\xA0\x82\xA2\r\nend");
    const auto run = [&](std::initializer_list<void (CEditorWnd::*)()> keys) {
        for (const auto key : keys)
            (editor.*key)();
        CPoint point = editor.GetCaretPoint();
        const int row = (point.y - 8) / editor.GetLineHeight();
        return Caret() + " row " + std::to_string(row);
    };
    using W = CEditorWnd;
    EXPECT_EQ(run({&W::CaretEnd}), "0,10 row 0");
    EXPECT_EQ(run({&W::CaretLineDown, &W::CaretLineDown}), "0,24 row 2");
    EXPECT_EQ(run({&W::CaretLineDown, &W::CaretLineDown}), "2,3 row 4");
    EXPECT_EQ(run({&W::CaretLineUp, &W::CaretLineUp, &W::CaretLineUp}), "0,20 row 1");
    EXPECT_EQ(run({&W::CaretHome, &W::CaretLineLeft}), "0,9 row 0");
    EXPECT_EQ(run({&W::CaretLineRight}), "0,10 row 1");
    EXPECT_EQ(run({&W::CaretDocEnd, &W::CaretWordLeft, &W::CaretWordLeft}), "1,4 row 3");
    EXPECT_EQ(run({&W::CaretDocHome, &W::CaretWordRight}), "0,24 row 2");
    EXPECT_EQ(run({&W::CaretPageUp}), "0,4 row 0");
    editor.CaretDocHome();
    {
        const tlvn::HeldKey shift(VK_SHIFT);
        editor.CaretEnd();
        editor.CaretLineLeft();
        EXPECT_EQ(Selected(), "abcdefghi");
        editor.CaretLineDown();
        EXPECT_EQ(Selected(), "abcdefghijklmnopqrs");
    }
    EXPECT_EQ(run({&W::CaretLineLeft}), "0,0 row 0"); // the selection's start
    EXPECT_EQ(editor.IsTextSelected(), 0);
}

TEST_F(EditorView, ScrollsInsteadOfMovingACaretThatIsNotThere)
{
    metrics.SetShowCaret(0);
    Create();
    SetLines(100);
    editor.SetReadOnly(1);
    editor.CaretLineDown();
    EXPECT_EQ(editor.GetVertScrollPos(), 1);
    EXPECT_EQ(Caret(), "0,0");
}

TEST_F(EditorView, SelectsPhysicalLinesInTheRuler)
{
    metrics.SetShowLineRuler(1);
    metrics.SetAutoTurn(CEditorMetrics::kTurnAtColumn);
    metrics.SetTurnCols(10);
    Create();
    SetText("aaaaaaaaaabbbbbbbbbbcc\r\ndd");
    const int y = editor.GetColRulerHeight() + 1;
    Mouse(WM_LBUTTONDOWN, CPoint(2, y + editor.GetLineHeight()), MK_LBUTTON);
    EXPECT_EQ(Selected(), "bbbbbbbbbb");
    Mouse(WM_MOUSEMOVE, CPoint(2, y), MK_LBUTTON);
    EXPECT_EQ(Selected(), "aaaaaaaaaabbbbbbbbbb");
}

// Which click opens a link: single or double, by the setting; never one that selected something.
TEST_F(EditorView, OpensLinks)
{
    Create();
    for (const int single : {1, 0}) {
        metrics.SetSingleClickURL(single);
        editor.ChangeEditorMetrics(metrics);
        SetText("at http://a.example/ or me@b.example");
        editor.SetMailtoFrom("x@y.example");
        s_opened.clear();
        Click(PointOf(0, 6));
        Click(PointOf(0, 1));
        Mouse(WM_LBUTTONDBLCLK, PointOf(0, 24), MK_LBUTTON);
        Mouse(WM_LBUTTONUP, PointOf(0, 24));
        EXPECT_EQ(s_opened,
                  std::vector<std::string>{single != 0 ? "http://a.example/"
                                                       : "mailto:me@b.example?From=x@y.example"});
        EXPECT_EQ(Selected(), single != 0 ? "me" : "");

        s_opened.clear();
        Mouse(WM_LBUTTONDOWN, PointOf(0, 1), MK_LBUTTON);
        Mouse(WM_MOUSEMOVE, PointOf(0, 8), MK_LBUTTON);
        Mouse(WM_LBUTTONUP, PointOf(0, 8));
        EXPECT_TRUE(s_opened.empty());
    }
}

TEST_F(EditorView, ShowsTheCursorOfThePlace)
{
    metrics.SetShowLineRuler(1);
    Create();
    SetText("go http://a.example/");
    const auto cursorAt = [&](CPoint point) {
        editor.UpdateCursorKind(point);
        return ::GetCursor();
    };
    EXPECT_EQ(cursorAt(PointOf(0, 1)), tlvn::LoadStandardCursor(IDC_IBEAM));
    EXPECT_EQ(cursorAt(PointOf(0, 5)), tlvn::LoadStandardCursor(IDC_HAND));
    EXPECT_EQ(cursorAt(CPoint(1, 20)), tlvn::LoadStandardCursor(IDC_ARROW));
    SetText("http://a.example/" + std::string(300, 'x'));
    editor.ScrollToHorzPos(20);
    EXPECT_EQ(editor.GetURLOn(CPoint(1, 20), nullptr), CEditorLineRange::ElRangeNone);
}

// Every character of a row leads to a point and back; of a row of megabytes too.
TEST_F(EditorView, GoesFromPositionsToPointsAndBack)
{
    Create();
    SetText("a\t\x82\xA0\xB1 x\r\n" + std::string(50000, 'x') + "\t" + std::string(50000, 'y'));
    const std::pair<int, int> places[] = {{0, 0}, {0, 1}, {0, 2},    {0, 4},
                                          {0, 6}, {1, 0}, {1, 4096}, {1, 99999}};
    for (const auto& [line, byte] : places) {
        MoveTo(line, byte);
        CTextPos found;
        EXPECT_EQ(editor.CursorPoint2TextPos(PointOf(line, byte), 0, found), 1);
        EXPECT_TRUE(tlvn::IsSameL(found, CTextPos(line, byte))) << line << ',' << byte;
    }
    // Rows that are not there, and steps that lead beyond all numbers.
    for (CTextPos wild : {CTextPos(0, 9, 0), CTextPos(-4, 0, 0), CTextPos(INT_MAX, INT_MAX, 0)}) {
        EXPECT_GE(editor.GetBytePAtX(0, 1, wild), 0);
        EXPECT_EQ(wild.byte, 0);
        editor.MoveCaret(wild, 0, 1, CaretMoveText);
    }
    editor.ScrollLineLeftRight(INT_MIN);
    EXPECT_GT(editor.GetHorzScrollPos(), 99000);
}

// Wrapped anew for another width, the view still begins with the same text.
TEST_F(EditorView, KeepsItsPlaceWhenWrappedAnew)
{
    metrics.SetAutoTurn(CEditorMetrics::kTurnAtWindow);
    Create();
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += std::string(150, static_cast<char>('a' + i % 26)) + "\r\n";
    SetText(text);
    MoveTo(50, 75);
    editor.ScrollToVertPos(editor.GetSerialLineP(49, 0));
    editor.MoveWindow(0, 0, 250, 300, TRUE);
    EXPECT_EQ(editor.GetVertScrollPos(), editor.GetSerialLineP(49, 0));
}
