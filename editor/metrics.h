// The editor's settings: how caret and typing behave, what is shown, how lines are wrapped.
//
//   CEditorMetrics metrics;
//   metrics.GetEditorMetrics(settings, "Viewer", 1);
//   metrics.SetAutoTurn(2);
//   editor.ChangeEditorMetrics(metrics);
//
// Each setting has the name of its key in a settings section; flags are 1 or 0. The lists are sets
// of characters in Shift_JIS. Of them the metrics keep a second copy in the code type of the text
// being edited (ChangeCodePage), which the editor compares with; its getters end in Edit. The
// copies are no settings: comparing metrics does not look at them.

#pragma once

#include "editor/multi_font.h"
#include "foundation/buffer.h"

class TLVN_API CEditorMetrics {
public:
    enum : int {
        kNoTurn = 0,
        kTurnAtColumn = 1,
        kTurnAtWindow = 2,
    };

    // The defaults of an editor in which mail is composed.
    CEditorMetrics();

    // Reads all settings; missing ones get the defaults. With `viewer` 0 those of a composer, whose
    // "ShowCaret" is not read but 1; else those of a viewer: "ShowCaret", "NoTurnQuoted" and
    // "NoTurnURL" 0, "AutoTurn" 2. Null settings hold nothing, and nothing is written to them.
    void GetEditorMetrics(const CSettingData* settings, const char* section, int viewer);
    void SetEditorMetrics(CSettingData* settings, const char* section) const;

    // Makes the copies of the lists for text of that code type, UTF-16 for a Unicode one. A
    // character that the code has not is left out. After construction: CT_SJIS.
    void ChangeCodePage(CodeType codeType);
    CodeType GetCodeType() const { return m_codeType; }

    // --- caret and typing ----------------------------------------------------------------------
    // A caret also in a read-only editor.
    int GetShowCaret() const { return m_showCaret; }
    void SetShowCaret(int on) { m_showCaret = on != 0; }
    // The caret may stand behind the end of a line and of the text.
    int GetFreeCursor() const { return m_freeCursor; }
    void SetFreeCursor(int on) { m_freeCursor = on != 0; }
    // The caret keeps its place in the text while the view scrolls.
    int GetFixCursorPos() const { return m_fixCursorPos; }
    void SetFixCursorPos(int on) { m_fixCursorPos = on != 0; }
    // A new line repeats the indentation of the one before.
    int GetAutoIndent() const { return m_autoIndent; }
    void SetAutoIndent(int on) { m_autoIndent = on != 0; }
    // A typed tab becomes blanks.
    int GetTab2Space() const { return m_tab2Space; }
    void SetTab2Space(int on) { m_tab2Space = on != 0; }
    // Characters that count as indentation.
    const CBuffer& GetIndentList() const { return m_indentList.list; }
    const CBuffer& GetIndentListEdit() const { return m_indentList.edit; }
    void SetIndentList(const CBuffer& list);
    // A single click opens a link.
    int GetSingleClickURL() const { return m_singleClickURL; }
    void SetSingleClickURL(int on) { m_singleClickURL = on != 0; }

    // --- quoting -------------------------------------------------------------------------------
    // Characters that make up the prefix of a quoted line, and the most of them.
    const CBuffer& GetQuoteList() const { return m_quoteList.list; }
    const CBuffer& GetQuoteListEdit() const { return m_quoteList.edit; }
    void SetQuoteList(const CBuffer& list);
    int GetQuoteLen() const { return m_quoteLen; }
    void SetQuoteLen(int characters) { m_quoteLen = characters; }
    // What quoting puts in front of a line.
    const CBuffer& GetQuoteMark() const { return m_quoteMark.list; }
    const CBuffer& GetQuoteMarkEdit() const { return m_quoteMark.edit; }
    void SetQuoteMark(const CBuffer& mark);

    // --- what is shown -------------------------------------------------------------------------
    // Pixels between lines; below 0 is 0.
    int GetLineSpace() const { return m_lineSpace; }
    void SetLineSpace(int pixels) { m_lineSpace = pixels > 0 ? pixels : 0; }
    // Marks of line ends, "[EOF]" behind the last line, marks of tabs, blanks and full-width
    // blanks.
    int GetShowCR() const { return m_showCR; }
    void SetShowCR(int on) { m_showCR = on != 0; }
    int GetShowEOF() const { return m_showEOF; }
    void SetShowEOF(int on) { m_showEOF = on != 0; }
    int GetShowTab() const { return m_showTab; }
    void SetShowTab(int on) { m_showTab = on != 0; }
    int GetShowSpace() const { return m_showSpace; }
    void SetShowSpace(int on) { m_showSpace = on != 0; }
    int GetShowZenSpace() const { return m_showZenSpace; }
    void SetShowZenSpace(int on) { m_showZenSpace = on != 0; }
    // The rulers above and at the left of the text.
    int GetShowColRuler() const { return m_showColRuler; }
    void SetShowColRuler(int on) { m_showColRuler = on != 0; }
    int GetShowLineRuler() const { return m_showLineRuler; }
    void SetShowLineRuler(int on) { m_showLineRuler = on != 0; }
    // The line ruler counts physical lines, else logical ones.
    int GetPhisicalLineNo() const { return m_phisicalLineNo; }
    void SetPhisicalLineNo(int on) { m_phisicalLineNo = on != 0; }

    // --- wrapping ------------------------------------------------------------------------------
    // kNoTurn, kTurnAtColumn or kTurnAtWindow; others change nothing.
    int GetAutoTurn() const { return m_autoTurn; }
    void SetAutoTurn(int mode);
    // The column of kTurnAtColumn, brought into 10 to 400.
    int GetTurnCols() const { return m_turnCols; }
    void SetTurnCols(int columns);
    // Quoted lines are not wrapped; links are not cut.
    int GetNoTurnQuoted() const { return m_noTurnQuoted; }
    void SetNoTurnQuoted(int on) { m_noTurnQuoted = on != 0; }
    int GetNoTurnURL() const { return m_noTurnURL; }
    void SetNoTurnURL(int on) { m_noTurnURL = on != 0; }
    // Characters that may not begin a line, among them the blank that reading appends and
    // writing takes away; characters that may not end one.
    const CBuffer& GetHead2Prev() const { return m_head2Prev.list; }
    const CBuffer& GetHead2PrevEdit() const { return m_head2Prev.edit; }
    void SetHead2Prev(const CBuffer& list);
    const CBuffer& GetTail2Next() const { return m_tail2Next.list; }
    const CBuffer& GetTail2NextEdit() const { return m_tail2Next.edit; }
    void SetTail2Next(const CBuffer& list);
    // Words of single-byte letters and digits are not cut.
    int GetWordWrap() const { return m_wordWrap; }
    void SetWordWrap(int on) { m_wordWrap = on != 0; }
    // Columns from one tab stop to the next; 0 and less are 4.
    int GetTabColumn() const { return m_tabColumn; }
    void SetTabColumn(int columns) { m_tabColumn = columns > 0 ? columns : 4; }

    // --- fonts ---------------------------------------------------------------------------------
    const CMultiFont& GetFonts() const { return m_fonts; }
    void SetFonts(const CMultiFont& fonts) { m_fonts = fonts; }
    // The font for text of the code type of ChangeCodePage; puts one in for its character set.
    const CFontInfo& GetFont() const { return m_fonts.GetFont(m_codeType); }
    void SetFont(const CFontInfo& font) { m_fonts.SetFont(font); }

    bool operator==(const CEditorMetrics& other) const;
    bool operator!=(const CEditorMetrics& other) const { return !(*this == other); }

private:
    struct List {
        CBuffer list;
        CBuffer edit; // the same in m_codeType
    };

    void SetList(List& list, const CBuffer& text);

    int m_showCaret = 1;
    int m_freeCursor = 0;
    int m_fixCursorPos = 0;
    int m_autoIndent = 1;
    int m_tab2Space = 0;
    List m_indentList;
    int m_singleClickURL = 1;
    List m_quoteList;
    int m_quoteLen = 8;
    List m_quoteMark;
    int m_noTurnQuoted = 1;
    int m_noTurnURL = 1;
    int m_lineSpace = 2;
    int m_showCR = 0;
    int m_showEOF = 0;
    int m_showTab = 0;
    int m_showSpace = 0;
    int m_showZenSpace = 0;
    int m_showColRuler = 0;
    int m_showLineRuler = 0;
    int m_phisicalLineNo = 1;
    int m_autoTurn = 1;
    int m_turnCols = 72;
    List m_head2Prev;
    List m_tail2Next;
    int m_wordWrap = 1;
    int m_tabColumn = 4;
    CMultiFont m_fonts;
    CodeType m_codeType = CT_SJIS;
};
