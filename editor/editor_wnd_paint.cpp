// Painting: rows of text, rulers, marks; what is to be painted again.
//
// A row is drawn into a bitmap and copied to the window in one go, so nothing flickers. On a
// printer, or when there is no memory for the bitmap, it is drawn directly.

#include "editor/char_widths.h"
#include "editor/editor_wnd.h"
#include "editor/line_wrap.h"
#include "editor/row_pixels.h"
#include "editor/run_color.h"

#include <algorithm>
#include <cstdio>

namespace {

enum MarkKind : int {
    kTabMark,
    kSpaceMark,
    kZenSpaceMark,
    kLineEndMark,
};

constexpr COLORREF kNoColor = 0xFFFFFFFF;
// The most bytes of a row that are drawn: more are only there when they have no width.
constexpr int kMaxRowBytes = 1 << 16;
// No tab ends farther from the start of its row, whatever the settings say.
constexpr int kFarthest = 1 << 30;

// Pens and fonts are objects of the device; this one is there as long as it is selected.
class SelectedPen {
public:
    SelectedPen(CDC& dc, COLORREF color) : m_dc(dc), m_pen(PS_SOLID, 1, color)
    {
        m_old = ::SelectObject(dc.m_hDC, m_pen.GetSafeHandle());
    }
    ~SelectedPen() { ::SelectObject(m_dc.m_hDC, m_old); }
    SelectedPen(const SelectedPen&) = delete;
    SelectedPen& operator=(const SelectedPen&) = delete;

private:
    CDC& m_dc;
    CPen m_pen;
    HGDIOBJ m_old;
};

int WriteNumber(int number, WCHAR* out)
{
    char digits[16];
    const int length = std::snprintf(digits, sizeof digits, "%d", number);
    std::copy_n(digits, length, out);
    return length;
}

} // namespace

// --- window ----------------------------------------------------------------------------------

void CEditorWnd::OnPaint()
{
    CPaintDC dc(this);
    const CRect update(dc.m_ps.rcPaint);
    CRect client;
    GetClientRect(&client);
    const int height = std::max(GetLineHeight(), GetColRulerHeight());
    CDC* const buffer = PrepareBuffer(dc, client.right, height);
    PaintRulers(dc, update, buffer);
    PaintRows(dc, update, buffer);
}

// Painting covers every pixel.
BOOL CEditorWnd::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

// The system draws frame and scroll bars.
void CEditorWnd::OnNcPaint()
{
    Default();
}

void CEditorWnd::DoPaint(CDC& dc, const CRect& update)
{
    PaintRulers(dc, update, nullptr);
    PaintRows(dc, update, nullptr);
}

CDC* CEditorWnd::PrepareBuffer(CDC& dc, int width, int height)
{
    if (width <= m_bufferSize.cx && height <= m_bufferSize.cy)
        return &m_bufferDC;
    FreeBuffer();
    if (width <= 0 || height <= 0 || !m_bufferDC.CreateCompatibleDC(&dc))
        return nullptr;
    if (!m_bufferBitmap.CreateCompatibleBitmap(&dc, width, height)) {
        FreeBuffer();
        return nullptr;
    }
    ::SelectObject(m_bufferDC.m_hDC, m_bufferBitmap.GetSafeHandle());
    m_bufferSize = CSize(width, height);
    return &m_bufferDC;
}

void CEditorWnd::FreeBuffer()
{
    m_bufferDC.DeleteDC();
    m_bufferBitmap.DeleteObject();
    m_bufferSize = CSize(0, 0);
}

// --- rows ------------------------------------------------------------------------------------

void CEditorWnd::PaintRows(CDC& dc, const CRect& update, CDC* buffer)
{
    const CRect layout = GetLayoutRect();
    const CRect text = GetTextRect();
    const int bottom = std::min(update.bottom, layout.bottom);
    tlvn::RunColor coloring(m_drawColors, GetCodeType());
    coloring.SetSelection(m_selAnchor, m_selEnd);
    coloring.SetFoundRanges(&m_found);
    coloring.SetMarkers(&GetLineMarkerArray());

    CDC& target = buffer != nullptr ? *buffer : dc;
    const HGDIOBJ oldFont = ::SelectObject(target.m_hDC, m_font.GetSafeHandle());
    const int oldMode = target.SetBkMode(TRANSPARENT);
    int row = m_topLine + std::max<int>(update.top - text.top, 0) / GetLineHeight();
    int y = GetRowTop(row);
    for (; y < bottom && row < GetDocSize(); ++row, y += GetLineHeight()) {
        PaintRow(target, coloring, GetDoc().FindSerialLineP(row), buffer != nullptr ? 0 : y);
        if (buffer != nullptr) {
            dc.BitBlt(update.left, y, update.Width(), GetLineHeight(), buffer, update.left, 0,
                      SRCCOPY);
        }
    }
    target.SetBkMode(oldMode);
    ::SelectObject(target.m_hDC, oldFont);
    if (y >= bottom)
        return;
    const CRect rest(layout.left, std::max(y, int{text.top}), layout.right, bottom);
    dc.FillSolidRect(rest, m_drawColors.GetBackColor());
    if (m_metrics.GetShowLineRuler() != 0)
        DrawRulerEdge(dc, rest.top, rest.bottom);
}

// Draws from the first character that shows to the last. What juts out to the left is covered
// by the ruler or the margin.
void CEditorWnd::PaintRow(CDC& dc, tlvn::RunColor& coloring, const CTextPos& row, int y)
{
    const CRect layout = GetLayoutRect();
    const CRect area = GetTextRect();
    const CLLineData& line = GetDoc().GetLine(row.line);
    const int start = line.GetStart(row.physical);
    const int length = line.GetEnd(row.physical) - start;

    tlvn::DrawLine drawn;
    tlvn::RunColor::GetBaseColors(m_drawColors, row.line < GetHeaderLineL(),
                                  GetDoc().GetQuotes().GetLevel(line.GetQuoteEntry()),
                                  drawn.baseText, drawn.baseBack);
    dc.FillSolidRect(CRect(layout.left, y, layout.right, y + GetLineHeight()), drawn.baseBack);

    const int left = m_leftColumn * m_charWidth;
    const int first = m_pixels->FindByte(line, row.physical, left, false);
    int last = m_pixels->FindByte(line, row.physical, left + area.Width(), false);
    if (last < length) {
        // The character that the edge cuts is drawn, too.
        const char* p = line.GetText() + start + last;
        m_widths->GetCode().Next(p, line.GetText() + start + length);
        last = static_cast<int>(p - line.GetText()) - start;
    }
    drawn.line = row.line;
    drawn.text = line.GetText();
    drawn.start = start + first;
    drawn.end = start + std::min(last, first + kMaxRowBytes);
    drawn.links = &GetDoc().GetLinks(row.line);
    coloring.SetLine(drawn);

    int x = area.left - left + m_pixels->GetX(line, row.physical, first);
    tlvn::DrawRun run;
    for (int byte = drawn.start; byte < drawn.end; byte += run.length) {
        coloring.GetRun(byte, run);
        x = PaintPiece(dc, line.GetText() + byte, run.length, run, x, y);
    }
    if (last == length && row.physical + 1 == line.GetPhysicalCount())
        PaintLineEnd(dc, row.line, x, y);

    if (m_metrics.GetShowLineRuler() != 0)
        DrawLineRuler(dc, row.line, row.physical, y);
    else if (left > 0)
        dc.FillSolidRect(CRect(layout.left, y, area.left, y + GetLineHeight()), drawn.baseBack);
}

// Draws a run from x on and returns where it ends. Tabs part it.
int CEditorWnd::PaintPiece(CDC& dc, const char* text, int length, const tlvn::DrawRun& run, int x,
                           int y)
{
    const int origin = GetTextRect().left - m_leftColumn * m_charWidth;
    const int bottom = y + GetLineHeight();
    const COLORREF markColor = run.special && !run.underline ? run.text : kNoColor;
    m_units.clear();
    m_advances.clear();
    m_widths->Decode(text, length, m_units, m_advances);
    if (run.underline)
        ::SelectObject(dc.m_hDC, m_linkFont.GetSafeHandle());
    dc.SetTextColor(run.text);
    for (std::size_t i = 0; i < m_units.size();) {
        if (m_units[i] == '\t') {
            const int end = origin + std::min(m_layout->GetTabStop(x - origin), kFarthest);
            const CRect cell(x, y, end, bottom);
            if (run.special)
                dc.FillSolidRect(cell, run.back);
            if (m_metrics.GetShowTab() != 0)
                DrawTab(dc, cell, markColor);
            x = end;
            ++i;
            continue;
        }
        const std::size_t begin = i;
        int width = 0;
        for (; i < m_units.size() && m_units[i] != '\t'; ++i)
            width += m_advances[i];
        if (run.special)
            dc.FillSolidRect(CRect(x, y, x + width, bottom), run.back);
        dc.ExtTextOut(x, y, 0, nullptr, m_units.data() + begin, static_cast<UINT>(i - begin),
                      m_advances.data() + begin);
        for (std::size_t k = begin; k < i; x += m_advances[k], ++k) {
            const CRect cell(x, y, x + m_advances[k], bottom);
            if (m_units[k] == ' ' && m_metrics.GetShowSpace() != 0)
                DrawSpace(dc, cell, markColor);
            else if (m_units[k] == 0x3000 && m_metrics.GetShowZenSpace() != 0)
                DrawZenSpace(dc, cell, markColor);
        }
    }
    if (run.underline)
        ::SelectObject(dc.m_hDC, m_font.GetSafeHandle());
    return x;
}

void CEditorWnd::PaintLineEnd(CDC& dc, int line, int x, int y)
{
    if (line + 1 == GetDoc().GetLineCount()) {
        if (m_metrics.GetShowEOF() != 0)
            DrawEOF(dc, CPoint(x, y));
        return;
    }
    const CRect cell(x, y, x + m_charWidth, y + GetLineHeight());
    const bool selected = IsLineEndSelected(line);
    if (selected)
        dc.FillSolidRect(cell, m_drawColors.GetSelBackColor());
    if (m_metrics.GetShowCR() != 0)
        DrawCR(dc, cell, selected ? m_drawColors.GetSelTextColor() : kNoColor);
}

// --- marks -----------------------------------------------------------------------------------

// Lines of the sizes that the font gives; a cell without width shows nothing.
void CEditorWnd::PaintMark(CDC& dc, const CRect& cell, int kind, COLORREF color) const
{
    if (cell.Width() <= 2)
        return;
    const SelectedPen pen(dc, color != kNoColor ? color : m_drawColors.GetSymbolColor());
    const int unit = std::max(m_charHeight / 6, 1);
    const int bottom = cell.top + m_charHeight - 1;
    const int middle = cell.top + m_charHeight / 2;
    const int left = cell.left + 1;
    const int right = std::max<int>(cell.right - 2, left + 1);
    switch (kind) {
    case kTabMark: { // an arrow head
        const POINT head[] = {
            {left, middle - unit}, {left + unit, middle}, {left - 1, middle + unit + 1}};
        dc.Polyline(head, 3);
        break;
    }
    case kSpaceMark: { // a tray
        const POINT tray[] = {
            {left, bottom - unit}, {left, bottom}, {right, bottom}, {right, bottom - unit - 1}};
        dc.Polyline(tray, 4);
        break;
    }
    case kZenSpaceMark: { // a box
        const int top = cell.top + unit;
        const POINT box[] = {
            {left, top}, {right, top}, {right, bottom - 1}, {left, bottom - 1}, {left, top}};
        dc.Polyline(box, 5);
        break;
    }
    case kLineEndMark: { // an arrow down
        const int center = cell.left + cell.Width() / 2;
        dc.MoveTo(center, cell.top + unit);
        dc.LineTo(center, bottom);
        const POINT head[] = {{center - unit, bottom - unit},
                              {center, bottom},
                              {center + unit + 1, bottom - unit - 1}};
        dc.Polyline(head, 3);
        break;
    }
    default:
        break;
    }
}

void CEditorWnd::DrawTab(CDC& dc, const CRect& cell, COLORREF color) const
{
    PaintMark(dc, cell, kTabMark, color);
}

void CEditorWnd::DrawSpace(CDC& dc, const CRect& cell, COLORREF color) const
{
    PaintMark(dc, cell, kSpaceMark, color);
}

void CEditorWnd::DrawZenSpace(CDC& dc, const CRect& cell, COLORREF color) const
{
    PaintMark(dc, cell, kZenSpaceMark, color);
}

void CEditorWnd::DrawCR(CDC& dc, const CRect& cell, COLORREF color) const
{
    PaintMark(dc, cell, kLineEndMark, color);
}

void CEditorWnd::DrawEOF(CDC& dc, CPoint point) const
{
    dc.SetTextColor(m_drawColors.GetSymbolColor());
    dc.ExtTextOut(point.x, point.y, 0, nullptr, TW("[EOF]"), 5, nullptr);
}

// --- rulers ----------------------------------------------------------------------------------

void CEditorWnd::PaintRulers(CDC& dc, const CRect& update, CDC* buffer)
{
    const CRect layout = GetLayoutRect();
    const CRect top(layout.left, layout.top, layout.right, GetTextRect().top);
    if (update.top >= top.bottom)
        return;
    if (m_metrics.GetShowColRuler() == 0) {
        const bool header = GetTopPos().line < GetHeaderLineL();
        dc.FillSolidRect(top,
                         header ? m_drawColors.GetHeaderBackColor() : m_drawColors.GetBackColor());
        return;
    }
    DrawColRuler(buffer != nullptr ? *buffer : dc, update);
    if (buffer != nullptr)
        dc.BitBlt(update.left, top.top, update.Width(), top.Height(), buffer, update.left, top.top,
                  SRCCOPY);
}

// A stroke for every column, longer ones for every fifth and, with the number, every tenth. The
// column of the caret is marked.
void CEditorWnd::DrawColRuler(CDC& dc, const CRect& update)
{
    const CRect layout = GetLayoutRect();
    const CRect text = GetTextRect();
    const int base = text.top - 1;
    dc.FillSolidRect(CRect(layout.left, layout.top, layout.right, text.top),
                     m_drawColors.GetBackColor());
    const int mark = text.left + (GetCaretColumn() - m_leftColumn) * m_charWidth;
    if (IsCaretUsed() != 0 && mark >= text.left && mark < text.right)
        dc.FillSolidRect(CRect(mark, layout.top, mark + m_charWidth, base),
                         m_drawColors.GetSelBackColor());

    const HGDIOBJ oldFont = ::SelectObject(dc.m_hDC, m_rulerFont.GetSafeHandle());
    const int oldMode = dc.SetBkMode(TRANSPARENT);
    const SelectedPen pen(dc, m_drawColors.GetSymbolColor());
    dc.SetTextColor(m_drawColors.GetSymbolColor());
    dc.MoveTo(layout.left, base);
    dc.LineTo(layout.right, base);
    // A number may begin ten columns to the left of what is painted.
    const int columns = std::max<int>(update.left - text.left, 0) / m_charWidth;
    for (int column = m_leftColumn + std::max(columns - 10, 0);; ++column) {
        const int x = text.left + (column - m_leftColumn) * m_charWidth;
        if (x >= std::min(update.right, text.right))
            break;
        const int stroke = column % 10 == 0 ? base - layout.top : column % 5 == 0 ? 5 : 3;
        dc.MoveTo(x, base - stroke);
        dc.LineTo(x, base);
        if (column % 10 == 0) {
            WCHAR number[16];
            const int length = WriteNumber(column, number);
            dc.ExtTextOut(x + 2, layout.top, 0, nullptr, number, static_cast<UINT>(length),
                          nullptr);
        }
    }
    dc.SetBkMode(oldMode);
    ::SelectObject(dc.m_hDC, oldFont);
}

void CEditorWnd::DrawRulerEdge(CDC& dc, int top, int bottom) const
{
    const int right = GetTextRect().left;
    dc.FillSolidRect(CRect(right - 4, top, right - 3, bottom), m_drawColors.GetSymbolColor());
}

void CEditorWnd::DrawLineRuler(CDC& dc, int line, int physical, int y)
{
    const CRect layout = GetLayoutRect();
    const int right = GetTextRect().left;
    dc.FillSolidRect(CRect(layout.left, y, right, y + GetLineHeight()),
                     m_drawColors.GetBackColor());
    DrawRulerEdge(dc, y, y + GetLineHeight());
    const bool physicalNumbers = m_metrics.GetPhisicalLineNo() != 0;
    if (!physicalNumbers && physical > 0)
        return;
    WCHAR number[16];
    const int length =
        WriteNumber((physicalNumbers ? GetSerialLineP(line, physical) : line) + 1, number);
    const HGDIOBJ oldFont = ::SelectObject(dc.m_hDC, m_rulerFont.GetSafeHandle());
    const int oldMode = dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(m_drawColors.GetSymbolColor());
    dc.ExtTextOut(right - 6 - length * m_digitWidth, y + std::max(m_charHeight - 11, 0) / 2, 0,
                  nullptr, number, static_cast<UINT>(length), nullptr);
    dc.SetBkMode(oldMode);
    ::SelectObject(dc.m_hDC, oldFont);
}

// --- what is to be painted again ---------------------------------------------------------------

void CEditorWnd::InvalidateRows(int first, int last)
{
    if (!HasWindow() || m_fixedRect || last < m_topLine)
        return;
    CRect rows = GetLayoutRect();
    const LONG top = GetTextRect().top;
    rows.bottom = std::min<LONG>(rows.bottom, GetRowTop(last) + GetLineHeight());
    rows.top = std::max<LONG>(top, GetRowTop(first));
    if (rows.top < rows.bottom)
        InvalidateRect(&rows, FALSE);
}

void CEditorWnd::InvalidateRange(const CTextPos& a, const CTextPos& b)
{
    if (!HasWindow())
        return;
    CTextPos first = GetDoc().Completed(a);
    CTextPos last = GetDoc().Completed(b);
    GetDoc().L2PByteIndex(first);
    GetDoc().L2PByteIndex(last);
    if (last < first)
        std::swap(first, last);
    InvalidateRows(GetSerialLineP(first.line, first.physical),
                   GetSerialLineP(last.line, last.physical));
}

void CEditorWnd::InvalidateLineP(int line, int physical)
{
    const int row = GetSerialLineP(line, physical);
    InvalidateRows(row, row);
}

void CEditorWnd::InvalidateLineL(int line)
{
    InvalidateRows(GetSerialLineP(line, 0), GetSerialLineP(line + 1, 0) - 1);
}

void CEditorWnd::InvalidateFrom(int line, int physical)
{
    InvalidateRows(GetSerialLineP(line, physical), INT_MAX);
}

void CEditorWnd::InvalidateColIndicator(int column)
{
    if (!HasWindow() || m_fixedRect || m_metrics.GetShowColRuler() == 0)
        return;
    const CRect text = GetTextRect();
    const INT64 beside = INT64{column} - m_leftColumn;
    if (beside < 0 || beside >= text.Width())
        return;
    const int x = text.left + static_cast<int>(beside) * m_charWidth;
    const CRect mark(x, 0, x + m_charWidth, text.top);
    InvalidateRect(&mark, FALSE);
}
