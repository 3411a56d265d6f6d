// The text: replacing, appending, copying out, editing.

#include "charcode/charset.h"
#include "editor/char_widths.h"
#include "editor/editor_wnd.h"
#include "editor/line_wrap.h"
#include "editor/row_pixels.h"
#include "editor/text_units.h"

#include <algorithm>

// --- replacing and appending -----------------------------------------------------------------

int CEditorWnd::SetDocument(CodeType codeType, const char* text, int length)
{
    ClearAllLineData();
    SelectFont(codeType);
    m_model.SetDocument(codeType, text, length);
    ResetPlaces();
    FollowDocumentSize();
    if (HasWindow())
        Invalidate(FALSE);
    PlaceCaret();
    Notify(EditorNotifyText);
    return 1;
}

void CEditorWnd::ClearAllLineData()
{
    m_model.Clear();
    ClearTextViewRangeArray(m_found);
    ResetPlaces();
    FollowDocumentSize();
    if (HasWindow())
        Invalidate(FALSE);
}

void CEditorWnd::ResetPlaces()
{
    EndDrag();
    m_pixels->Forget();
    m_caretPos = m_selAnchor = m_selEnd = m_dragAnchor = CTextPos();
    m_caretAtRowEnd = false;
    m_caretX = 0;
    m_topLine = 0;
    m_leftColumn = 0;
}

void CEditorWnd::AppendText(const char* text, int length, int quote)
{
    PrepareLayout();
    const int oldCount = GetDoc().GetLineCount();
    m_model.Append(text, length, MakeTextForm(quote, 1, 0).quoteMark);
    FollowDocumentSize();
    InvalidateFrom(std::max(oldCount - 1, 0), 0);
    Notify(EditorNotifyText);
}

void CEditorWnd::AppendDoc(const CEditorWnd& other, int quote)
{
    PrepareLayout();
    const int oldCount = GetDoc().GetLineCount();
    if (quote == 0) {
        m_model.Append(other.GetDoc());
    } else if (other.GetDoc().GetLineCount() > 0) {
        tlvn::Document converted;
        converted.SetCodeType(GetCodeType());
        converted.Append(other.GetDoc());
        CBuffer text;
        converted.CopyLines(0, tlvn::TextForm(), text);
        m_model.Append(text, text.GetLength(), MakeTextForm(quote, 1, 0).quoteMark);
    }
    FollowDocumentSize();
    InvalidateFrom(std::max(oldCount - 1, 0), 0);
    Notify(EditorNotifyText);
}

// The place in the text once that is converted to the other type.
CTextPos CEditorWnd::ConvertPlace(const CTextPos& pos, CodeType codeType) const
{
    if (pos.line >= GetDoc().GetLineCount())
        return CTextPos(pos.line, 0);
    const CLLineData& line = GetDoc().GetLine(pos.line);
    const auto before = static_cast<std::size_t>(std::min(pos.logicalByte, line.GetLength()));
    tlvn::WString units;
    std::string converted;
    tlvn::GuardMemory([&] {
        tlvn::TextToUnits(GetCodeType(), std::string_view(line.GetText(), before), units);
        tlvn::UnitsToText(codeType, units, converted);
    });
    return CTextPos(pos.line, static_cast<int>(converted.size()));
}

void CEditorWnd::SetCodeType(CodeType codeType)
{
    const bool converts = IsCodeTypeUnicode(codeType) != IsCodeTypeUnicode(GetCodeType());
    const CTextPos top = GetTopPos();
    if (converts) {
        for (CTextPos* pos : {&m_caretPos, &m_selAnchor, &m_selEnd})
            *pos = ConvertPlace(*pos, codeType);
        ClearTextViewRangeArray(m_found);
    }
    m_model.SetLayout(nullptr);
    m_model.SetCodeType(codeType);
    SelectFont(codeType);
    UpdatePlaces(CTextPos(top.line, converts ? 0 : top.logicalByte));
    FollowDocumentSize();
    if (HasWindow())
        Invalidate(FALSE);
    PlaceCaret();
}

// --- header block ----------------------------------------------------------------------------

void CEditorWnd::InsertHeaderLines(int count)
{
    m_model.SetHeaderLineCount(count);
    if (HasWindow())
        Invalidate(FALSE);
}

void CEditorWnd::InsertHeaderText(const char* text, int length)
{
    PrepareLayout();
    const int oldCount = GetDoc().GetLineCount();
    const CTextPos top = GetTopPos();
    m_model.InsertHeader(text, length);
    FollowHeader(top, GetDoc().GetLineCount() - oldCount);
}

void CEditorWnd::RemoveHeaderText()
{
    const int oldCount = GetDoc().GetLineCount();
    const CTextPos top = GetTopPos();
    m_model.RemoveHeader();
    FollowHeader(top, GetDoc().GetLineCount() - oldCount);
}

void CEditorWnd::FollowHeader(CTextPos top, int lines)
{
    const auto move = [lines](CTextPos& pos) {
        pos = pos.line + lines >= 0 ? CTextPos(pos.line + lines, pos.logicalByte) : CTextPos();
    };
    for (CTextPos* pos : {&m_caretPos, &m_selAnchor, &m_selEnd})
        move(*pos);
    for (int i = 0; i < m_found.GetSize(); ++i) {
        move(m_found[i]->start);
        move(m_found[i]->end);
    }
    // A view at the top stays there, to show the header.
    if (m_topLine > 0)
        move(top);
    UpdatePlaces(top);
    FollowDocumentSize();
    if (HasWindow())
        Invalidate(FALSE);
    PlaceCaret();
    Notify(EditorNotifyText);
}

// --- copying out -----------------------------------------------------------------------------

tlvn::TextForm CEditorWnd::MakeTextForm(int quote, int crlf, int finalCrlf) const
{
    tlvn::TextForm form;
    if (quote != 0) {
        const CBuffer& mark = m_metrics.GetQuoteMarkEdit();
        form.quoteMark = std::string_view(mark, static_cast<std::size_t>(mark.GetLength()));
    }
    form.lineBreaks = crlf != 0;
    form.finalBreak = finalCrlf != 0;
    return form;
}

void CEditorWnd::GetDocument(int withHeader, int quote, int crlf, int finalCrlf, CBuffer& out) const
{
    GetDoc().CopyLines(withHeader != 0 ? 0 : GetHeaderLineL(), MakeTextForm(quote, crlf, finalCrlf),
                       out);
}

void CEditorWnd::GetDocument2(CBuffer& out) const
{
    GetDocument(0, 0, 1, 0, out);
}

void CEditorWnd::GetDocumentPart(int quote, const CTextPos& from, int crlf, CBuffer& out) const
{
    GetDoc().CopyRange(GetDoc().Completed(from), GetDoc().GetDocEnd(), MakeTextForm(quote, crlf, 0),
                       out);
}

int CEditorWnd::GetTextWithin(const CTextPos& from, const CTextPos& to, int quote, int crlf,
                              char* out, int size) const
{
    return GetDoc().CopyRange(GetDoc().Completed(from), GetDoc().Completed(to),
                              MakeTextForm(quote, crlf, 0), out, size);
}

int CEditorWnd::GetTextWithin(const CTextPos& from, const CTextPos& to, int quote, int crlf,
                              CBuffer& out) const
{
    GetDoc().CopyRange(GetDoc().Completed(from), GetDoc().Completed(to),
                       MakeTextForm(quote, crlf, 0), out);
    return out.GetLength();
}

int CEditorWnd::GetSelectedText(int quote, int crlf, CBuffer& out) const
{
    out.Empty();
    return IsTextSelected() ? GetTextWithin(m_selAnchor, m_selEnd, quote, crlf, out) : 0;
}

CStringW CEditorWnd::GetSelectedTextW(int quote, int crlf) const
{
    CBuffer text;
    GetSelectedText(quote, crlf, text);
    const auto length = static_cast<std::size_t>(text.GetLength());
    if (GetDoc().IsWide())
        return CStringW(reinterpret_cast<const WCHAR*>(static_cast<const char*>(text)),
                        text.GetLength() / 2);
    tlvn::WString units;
    tlvn::ConvertToUtf16(CharSetCode2CodePage(GetCodeType()), std::string_view(text, length),
                         units);
    return CStringW(units.data(), static_cast<int>(units.size()));
}

int CEditorWnd::GetLogicalLineCt(int withHeader) const
{
    return GetDoc().GetLineCount() - (withHeader != 0 ? 0 : GetHeaderLineL());
}

int CEditorWnd::GetPhisicalLineCt(int withHeader) const
{
    return GetDoc().GetPhysicalCount() - (withHeader != 0 ? 0 : GetHeaderLineP());
}

// --- editing ---------------------------------------------------------------------------------

CTextPos CEditorWnd::InsertText(const CTextPos& at, const char* text, int length)
{
    if (m_readOnly != 0 || text == nullptr || length <= 0)
        return at;
    const CTextPos place = GetDoc().Completed(at);
    ReplaceText(place, place, text, length);
    return m_caretPos;
}

CTextPos CEditorWnd::DeleteText(const CTextPos& from, const CTextPos& to)
{
    const CTextPos start = GetDoc().Completed(from);
    const CTextPos end = GetDoc().Completed(to);
    if (m_readOnly != 0 || tlvn::IsSameL(start, end))
        return from;
    ReplaceText(start, end, nullptr, 0);
    return m_caretPos;
}

int CEditorWnd::Undo()
{
    return CanUndo() != 0 ? StepHistory(&tlvn::TextModel::Undo) : 0;
}

int CEditorWnd::Redo()
{
    return CanRedo() != 0 ? StepHistory(&tlvn::TextModel::Redo) : 0;
}

// Markers may have changed anywhere.
int CEditorWnd::StepHistory(int (tlvn::TextModel::*step)(CTextPos&))
{
    BeginChanges();
    CTextPos caret = m_caretPos;
    const int done = (m_model.*step)(caret);
    InvalidateFrom(0, 0);
    FollowChanges(caret);
    return done;
}

void CEditorWnd::BeginChanges()
{
    PrepareLayout();
    ClearTextSelect(1);
    InvalidateColIndicator(GetCaretColumn());
    m_changes = Changes();
    m_changes.top = GetTopPos();
    m_changes.total = GetDocSize();
}

void CEditorWnd::OnTextChange(const tlvn::TextChange& change)
{
    Changes& all = m_changes;
    all.oneLine = all.oneLine && change.line1 == change.line2 &&
                  (all.count == 0 || all.firstLine == change.line1);
    all.firstLine = all.count == 0 ? change.line1 : std::min(all.firstLine, change.line1);
    ++all.count;
    tlvn::MovePosition(all.top, change);
    for (int i = 0; i < m_found.GetSize(); ++i) {
        tlvn::MovePosition(m_found[i]->start, change);
        tlvn::MovePosition(m_found[i]->end, change);
    }
}

void CEditorWnd::FollowChanges(const CTextPos& caret)
{
    m_pixels->Forget();
    m_model.GetMarkers(); // the owner may hold the array
    m_caretPos = m_selAnchor = m_selEnd = caret;
    m_caretAtRowEnd = false;
    // What stands at the top of the view stays there.
    CTextPos top = m_changes.top;
    GetDoc().L2PByteIndex(top);
    const int topLine = std::clamp(GetSerialLineP(top.line, top.physical), 0, GetMaxTopLine());
    if (topLine != m_topLine) {
        m_topLine = topLine;
        InvalidateFrom(0, 0);
    } else if (m_changes.oneLine && GetDocSize() == m_changes.total) {
        InvalidateLineL(m_changes.firstLine);
    } else {
        InvalidateFrom(m_changes.firstLine, 0);
    }
    FollowDocumentSize();
    MoveCaret(m_caretPos, 0, 1, CaretMoveText);
    if (m_changes.count > 0)
        Notify(EditorNotifyText);
}

void CEditorWnd::TextInserted(int line1, int byte1, int line2, int byte2)
{
    m_model.TextInserted(line1, byte1, line2, byte2);
    if (HasWindow())
        Invalidate(FALSE);
}

void CEditorWnd::TextDeleted(int line1, int byte1, int line2, int byte2)
{
    m_model.TextDeleted(line1, byte1, line2, byte2);
    if (HasWindow())
        Invalidate(FALSE);
}
