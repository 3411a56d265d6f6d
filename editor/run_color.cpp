#include "editor/run_color.h"

#include "charcode/charset.h"
#include "charcode/flagged_char.h"
#include "framework/guard_memory.h"

#include <algorithm>
#include <climits>
#include <memory>

namespace tlvn {

namespace {

// The byte of a position in a line; outside of all bytes when the position is in another line.
int ByteInLine(const CTextPos& pos, int line)
{
    if (pos.line != line)
        return pos.line < line ? INT_MIN : INT_MAX;
    return pos.logicalByte;
}

// Index of the first range of the array that ends behind the position, or the array's size.
template <class RangeArray>
int FindRangeFrom(const RangeArray& ranges, const CTextPos& pos)
{
    const auto* const begin = ranges.GetData();
    const auto* const found =
        std::partition_point(begin, begin + ranges.GetSize(),
                             [&](const auto* range) { return !IsBeforeL(pos, range->end); });
    return static_cast<int>(found - begin);
}

// Brings the end of a run at `byte` to where [begin, end), if it is not empty, begins or ends.
// True when the byte is in there.
bool CutAt(int begin, int end, int byte, int& runEnd)
{
    if (end <= byte || begin == end)
        return false;
    runEnd = std::min(runEnd, byte < begin ? begin : end);
    return byte >= begin;
}

// CutAt for the range of an array that holds the byte or is the next behind it. Returns the range
// that the byte is in, or null.
template <class RangeArray>
auto CutAtRange(const RangeArray* ranges, const CTextPos& at, int& runEnd)
{
    using Range = decltype(ranges->GetAt(0));
    const int index = ranges != nullptr ? FindRangeFrom(*ranges, at) : 0;
    if (ranges == nullptr || index == ranges->GetSize())
        return static_cast<std::decay_t<Range>>(nullptr);
    const auto range = ranges->GetAt(index);
    const bool inside = CutAt(ByteInLine(range->start, at.line), ByteInLine(range->end, at.line),
                              at.logicalByte, runEnd);
    return inside ? range : nullptr;
}

} // namespace

RunColor::RunColor(const CEditorColor& colors, CodeType codeType)
    : m_colors(colors), m_flagsCharacters(CodeTypeSave2Edit(codeType) == CT_SJIS)
{}

void RunColor::SetSelection(const CTextPos& anchor, const CTextPos& end)
{
    const bool reversed = IsBeforeL(end, anchor);
    m_selStart = reversed ? end : anchor;
    m_selEnd = reversed ? anchor : end;
}

void RunColor::SetLine(const DrawLine& line)
{
    m_line = line;
    m_katakana = FlaggedRun();
    m_machineDepend = FlaggedRun();
}

void RunColor::GetRun(int byte, DrawRun& run)
{
    run = DrawRun();
    run.text = m_line.baseText;
    run.back = m_line.baseBack;
    if (byte < m_line.start || byte >= m_line.end)
        return;

    int end = m_line.end;
    run.special = ApplyRange(byte, end, run) || ApplyFlagged(byte, end, run);
    if (m_line.links != nullptr) {
        const std::size_t link = FindLinkFrom(*m_line.links, byte);
        run.underline =
            link < m_line.links->size() &&
            CutAt((*m_line.links)[link].start, (*m_line.links)[link].GetEnd(), byte, end);
    }
    if (run.underline && !run.special) {
        run.text = m_colors.GetUrlColor();
        run.special = true;
    }
    run.length = end - byte;
}

bool RunColor::ApplyRange(int byte, int& end, DrawRun& run) const
{
    const CTextPos at(m_line.line, byte);
    if (CutAt(ByteInLine(m_selStart, at.line), ByteInLine(m_selEnd, at.line), byte, end)) {
        run.text = m_colors.GetSelTextColor();
        run.back = m_colors.GetSelBackColor();
        return true;
    }
    if (CutAtRange(m_found, at, end) != nullptr) {
        run.text = m_colors.GetFindedTextColor();
        run.back = m_colors.GetFindedBackColor();
        return true;
    }
    if (const CEditorLineMarker* const marker = CutAtRange(m_markers, at, end)) {
        run.text = m_colors.GetLineMarkerTextColor(marker->kind);
        run.back = m_colors.GetLineMarkerBackColor(marker->kind);
        return true;
    }
    return false;
}

bool RunColor::ApplyFlagged(int byte, int& end, DrawRun& run)
{
    if (!m_flagsCharacters)
        return false;
    Look(byte, FindHankakuKatakana, GetHankakuKatakanaLen, m_katakana);
    if (CutAt(m_katakana.start, m_katakana.end, byte, end)) {
        run.text = m_colors.GetKatakanaColor();
        return true;
    }
    Look(byte, FindMachineDependChar, GetMachineDependCharLen, m_machineDepend);
    if (CutAt(m_machineDepend.start, m_machineDepend.end, byte, end)) {
        run.text = m_colors.GetMacnDependColor();
        return true;
    }
    return false;
}

void RunColor::Look(int byte, Finder find, Finder measure, FlaggedRun& flagged) const
{
    if (byte >= flagged.from && byte < flagged.end)
        return;
    flagged.from = byte;
    flagged.start = flagged.end = INT_MAX;
    const int found = find(m_line.text + byte, m_line.end - byte);
    if (found < 0)
        return;
    flagged.start = byte + found;
    flagged.end = flagged.start + measure(m_line.text + flagged.start, m_line.end - flagged.start);
}

void RunColor::GetBaseColors(const CEditorColor& colors, bool isHeader, int quoteLevel,
                             COLORREF& text, COLORREF& back)
{
    text = quoteLevel < 0 ? colors.GetTextColor() : colors.GetQuotedTextColor(quoteLevel);
    back = isHeader ? colors.GetHeaderBackColor() : colors.GetBackColor();
}

void AddTextRanges(std::vector<CEditorTextViewRange> added, CEditorTextViewRangeArray& ranges)
{
    GuardMemory([&] {
        std::vector<CEditorTextViewRange>& sorted = added;
        for (int i = 0; i < ranges.GetSize(); ++i)
            sorted.push_back(*ranges.GetAt(i));
        for (CEditorTextViewRange& range : sorted) {
            // A display form would not stay right.
            for (CTextPos* pos : {&range.start, &range.end})
                *pos = CTextPos(pos->line, pos->logicalByte);
            OrderL(range.start, range.end);
        }
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const auto& a, const auto& b) { return IsBeforeL(a.start, b.start); });

        std::vector<std::unique_ptr<CEditorTextViewRange>> merged;
        for (const CEditorTextViewRange& range : sorted) {
            if (IsSameL(range.start, range.end))
                continue;
            if (merged.empty() || !IsBeforeL(range.start, merged.back()->end))
                merged.push_back(std::make_unique<CEditorTextViewRange>(range));
            else if (IsBeforeL(merged.back()->end, range.end))
                merged.back()->end = range.end;
        }

        ClearTextViewRangeArray(ranges);
        ranges.SetSize(static_cast<int>(merged.size()));
        for (std::size_t i = 0; i < merged.size(); ++i)
            ranges.SetAt(static_cast<int>(i), merged[i].release());
    });
}

} // namespace tlvn
