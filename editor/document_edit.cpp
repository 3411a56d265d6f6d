#include "editor/document.h"
#include "editor/line_split.h"
#include "foundation/multibyte.h"

#include <algorithm>

namespace tlvn {

CTextPos Document::Insert(const CTextPos& at, const char* text, int length)
{
    const CApplyLocale locale(m_codeType);
    if (GetLineCount() == 0)
        Append(nullptr, 0);
    CTextPos pos = at;
    ToText(pos);
    length = CheckedLength(text, length);
    const int line = pos.line;
    const int byte = pos.logicalByte;

    const int first =
        IsWide() ? FirstLineLength<WCHAR>(text, length) : FirstLineLength<char>(text, length);
    if (first == length) {
        ReplaceInLine(line, byte, 0, text, length);
        return MakePos(line, byte + length);
    }

    // The rest of the line goes behind the last of the new lines.
    const int terminator = IsWide() ? TerminatorLength<WCHAR>(text + first, length - first)
                                    : TerminatorLength<char>(text + first, length - first);
    std::vector<CLLineData> lines;
    MakeLines(text + first + terminator, length - first - terminator, lines);
    const int added = static_cast<int>(lines.size());
    const int lastByte = lines.back().GetLength();
    const CLLineData& cut = GetLine(line);
    const int rest = cut.GetLength() - byte;
    if (rest > 0) {
        m_pool.AddUnused(lastByte);
        lines.back().Replace(lastByte, 0, cut.GetText() + byte, rest);
    }
    // In the order of the text, in which quotes are entered.
    ReplaceInLine(line, byte, rest, text, first);
    for (CLLineData& newLine : lines)
        WrapLine(newLine);
    m_lines.Insert(line + 1, lines);
    if (line < m_headerLines)
        m_headerLines += added;
    return MakePos(line + added, lastByte);
}

CTextPos Document::Delete(const CTextPos& from, const CTextPos& to)
{
    const CApplyLocale locale(m_codeType);
    CTextPos start = from;
    CTextPos end = to;
    ToText(start);
    ToText(end);
    if (!IsBeforeL(start, end))
        return start;
    if (start.line == end.line) {
        ReplaceInLine(start.line, start.logicalByte, end.logicalByte - start.logicalByte, nullptr,
                      0);
    } else {
        const CLLineData& last = GetLine(end.line);
        ReplaceInLine(start.line, start.logicalByte,
                      GetLine(start.line).GetLength() - start.logicalByte,
                      last.GetText() + end.logicalByte, last.GetLength() - end.logicalByte);
        DropText(start.line + 1, end.line + 1);
        m_lines.Remove(start.line + 1, end.line + 1);
        // What is left of the lines is one that began in the header block.
        if (start.line < m_headerLines)
            m_headerLines = std::max(start.line + 1, m_headerLines - (end.line - start.line));
    }
    CompactText();
    return MakePos(start.line, start.logicalByte);
}

void Document::ReplaceInLine(int line, int byte, int removed, const char* text, int length)
{
    CLLineData& data = m_lines.GetLine(line);
    const bool linksMatter = data.HasKnownLinks();
    if (data.IsShared())
        m_pool.AddUnused(data.GetLength());
    data.Replace(byte, removed, text, length);
    WrapChangedLine(data, byte, removed, length, linksMatter);
    m_lines.LineChanged(line);
}

} // namespace tlvn
