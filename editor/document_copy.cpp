#include "editor/document.h"
#include "foundation/multibyte.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace tlvn {

namespace {

constexpr std::string_view kNarrowBreak("\r\n", 2);
constexpr std::string_view kWideBreak("\r\0\n\0", 4);

// The most of the text's first bytes, up to `room`, that are whole characters.
int WholeCharacters(std::string_view text, int room, bool wide)
{
    if (static_cast<int>(text.size()) <= room)
        return static_cast<int>(text.size());
    if (!wide)
        return IsInsideCharacter(text.data(), text.data() + room, text.data() + text.size())
                   ? room - 1
                   : room;
    room = room / 2 * 2;
    const auto high = [&](int i) {
        return static_cast<BYTE>(text[static_cast<std::size_t>(i) + 1]);
    };
    const bool pair = room >= 2 && (high(room - 2) & 0xFC) == 0xD8 && (high(room) & 0xFC) == 0xDC;
    return pair ? room - 2 : room;
}

} // namespace

// Calls put(bytes) for all that makes up the copy, in order, until it returns false.
template <class Put>
void Document::ForEachPiece(const CTextPos& from, const CTextPos& to, const TextForm& form,
                            Put put) const
{
    if (GetLineCount() == 0)
        return;
    CTextPos start = from;
    CTextPos end = to;
    ToText(start);
    ToText(end);
    OrderL(start, end);
    const std::string_view lineBreak = IsWide() ? kWideBreak : kNarrowBreak;
    bool more = true;
    bool endsWithBreak = false;
    int i = start.line;
    m_lines.ForEach(start.line, end.line + 1, [&](const CLLineData& line) {
        const int first = i == start.line ? start.logicalByte : 0;
        const int last = i == end.line ? end.logicalByte : line.GetLength();
        const std::string_view piece(line.GetText() + first,
                                     static_cast<std::size_t>(last - first));
        const bool isLast = i == end.line;
        ++i;
        if (!more)
            return;
        if (!form.quoteMark.empty() && !(isLast && piece.empty()))
            more = put(form.quoteMark);
        more = more && put(piece);
        if (!isLast && form.lineBreaks)
            more = more && put(lineBreak);
        endsWithBreak = isLast && piece.empty() && start.line < end.line;
    });
    if (more && form.lineBreaks && form.finalBreak && !endsWithBreak)
        put(lineBreak);
}

void Document::CopyLines(int firstLine, const TextForm& form, CBuffer& out) const
{
    if (firstLine >= GetLineCount())
        return out.Empty();
    CopyRange(CTextPos(std::max(firstLine, 0), 0), GetDocEnd(), form, out);
}

void Document::CopyRange(const CTextPos& from, const CTextPos& to, const TextForm& form,
                         CBuffer& out) const
{
    out.Empty();
    INT64 total = 0;
    ForEachPiece(from, to, form, [&](std::string_view piece) {
        total += static_cast<INT64>(piece.size());
        return true;
    });
    if (total > INT_MAX)
        AfxThrowMemoryException();
    out.SetAllocSize(static_cast<int>(total));
    ForEachPiece(from, to, form, [&](std::string_view piece) {
        out.Add(piece.data(), static_cast<int>(piece.size()));
        return true;
    });
}

int Document::CopyRange(const CTextPos& from, const CTextPos& to, const TextForm& form, char* out,
                        int size) const
{
    const int zero = GetUnitSize();
    if (out == nullptr || size < zero)
        return -1;
    const CApplyLocale locale(m_codeType);
    int length = 0;
    ForEachPiece(from, to, form, [&](std::string_view piece) {
        const int count = WholeCharacters(piece, size - zero - length, IsWide());
        if (count > 0)
            std::memcpy(out + length, piece.data(), static_cast<std::size_t>(count));
        length += count;
        return count == static_cast<int>(piece.size());
    });
    std::memset(out + length, 0, static_cast<std::size_t>(zero));
    return length;
}

} // namespace tlvn
