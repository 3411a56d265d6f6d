// The mail editor control: shows the text of a mail, scrolls through it.
//
//   CEditorWnd editor;
//   editor.CreateEditorWnd(0, WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL, rect, parent, 1,
//                          CEditorMetrics(), CEditorColor());
//   editor.SetDocument(CT_SJIS, text, length);
//
// Texts in a Unicode code type are UTF-16, all others are in the multibyte code page of their
// code type; lengths are in bytes. A window of the user-interface thread.

#pragma once

#include "editor/color.h"
#include "editor/document.h"
#include "editor/metrics.h"

class TLVN_API CEditorWnd : public CWnd {
    DECLARE_DYNAMIC(CEditorWnd)
public:
    CEditorWnd();
    ~CEditorWnd() override;

    // Creates the window, with copies of the settings. Returns 1, or 0 when the system refuses.
    int CreateEditorWnd(DWORD exStyle, DWORD style, const CRect& rect, CWnd* parent, UINT id,
                        const CEditorMetrics& metrics, const CEditorColor& colors);

    // Replaces the text, header block included. Returns 1.
    int SetDocument(CodeType codeType, const char* text, int length);
    // Puts the lines of `text` in front as the header block, in place of the present one.
    void InsertHeaderText(const char* text, int length);
    // Lines of the header block.
    int GetHeaderLineL() const { return m_document.GetHeaderLineCount(); }
    CodeType GetCodeType() const { return m_document.GetCodeType(); }
    int GetLogicalLineCt(int withHeader) const;

    const CEditorMetrics& GetEditorMetrics() const { return m_metrics; }
    const CEditorColor& GetEditorColors() const { return m_colors; }

    // Height of a character in pixels; a line on screen is that and the line space high.
    int GetCharHeight() const { return m_charHeight; }
    int GetVisibleLineCt() const;

    // The line at the top, the column (in average characters) at the left.
    int GetVertScrollPos() const { return m_topLine; }
    int GetHorzScrollPos() const { return m_leftColumn; }
    void ScrollToVertPos(int line);
    void ScrollToHorzPos(int column);

protected:
    int OnCreate(LPCREATESTRUCT create);
    void OnPaint();
    BOOL OnEraseBkgnd(CDC* dc);
    void OnSize(UINT type, int width, int height);
    void OnVScroll(UINT code, UINT pos, CScrollBar* scrollBar);
    void OnHScroll(UINT code, UINT pos, CScrollBar* scrollBar);
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    int GetLineHeight() const { return m_charHeight + m_metrics.GetLineSpace(); }
    void SetCurrentFont();
    void MeasureDocument();
    void UpdateScrollBars();
    int GetVisibleColCt() const;
    void DrawLine(CDC& dc, int line, int y, const CRect& client);

    CEditorMetrics m_metrics;
    CEditorColor m_colors;
    tlvn::Document m_document;
    CFont m_font;
    int m_charHeight;
    int m_charWidth;
    int m_columns; // of the widest line
    int m_topLine;
    int m_leftColumn;
    int m_wheelRest;     // wheel movement not yet turned into lines
    DWORD m_scrollStyle; // as created: a scroll bar that the system hides loses its style bit
};
