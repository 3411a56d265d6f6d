// The mail editor control: the window in which mails are read and written.
//
//   CEditorWnd editor;
//   editor.CreateEditorWnd(0, WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL, rect, parent, 1,
//                          metrics, colors);
//   editor.SetDocument(CT_SJIS, text, length);
//   editor.SetReadOnly(1);
//
// It is a facade: the text with its history and markers is a tlvn::TextModel, wrapping a
// tlvn::LineWrap, the colours of a run come from tlvn::RunColor; the window keeps caret,
// selection and view, and draws. The sources are cut by concern (editor_wnd_<concern>.cpp).
//
// Texts in a Unicode code type are UTF-16, all others are in the multibyte code page of their
// code type; lengths are in bytes, positions as text_pos.h explains: of one that comes with one
// form alone the other is made. Points and sizes are pixels of the client area. Int results and
// flags are 1 and 0 unless said. Flags called quote put the metrics' quote mark in front of every
// line, those called crlf CR LF between the lines.
//
// Without a window the text can be worked with, too; it is measured by the screen then. All
// calls belong to the thread of the user interface. For lack of memory CMemoryException* is
// thrown.

#pragma once

#include "editor/color.h"
#include "editor/line_marker.h"
#include "editor/metrics.h"
#include "editor/text_model.h"

#include <algorithm>
#include <climits>
#include <memory>

class CAccelData;
class CEditorWnd;

namespace tlvn {
class CharWidths;
class LineWrap;
class RowPixels;
class RunColor;
struct DrawRun;
} // namespace tlvn

// What an editor tells its owner.
enum EditorNotify : int {
    EditorNotifyInsertMode = 0, // insert or overwrite mode was switched on
    EditorNotifyCaret = 1,      // the caret was placed
    EditorNotifyText = 2,       // the text changed
};
// Called in the middle of the change; `user` is what was set with the procedure.
using EditorNotifyProc = void (*)(CEditorWnd* editor, EditorNotify what, DWORD user);

// Why the caret moves: decides what becomes of the x coordinate that moving up and down keeps to.
enum CaretMoveReason : int {
    CaretMoveText = 0,     // to a place in the text: the coordinate is that of the place
    CaretMoveVertical = 1, // up or down: it stays
};

class TLVN_API CEditorWnd : public CWnd {
    DECLARE_DYNAMIC(CEditorWnd)
public:
    // No lines, insert mode, not read-only.
    CEditorWnd();
    ~CEditorWnd() override;

    // --- creation and settings (editor_wnd.cpp, editor_wnd_metrics.cpp) ------------------------
    // Creates the window, with copies of the settings, and one empty line when there is none
    // yet. Returns 1, or 0 after a message box when the system refuses.
    int CreateEditorWnd(DWORD exStyle, DWORD style, const CRect& rect, CWnd* parent, UINT id,
                        const CEditorMetrics& metrics, const CEditorColor& colors);

    // Takes over new settings, wraps all lines anew and repaints. 0 when nothing differs.
    int ChangeEditorMetrics(const CEditorMetrics& metrics);
    const CEditorMetrics& GetEditorMetrics() const { return m_metrics; }
    // Replaces the colours and repaints; 0 when none differs.
    int ChangeEditorColors(const CEditorColor& colors);
    const CEditorColor& GetEditorColors() const { return m_colors; }

    // Makes the font for the code type of the text, at the resolution of the window's screen.
    void SetCurrentFont();
    CFont* GetCurrentFont() { return &m_font; }
    // Height of a character; a line on screen is that and the line space high. Width of an
    // average character, which is the unit of horizontal scrolling.
    int GetCharHeight() const { return m_charHeight; }
    int GetCharWidth() const { return m_charWidth; }
    int GetLineHeight() const { return m_charHeight + GetLineSpace(); }
    // Wraps all lines anew when they are wrapped at the window and its width has changed.
    void UpdateAutoTurn();
    // The drawn width of a line's widest physical line.
    int GetLineWidth(const CLLineData* line) const;
    // Bytes of indentation at the start of the text; whether it is not empty and nothing else.
    int GetIndentLength(const char* text, int length) const;
    int IsIndentTextAll(const char* text, int length) const;
    // Bytes of the line's quote prefix and the indentation behind it, at most `length`.
    int GetQuoteLength(const CLLineData* line, int length) const;
    // Replaces every tab of the document by blanks up to its tab stop, as one step to undo.
    void Tab2SpaceAll();

    // --- document (editor_wnd_document.cpp) ----------------------------------------------------
    // Replaces everything: text, header block, history, markers, flags. Returns 1.
    int SetDocument(CodeType codeType, const char* text, int length);
    // Appends the lines of the text behind the last line. No change to undo.
    void AppendText(const char* text, int length, int quote);
    // Appends the other editor's lines, converted to this one's code type.
    void AppendDoc(const CEditorWnd& other, int quote);
    // Removes all lines, and what SetDocument replaces with them.
    void ClearAllLineData();

    // Copy lines out; `out` is replaced. GetDocument: from the top or from below the header
    // block; finalCrlf (with crlf) ends the text with CR LF when it does not. GetDocument2: the
    // body with CR LF between the lines. GetDocumentPart: from a position to the end.
    void GetDocument(int withHeader, int quote, int crlf, int finalCrlf, CBuffer& out) const;
    void GetDocument2(CBuffer& out) const;
    void GetDocumentPart(int quote, const CTextPos& from, int crlf, CBuffer& out) const;
    // The text between two positions (logical forms). Returns its length; into `size` bytes: of
    // what fits before a terminating zero, in whole characters, -1 without room for the zero.
    int GetTextWithin(const CTextPos& from, const CTextPos& to, int quote, int crlf, char* out,
                      int size) const;
    int GetTextWithin(const CTextPos& from, const CTextPos& to, int quote, int crlf,
                      CBuffer& out) const;
    // The same of the selection; the wide one converted to UTF-16.
    int GetSelectedText(int quote, int crlf, CBuffer& out) const;
    CStringW GetSelectedTextW(int quote, int crlf) const;

    // Makes the first `count` lines the header block.
    void InsertHeaderLines(int count);
    // Puts the lines of `text` in front, as the start of the header block.
    void InsertHeaderText(const char* text, int length);
    // Removes the lines of the header block.
    void RemoveHeaderText();
    // Logical and physical lines of the header block.
    int GetHeaderLineL() const { return GetDoc().GetHeaderLineCount(); }
    int GetHeaderLineP() const { return GetDoc().GetHeaderPhysicalCount(); }

    CodeType GetCodeType() const { return GetDoc().GetCodeType(); }
    // As Document::SetCodeType. Caret and selection stay; when the text is converted, history,
    // markers and search hits go.
    void SetCodeType(CodeType codeType);
    // Logical and physical lines, of all the text or of the body.
    int GetLogicalLineCt(int withHeader) const;
    int GetPhisicalLineCt(int withHeader) const;
    // Physical lines of the document, and counting them anew.
    int GetDocSize() const { return GetDoc().GetPhysicalCount(); }
    int CalcDocSize() const { return GetDocSize(); }
    // The text itself, for all that asks without changing.
    const tlvn::Document& GetDoc() const { return m_model.GetDocument(); }

    // Insert at a position, delete between two (logical forms); the caret goes behind the
    // inserted text or to where the text was, the selection ends. Return the place of the caret.
    // Nothing happens in a read-only editor.
    CTextPos InsertText(const CTextPos& at, const char* text, int length);
    CTextPos DeleteText(const CTextPos& from, const CTextPos& to);
    // All changes between the two are undone in one step. The owner is told of each.
    void BeginChangeGroup() { m_model.BeginGroup(); }
    void EndChangeGroup() { m_model.EndGroup(); }
    int Undo();
    int Redo();
    int CanUndo() const { return IsReadOnly() == 0 && m_model.CanUndo(); }
    int CanRedo() const { return IsReadOnly() == 0 && m_model.CanRedo(); }
    // Tell of a change of the text: the markers move, both modified flags are set.
    void TextInserted(int line1, int byte1, int line2, int byte2);
    void TextDeleted(int line1, int byte1, int line2, int byte2);

    int IsReadOnly() const { return m_readOnly; }
    void SetReadOnly(int on);
    // Insert mode, or else overwrite mode.
    int IsInsertMode() const { return m_insertMode; }
    void SetInsertMode(int on);
    int IsDocModified() const { return m_model.IsModified(); }
    void SetDocModified(int on) { m_model.SetModified(on != 0); }
    int IsMarkerModified() const { return m_model.IsMarkerModified(); }
    void SetMarkerModified(int on) { m_model.SetMarkerModified(on != 0); }
    // A sample in a settings dialog: it takes neither caret nor mouse.
    void SetForSample(int on) { m_forSample = on != 0; }
    // Laid out for a page: small margins.
    void SetForPrint(int on);
    // The sender for links to mail addresses, in the multibyte code page.
    void SetMailtoFrom(const char* address) { m_mailtoFrom = address; }
    // One procedure at a time; null for none.
    void SetEditorNotifyProc(EditorNotifyProc procedure, DWORD user);

    // --- positions (see document.h for each) ---------------------------------------------------
    int GetSerialLineP(int line, int physical) const
    {
        return GetDoc().GetSerialLineP(line, physical);
    }
    int GetLineCountP(int line) const { return GetDoc().GetLineCountP(line); }
    int GetLineByteCountP(int line, int physical) const
    {
        return GetDoc().GetLineByteCountP(line, physical);
    }
    void ByteL2ViewIndex(int line, int byte, CTextPos& pos) const
    {
        GetDoc().ByteL2ViewIndex(line, byte, pos);
    }
    int ViewIndex2ByteL(const CTextPos& pos) const { return GetDoc().ViewIndex2ByteL(pos); }
    void P2LByteIndex(CTextPos& pos, int clamp) const { GetDoc().P2LByteIndex(pos, clamp); }
    void L2PByteIndex(CTextPos& pos) const { GetDoc().L2PByteIndex(pos); }
    void ToLogicalLineHome(CTextPos& pos) const { GetDoc().ToLogicalLineHome(pos); }
    void ToLogicalLineEnd(CTextPos& pos) const { GetDoc().ToLogicalLineEnd(pos); }
    int ToNextLogicalLine(CTextPos& pos) const { return GetDoc().ToNextLogicalLine(pos); }
    void ToPhysicalLineHome(CTextPos& pos) const { GetDoc().ToPhysicalLineHome(Complete(pos)); }
    void ToPhysicalLineEnd(CTextPos& pos) const { GetDoc().ToPhysicalLineEnd(Complete(pos)); }
    int ToNextPhysicalLine(CTextPos& pos) const
    {
        return GetDoc().ToNextPhysicalLine(Complete(pos));
    }
    int ToNextChar(CTextPos& pos) const { return GetDoc().ToNextChar(Complete(pos)); }
    void ToWordTop(CTextPos& pos) const { GetDoc().ToWordTop(Complete(pos)); }
    int ToNextWordTop(CTextPos& pos) const { return GetDoc().ToNextWordTop(Complete(pos)); }
    int ToNextTextIfFree(CTextPos& pos) const { return GetDoc().ToNextTextIfFree(Complete(pos)); }
    void GetDocEnd(CTextPos& pos) const { pos = GetDoc().GetDocEnd(); }
    void MoveTextPos(CTextPos& pos, int count) const { GetDoc().MoveTextPos(Complete(pos), count); }

    // --- selection (editor_wnd_selection.cpp) --------------------------------------------------
    // Selects between two positions (logical forms): `anchor` stays when the selection is
    // extended. With moveCaret the caret goes to `end`; with scroll into view.
    void SelectText(const CTextPos& anchor, const CTextPos& end, int moveCaret, int scroll);
    // A line with its end.
    void SelectLogicalLine(int line, int scroll);
    // The word at a position or under a point.
    void SelectWord(const CTextPos& at);
    void SelectWord(CPoint point);
    void SelectAll();
    void ClearTextSelect(int redraw);
    int IsTextSelected() const { return m_selAnchor != m_selEnd; }
    // A selection of which nothing lies in the header block.
    int IsBodyTextSelected() const;
    // The caret stands at the smaller end of the selection.
    int IsCaretSelectStartPos() const;
    // The ends in the order of the text; both the caret without a selection.
    void GetSelectRange(CTextPos& start, CTextPos& end) const;

    // Ranges to be shown as found, until they are cleared or the text is replaced. They move
    // with the text.
    void AddFoundArray(const CEditorTextViewRangeArray& found);
    void AddFoundArray(const CTextPos& start, const CTextPos& end);
    void ClearFoundArray();
    // In the order of the text; they have logical forms only.
    const CEditorTextViewRangeArray& GetFoundArray() const { return m_found; }

    // --- line markers (editor_wnd_marker.cpp; see text_model.h) --------------------------------
    // Mark the selection, if it is in the body (CanDrawLineMarker), or between two positions.
    // DrawSimpleLineMarker lays one record beside the arranged ones, without a history.
    void DrawLineMarker(int kind);
    void DrawLineMarker(int kind, const CTextPos& from, const CTextPos& to);
    void DrawSimpleLineMarker(int kind, const CTextPos& from, const CTextPos& to);
    // Erases marks: with 1 those in the selection, with 0 all and their history.
    void ClearLineMarker(int selectionOnly);
    // Erases all marks; can be undone.
    void EraseAllLineMarker();
    void ArrangeLineMarker();
    void InitLineMarkerArray(const CEditorLineMarkerArray& markers);
    // Take over the marks of another editor, whose whole text or selection this one holds.
    void CopyLineMarkerArray(const CEditorWnd& other);
    void CopySelectedLineMarkerArray(const CEditorWnd& other);
    // The arranged marks.
    const CEditorLineMarkerArray& GetLineMarkerArray() const { return m_model.GetMarkers(); }
    int GetLineMarkerHistorySize() const { return m_model.GetMarkerHistorySize(); }
    void SetLineMarkerHistorySize(int count);
    int CanDrawLineMarker() const { return IsBodyTextSelected(); }
    // Whether there are marks.
    int IsLineMarkerDrawn() const { return GetLineMarkerArray().GetSize() > 0; }

    // --- colours, links, flagged characters (editor_wnd_color.cpp) -----------------------------
    // How the text from a position (logical form) on is drawn: the colours, whether underlined,
    // and for how many bytes. 0 when the line's base colours apply.
    int GetDrawColor(const CTextPos& at, int& length, COLORREF& text, COLORREF& back,
                     int& underline) const;
    // The link under a point: its type, ElRangeNone for none; its text in the multibyte code
    // page when `text` is not null.
    CEditorLineRange::ElRangeType GetURLOn(CPoint point, CString* text) const;
    // Opens a link with the program for it, mails coming from the address of SetMailtoFrom.
    // Returns 1, or 0 when there is nothing to open or the system could not.
    int OpenURL(CEditorLineRange::ElRangeType type, const char* text) const;
    // Moves the caret to the first half-width katakana (1) or machine-dependent character (2)
    // of a text that is edited in Shift_JIS. Returns 1, or 0 when there is none.
    int MoveToFirstHanKanaOrMacnDepend(int which);

    // --- caret (editor_wnd_caret.cpp) ----------------------------------------------------------
    const CTextPos& GetCaretTPos() const { return m_caretPos; }
    // Where the caret stands, also when that is outside the window.
    CPoint GetCaretPoint() const;
    // Line, counted as the line ruler does, and column of the caret, both from 0.
    void GetCaretPos(int& line, int& column) const;
    // Places the system's caret at a client point and nothing else.
    void SetCaretPos(POINT point);
    // Moves the caret to a position (display form; a byte behind the last character of a
    // physical line that another follows is the same as the next one's start, but shown in
    // place). With select the selection is extended to there, otherwise it ends; with scroll
    // the view follows.
    void MoveCaret(const CTextPos& pos, int select, int scroll, CaretMoveReason reason);
    // Scrolls until the caret keeps two characters from the left and right edge of the text and
    // two lines from top and bottom; with scroll 0 the caret moves into the lines instead.
    void EnsureCaretVisible(int scroll);
    // Whether a caret is shown while the editor has the focus.
    int IsCaretUsed() const;

    // Caret commands. They extend the selection while the Shift key is down. In an editor
    // without a caret those that go up and down or to an end of the document scroll.
    void CaretLineUp();
    void CaretLineDown();
    void CaretLineLeft();
    void CaretLineRight();
    void CaretWordLeft();
    void CaretWordRight();
    void CaretPageUp();
    void CaretPageDown();
    void CaretHome();
    void CaretEnd();
    void CaretDocHome();
    void CaretDocEnd();

    // --- view (editor_wnd_scroll.cpp) ----------------------------------------------------------
    // Lays out for a rectangle instead of the client area; null ends that.
    void SetLClientRect(const RECT* rect);
    // The rulers, or the margins without them.
    int GetColRulerHeight() const;
    int GetLineRulerWidth() const;
    // Lines that fit, also when a horizontal scroll bar is not shown now; columns of average
    // characters; the width at which the text is wrapped: two characters short of the edge, to
    // have room for what hangs beyond it and for the caret.
    int GetVisibleLineCt() const;
    int GetVisibleColCt() const;
    int GetVisibleWidth() const;
    // The physical line at the top, the column at the left.
    int GetVertScrollPos() const { return m_topLine; }
    int GetHorzScrollPos() const { return m_leftColumn; }
    int GetHorzScrollPageSize() const { return GetVisibleColCt(); }
    // Brings range and place of the scroll bars up to date: horizontal, vertical.
    void UpdateScrollBar(int horz, int vert);
    void ScrollToVertPos(int line);
    void ScrollToHorzPos(int column);
    void ScrollLineUp() { ScrollToVertPos(m_topLine - 1); }
    void ScrollLineDown() { ScrollToVertPos(m_topLine + 1); }
    void ScrollLineLeft() { ScrollToHorzPos(m_leftColumn - 1); }
    void ScrollLineRight() { ScrollToHorzPos(m_leftColumn + 1); }
    // Positive counts scroll towards the start. With moveCaret the caret keeps its place on
    // screen, unless the metrics fix it to the text or text is selected.
    void ScrollLineUpDown(int lines, int moveCaret);
    void ScrollLineLeftRight(int columns);
    void ScrollPageUp();
    void ScrollPageDown();
    void ScrollPageLeft();
    void ScrollPageRight();

    // The top left corner of a position (display form).
    void TextPos2Point(const CTextPos& pos, CPoint& point) const;
    // The position under a point, both forms: that of the nearest gap between two characters,
    // or with nearest 0 of the character. Returns 1 when there is text, 0 when the point is
    // behind the line's end or outside the lines; the position is then the closest, or with the
    // free cursor one behind the text.
    int CursorPoint2TextPos(CPoint point, int nearest, CTextPos& pos) const;
    // The same in the physical line of `pos`, x being counted from its start.
    int GetBytePAtX(int x, int nearest, CTextPos& pos) const;

    // --- painting (editor_wnd_paint.cpp) -------------------------------------------------------
    // Draws the part `update` of the client area, rulers included.
    void DoPaint(CDC& dc, const CRect& update);
    void DrawColRuler(CDC& dc, const CRect& update);
    // The line number of a physical line whose top is at y.
    void DrawLineRuler(CDC& dc, int line, int physical, int y);
    // The marks of a tab, a blank, a full-width blank, a line end within a cell of the text and
    // of the end of the text; -1 is the symbol colour.
    void DrawTab(CDC& dc, const CRect& cell, COLORREF color) const;
    void DrawSpace(CDC& dc, const CRect& cell, COLORREF color) const;
    void DrawZenSpace(CDC& dc, const CRect& cell, COLORREF color) const;
    void DrawCR(CDC& dc, const CRect& cell, COLORREF color) const;
    void DrawEOF(CDC& dc, CPoint point) const;
    // Have lines repainted: between two positions in either order, one physical line, one
    // logical line, all from a line on; the mark of a column in the column ruler.
    void InvalidateRange(const CTextPos& a, const CTextPos& b);
    void InvalidateLineP(int line, int physical);
    void InvalidateLineL(int line);
    void InvalidateFrom(int line, int physical);
    void InvalidateColIndicator(int column);

    // --- mouse (editor_wnd_mouse.cpp) ----------------------------------------------------------
    // Sets the cursor for a client point.
    void UpdateCursorKind(CPoint point);

    // --- commands (editor_wnd_command.cpp) -----------------------------------------------------
    // The keys of all editors: virtual keys with modifiers and the commands (editor_command.h)
    // they run. Empty until the application fills it, with SetDefaultEditorKeys or its settings.
    static CAccelData m_acdata;
    static CAccelData& GetAccelData() { return m_acdata; }

    // Runs the commands of keys going down, as often as the message says the key repeated.
    BOOL PreTranslateMessage(MSG* message) override;
    // Runs the command of a key with the modifiers that are down now. While Shift is down a key
    // that moves the caret without it does so, too, and extends the selection. Returns 1 when
    // the key has a command.
    int CheckEditorCmd(UINT vkey);
    // Runs a command; other numbers do nothing. Read-only, the caret moves and that is all.
    void ExecEditorCmd(int id);

    // Deleting. The first three delete the selection when there is one, otherwise the character
    // before or behind the caret (or the line end there), or what is left of the word at the
    // caret with the blanks behind it. The others look at the line of the caret alone: all of it
    // with its end, or what is before or behind the caret. Each is one step to undo.
    void DeleteChar();
    void BackSpaceChar();
    void DeleteWord();
    void DeletePhysicalLine();
    void DeletePhysicalLineHome();
    void DeletePhysicalLineEnd();
    void DeleteLogicalLine();
    void DeleteLogicalLineHome();
    void DeleteLogicalLineEnd();

    // --- typing (editor_wnd_input.cpp) ---------------------------------------------------------
    //
    // What is typed takes the place of the selection. In overwrite mode each typed character takes
    // that of one character behind the caret, full-width or not, but not of the line's end. A
    // call is one step to undo.

    // Types a character (a code point) so many times: CR and LF as InsertCR, a tab as the metrics
    // say or, while lines are selected, as Indent (Shift: to the left). Other control characters
    // are ignored. One that the text's code lacks becomes "?".
    void InputChar(UINT ch, UINT repeat);
    // A line break. With AutoIndent of the metrics the new line begins with the indentation that
    // stands before the caret in this one.
    void InsertCR();
    // Moves the lines of a selection that reaches over a line end by `count` tab stops, to the
    // right, or with indent 0 to the left; they stay selected. Empty lines stay empty. Returns 0
    // when no lines are selected so.
    int Indent(int indent, int count);
    // The same with one line; to the left for a count below 0. To the right: tabs, or blanks
    // with Tab2Space of the metrics. To the left: characters of the metrics' IndentList, as many
    // as there are in so many columns. Returns 1 when the line changed.
    int IndentLine(int line, int count);

    // --- clipboard (editor_wnd_clipboard.cpp) --------------------------------------------------
    // Copy the selection to the clipboard. Cut deletes it then, but copies nothing when part of
    // it lies in the header block. Return 1, or 0 when nothing was copied.
    int Copy();
    int Cut();
    // Insert the clipboard's text in place of the selection, every line behind the quote mark
    // with quote 1. Return 0 when there is none or the clipboard does not open.
    int PasteText(int quote);
    int Paste() { return PasteText(0); }
    int PasteWithQuote() { return PasteText(1); }
    // Deletes as DeleteChar does. 0 when read-only.
    int Clear();
    // Inserts a text in the editor's code in place of the selection. 0 when read-only.
    int Insert(const char* text, int length);
    // What can be done now.
    int CanCopy() const { return IsTextSelected(); }
    int CanCut() const { return m_readOnly == 0 && IsBodyTextSelected() != 0; }
    int CanPaste() const;
    int CanClear() const { return m_readOnly == 0; }
    int CanInsert() const { return m_readOnly == 0; }
    int CanSelectAll() const { return GetDocSize() > 0; }

    // --- messages ------------------------------------------------------------------------------
    // The handlers are there to be called, too: by who drives the editor without a message loop.
    int OnCreate(LPCREATESTRUCT create);
    void OnDestroy();
    void OnPaint();
    BOOL OnEraseBkgnd(CDC* dc);
    void OnNcPaint();
    void OnSize(UINT type, int width, int height);
    void OnVScroll(UINT code, UINT pos, CScrollBar* scrollBar);
    void OnHScroll(UINT code, UINT pos, CScrollBar* scrollBar);
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);
    void OnRButtonDown(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message);
    void OnCaptureChanged(CWnd* window);
    void OnCancelMode();
    void OnTimer(UINT_PTR id);
    void OnSetFocus(CWnd* oldWindow);
    void OnKillFocus(CWnd* newWindow);
    UINT OnGetDlgCode();
    void OnSysColorChange();
    void OnSettingChange(UINT flags, LPCSTR section);
    LRESULT OnDpiChanged(WPARAM wParam, LPARAM lParam);
    // For screen readers: the text as UTF-16 with CR LF between the lines, the selection by
    // units of that.
    LRESULT OnGetText(WPARAM wParam, LPARAM lParam);
    LRESULT OnGetTextLength(WPARAM wParam, LPARAM lParam);
    LRESULT OnGetSel(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetSel(WPARAM wParam, LPARAM lParam);
    // Two surrogates, or the two bytes of a double-byte character, make one character. A repeat
    // count of 0 is 1.
    void OnChar(UINT character, UINT repeat, UINT flags);
    LRESULT OnImeChar(WPARAM wParam, LPARAM lParam);
    // The messages by which dialogs and other programs edit a text.
    LRESULT OnCopy(WPARAM wParam, LPARAM lParam);
    LRESULT OnCut(WPARAM wParam, LPARAM lParam);
    LRESULT OnPaste(WPARAM wParam, LPARAM lParam);
    LRESULT OnClear(WPARAM wParam, LPARAM lParam);
    LRESULT OnUndo(WPARAM wParam, LPARAM lParam);
    LRESULT OnCanUndo(WPARAM wParam, LPARAM lParam);
    LRESULT OnReplaceSel(WPARAM wParam, LPARAM lParam);
    // The input method (editor_wnd_ime.cpp) draws what is composed, in the editor's font at the
    // caret; the result is typed in one step. It may ask for the text around the caret, to
    // convert it again or to know what it goes with.
    LRESULT OnImeStartComposition(WPARAM wParam, LPARAM lParam);
    LRESULT OnImeComposition(WPARAM wParam, LPARAM lParam);
    LRESULT OnImeEndComposition(WPARAM wParam, LPARAM lParam);
    LRESULT OnImeRequest(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    // Text that is typed, composed, pasted or sent has what the code of the document lacks. It
    // becomes "?", unless a derived class changes the code here (SetCodeType).
    virtual void OnTextNotInCode() {}

private:
    enum class Drag { None, Text, Line };
    // With the free cursor there are lines behind the last; numbers stay far from overflowing.
    static constexpr int kLastFreeLine = INT_MAX / 4;

    CTextPos& Complete(CTextPos& pos) const { return pos = GetDoc().Completed(pos); }
    bool HasWindow() const { return m_hWnd != nullptr; }
    void Notify(EditorNotify what);

    void SelectFont(CodeType codeType);
    void SelectRulerFont();
    void PrepareLayout();
    // Wraps all lines by the present settings and width.
    void UpdateLayout();
    // Brings what is kept by the text up to date after physical lines have changed; `top` is the
    // text that stood at the top of the view.
    void UpdatePlaces(CTextPos top);
    CTextPos ConvertPlace(const CTextPos& pos, CodeType codeType) const;
    CTextPos GetTopPos() const { return GetDoc().FindSerialLineP(m_topLine); }
    void UpdateDrawColors();
    int CountRulerDigits() const;
    // After the number of physical lines or their widths have changed: rulers and scroll bars.
    void FollowDocumentSize();

    tlvn::TextForm MakeTextForm(int quote, int crlf, int finalCrlf) const;
    // Around changes by the model: the view, hits and scroll bars follow, the caret goes to
    // `caret`, what changed is painted.
    void BeginChanges();
    void FollowChanges(const CTextPos& caret);
    void OnTextChange(const tlvn::TextChange& change);
    // After the header block has changed by so many lines.
    void FollowHeader(CTextPos top, int lines);
    int StepHistory(int (tlvn::TextModel::*step)(CTextPos&));
    void ResetPlaces();

    void SetSelection(const CTextPos& anchor, const CTextPos& end);
    // Brings a position (logical form) to where the caret may stand.
    void ToPlace(CTextPos& pos) const;
    bool IsLineEndSelected(int line) const;

    void CreateCaretIfUsed();
    void DestroyCaretIfMade();
    void PlaceCaret();
    // In pixels from the start of its row, and as a column of the ruler.
    int GetCaretX() const;
    int GetCaretColumn() const;
    // The column of a position (display form), tabs counted.
    int GetColumn(const CTextPos& pos) const;
    // Where the caret is shown: not its position when that is at the end of a physical line.
    CTextPos GetCaretViewPos() const;
    int GetCaretRow() const;
    // Both are in the text or, with the free cursor, behind it.
    void MoveCaretAndAnchor(const CTextPos& anchor, const CTextPos& place, bool atRowEnd,
                            int scroll, CaretMoveReason reason);
    void MoveCaretByKey(const CTextPos& pos, CaretMoveReason reason);
    void MoveCaretToRow(int row, bool select, int scroll);
    void MoveCaretPage(int direction);

    // So that no sum with heights of lines overflows.
    int GetLineSpace() const { return std::min(m_metrics.GetLineSpace(), 10000); }
    CRect GetLayoutRect() const;
    CRect GetTextRect() const;
    // Whole lines between the rulers and the lower edge.
    int GetRowCount() const;
    int GetMaxTopLine() const;
    int GetMaxLeftColumn() const;
    int GetRowTop(int row) const;
    int ScrollBy(int lines, bool moveCaret);
    void SetScroll(int bar, int count, int page, int position);
    int GetThumbPos(int bar, UINT pos);
    int GetX(const CTextPos& pos) const;
    int GetBlankBytes() const { return GetDoc().IsWide() ? 2 : 1; }

    void PaintRulers(CDC& dc, const CRect& update, CDC* buffer);
    void PaintRows(CDC& dc, const CRect& update, CDC* buffer);
    void PaintRow(CDC& dc, tlvn::RunColor& coloring, const CTextPos& row, int y);
    int PaintPiece(CDC& dc, const char* text, int length, const tlvn::DrawRun& run, int x, int y);
    void PaintLineEnd(CDC& dc, int line, int x, int y);
    void PaintMark(CDC& dc, const CRect& cell, int kind, COLORREF color) const;
    void DrawRulerEdge(CDC& dc, int top, int bottom) const;
    CDC* PrepareBuffer(CDC& dc, int width, int height);
    void FreeBuffer();
    void InvalidateRows(int first, int last);

    void DeleteRange(const CTextPos& from, const CTextPos& to);
    bool DeleteSelection();
    void ReplaceText(const CTextPos& from, const CTextPos& to, const char* text, int length);
    void TypeText(const char* text, int length);
    void TypeUnits(tlvn::WStringView units);
    void MakeOwnText(tlvn::WStringView units, std::string& text);
    void TypeTabs(UINT count);
    bool TakesBytes() const;
    void TakeUnit(UINT unit, UINT repeat);
    void TakeByte(UINT byte, UINT repeat);
    bool GetSelectedLines(int& first, int& end) const;
    int IndentBy(int line, int count, CBuffer& scratch);

    // The line of the selection's start around it, as the input method is given it.
    struct Surroundings {
        tlvn::WString units;
        CTextPos start;   // of `units`
        int selStart = 0; // in units
        int selLength = 0;
    };
    bool GetSurroundings(Surroundings& around) const;
    LRESULT GiveSurroundings(RECONVERTSTRING* out, bool withSelection) const;
    LRESULT SelectForReconversion(const RECONVERTSTRING& wanted);
    LRESULT GiveCharPosition(IMECHARPOSITION& position);
    COMPOSITIONFORM GetCompositionForm() const;
    void PlaceComposition();

    void StartDrag(Drag drag, const CTextPos& anchor);
    void DragTo(CPoint point);
    void EndDrag();
    void ScrollWhileDragging(bool on);
    bool IsInRulers(CPoint point) const;

    CEditorMetrics m_metrics;
    CEditorColor m_colors;
    CEditorColor m_drawColors; // m_colors, or the system's for high contrast
    tlvn::TextModel m_model;
    std::unique_ptr<tlvn::CharWidths> m_widths;
    std::unique_ptr<tlvn::LineWrap> m_layout; // what the model's lines are wrapped by
    std::unique_ptr<tlvn::RowPixels> m_pixels;

    CFont m_font;
    CFont m_linkFont; // the same, underlined
    CFont m_rulerFont;
    HCURSOR m_textCursor = nullptr;
    HCURSOR m_arrowCursor = nullptr;
    HCURSOR m_linkCursor = nullptr;
    int m_charHeight = 1;
    int m_charWidth = 1;
    int m_digitWidth = 1; // in the ruler font
    int m_rulerDigits = 1;
    int m_wrapWidth = -1; // width of the last layout

    CTextPos m_caretPos;
    bool m_caretAtRowEnd = false; // shown at the end of the physical line before its position
    int m_caretX = 0;             // for moving up and down, from the start of the line
    bool m_caretMade = false;
    CTextPos m_selAnchor;
    CTextPos m_selEnd;
    CEditorTextViewRangeArray m_found;

    int m_topLine = 0;
    int m_leftColumn = 0;
    bool m_fixedRect = false;
    CRect m_layoutRect;
    DWORD m_scrollStyle = 0;     // as created: a scroll bar that the system hides loses its style
    SCROLLINFO m_scroll[2] = {}; // as last told to the system

    // Since BeginChanges.
    struct Changes {
        int count = 0;
        int firstLine = 0;
        bool oneLine = true;
        int total = 0; // physical lines before
        CTextPos top;  // the text at the top of the view
    };
    Changes m_changes;

    Drag m_drag = Drag::None;
    CTextPos m_dragAnchor; // start of the physical line of a line drag
    CPoint m_dragPoint;
    bool m_dragScrolls = false;

    int m_readOnly = 0;
    int m_insertMode = 1;
    bool m_forSample = false;
    bool m_forPrint = false;
    CString m_mailtoFrom;
    EditorNotifyProc m_notify = nullptr;
    DWORD m_notifyUser = 0;
    HIMC m_inputContext = nullptr; // detached while read-only
    bool m_composing = false;
    UINT m_typedHalf = 0; // the first half of a character, while the second is awaited

    CDC m_bufferDC; // one row is drawn here and then copied
    CBitmap m_bufferBitmap;
    CSize m_bufferSize;
    tlvn::WString m_units; // scratch of drawing
    std::vector<int> m_advances;
};
