// The view: what is where in the window, scrolling.

#include "editor/ctrl_wheel.h"
#include "editor/editor_wnd.h"
#include "editor/line_wrap.h"
#include "editor/row_pixels.h"

#include <algorithm>
#include <climits>

namespace {

constexpr int kColRulerHeight = 15;
constexpr int kLineRulerSpace = 12; // beside the digits
constexpr int kMargin = 8;
constexpr int kPrintMargin = 4;
// Lines and columns of the old page that stay in sight.
constexpr int kPageOverlap = 2;

// Edges of a rectangle to lay out for, so that its sides are far from overflowing.
constexpr int kFarthestEdge = 1 << 29;

// A place to scroll to: not beyond what an int holds.
int Minus(int place, int steps)
{
    return static_cast<int>(std::clamp<INT64>(INT64{place} - steps, 0, INT_MAX));
}

} // namespace

// --- geometry --------------------------------------------------------------------------------

void CEditorWnd::SetLClientRect(const RECT* rect)
{
    m_fixedRect = rect != nullptr;
    m_layoutRect = m_fixedRect ? CRect(*rect) : CRect();
    for (LONG* const edge :
         {&m_layoutRect.left, &m_layoutRect.top, &m_layoutRect.right, &m_layoutRect.bottom})
        *edge = std::clamp<LONG>(*edge, -kFarthestEdge, kFarthestEdge);
    PrepareLayout();
    UpdateAutoTurn();
}

CRect CEditorWnd::GetLayoutRect() const
{
    CRect rect = m_layoutRect;
    if (!m_fixedRect && HasWindow())
        GetClientRect(&rect);
    return rect;
}

CRect CEditorWnd::GetTextRect() const
{
    CRect rect = GetLayoutRect();
    rect.left = std::min<LONG>(rect.left + GetLineRulerWidth(), rect.right);
    rect.top = std::min<LONG>(rect.top + GetColRulerHeight(), rect.bottom);
    return rect;
}

int CEditorWnd::GetColRulerHeight() const
{
    if (m_metrics.GetShowColRuler() != 0)
        return kColRulerHeight;
    return m_forPrint ? kPrintMargin : kMargin;
}

int CEditorWnd::GetLineRulerWidth() const
{
    if (m_metrics.GetShowLineRuler() != 0)
        return m_digitWidth * m_rulerDigits + kLineRulerSpace;
    return m_forPrint ? kPrintMargin : kMargin;
}

int CEditorWnd::GetVisibleLineCt() const
{
    int height = GetLayoutRect().Height();
    if (!m_fixedRect && HasWindow() && (GetStyle() & WS_HSCROLL) != 0)
        height += ::GetSystemMetrics(SM_CYHSCROLL);
    return (height + GetLineSpace() - GetColRulerHeight()) / GetLineHeight();
}

int CEditorWnd::GetVisibleColCt() const
{
    return GetTextRect().Width() / m_charWidth;
}

int CEditorWnd::GetRowCount() const
{
    return (GetTextRect().Height() + GetLineSpace()) / GetLineHeight();
}

int CEditorWnd::GetRowTop(int row) const
{
    const INT64 y = (static_cast<INT64>(row) - m_topLine) * GetLineHeight();
    return GetTextRect().top + static_cast<int>(std::clamp<INT64>(y, -(1 << 24), 1 << 24));
}

int CEditorWnd::GetMaxTopLine() const
{
    int last = GetDocSize() - 1;
    if (m_metrics.GetFreeCursor() != 0)
        last = std::max(last, GetCaretRow());
    return std::max(last - std::max(GetRowCount() - 1, 0), 0);
}

int CEditorWnd::GetMaxLeftColumn() const
{
    // Where lines end at the window's edge the caret needs no more than its own width behind them.
    const bool wraps = m_metrics.GetAutoTurn() == CEditorMetrics::kTurnAtWindow;
    INT64 needed = INT64{GetDoc().GetWidest()} + (wraps ? 2 : 2 * m_charWidth);
    if (m_metrics.GetFreeCursor() != 0)
        needed = std::max<INT64>(needed, INT64{GetCaretX()} + 2 * m_charWidth);
    const INT64 beyond = needed - GetTextRect().Width();
    return beyond <= 0 ? 0 : static_cast<int>((beyond + m_charWidth - 1) / m_charWidth);
}

// --- scroll bars -------------------------------------------------------------------------------

void CEditorWnd::UpdateScrollBar(int horz, int vert)
{
    if (!HasWindow() || m_fixedRect)
        return;
    if (vert != 0) {
        const int page = std::max(GetRowCount(), 1);
        SetScroll(SB_VERT, GetMaxTopLine() + page, page, m_topLine);
    }
    if (horz != 0) {
        const int page = std::max(GetVisibleColCt(), 1);
        SetScroll(SB_HORZ, GetMaxLeftColumn() + page, page, m_leftColumn);
    }
}

// The vertical bar is always there: text that is wrapped at the window would be wrapped anew
// whenever it came or went.
void CEditorWnd::SetScroll(int bar, int count, int page, int position)
{
    if ((m_scrollStyle & (bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL)) == 0)
        return;
    SCROLLINFO& known = m_scroll[bar];
    const int last = count - 1;
    if (known.nMax == last && static_cast<int>(known.nPage) == page && known.nPos == position &&
        known.cbSize != 0)
        return;
    known.cbSize = sizeof known;
    known.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    if (bar == SB_VERT)
        known.fMask |= SIF_DISABLENOSCROLL;
    known.nMax = last;
    known.nPage = static_cast<UINT>(page);
    known.nPos = position;
    SCROLLINFO info = known;
    SetScrollInfo(bar, &info, TRUE);
}

// --- scrolling -----------------------------------------------------------------------------------

void CEditorWnd::ScrollToVertPos(int line)
{
    line = std::clamp(line, 0, GetMaxTopLine());
    const int down = line - m_topLine;
    if (down == 0)
        return;
    m_topLine = line;
    if (!HasWindow())
        return;
    CRect rows = GetLayoutRect();
    const CRect margin(rows.left, rows.top, rows.right, GetTextRect().top);
    rows.top = margin.bottom;
    // What still waits to be painted would not move along.
    if (std::abs(INT64{down}) >= GetRowCount() || GetUpdateRect(nullptr)) {
        InvalidateRect(&rows, FALSE);
    } else {
        ScrollWindowEx(0, -down * GetLineHeight(), &rows, &rows, nullptr, nullptr, SW_INVALIDATE);
        // A row that only showed in part, and what is below the text.
        const CRect tail(rows.left,
                         GetRowTop(m_topLine + GetRowCount() - std::max(down, 0)) - GetLineHeight(),
                         rows.right, rows.bottom);
        InvalidateRect(&tail, FALSE);
    }
    if (m_metrics.GetShowColRuler() == 0)
        InvalidateRect(&margin, FALSE);
    UpdateScrollBar(0, 1);
    PlaceCaret();
}

void CEditorWnd::ScrollToHorzPos(int column)
{
    column = std::clamp(column, 0, GetMaxLeftColumn());
    if (column == m_leftColumn)
        return;
    m_leftColumn = column;
    if (!HasWindow())
        return;
    Invalidate(FALSE);
    UpdateScrollBar(1, 0);
    PlaceCaret();
}

int CEditorWnd::ScrollBy(int lines, bool moveCaret)
{
    const int before = m_topLine;
    ScrollToVertPos(Minus(m_topLine, lines));
    const int scrolled = m_topLine - before;
    if (moveCaret && scrolled != 0 && m_metrics.GetFixCursorPos() == 0 && IsTextSelected() == 0)
        MoveCaretToRow(GetCaretRow() + scrolled, false, 0);
    return scrolled;
}

void CEditorWnd::ScrollLineUpDown(int lines, int moveCaret)
{
    ScrollBy(lines, moveCaret != 0);
}

void CEditorWnd::ScrollLineLeftRight(int columns)
{
    ScrollToHorzPos(Minus(m_leftColumn, columns));
}

void CEditorWnd::ScrollPageUp()
{
    ScrollBy(std::max(GetRowCount() - kPageOverlap, 1), true);
}

void CEditorWnd::ScrollPageDown()
{
    ScrollBy(-std::max(GetRowCount() - kPageOverlap, 1), true);
}

void CEditorWnd::ScrollPageLeft()
{
    ScrollToHorzPos(m_leftColumn - std::max(GetVisibleColCt() - kPageOverlap, 1));
}

void CEditorWnd::ScrollPageRight()
{
    ScrollToHorzPos(m_leftColumn + std::max(GetVisibleColCt() - kPageOverlap, 1));
}

void CEditorWnd::OnSize(UINT type, int width, int height)
{
    CWnd::OnSize(type, width, height);
    if (m_layout == nullptr || m_fixedRect)
        return;
    UpdateAutoTurn();
    ScrollToVertPos(m_topLine);
    ScrollToHorzPos(m_leftColumn);
    UpdateScrollBar(1, 1);
    PlaceCaret();
}

// The message has 16 bits of the position, the system has all of them while the user drags.
int CEditorWnd::GetThumbPos(int bar, UINT pos)
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    GetScrollInfo(bar, &info, SIF_TRACKPOS);
    const UINT known = static_cast<UINT>(info.nTrackPos);
    return static_cast<int>(LOWORD(known) == LOWORD(pos) ? known : LOWORD(pos));
}

void CEditorWnd::OnVScroll(UINT code, UINT pos, CScrollBar*)
{
    switch (code) {
    case SB_LINEUP:
        return ScrollLineUp();
    case SB_LINEDOWN:
        return ScrollLineDown();
    case SB_PAGEUP:
        return ScrollPageUp();
    case SB_PAGEDOWN:
        return ScrollPageDown();
    case SB_TOP:
        return ScrollToVertPos(0);
    case SB_BOTTOM:
        return ScrollToVertPos(GetMaxTopLine());
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        return ScrollToVertPos(GetThumbPos(SB_VERT, pos));
    default:
        return;
    }
}

void CEditorWnd::OnHScroll(UINT code, UINT pos, CScrollBar*)
{
    switch (code) {
    case SB_LINELEFT:
        return ScrollLineLeft();
    case SB_LINERIGHT:
        return ScrollLineRight();
    case SB_PAGELEFT:
        return ScrollPageLeft();
    case SB_PAGERIGHT:
        return ScrollPageRight();
    case SB_LEFT:
        return ScrollToHorzPos(0);
    case SB_RIGHT:
        return ScrollToHorzPos(GetMaxLeftColumn());
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        return ScrollToHorzPos(GetThumbPos(SB_HORZ, pos));
    default:
        return;
    }
}

BOOL CEditorWnd::OnMouseWheel(UINT flags, short delta, CPoint point)
{
    if (DispatchCtrlMouseWheel(this, flags, delta, point) != 0)
        return TRUE;
    UINT perNotch = 3;
    ::SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &perNotch, 0);
    if (perNotch == 0)
        perNotch = 3;
    else if (perNotch == WHEEL_PAGESCROLL)
        perNotch = static_cast<UINT>(std::max(GetVisibleLineCt() - kPageOverlap, 1));
    if (delta == 0)
        return TRUE;
    const INT64 amount = INT64{delta} * std::min<UINT>(perNotch, 0xFFFF);
    const int sign = delta > 0 ? 1 : -1;
    const int lines = static_cast<int>((amount + sign * WHEEL_DELTA / 2) / WHEEL_DELTA);
    ScrollLineUpDown(lines != 0 ? lines : sign, 1);
    return TRUE;
}

// --- points and positions ----------------------------------------------------------------------

int CEditorWnd::GetX(const CTextPos& pos) const
{
    INT64 x = 0;
    int length = 0;
    if (pos.line >= 0 && pos.line < GetDoc().GetLineCount()) {
        const CLLineData& line = GetDoc().GetLine(pos.line);
        const int physical = std::clamp(pos.physical, 0, line.GetPhysicalCount() - 1);
        length = std::clamp(pos.byte, 0, line.GetEnd(physical) - line.GetStart(physical));
        x = m_pixels->GetX(line, physical, length);
    }
    // Behind the text a byte, or a unit, is a column.
    x += INT64{std::max(pos.byte - length, 0)} / GetBlankBytes() * m_charWidth;
    return static_cast<int>(std::min<INT64>(x, 1 << 30));
}

void CEditorWnd::TextPos2Point(const CTextPos& pos, CPoint& point) const
{
    const CTextPos both = GetDoc().Completed(pos);
    const INT64 x = INT64{GetX(both)} - INT64{m_leftColumn} * m_charWidth;
    point.x = GetTextRect().left + static_cast<LONG>(std::clamp<INT64>(x, -(1 << 30), 1 << 30));
    point.y = GetRowTop(GetSerialLineP(both.line, both.physical));
}

int CEditorWnd::CursorPoint2TextPos(CPoint point, int nearest, CTextPos& pos) const
{
    const CRect text = GetTextRect();
    const INT64 down = INT64{point.y} - text.top;
    const INT64 row =
        m_topLine + (down >= 0 ? down / GetLineHeight() : -1 - (-1 - down) / GetLineHeight());
    const bool free = m_metrics.GetFreeCursor() != 0;
    const INT64 lastRow = free ? kLastFreeLine : std::max(GetDocSize() - 1, 0);
    pos = GetDoc().FindSerialLineP(static_cast<int>(std::clamp<INT64>(row, 0, lastRow)));
    const INT64 x = INT64{point.x} - text.left + INT64{m_leftColumn} * m_charWidth;
    const int found =
        GetBytePAtX(static_cast<int>(std::clamp<INT64>(x, -1, 1 << 30)), nearest, pos);
    return found != 0 && row >= 0 && row < GetDocSize();
}

int CEditorWnd::GetBytePAtX(int x, int nearest, CTextPos& pos) const
{
    const bool free = m_metrics.GetFreeCursor() != 0;
    pos.line = std::max(Complete(pos).line, 0);
    pos.byte = 0;
    const auto behindText = [&](int width) {
        const INT64 beyond = INT64{x} - width + (nearest != 0 ? m_charWidth / 2 : 0);
        const INT64 bytes = pos.byte + std::max<INT64>(beyond, 0) / m_charWidth * GetBlankBytes();
        pos.byte = static_cast<int>(std::min<INT64>(bytes, INT_MAX / 2 * 2));
    };
    if (pos.line >= GetDoc().GetLineCount()) {
        if (free)
            behindText(0);
        pos.logicalByte = pos.byte;
        return 0;
    }
    const CLLineData& line = GetDoc().GetLine(pos.line);
    pos.physical = std::clamp(pos.physical, 0, line.GetPhysicalCount() - 1);
    const int length = line.GetEnd(pos.physical) - line.GetStart(pos.physical);
    pos.byte = m_pixels->FindByte(line, pos.physical, x, nearest != 0);
    const bool inText =
        x >= 0 && (pos.byte < length || (nearest != 0 && x < line.GetWidth(pos.physical)));
    if (pos.byte == length && free && pos.physical + 1 == line.GetPhysicalCount())
        behindText(m_pixels->GetX(line, pos.physical, length));
    pos.logicalByte = line.GetStart(pos.physical) + pos.byte;
    return inText;
}
