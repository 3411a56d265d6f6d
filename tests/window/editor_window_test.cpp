// What the editor draws on a real screen.

#include "TlvnMisc.h"

#include <gtest/gtest.h>

namespace {

// Pixels of that colour in a part of the window.
int CountPixels(CEditorWnd& editor, const CRect& rect, COLORREF color)
{
    CClientDC dc(&editor);
    int count = 0;
    for (int y = rect.top; y < rect.bottom; ++y)
        for (int x = rect.left; x < rect.right; ++x)
            count += ::GetPixel(dc.m_hDC, x, y) == color;
    return count;
}

} // namespace

// Black on the header colour in the first line, black on white in the second, nothing drawn in
// the part that was scrolled away.
TEST(EditorWindow, DrawsHeaderAndJapaneseText)
{
    CEditorColor colors;
    colors.SetTextColor(RGB(0, 0, 0));
    colors.SetBackColor(RGB(255, 255, 255));
    CEditorWnd editor;
    ASSERT_EQ(editor.CreateEditorWnd(WS_EX_TOPMOST, WS_POPUP | WS_VISIBLE, CRect(0, 0, 200, 120),
                                     nullptr, 0, CEditorMetrics(), colors),
              1);
    editor.SetDocument(CT_SJIS, "\x93\xFA\x96\x7B\x8C\xEA", 6); // 日本語
    editor.InsertHeaderText("\x8C\x8F\x96\xBC", 4);             // 件名
    editor.UpdateWindow();

    const int top = 8;
    const int height = editor.GetCharHeight() + 2;
    const CRect header(8, top, 80, top + height);
    const CRect body(8, top + height, 80, top + 2 * height);
    EXPECT_GT(CountPixels(editor, header, RGB(0, 0, 0)), 20);
    EXPECT_GT(CountPixels(editor, header, 0xD0FFD0), 200);
    EXPECT_EQ(CountPixels(editor, header, RGB(255, 255, 255)), 0);
    EXPECT_GT(CountPixels(editor, body, RGB(0, 0, 0)), 30);
    EXPECT_EQ(CountPixels(editor, body, 0xD0FFD0), 0);
    // Three full-width characters, and nothing behind them.
    EXPECT_EQ(CountPixels(editor, CRect(8 + 3 * height, top + height, 200, top + 2 * height),
                          RGB(0, 0, 0)),
              0);
}
