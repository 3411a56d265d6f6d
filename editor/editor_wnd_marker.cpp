// Line markers.

#include "editor/editor_wnd.h"

void CEditorWnd::DrawLineMarker(int kind)
{
    if (CanDrawLineMarker() == 0)
        return;
    m_model.DrawMarker(kind, m_selAnchor, m_selEnd);
    InvalidateRange(m_selAnchor, m_selEnd);
}

void CEditorWnd::DrawLineMarker(int kind, const CTextPos& from, const CTextPos& to)
{
    m_model.DrawMarker(kind, GetDoc().Completed(from), GetDoc().Completed(to));
    InvalidateRange(from, to);
}

void CEditorWnd::DrawSimpleLineMarker(int kind, const CTextPos& from, const CTextPos& to)
{
    m_model.DrawSimpleMarker(kind, GetDoc().Completed(from), GetDoc().Completed(to));
    InvalidateRange(from, to);
}

void CEditorWnd::ClearLineMarker(int selectionOnly)
{
    const int kErase = -1;
    if (selectionOnly != 0) {
        DrawLineMarker(kErase);
        return;
    }
    if (IsLineMarkerDrawn() != 0)
        SetMarkerModified(1);
    m_model.ClearMarkers();
    InvalidateFrom(0, 0);
}

void CEditorWnd::EraseAllLineMarker()
{
    m_model.EraseAllMarkers();
    InvalidateFrom(0, 0);
}

void CEditorWnd::ArrangeLineMarker()
{
    m_model.ArrangeMarkers();
    InvalidateFrom(0, 0);
}

void CEditorWnd::InitLineMarkerArray(const CEditorLineMarkerArray& markers)
{
    m_model.InitMarkers(markers);
    InvalidateFrom(0, 0);
}

void CEditorWnd::CopyLineMarkerArray(const CEditorWnd& other)
{
    InitLineMarkerArray(other.GetLineMarkerArray());
}

void CEditorWnd::CopySelectedLineMarkerArray(const CEditorWnd& other)
{
    CTextPos start;
    CTextPos end;
    other.GetSelectRange(start, end);
    m_model.CopyMarkersWithin(other.GetLineMarkerArray(), start, end);
    InvalidateFrom(0, 0);
}

void CEditorWnd::SetLineMarkerHistorySize(int count)
{
    m_model.SetMarkerHistorySize(count);
    InvalidateFrom(0, 0);
}
