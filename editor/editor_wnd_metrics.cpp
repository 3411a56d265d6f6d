// Settings, fonts and the layout that follows from them.

#include "charcode/charset.h"
#include "editor/char_widths.h"
#include "editor/columns.h"
#include "editor/editor_wnd.h"
#include "editor/line_prefix.h"
#include "editor/line_wrap.h"
#include "editor/row_pixels.h"
#include "framework/display_settings.h"
#include "framework/guard_memory.h"

#include <algorithm>
#include <span>
#include <vector>

namespace {

// Windows that are being made or minimised have no width; text is not wrapped narrower than this.
constexpr int kLeastColumns = 8;
// Without a window there is no width to wrap at.
constexpr int kEndlessWidth = 1 << 30;

struct Tab {
    int byte;   // in the line
    int blanks; // up to its stop
};

std::vector<Tab> FindTabs(const tlvn::TextCode& code, const CLLineData& line, int tabColumn)
{
    return tlvn::GuardMemory([&] {
        std::vector<Tab> tabs;
        const char* const text = line.GetText();
        const char* const end = text + line.GetLength();
        const char* from = text;
        int column = 0;
        for (const char* p = text; p < end;) {
            const char* const at = p;
            if (code.Next(p, end) != '\t')
                continue;
            const int start =
                tlvn::CountColumns(code, from, static_cast<int>(at - from), tabColumn, column);
            column = tlvn::CountColumns(code, at, static_cast<int>(p - at), tabColumn, start);
            tabs.push_back({static_cast<int>(at - text), column - start});
            from = p;
        }
        return tabs;
    });
}

// Replaces all from the first of these tabs of a line to the last. The new text is put in front: so
// what begins behind the tabs stays behind it, and halves of a character do not join.
void ReplaceTabs(tlvn::TextModel& model, int line, std::span<const Tab> tabs)
{
    const bool wide = model.GetDocument().IsWide();
    const int unit = wide ? 2 : 1;
    const char* const text = model.GetDocument().GetLine(line).GetText();
    const int start = tabs.front().byte;
    int end = start;
    CBuffer spaced;
    for (const Tab& tab : tabs) {
        spaced.Add(text + end, tab.byte - end);
        if (wide)
            spaced.Insert(TW(' '), tab.blanks, spaced.GetLength());
        else
            spaced.Insert(' ', tab.blanks, spaced.GetLength());
        end = tab.byte + unit;
    }
    model.InsertText(CTextPos(line, start), spaced, spaced.GetLength());
    const int added = spaced.GetLength();
    model.DeleteText(CTextPos(line, start + added), CTextPos(line, end + added));
}

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

// What lies over the text between the tabs stays there when nothing but the tabs is replaced.
// Without such things a line is done at once, however many tabs it has.
void CEditorWnd::Tab2SpaceAll()
{
    if (m_readOnly != 0)
        return;
    BeginChanges();
    const bool atOnce = IsLineMarkerDrawn() == 0 && m_found.IsEmpty();
    CTextPos caret = m_caretPos;
    try {
        const tlvn::ChangeGroup group(m_model);
        for (int i = 0; i < GetDoc().GetLineCount(); ++i) {
            const std::vector<Tab> tabs =
                FindTabs(m_widths->GetCode(), GetDoc().GetLine(i), m_metrics.GetTabColumn());
            const std::size_t step = atOnce ? tabs.size() : 1;
            for (std::size_t left = tabs.size(); left > 0; left -= step)
                ReplaceTabs(m_model, i, std::span(tabs).subspan(left - step, step));
            const int byte = caret.line == i ? caret.logicalByte : 0;
            for (const Tab& tab : tabs)
                if (tab.byte < byte)
                    caret.logicalByte += (tab.blanks - 1) * GetBlankBytes();
        }
    } catch (CMemoryException*) {
        FollowChanges(m_caretPos);
        throw;
    }
    GetDoc().ToText(caret);
    FollowChanges(caret);
}
