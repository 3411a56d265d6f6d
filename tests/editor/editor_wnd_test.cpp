// The editor as its owner uses it: text, selection, state, what it tells.

#include "tests/support/editor_fixture.h"

using tlvn::g_notified;

class EditorWnd : public tlvn::EditorFixture {};

TEST_F(EditorWnd, CopiesWithHeaderOrWithout)
{
    Create();
    SetText("a\r\nb");
    editor.InsertHeaderText("From: x", 7);
    CBuffer text;
    editor.GetDocument(1, 0, 1, 0, text);
    EXPECT_STREQ(text, "From: x\r\na\r\nb");
    editor.GetDocument(0, 1, 1, 0, text);
    EXPECT_STREQ(text, ">a\r\n>b");
    editor.GetDocument(0, 0, 0, 1, text); // joined text has no last line end either
    EXPECT_STREQ(text, "ab");
    EXPECT_EQ(editor.GetHeaderLineL(), 1);
    EXPECT_EQ(editor.GetLogicalLineCt(0), 2);
    editor.GetDocumentPart(0, CTextPos(1, 1), 1, text);
    EXPECT_STREQ(text, "\r\nb");
    editor.RemoveHeaderText();
    EXPECT_EQ(Text(), "a\r\nb");
}

TEST_F(EditorWnd, TellsItsOwnerOfTextCaretAndMode)
{
    Create();
    using Told = std::vector<EditorNotify>;
    const auto take = [] { return std::exchange(g_notified, {}); };
    take();
    editor.AppendText("b", 1, 0);
    EXPECT_EQ(take(), Told{EditorNotifyText});
    editor.InsertText(CTextPos(0, 0), "a", 1);
    EXPECT_EQ(take(), (Told{EditorNotifyCaret, EditorNotifyText}));
    editor.SetInsertMode(0);
    editor.SetInsertMode(0); // no change, nothing to tell
    EXPECT_EQ(take(), Told{EditorNotifyInsertMode});
    MoveTo(0, 0);
    EXPECT_EQ(take(), Told{EditorNotifyCaret});
}

// Hits and the view stay with their text when it changes above them; the caret goes to the change.
TEST_F(EditorWnd, KeepsHitsAndViewInPlaceAroundChanges)
{
    Create();
    SetLines(200);
    editor.AddFoundArray(CTextPos(100, 0), CTextPos(100, 4));
    editor.ScrollToVertPos(90);
    editor.BeginChangeGroup();
    editor.InsertText(CTextPos(95, 0), "new\r\n", 5);
    editor.InsertText(CTextPos(2, 0), "new\r\nnew\r\n", 10);
    editor.EndChangeGroup();
    EXPECT_EQ(Caret(), "4,0");
    EXPECT_EQ(editor.GetFoundArray()[0]->start.line, 103);
    EXPECT_EQ(editor.Undo(), 1);
    EXPECT_EQ(editor.GetFoundArray()[0]->start.line, 100);

    editor.ScrollToVertPos(90);
    editor.InsertText(CTextPos(92, 0), "x", 1);
    EXPECT_EQ(editor.GetVertScrollPos(), 90);
}

TEST_F(EditorWnd, SelectsWordsLinesAndAll)
{
    Create();
    SetText("one two\r\n\x93\xFA\x96\x7B\x82\xCC abc\r\nlast");
    editor.SelectWord(CTextPos(1, 3)); // inside a character
    EXPECT_EQ(Selected(), "\x93\xFA\x96\x7B");
    editor.SelectLogicalLine(1, 1);
    EXPECT_EQ(Selected(), "\x93\xFA\x96\x7B\x82\xCC abc\r\n");
    EXPECT_EQ(editor.IsCaretSelectStartPos(), 0);
    editor.SelectAll();
    EXPECT_EQ(Selected(), Text());
    editor.SelectText(CTextPos(2, 4), CTextPos(2, 1), 1, 0);
    EXPECT_EQ(Selected(), "ast");
    EXPECT_EQ(editor.IsCaretSelectStartPos(), 1);
    editor.InsertHeaderLines(1);
    EXPECT_EQ(editor.IsBodyTextSelected(), 1);
    editor.SelectAll();
    EXPECT_EQ(editor.IsBodyTextSelected(), 0);
}

// The same place by its display form and by its logical form.
TEST_F(EditorWnd, TakesPositionsOfEitherForm)
{
    metrics.SetAutoTurn(CEditorMetrics::kTurnAtColumn);
    metrics.SetTurnCols(10);
    Create();
    for (const CTextPos& pos : {CTextPos(0, 1, 2), CTextPos(0, 12)}) {
        SetText("0123456789abcdef");
        editor.MoveCaret(pos, 0, 1, CaretMoveText);
        EXPECT_EQ(Caret(), "0,12");
        CPoint point;
        editor.TextPos2Point(pos, point);
        EXPECT_EQ(point, editor.GetCaretPoint());
        CTextPos moved = pos;
        editor.ToNextChar(moved);
        EXPECT_EQ(moved.logicalByte, 13);
        moved = pos;
        editor.ToPhysicalLineHome(moved);
        EXPECT_EQ(moved.logicalByte, 10);
        editor.SelectText(CTextPos(), pos, 0, 0);
        EXPECT_EQ(Selected(), "0123456789ab");
        CBuffer text;
        EXPECT_EQ(editor.GetTextWithin(CTextPos(), pos, 0, 0, text), 12);
        editor.GetDocumentPart(0, pos, 0, text);
        EXPECT_STREQ(text, "cdef");
        editor.AddFoundArray(CTextPos(), pos);
        EXPECT_EQ(editor.GetFoundArray()[0]->end.logicalByte, 12);
        editor.DrawSimpleLineMarker(1, CTextPos(), pos);
        EXPECT_EQ(editor.GetLineMarkerArray()[0]->end.logicalByte, 12);
        int length = 0;
        int underline = 0;
        COLORREF color = 0;
        editor.GetDrawColor(pos, length, color, color, underline);
        EXPECT_EQ(length, 4);
        editor.InsertText(pos, "X", 1);
        editor.DeleteText(CTextPos(), pos);
        EXPECT_EQ(Text(), "Xcdef");
    }
}

TEST_F(EditorWnd, MarksTheSelectionOfTheBodyOnly)
{
    Create();
    SetText("head\r\nbody text");
    editor.InsertHeaderLines(1);
    editor.SelectAll();
    editor.DrawLineMarker(2);
    EXPECT_EQ(editor.IsLineMarkerDrawn(), 0);
    editor.SelectText(CTextPos(1, 0), CTextPos(1, 4), 1, 0);
    editor.DrawLineMarker(2);
    editor.SelectText(CTextPos(1, 2), CTextPos(1, 3), 1, 0);
    editor.ClearLineMarker(1);
    EXPECT_EQ(editor.GetLineMarkerArray().GetSize(), 2);
    editor.SetMarkerModified(0);
    editor.ClearLineMarker(0);
    EXPECT_EQ(editor.IsMarkerModified(), 1);
}

TEST_F(EditorWnd, ReplacesTabsUnderCaretAndMarks)
{
    Create();
    SetText("a\tb\tc\r\n\t\x82\xA0\t");
    MoveTo(0, 4);
    editor.DrawLineMarker(1, CTextPos(0, 2), CTextPos(0, 3));
    editor.Tab2SpaceAll();
    EXPECT_EQ(Text(), "a   b   c\r\n    \x82\xA0  ");
    EXPECT_EQ(Caret(), "0,8");
    ASSERT_EQ(editor.GetLineMarkerArray().GetSize(), 1);
    EXPECT_EQ(editor.GetLineMarkerArray()[0]->start.logicalByte, 4);
    EXPECT_EQ(editor.GetLineMarkerArray()[0]->end.logicalByte, 5);
}

TEST_F(EditorWnd, ConvertsBetweenCodeTypes)
{
    Create();
    SetText("\x82\xA0\x82\xA2\r\nx");
    MoveTo(1, 1);
    editor.SetCodeType(CT_UTF8);
    const tlvn::WString units = TW("\x3042\x3044\r\nx");
    EXPECT_EQ(Text(), std::string(reinterpret_cast<const char*>(units.data()), units.size() * 2));
    EXPECT_EQ(Caret(), "1,2");
    CEditorWnd other;
    other.SetDocument(CT_SJIS, "\x82\xA4", 2);
    editor.AppendDoc(other, 1);
    editor.SetCodeType(CT_SJIS);
    EXPECT_EQ(Caret(), "1,1");
    EXPECT_EQ(Text(), "\x82\xA0\x82\xA2\r\nx\r\n>\x82\xA4");
    other.SetDocument(CT_KSC5601, "\xAA\xA4", 2); // the same letters in other bytes
    SetText("");
    editor.AppendDoc(other, 1);
    editor.AppendDoc(CEditorWnd(), 1); // no line, nothing to quote
    EXPECT_EQ(Text(), "\r\n>\x82\xA2");
}

class WideningEditor : public CEditorWnd {
protected:
    void OnTextNotInCode() override { SetCodeType(CT_UTF8); }
};

// What is typed goes behind the caret, also when the text around it has become UTF-16.
TEST(WideningEditor, TakesWhatTheCodeOfItsTextLacks)
{
    WideningEditor editor;
    editor.SetDocument(CT_SJIS, "\x82\xA0\x82\xA2", 4);
    editor.CaretLineRight();
    editor.InputChar('b', 1);
    EXPECT_EQ(editor.GetCodeType(), CT_SJIS);
    editor.InputChar(0xE9, 2);
    CBuffer text;
    editor.GetDocument2(text);
    EXPECT_EQ(tlvn::WString(reinterpret_cast<const WCHAR*>(text.GetBuffer()),
                            static_cast<std::size_t>(text.GetLength()) / 2),
              TW("\x3042"
                 "b\xE9\xE9\x3044"));
    EXPECT_NE(editor.IsDocModified(), 0);
}

// As a screen reader sees it: UTF-16, CR LF, units; a character of two bytes is one.
TEST_F(EditorWnd, AnswersLikeAnEditControl)
{
    Create();
    SetText("\x82\xA0"
            "b\r\ncd");
    WCHAR text[16];
    EXPECT_EQ(::SendMessageW(editor.m_hWnd, WM_GETTEXTLENGTH, 0, 0), 6);
    EXPECT_EQ(::SendMessageW(editor.m_hWnd, WM_GETTEXT, 16, reinterpret_cast<LPARAM>(text)), 6);
    EXPECT_EQ(tlvn::WString(text), tlvn::WString(TW("\x3042") TW("b\r\ncd")));
    EXPECT_EQ(::SendMessageW(editor.m_hWnd, WM_GETTEXT, 3, reinterpret_cast<LPARAM>(text)), 2);

    const struct {
        int start, end;
        const char* selected;
        int first, last;
    } cases[] = {{5, 1, "b\r\nc", 1, 5},
                 {0, -1, "\x82\xA0\x62\r\ncd", 0, 6},
                 {-1, 0, "", 6, 6},
                 {4, 999, "cd", 4, 6}};
    for (const auto& c : cases) {
        ::SendMessageW(editor.m_hWnd, EM_SETSEL, static_cast<WPARAM>(c.start), c.end);
        EXPECT_EQ(Selected(), c.selected);
        DWORD first = 99;
        DWORD last = 99;
        EXPECT_EQ(::SendMessageW(editor.m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&first),
                                 reinterpret_cast<LPARAM>(&last)),
                  MAKELONG(c.first, c.last));
        EXPECT_EQ(MAKELONG(first, last), MAKELONG(c.first, c.last));
    }
    EXPECT_NE(::SendMessageW(editor.m_hWnd, WM_GETDLGCODE, 0, 0) & DLGC_WANTTAB, 0);
    editor.SetReadOnly(1);
    EXPECT_EQ(::SendMessageW(editor.m_hWnd, WM_GETDLGCODE, 0, 0) & DLGC_WANTTAB, 0);
}
