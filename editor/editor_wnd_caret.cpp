// The caret and the keys that move it.

#include "editor/char_widths.h"
#include "editor/columns.h"
#include "editor/editor_wnd.h"

#include <algorithm>

namespace {

constexpr int kCaretWidth = 2;
// Characters and lines that the view keeps between the caret and its edges.
constexpr int kKeepColumns = 2;
constexpr int kKeepLines = 2;

bool IsShiftDown()
{
    return ::GetKeyState(VK_SHIFT) < 0;
}

// As much of kKeepLines as a view of so many lines has room for.
int GetKeptLines(int rows)
{
    return std::clamp((rows - 1) / 2, 0, kKeepLines);
}

} // namespace

// --- the system's caret ----------------------------------------------------------------------

int CEditorWnd::IsCaretUsed() const
{
    return !m_forSample && (m_readOnly == 0 || m_metrics.GetShowCaret() != 0);
}

void CEditorWnd::CreateCaretIfUsed()
{
    if (m_caretMade || IsCaretUsed() == 0)
        return;
    CreateSolidCaret(m_insertMode != 0 ? kCaretWidth : m_charWidth, m_charHeight);
    m_caretMade = true;
    PlaceCaret();
    ShowCaret();
}

void CEditorWnd::DestroyCaretIfMade()
{
    if (!m_caretMade)
        return;
    HideCaret();
    ::DestroyCaret();
    m_caretMade = false;
}

// A caret in the rulers, or scrolled to the left of the text, is out of sight.
void CEditorWnd::PlaceCaret()
{
    if (!m_caretMade)
        return;
    CPoint point = GetCaretPoint();
    const CRect text = GetTextRect();
    if (point.x < text.left || point.y < text.top)
        point = CPoint(-m_charHeight - text.left, -2 * m_charHeight);
    SetCaretPos(point);
    if (m_composing)
        PlaceComposition();
}

void CEditorWnd::SetCaretPos(POINT point)
{
    CWnd::SetCaretPos(point);
}

CPoint CEditorWnd::GetCaretPoint() const
{
    CPoint point;
    TextPos2Point(GetCaretViewPos(), point);
    return point;
}

int CEditorWnd::GetCaretX() const
{
    return GetX(GetCaretViewPos());
}

int CEditorWnd::GetCaretColumn() const
{
    return GetCaretX() / m_charWidth;
}

CTextPos CEditorWnd::GetCaretViewPos() const
{
    CTextPos pos = m_caretPos;
    if (m_caretAtRowEnd && pos.physical > 0 && pos.byte == 0) {
        --pos.physical;
        pos.byte = GetLineByteCountP(pos.line, pos.physical);
    }
    return pos;
}

int CEditorWnd::GetCaretRow() const
{
    const CTextPos pos = GetCaretViewPos();
    return GetSerialLineP(pos.line, pos.physical);
}

void CEditorWnd::GetCaretPos(int& line, int& column) const
{
    const CTextPos pos = GetCaretViewPos();
    line = m_metrics.GetPhisicalLineNo() != 0 ? GetSerialLineP(pos.line, pos.physical) : pos.line;
    column = GetColumn(pos);
}

int CEditorWnd::GetColumn(const CTextPos& pos) const
{
    int column = 0;
    const int length = std::min(pos.byte, GetLineByteCountP(pos.line, pos.physical));
    if (length > 0) {
        const CLLineData& data = GetDoc().GetLine(pos.line);
        column =
            tlvn::CountColumns(m_widths->GetCode(), data.GetText() + data.GetStart(pos.physical),
                               length, m_metrics.GetTabColumn());
    }
    return column + (pos.byte - length) / GetBlankBytes();
}

// --- moving ----------------------------------------------------------------------------------

void CEditorWnd::MoveCaret(const CTextPos& pos, int select, int scroll, CaretMoveReason reason)
{
    const tlvn::Document& document = GetDoc();
    CTextPos place = document.Completed(pos);
    const bool free = m_metrics.GetFreeCursor() != 0;
    bool atRowEnd = false;
    if (free && place.line >= document.GetLineCount()) {
        place = CTextPos(std::min(place.line, kLastFreeLine), place.byte);
    } else {
        // Behind the text a position can only be in the last physical line.
        const bool lastRow = place.physical >= GetLineCountP(place.line) - 1;
        document.P2LByteIndex(place, !free || !lastRow);
        atRowEnd = !lastRow && place.byte > 0 &&
                   place.byte == document.GetLineByteCountP(place.line, place.physical);
    }
    if (free && !document.IsInText(place))
        document.L2PByteIndex(place);
    else
        document.ToCharTop(place);

    CTextPos anchor = place;
    if (select != 0)
        anchor = IsTextSelected() != 0 ? m_selAnchor : m_caretPos;
    MoveCaretAndAnchor(anchor, place, atRowEnd, scroll, reason);
}

void CEditorWnd::MoveCaretAndAnchor(const CTextPos& anchor, const CTextPos& place, bool atRowEnd,
                                    int scroll, CaretMoveReason reason)
{
    InvalidateColIndicator(GetCaretColumn());
    SetSelection(anchor, place);
    m_caretPos = place;
    m_caretAtRowEnd = atRowEnd && place.byte == 0;
    if (reason != CaretMoveVertical)
        m_caretX = GetCaretX();
    if (scroll != 0)
        EnsureCaretVisible(1);
    PlaceCaret();
    InvalidateColIndicator(GetCaretColumn());
    Notify(EditorNotifyCaret);
}

void CEditorWnd::EnsureCaretVisible(int scroll)
{
    if (!HasWindow() && !m_fixedRect)
        return;
    const int width = GetTextRect().Width();
    const int keep = width >= (2 * kKeepColumns + 1) * m_charWidth ? kKeepColumns * m_charWidth : 0;
    const int x = GetCaretX();
    const int left = m_leftColumn * m_charWidth;
    if (x - left < keep)
        ScrollToHorzPos((x - keep) / m_charWidth);
    else if (x - left > width - keep)
        ScrollToHorzPos((x + keep - width + m_charWidth - 1) / m_charWidth);

    const int rows = GetRowCount();
    const int lines = GetKeptLines(rows);
    const int row = GetCaretRow();
    const int first = m_topLine + lines;
    const int last = m_topLine + std::max(rows - 1 - lines, 0);
    if (scroll != 0) {
        if (row < first)
            ScrollToVertPos(row - lines);
        else if (row > last)
            ScrollToVertPos(row - std::max(rows - 1 - lines, 0));
        return;
    }
    // At the ends of the text there is nothing to keep away from.
    const int least = m_topLine == 0 ? 0 : first;
    const int most = m_topLine >= GetMaxTopLine() ? m_topLine + std::max(rows - 1, 0) : last;
    if (row < least || row > most)
        MoveCaretToRow(std::clamp(row, least, std::max(least, most)), false, 0);
}

void CEditorWnd::MoveCaretToRow(int row, bool select, int scroll)
{
    const int lastRow = m_metrics.GetFreeCursor() != 0 ? kLastFreeLine : GetDocSize() - 1;
    CTextPos pos = GetDoc().FindSerialLineP(std::clamp(row, 0, std::max(lastRow, 0)));
    GetBytePAtX(m_caretX, 1, pos);
    MoveCaret(pos, select, scroll, CaretMoveVertical);
}

void CEditorWnd::MoveCaretByKey(const CTextPos& pos, CaretMoveReason reason)
{
    MoveCaret(pos, IsShiftDown(), 1, reason);
}

void CEditorWnd::CaretLineUp()
{
    if (IsCaretUsed() == 0 && !IsShiftDown())
        return ScrollLineUp();
    MoveCaretToRow(GetCaretRow() - 1, IsShiftDown(), 1);
}

void CEditorWnd::CaretLineDown()
{
    if (IsCaretUsed() == 0 && !IsShiftDown())
        return ScrollLineDown();
    MoveCaretToRow(GetCaretRow() + 1, IsShiftDown(), 1);
}

// Without Shift a selection is left at the end that the key points to.
void CEditorWnd::CaretLineLeft()
{
    CTextPos pos = m_caretPos;
    CTextPos end;
    if (IsTextSelected() != 0 && !IsShiftDown())
        GetSelectRange(pos, end);
    else
        GetDoc().ToPrevChar(pos);
    MoveCaretByKey(pos, CaretMoveText);
}

void CEditorWnd::CaretLineRight()
{
    CTextPos pos = m_caretPos;
    CTextPos start;
    if (IsTextSelected() != 0 && !IsShiftDown())
        GetSelectRange(start, pos);
    else
        GetDoc().ToNextChar(pos);
    MoveCaretByKey(pos, CaretMoveText);
}

void CEditorWnd::CaretWordLeft()
{
    CTextPos pos = m_caretPos;
    GetDoc().ToPrevWordTop(pos);
    MoveCaretByKey(pos, CaretMoveText);
}

void CEditorWnd::CaretWordRight()
{
    CTextPos pos = m_caretPos;
    GetDoc().ToNextWordTop(pos);
    MoveCaretByKey(pos, CaretMoveText);
}

// The view and the caret go by a page, less the two lines that stay; at the ends of the text the
// caret goes on alone.
void CEditorWnd::MoveCaretPage(int direction)
{
    const bool select = IsShiftDown();
    const int page = std::max(GetRowCount() - kKeepLines, 1);
    if (IsCaretUsed() == 0 && !select)
        return ScrollToVertPos(m_topLine + direction * page);
    const int row = GetCaretRow() + direction * page;
    ScrollToVertPos(m_topLine + direction * page);
    MoveCaretToRow(row, select, 1);
}

void CEditorWnd::CaretPageUp()
{
    MoveCaretPage(-1);
}

void CEditorWnd::CaretPageDown()
{
    MoveCaretPage(1);
}

void CEditorWnd::CaretHome()
{
    CTextPos pos = GetCaretViewPos();
    GetDoc().ToPhysicalLineHome(pos);
    MoveCaretByKey(pos, CaretMoveText);
}

void CEditorWnd::CaretEnd()
{
    CTextPos pos = GetCaretViewPos();
    GetDoc().ToPhysicalLineEnd(pos);
    MoveCaretByKey(pos, CaretMoveText);
}

void CEditorWnd::CaretDocHome()
{
    if (IsCaretUsed() == 0 && !IsShiftDown())
        return ScrollToVertPos(0);
    MoveCaretByKey(CTextPos(), CaretMoveText);
}

void CEditorWnd::CaretDocEnd()
{
    if (IsCaretUsed() == 0 && !IsShiftDown())
        return ScrollToVertPos(GetMaxTopLine());
    MoveCaretByKey(GetDoc().GetDocEnd(), CaretMoveText);
}
