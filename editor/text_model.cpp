#include "editor/text_model.h"

#include "framework/guard_memory.h"

#include <algorithm>
#include <climits>

namespace tlvn {

TextModel::TextModel() = default;

TextModel::~TextModel()
{
    ClearLineMarkerArray(m_arranged);
}

void TextModel::SetDocument(CodeType codeType, const char* text, int length)
{
    Clear();
    m_document.Set(codeType, text, length);
}

void TextModel::Clear()
{
    ClearMarkers();
    m_history.Clear();
    m_document.Clear();
    m_modified = false;
    m_markerModified = false;
}

void TextModel::SetCodeType(CodeType codeType)
{
    const bool wasWide = m_document.IsWide();
    m_document.SetCodeType(codeType);
    if (m_document.IsWide() != wasWide) {
        ClearMarkers();
        m_history.Clear();
    } else {
        UpdateMarkerViews();
    }
}

void TextModel::Append(const char* text, int length, std::string_view quoteMark)
{
    m_document.Append(text, length, quoteMark);
}

void TextModel::Append(const Document& other)
{
    m_document.Append(other);
}

void TextModel::InsertHeader(const char* text, int length)
{
    ShiftLines(m_document.InsertHeader(text, length));
}

void TextModel::RemoveHeader()
{
    ShiftLines(-m_document.RemoveHeader());
}

void TextModel::SetLayout(const LineLayout* layout)
{
    m_document.SetLayout(layout);
    UpdateMarkerViews();
}

void TextModel::RewrapAll()
{
    m_document.RewrapAll();
    UpdateMarkerViews();
}

CTextPos TextModel::InsertText(const CTextPos& at, const char* text, int length)
{
    if (text == nullptr || length <= 0) {
        CTextPos pos = at;
        m_document.ToCharTop(pos);
        return pos;
    }
    CBuffer filling;
    CTextPos start = FillUpTo(at, filling);
    if (!filling.IsEmpty()) {
        filling.Add(text, length);
        text = filling;
        length = filling.GetLength();
    }
    const int headerLines = m_document.GetHeaderLineCount();
    CTextPos end = Insert(start, text, length);
    if (!IsSameL(start, end)) {
        m_history.Add({ChangeRecord::Inserted, start, end, headerLines,
                       m_document.GetHeaderLineCount(), CBuffer()});
    }
    m_document.ToCharTop(end);
    return end;
}

CTextPos TextModel::DeleteText(const CTextPos& a, const CTextPos& b)
{
    CTextPos from = a;
    CTextPos to = b;
    m_document.ToCharTop(from);
    m_document.ToCharTop(to);
    OrderL(from, to);
    if (!IsBeforeL(from, to))
        return from;
    const int headerLines = m_document.GetHeaderLineCount();
    CBuffer deleted;
    Delete(from, to, deleted);
    m_history.Add({ChangeRecord::Deleted, from, to, headerLines, m_document.GetHeaderLineCount(),
                   std::move(deleted)});
    m_document.ToCharTop(from);
    return from;
}

int TextModel::Undo(CTextPos& caret)
{
    ChangeHistory::Group* const group = m_history.StepBack();
    if (group == nullptr)
        return 0;
    const ChangeGroup step(*this);
    for (auto change = group->rbegin(); change != group->rend(); ++change)
        Apply(*change, true, caret);
    return 1;
}

int TextModel::Redo(CTextPos& caret)
{
    ChangeHistory::Group* const group = m_history.StepForward();
    if (group == nullptr)
        return 0;
    const ChangeGroup step(*this);
    for (ChangeRecord& change : *group)
        Apply(change, false, caret);
    return 1;
}

void TextModel::TextInserted(int line1, int byte1, int line2, int byte2)
{
    TextChanged({true, line1, byte1, line2, byte2});
}

void TextModel::TextDeleted(int line1, int byte1, int line2, int byte2)
{
    TextChanged({false, line1, byte1, line2, byte2});
}

void TextModel::DrawMarker(int kind, const CTextPos& a, const CTextPos& b)
{
    CTextPos from = a;
    CTextPos to = b;
    m_document.ToCharTop(from);
    m_document.ToCharTop(to);
    OrderL(from, to);
    if (IsBeforeL(from, to))
        AddMarker(CEditorLineMarker(from, to, kind));
}

void TextModel::AddMarker(const CEditorLineMarker& marker)
{
    const int used = m_markers.GetUsedCount();
    m_markers.Add(marker);
    m_history.Add({ChangeRecord::Marked, CTextPos(), CTextPos(), used, used + 1, CBuffer()});
    m_markerModified = true;
    MarkersChanged();
}

void TextModel::DrawSimpleMarker(int kind, const CTextPos& a, const CTextPos& b)
{
    CTextPos from = a;
    CTextPos to = b;
    m_document.L2PByteIndex(from);
    m_document.L2PByteIndex(to);
    OrderL(from, to);
    GetMarkers();
    GuardMemory([&] {
        auto marker = std::make_unique<CEditorLineMarker>(from, to, kind);
        const auto* const begin = m_arranged.GetData();
        const auto* const place =
            std::upper_bound(begin, begin + m_arranged.GetSize(), from,
                             [](const CTextPos& pos, const CEditorLineMarker* m) {
                                 return IsBeforeL(pos, m->start);
                             });
        m_arranged.InsertAt(static_cast<int>(place - begin), marker.get());
        marker.release();
    });
    m_markerModified = true;
}

// Marks from outside may be where there is no text.
void TextModel::EraseAllMarkers()
{
    if (!GetMarkers().IsEmpty())
        AddMarker(CEditorLineMarker(CTextPos(INT_MIN, 0), CTextPos(INT_MAX, 0), -1));
}

void TextModel::ClearMarkers()
{
    m_markers.Clear();
    MarkersChanged();
}

void TextModel::InitMarkers(const CEditorLineMarkerArray& markers)
{
    m_markers.Clear();
    for (int i = 0; i < markers.GetSize(); ++i)
        m_markers.Add(*markers[i]);
    MarkersChanged();
}

void TextModel::CopyMarkersWithin(const CEditorLineMarkerArray& markers, CTextPos from, CTextPos to)
{
    OrderL(from, to);
    const auto clip = [&](CTextPos pos) {
        if (IsBeforeL(pos, from))
            pos = from;
        if (IsBeforeL(to, pos))
            pos = to;
        if (pos.line == from.line)
            pos.logicalByte -= from.logicalByte;
        pos.line -= from.line;
        return pos;
    };
    m_markers.Clear();
    for (int i = 0; i < markers.GetSize(); ++i) {
        const CEditorLineMarker& marker = *markers[i];
        if (IsBeforeL(marker.start, to) && IsBeforeL(from, marker.end))
            m_markers.Add(CEditorLineMarker(clip(marker.start), clip(marker.end), marker.kind));
    }
    MarkersChanged();
}

void TextModel::SetMarkerHistorySize(int count)
{
    m_markers.SetUsedCount(count);
    MarkersChanged();
}

const CEditorLineMarkerArray& TextModel::GetMarkers() const
{
    if (m_arrangeLater)
        ArrangeMarkers();
    return m_arranged;
}

void TextModel::MarkersChanged()
{
    m_arrangeLater = true;
    if (!m_history.IsInGroup())
        ArrangeMarkers();
}

void TextModel::ArrangeMarkers() const
{
    m_arrangeLater = true; // should memory run out
    ClearLineMarkerArray(m_arranged);
    if (m_markers.GetUsedCount() > 0) {
        GuardMemory([&] {
            std::vector<CEditorLineMarker> arranged;
            m_markers.Arrange(arranged);
            for (const CEditorLineMarker& stretch : arranged) {
                auto marker = std::make_unique<CEditorLineMarker>(stretch);
                m_arranged.Add(marker.get());
                marker.release();
            }
        });
    }
    m_arrangeLater = false;
    UpdateMarkerViews();
}

CTextPos TextModel::Insert(const CTextPos& at, const char* text, int length)
{
    const CTextPos end = m_document.Insert(at, text, length);
    if (!IsSameL(at, end))
        TextInserted(at.line, at.logicalByte, end.line, end.logicalByte);
    return end;
}

void TextModel::Delete(const CTextPos& from, const CTextPos& to, CBuffer& deleted)
{
    m_document.CopyRange(from, to, TextForm(), deleted);
    m_document.Delete(from, to);
    TextDeleted(from.line, from.logicalByte, to.line, to.logicalByte);
}

void TextModel::TextChanged(const TextChange& change)
{
    m_modified = true;
    m_markerModified = true;
    if (m_markers.GetCount() > 0 || !m_arranged.IsEmpty()) {
        m_markers.Move(change);
        MarkersChanged();
    }
    if (m_listener)
        m_listener(change);
}

// Where to insert for a text to come at `at`: there, or with the free cursor and `at` behind the
// text the end before it, and `filling` is what leads from there to `at`.
CTextPos TextModel::FillUpTo(const CTextPos& at, CBuffer& filling) const
{
    CTextPos start = at;
    m_document.ToCharTop(start);
    if (!m_document.IsFreeCursor() || m_document.IsInText(at) || at.line < start.line)
        return start;
    const int lines = at.line - start.line;
    // A display form behind the last line has no logical byte.
    const int column = lines > 0 ? std::max(at.logicalByte, at.byte) : at.logicalByte;
    const int unit = m_document.IsWide() ? 2 : 1;
    const int blanks = (column - (lines > 0 ? 0 : start.logicalByte)) / unit;
    const auto append = [&](char c, int count) {
        if (unit == 2)
            filling.Insert(static_cast<WCHAR>(c), count, filling.GetLength());
        else
            filling.Insert(c, count, filling.GetLength());
    };
    append('\n', lines);
    append(' ', std::max(blanks, 0));
    return start;
}

void TextModel::Apply(ChangeRecord& change, bool undo, CTextPos& caret)
{
    if (change.kind == ChangeRecord::Marked) {
        SetMarkerHistorySize(undo ? change.countBefore : change.countAfter);
        m_markerModified = true;
        return;
    }
    // The owner may have set another header block since: the difference counts.
    const int headerLines = m_document.GetHeaderLineCount();
    const int gained = change.countAfter - change.countBefore;
    if ((change.kind == ChangeRecord::Deleted) == undo) {
        caret = Insert(change.start, change.text, change.text.GetLength());
        change.text.AllocFree();
    } else {
        Delete(change.start, change.end, change.text);
        caret = change.start;
    }
    m_document.SetHeaderLineCount(undo ? headerLines - gained : headerLines + gained);
    m_document.ToCharTop(caret);
}

void TextModel::UpdateMarkerViews() const
{
    for (int i = 0; i < m_arranged.GetSize(); ++i) {
        m_document.L2PByteIndex(m_arranged[i]->start);
        m_document.L2PByteIndex(m_arranged[i]->end);
    }
}

// After lines were put in front of the text or taken away there.
void TextModel::ShiftLines(int lines)
{
    m_history.ShiftLines(lines);
    for (int i = 0; i < m_markers.GetCount(); ++i) {
        for (CTextPos* pos : {&m_markers.GetAt(i).start, &m_markers.GetAt(i).end}) {
            const INT64 line = INT64{pos->line} + lines;
            if (line < 0)
                *pos = CTextPos();
            else
                pos->line = static_cast<int>(std::min<INT64>(line, INT_MAX));
        }
    }
    MarkersChanged();
}

} // namespace tlvn
