// The selection, and the ranges shown as found.

#include "editor/editor_wnd.h"
#include "editor/run_color.h"
#include "framework/guard_memory.h"

#include <algorithm>
#include <utility>

void CEditorWnd::SetSelection(const CTextPos& anchor, const CTextPos& end)
{
    const CTextPos oldAnchor = m_selAnchor;
    const CTextPos oldEnd = m_selEnd;
    m_selAnchor = anchor;
    m_selEnd = end;
    // Extending a selection repaints what it gains or loses.
    if (oldAnchor == anchor) {
        InvalidateRange(oldEnd, end);
        return;
    }
    if (oldAnchor != oldEnd)
        InvalidateRange(oldAnchor, oldEnd);
    if (anchor != end)
        InvalidateRange(anchor, end);
}

void CEditorWnd::SelectText(const CTextPos& anchor, const CTextPos& end, int moveCaret, int scroll)
{
    CTextPos from = GetDoc().Completed(anchor);
    CTextPos to = GetDoc().Completed(end);
    ToPlace(from);
    ToPlace(to);
    if (moveCaret == 0)
        SetSelection(from, to);
    else
        MoveCaretAndAnchor(from, to, false, scroll, CaretMoveText);
}

void CEditorWnd::ToPlace(CTextPos& pos) const
{
    pos.line = std::min(pos.line, kLastFreeLine);
    const bool behind = pos.line >= 0 && pos.logicalByte >= 0 && !GetDoc().IsInText(pos);
    if (behind && m_metrics.GetFreeCursor() != 0)
        GetDoc().L2PByteIndex(pos);
    else
        GetDoc().ToCharTop(pos);
}

void CEditorWnd::SelectLogicalLine(int line, int scroll)
{
    CTextPos start(line, 0);
    CTextPos end = start;
    GetDoc().ToNextLogicalLine(end);
    SelectText(start, end, 1, scroll);
}

void CEditorWnd::SelectWord(const CTextPos& at)
{
    CTextPos start = GetDoc().Completed(at);
    GetDoc().ToWordTop(start);
    CTextPos end = start;
    GetDoc().ToWordEnd(end);
    SelectText(start, end, 1, 0);
}

void CEditorWnd::SelectWord(CPoint point)
{
    CTextPos at;
    CursorPoint2TextPos(point, 0, at);
    SelectWord(at);
}

void CEditorWnd::SelectAll()
{
    SelectText(CTextPos(), GetDoc().GetDocEnd(), 1, 0);
}

void CEditorWnd::ClearTextSelect(int redraw)
{
    const CTextPos oldAnchor = m_selAnchor;
    const CTextPos oldEnd = m_selEnd;
    m_selAnchor = m_selEnd = m_caretPos;
    if (redraw != 0 && oldAnchor != oldEnd)
        InvalidateRange(oldAnchor, oldEnd);
}

int CEditorWnd::IsBodyTextSelected() const
{
    return IsTextSelected() != 0 && m_selAnchor.line >= GetHeaderLineL() &&
           m_selEnd.line >= GetHeaderLineL();
}

int CEditorWnd::IsCaretSelectStartPos() const
{
    return m_caretPos == (m_selEnd < m_selAnchor ? m_selEnd : m_selAnchor);
}

void CEditorWnd::GetSelectRange(CTextPos& start, CTextPos& end) const
{
    const bool reversed = m_selEnd < m_selAnchor;
    start = reversed ? m_selEnd : m_selAnchor;
    end = reversed ? m_selAnchor : m_selEnd;
    if (start == end)
        start = end = m_caretPos;
}

bool CEditorWnd::IsLineEndSelected(int line) const
{
    const CTextPos lineEnd(line, GetDoc().GetLineByteCountL(line));
    CTextPos start;
    CTextPos end;
    GetSelectRange(start, end);
    return !tlvn::IsBeforeL(lineEnd, start) && tlvn::IsBeforeL(lineEnd, end);
}

// --- found ranges ----------------------------------------------------------------------------

void CEditorWnd::AddFoundArray(const CEditorTextViewRangeArray& found)
{
    tlvn::GuardMemory([&] {
        std::vector<CEditorTextViewRange> ranges;
        for (int i = 0; i < found.GetSize(); ++i)
            ranges.emplace_back(GetDoc().Completed(found[i]->start),
                                GetDoc().Completed(found[i]->end));
        tlvn::AddTextRanges(std::move(ranges), m_found);
    });
    if (HasWindow())
        Invalidate(FALSE);
}

void CEditorWnd::AddFoundArray(const CTextPos& start, const CTextPos& end)
{
    CEditorTextViewRange range(start, end);
    CEditorTextViewRangeArray one;
    one.Add(&range);
    AddFoundArray(one);
}

void CEditorWnd::ClearFoundArray()
{
    ClearTextViewRangeArray(m_found);
    if (HasWindow())
        Invalidate(FALSE);
}
