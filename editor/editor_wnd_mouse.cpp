// The mouse: placing the caret, selecting, links, cursors.

#include "editor/editor_wnd.h"

#include <algorithm>

namespace {

constexpr UINT_PTR kDragTimer = 1;
constexpr UINT kDragInterval = 50; // milliseconds

} // namespace

bool CEditorWnd::IsInRulers(CPoint point) const
{
    const CRect text = GetTextRect();
    return (m_metrics.GetShowColRuler() != 0 && point.y < text.top) ||
           (m_metrics.GetShowLineRuler() != 0 && point.x < text.left);
}

void CEditorWnd::UpdateCursorKind(CPoint point)
{
    HCURSOR cursor = m_textCursor;
    if (!GetLayoutRect().PtInRect(point) || IsInRulers(point))
        cursor = m_arrowCursor;
    else if (m_drag == Drag::None && GetURLOn(point, nullptr) != CEditorLineRange::ElRangeNone)
        cursor = m_linkCursor;
    ::SetCursor(cursor);
}

BOOL CEditorWnd::OnSetCursor(CWnd* window, UINT hitTest, UINT message)
{
    if (hitTest != HTCLIENT)
        return CWnd::OnSetCursor(window, hitTest, message);
    CPoint point;
    ::GetCursorPos(&point);
    ScreenToClient(&point);
    UpdateCursorKind(point);
    return TRUE;
}

// --- buttons ---------------------------------------------------------------------------------

void CEditorWnd::OnLButtonDown(UINT flags, CPoint point)
{
    if (m_forSample)
        return;
    SetFocus();
    if ((flags & MK_CONTROL) != 0) {
        SelectWord(point);
        return;
    }
    const CRect text = GetTextRect();
    if (m_metrics.GetShowColRuler() != 0 && point.y < text.top)
        return;
    // The margin above the text belongs to the first line in sight.
    point.y = std::max(point.y, text.top);
    CTextPos pos;
    CursorPoint2TextPos(point, 1, pos);
    const bool inLineRuler = m_metrics.GetShowLineRuler() != 0 && point.x < text.left;
    MoveCaret(pos, (flags & MK_SHIFT) != 0 && !inLineRuler, 0, CaretMoveText);
    if (m_drag == Drag::None)
        StartDrag(inLineRuler ? Drag::Line : Drag::Text, CTextPos(pos.line, pos.physical, 0));
    m_dragPoint = point;
    if (inLineRuler)
        DragTo(point);
}

void CEditorWnd::OnLButtonUp(UINT, CPoint point)
{
    const bool click = m_drag == Drag::Text && IsTextSelected() == 0;
    EndDrag();
    if (!click || m_metrics.GetSingleClickURL() == 0)
        return;
    CString link;
    const CEditorLineRange::ElRangeType type = GetURLOn(point, &link);
    if (type != CEditorLineRange::ElRangeNone)
        OpenURL(type, link);
}

void CEditorWnd::OnLButtonDblClk(UINT, CPoint point)
{
    if (m_forSample || IsInRulers(point))
        return;
    if (m_metrics.GetSingleClickURL() == 0) {
        CString link;
        const CEditorLineRange::ElRangeType type = GetURLOn(point, &link);
        if (type != CEditorLineRange::ElRangeNone) {
            OpenURL(type, link);
            return;
        }
    }
    SelectWord(point);
}

// The menu that follows is about the selection, or about the place under the mouse.
void CEditorWnd::OnRButtonDown(UINT, CPoint point)
{
    if (m_forSample)
        return;
    SetFocus();
    CTextPos pos;
    CursorPoint2TextPos(point, 1, pos);
    CTextPos start;
    CTextPos end;
    GetSelectRange(start, end);
    if (!IsInRulers(point) && pos.IsInRange(start, end) == 0)
        MoveCaret(pos, 0, 0, CaretMoveText);
    Default();
}

// --- dragging --------------------------------------------------------------------------------

void CEditorWnd::StartDrag(Drag drag, const CTextPos& anchor)
{
    m_drag = drag;
    m_dragAnchor = anchor;
    GetDoc().P2LByteIndex(m_dragAnchor, 1);
    SetCapture();
}

void CEditorWnd::EndDrag()
{
    if (m_drag == Drag::None)
        return;
    m_drag = Drag::None;
    ScrollWhileDragging(false);
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
}

void CEditorWnd::OnMouseMove(UINT, CPoint point)
{
    if (m_drag == Drag::None)
        return;
    m_dragPoint = point;
    DragTo(point);
    // Outside the text the view follows, also while the mouse rests.
    const CRect text = GetTextRect();
    ScrollWhileDragging(point.y < text.top || point.y >= text.bottom || point.x < text.left ||
                        point.x >= text.right);
}

// A timer that is set again starts anew: it would not run out under a mouse that moves.
void CEditorWnd::ScrollWhileDragging(bool on)
{
    if (m_dragScrolls == on)
        return;
    m_dragScrolls = on;
    if (on)
        SetTimer(kDragTimer, kDragInterval);
    else
        KillTimer(kDragTimer);
}

// The farther outside, the faster.
void CEditorWnd::OnTimer(UINT_PTR id)
{
    if (id != kDragTimer)
        return CWnd::OnTimer(id);
    if (!m_dragScrolls)
        return;
    const CRect text = GetTextRect();
    const auto steps = [](INT64 beyond, int unit) {
        return static_cast<int>(1 + std::min<INT64>(beyond / unit, 100));
    };
    const CPoint point = m_dragPoint;
    if (point.y < text.top)
        ScrollToVertPos(m_topLine - steps(INT64{text.top} - point.y, GetLineHeight()));
    else if (point.y >= text.bottom)
        ScrollToVertPos(m_topLine + steps(INT64{point.y} - text.bottom, GetLineHeight()));
    if (m_drag == Drag::Text && point.x < text.left)
        ScrollToHorzPos(m_leftColumn - steps(INT64{text.left} - point.x, m_charWidth));
    else if (m_drag == Drag::Text && point.x >= text.right)
        ScrollToHorzPos(m_leftColumn + steps(INT64{point.x} - text.right, m_charWidth));
    DragTo(point);
}

void CEditorWnd::DragTo(CPoint point)
{
    const CRect text = GetTextRect();
    point.x = std::clamp(point.x, text.left, std::max(text.right, text.left));
    point.y = std::clamp(point.y, text.top, std::max(text.bottom - 1, text.top));
    CTextPos pos;
    CursorPoint2TextPos(point, 1, pos);
    if (m_drag == Drag::Text) {
        MoveCaret(pos, 1, 0, CaretMoveText);
        return;
    }
    // Whole physical lines, that of the anchor always among them.
    CTextPos start = m_dragAnchor;
    CTextPos end(pos.line, pos.physical, 0);
    GetDoc().P2LByteIndex(end, 1);
    if (end < start)
        GetDoc().ToNextPhysicalLine(start);
    else
        GetDoc().ToNextPhysicalLine(end);
    SelectText(start, end, 1, 0);
}

void CEditorWnd::OnCaptureChanged(CWnd*)
{
    EndDrag();
}

void CEditorWnd::OnCancelMode()
{
    EndDrag();
    CWnd::OnCancelMode();
}
