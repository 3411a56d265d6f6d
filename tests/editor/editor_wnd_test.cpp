#include "TlvnMisc.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class EditorWndTest : public testing::Test {
protected:
    EditorWndTest()
    {
        CEditorMetrics metrics;
        metrics.SetLineSpace(-4);
        EXPECT_EQ(metrics.GetLineSpace(), 0);
        metrics.SetLineSpace(2);
        editor.CreateEditorWnd(0, WS_POPUP | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL,
                               CRect(0, 0, 400, 300), nullptr, 0, metrics, CEditorColor());
    }

    void SetText(const std::string& text)
    {
        editor.SetDocument(CT_SJIS, text.data(), static_cast<int>(text.size()));
    }

    SCROLLINFO GetScroll(int bar)
    {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        editor.GetScrollInfo(bar, &info, SIF_ALL);
        return info;
    }

    CEditorWnd editor;
};

} // namespace

TEST_F(EditorWndTest, ScrollBarsFollowTheTextAndItsPosition)
{
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += std::to_string(i) + "\r\n";
    SetText(text + std::string(300, 'w'));
    const int visible = editor.GetVisibleLineCt();
    ASSERT_GT(visible, 5);
    EXPECT_EQ(GetScroll(SB_VERT).nMax, 100);
    EXPECT_EQ(static_cast<int>(GetScroll(SB_VERT).nPage), visible);
    EXPECT_EQ(GetScroll(SB_HORZ).nMax, 299);

    const struct {
        UINT code;
        int expected;
    } steps[] = {
        {SB_LINEUP, 0},
        {SB_LINEDOWN, 1},
        {SB_PAGEDOWN, 1 + visible - 2}, // two lines
                                        // stay
        {SB_PAGEUP, 1},
        {SB_BOTTOM, 101 - visible},
        {SB_LINEDOWN, 101 - visible},
        {SB_TOP, 0},
    };
    for (const auto& step : steps) {
        ::SendMessageW(editor.m_hWnd, WM_VSCROLL, step.code, 0);
        EXPECT_EQ(editor.GetVertScrollPos(), step.expected) << step.code;
        EXPECT_EQ(GetScroll(SB_VERT).nPos, step.expected) << step.code;
    }
    ::SendMessageW(editor.m_hWnd, WM_HSCROLL, SB_LINERIGHT, 0);
    EXPECT_EQ(editor.GetHorzScrollPos(), 1);

    // A wheel notch is some lines; half a notch twice is as much.
    const auto wheel = [&](int delta) {
        ::SendMessageW(editor.m_hWnd, WM_MOUSEWHEEL,
                       static_cast<WPARAM>(static_cast<UINT>(delta) << 16), 0);
        return editor.GetVertScrollPos();
    };
    const int notch = wheel(-WHEEL_DELTA);
    EXPECT_GT(notch, 0);
    wheel(-WHEEL_DELTA / 2);
    EXPECT_EQ(wheel(-WHEEL_DELTA / 2), 2 * notch);
    EXPECT_EQ(wheel(2 * WHEEL_DELTA), 0);

    SetText("short");
    EXPECT_EQ(editor.GetVertScrollPos(), 0);
    EXPECT_EQ(editor.GetHorzScrollPos(), 0);
}

// A window with no room, one larger than the text again, and painting in both.
TEST_F(EditorWndTest, SurvivesEverySize)
{
    SetText("a\tb\r\n\t\t\x82\xA0\r\n" + std::string(100000, 'x'));
    editor.ScrollToVertPos(2);
    editor.ScrollToHorzPos(99999);
    for (const int size : {0, 1, 5, 40, 3000, 0, 300}) {
        editor.MoveWindow(0, 0, size, size, TRUE);
        editor.Invalidate(FALSE);
        editor.UpdateWindow();
        EXPECT_GE(editor.GetVertScrollPos(), 0);
    }
    editor.MoveWindow(0, 0, 3000, 3000, TRUE);
    EXPECT_EQ(editor.GetVertScrollPos(), 0);
}

TEST_F(EditorWndTest, CountsLinesWithAndWithoutTheHeader)
{
    SetText("one\r\ntwo");
    editor.InsertHeaderText("From: a\r\nTo: b\r\n", 16);
    EXPECT_EQ(editor.GetHeaderLineL(), 3);
    EXPECT_EQ(editor.GetLogicalLineCt(1), 5);
    EXPECT_EQ(editor.GetLogicalLineCt(0), 2);
    EXPECT_EQ(editor.GetCodeType(), CT_SJIS);
}
