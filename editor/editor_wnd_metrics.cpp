// Settings, fonts and the layout that follows from them.

#include "charcode/charset.h"
#include "editor/char_widths.h"
#include "editor/columns.h"
#include "editor/editor_wnd.h"
#include "editor/line_prefix.h"
#include "editor/line_wrap.h"
#include "editor/row_pixels.h"
#include "framework/display_settings.h"

#include <algorithm>

namespace {

// Windows that are being made or minimised have no width; text is not wrapped narrower than this.
constexpr int kLeastColumns = 8;
// Without a window there is no width to wrap at.
constexpr int kEndlessWidth = 1 << 30;

} // namespace

int CEditorWnd::ChangeEditorMetrics(const CEditorMetrics& metrics)
{
    if (m_metrics == metrics)
        return 0;
    m_metrics = metrics;
    m_model.SetFreeCursor(m_metrics.GetFreeCursor() != 0);
    SetCurrentFont();
    FollowDocumentSize();
    if (!HasWindow())
        return 1;
    DestroyCaretIfMade();
    if (::GetFocus() == m_hWnd)
        CreateCaretIfUsed();
    Invalidate(FALSE);
    return 1;
}

void CEditorWnd::SetCurrentFont()
{
    SelectFont(GetCodeType());
}

void CEditorWnd::SelectFont(CodeType codeType)
{
    m_metrics.ChangeCodePage(codeType);
    LOGFONTW description = m_metrics.GetFont().MakeLogFont(tlvn::GetWindowDpi(m_hWnd),
                                                           CharSetCode2FontCharSet(codeType));
    m_font.DeleteObject();
    m_font.CreateFontIndirect(&description);
    description.lfUnderline = TRUE;
    m_linkFont.DeleteObject();
    m_linkFont.CreateFontIndirect(&description);

    const HDC dc = ::GetDC(m_hWnd);
    m_widths->Select(dc, m_font, codeType);
    ::ReleaseDC(m_hWnd, dc);
    m_charHeight = m_widths->GetHeight();
    m_charWidth = m_widths->GetColumnWidth();
    FreeBuffer();
    UpdateLayout();
}

void CEditorWnd::SelectRulerFont()
{
    LOGFONTW description =
        CFontInfo("Small Fonts", 7).MakeLogFont(tlvn::GetWindowDpi(m_hWnd), DEFAULT_CHARSET);
    description.lfPitchAndFamily = VARIABLE_PITCH;
    m_rulerFont.DeleteObject();
    m_rulerFont.CreateFontIndirect(&description);
    CClientDC dc(this);
    CFont* const old = dc.SelectObject(&m_rulerFont);
    m_digitWidth = std::max<int>(dc.GetTextExtent("0", 1).cx, 1);
    dc.SelectObject(old);
}

void CEditorWnd::PrepareLayout()
{
    if (m_layout == nullptr)
        SetCurrentFont();
}

void CEditorWnd::UpdateLayout()
{
    const CTextPos top = GetTopPos();
    m_wrapWidth = GetVisibleWidth();
    auto layout = std::make_unique<tlvn::LineWrap>(m_metrics, *m_widths, m_wrapWidth);
    m_pixels->Attach(layout.get(), m_widths.get());
    m_model.SetLayout(layout.get());
    m_layout = std::move(layout);
    UpdatePlaces(top);
}

void CEditorWnd::UpdatePlaces(CTextPos top)
{
    const tlvn::Document& document = GetDoc();
    m_pixels->Forget();
    // Without the free cursor, or as text of another code, the text may not have these places.
    for (CTextPos* pos : {&m_caretPos, &m_selAnchor, &m_selEnd, &m_dragAnchor}) {
        if (document.IsFreeCursor() && !document.IsInText(*pos))
            document.L2PByteIndex(*pos);
        else
            document.ToCharTop(*pos);
    }
    m_caretAtRowEnd = false;
    m_caretX = GetCaretX();
    document.L2PByteIndex(top);
    m_topLine = std::clamp(document.GetSerialLineP(top.line, top.physical), 0, GetMaxTopLine());
    m_leftColumn = std::clamp(m_leftColumn, 0, GetMaxLeftColumn());
}

void CEditorWnd::UpdateAutoTurn()
{
    if (m_layout == nullptr)
        return;
    const bool wraps = m_metrics.GetAutoTurn() == CEditorMetrics::kTurnAtWindow;
    if (!wraps || GetVisibleWidth() == m_wrapWidth || GetLayoutRect().IsRectEmpty())
        return;
    UpdateLayout();
    FollowDocumentSize();
    if (HasWindow())
        Invalidate(FALSE);
}

int CEditorWnd::GetVisibleWidth() const
{
    if (!HasWindow() && !m_fixedRect)
        return kEndlessWidth;
    const int caretWidth = 2;
    return std::max(GetTextRect().Width() - 2 * m_charWidth - caretWidth,
                    kLeastColumns * m_charWidth);
}

int CEditorWnd::CountRulerDigits() const
{
    int last =
        m_metrics.GetPhisicalLineNo() != 0 ? GetDoc().GetPhysicalCount() : GetDoc().GetLineCount();
    int digits = 1;
    for (; last >= 10; last /= 10)
        ++digits;
    return digits;
}

void CEditorWnd::FollowDocumentSize()
{
    const int digits = CountRulerDigits();
    if (digits != m_rulerDigits) {
        m_rulerDigits = digits;
        if (m_metrics.GetShowLineRuler() != 0) {
            // Wrapping at another width may change the number of digits once more, not back.
            UpdateAutoTurn();
            if (HasWindow())
                Invalidate(FALSE);
        }
    }
    UpdateScrollBar(1, 1);
}

int CEditorWnd::GetLineWidth(const CLLineData* line) const
{
    int widest = 0;
    for (const tlvn::PhysicalLine& row : line->GetPhysicalLines())
        widest = std::max(widest, row.width);
    return widest;
}

int CEditorWnd::GetIndentLength(const char* text, int length) const
{
    return tlvn::GetIndentLength(m_metrics, text, length);
}

int CEditorWnd::IsIndentTextAll(const char* text, int length) const
{
    return tlvn::IsIndentTextAll(m_metrics, text, length);
}

int CEditorWnd::GetQuoteLength(const CLLineData* line, int length) const
{
    return std::min(tlvn::GetQuoteLength(m_metrics, line->GetText(), line->GetLength()), length);
}

// Of each line the text from the first tab to the last is replaced.
void CEditorWnd::Tab2SpaceAll()
{
    if (m_readOnly != 0)
        return;
    BeginChanges();
    const tlvn::TextCode& code = m_widths->GetCode();
    CTextPos caret = m_caretPos;
    CBuffer text;
    CBuffer spaced;
    m_model.BeginGroup();
    for (int i = 0; i < GetDoc().GetLineCount(); ++i) {
        const CLLineData& line = GetDoc().GetLine(i);
        text.Set(line.GetText(), line.GetLength());
        if (tlvn::Tab2Space(code, text, text.GetLength(), m_metrics.GetTabColumn(), spaced) == 0)
            continue;
        // What the two have in common at their start and end stays.
        const int unit = GetBlankBytes();
        const char* const before = text;
        const char* const after = spaced;
        int head = 0;
        while (code.IsWide() ? before[head] != '\t' || before[head + 1] != 0 : before[head] != '\t')
            head += unit;
        int tail = text.GetLength();
        while (code.IsWide() ? before[tail - 2] != '\t' || before[tail - 1] != 0
                             : before[tail - 1] != '\t')
            tail -= unit;
        const int rest = text.GetLength() - tail;
        // The tabs go last: without anything between them, halves of a character would join.
        const int added = spaced.GetLength() - rest - head;
        m_model.InsertText(CTextPos(i, head), after + head, added);
        m_model.DeleteText(CTextPos(i, head + added), CTextPos(i, tail + added));
        if (caret.line == i) {
            tlvn::Tab2Space(code, before, std::min(caret.logicalByte, text.GetLength()),
                            m_metrics.GetTabColumn(), spaced);
            caret.logicalByte = spaced.GetLength();
        }
    }
    m_model.EndGroup();
    GetDoc().ToText(caret);
    FollowChanges(caret);
}
