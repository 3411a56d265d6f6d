#include "editor/document.h"
#include "editor/line_split.h"
#include "foundation/char_type.h"
#include "foundation/multibyte.h"

#include <algorithm>
#include <climits>

namespace tlvn {

namespace {

bool IsPair(const char* units)
{
    return (UnitAt<WCHAR>(units) & 0xFC00) == 0xD800 &&
           (UnitAt<WCHAR>(units + 2) & 0xFC00) == 0xDC00;
}

} // namespace

void Document::ToLogicalLineHome(CTextPos& pos) const
{
    if (!m_freeCursor)
        ToText(pos);
    pos = CTextPos(std::max(pos.line, 0), 0);
}

void Document::ToLogicalLineEnd(CTextPos& pos) const
{
    if (!m_freeCursor)
        ToText(pos);
    pos = MakePos(std::max(pos.line, 0), GetLineByteCountL(pos.line));
}

int Document::ToNextLogicalLine(CTextPos& pos) const
{
    const CTextPos old = pos;
    pos = pos.line < GetLineCount() - 1 ? CTextPos(std::max(pos.line, -1) + 1, 0) : GetDocEnd();
    return IsSameL(pos, old) ? 0 : 1;
}

void Document::ToPhysicalLineHome(CTextPos& pos) const
{
    pos.byte = 0;
    P2LByteIndex(pos, 1);
}

void Document::ToPhysicalLineEnd(CTextPos& pos) const
{
    pos.byte = INT_MAX;
    P2LByteIndex(pos, 1);
}

int Document::ToNextPhysicalLine(CTextPos& pos) const
{
    const CTextPos old = pos;
    if (pos.line < 0 || pos.line >= GetLineCount())
        ToText(pos);
    if (pos.physical < GetLineCountP(pos.line) - 1) {
        ++pos.physical;
        ToPhysicalLineHome(pos);
    } else if (pos.line < GetLineCount() - 1) {
        pos = CTextPos(pos.line + 1, 0);
    } else {
        ToPhysicalLineEnd(pos);
    }
    return pos != old ? 1 : 0;
}

int Document::ToNextChar(CTextPos& pos) const
{
    const CApplyLocale locale(m_codeType);
    const int size = GetUnitSize();
    if (m_freeCursor && pos.line >= 0 && pos.logicalByte >= GetLineByteCountL(pos.line)) {
        if (pos.logicalByte > INT_MAX - size)
            return 0;
        pos = MakePos(pos.line, pos.logicalByte + size);
        return 1;
    }
    ToCharTop(pos);
    if (GetLineCount() == 0)
        return 0;
    const CLLineData& line = GetLine(pos.line);
    if (pos.logicalByte >= line.GetLength())
        return ToNextLogicalLine(pos);
    pos = MakePos(pos.line, GetNextCharL(line, pos.logicalByte));
    return 1;
}

int Document::ToPrevChar(CTextPos& pos) const
{
    const CApplyLocale locale(m_codeType);
    if (m_freeCursor && pos.line >= 0 && pos.logicalByte > GetLineByteCountL(pos.line)) {
        pos = MakePos(pos.line, pos.logicalByte - GetUnitSize());
        return 1;
    }
    const CTextPos old = pos;
    if (!m_freeCursor || pos.line < GetLineCount()) {
        ToText(pos);
        const int byte = pos.logicalByte;
        ToCharTop(pos);
        if (pos.logicalByte < byte)
            return 1;
    }
    if (pos.logicalByte > 0)
        pos = MakePos(pos.line, GetPrevCharL(GetLine(pos.line), pos.logicalByte));
    else if (pos.line > 0)
        pos = MakePos(pos.line - 1, GetLineByteCountL(pos.line - 1));
    return IsSameL(pos, old) ? 0 : 1;
}

void Document::MoveTextPos(CTextPos& pos, int count) const
{
    for (; count > 0 && ToNextChar(pos) != 0; --count)
        ;
    for (; count < 0 && ToPrevChar(pos) != 0; ++count)
        ;
}

void Document::ToWordTop(CTextPos& pos) const
{
    const CApplyLocale locale(m_codeType);
    ToCharTop(pos);
    if (GetLineByteCountL(pos.line) == 0)
        return;
    const CLLineData& line = GetLine(pos.line);
    int byte = pos.logicalByte;
    if (byte == line.GetLength())
        byte = GetPrevCharL(line, byte);
    const int type = GetCharTypeL(line, byte);
    while (byte > 0) {
        const int prev = GetPrevCharL(line, byte);
        if (!AreBothMarks(line, prev, byte) && GetCharTypeL(line, prev) != type)
            break;
        byte = prev;
    }
    pos = MakePos(pos.line, byte);
}

void Document::ToWordEnd(CTextPos& pos) const
{
    const CApplyLocale locale(m_codeType);
    ToCharTop(pos);
    const int length = GetLineByteCountL(pos.line);
    if (pos.logicalByte == length)
        return;
    const CLLineData& line = GetLine(pos.line);
    const int type = GetCharTypeL(line, pos.logicalByte);
    int last = pos.logicalByte;
    int byte = GetNextCharL(line, last);
    while (byte < length && (AreBothMarks(line, last, byte) || GetCharTypeL(line, byte) == type)) {
        last = byte;
        byte = GetNextCharL(line, byte);
    }
    pos = MakePos(pos.line, byte);
}

int Document::ToNextWordTop(CTextPos& pos) const
{
    const CApplyLocale locale(m_codeType);
    const CTextPos old = pos;
    ToCharTop(pos);
    if (pos.logicalByte == GetLineByteCountL(pos.line)) {
        ToNextLogicalLine(pos);
        return IsSameL(pos, old) ? 0 : 1;
    }
    ToWordEnd(pos);
    const CLLineData& line = GetLine(pos.line);
    int byte = pos.logicalByte;
    while (byte < line.GetLength() && (GetCharTypeL(line, byte) & CHARTYPE_SPACE) != 0)
        byte = GetNextCharL(line, byte);
    pos = MakePos(pos.line, byte);
    return 1;
}

int Document::ToPrevWordTop(CTextPos& pos) const
{
    const CApplyLocale locale(m_codeType);
    const CTextPos old = pos;
    ToCharTop(pos);
    if (pos.logicalByte == 0) {
        ToPrevChar(pos);
        return IsSameL(pos, old) ? 0 : 1;
    }
    const CLLineData& line = GetLine(pos.line);
    int byte = GetPrevCharL(line, pos.logicalByte);
    while (byte > 0 && (GetCharTypeL(line, byte) & CHARTYPE_SPACE) != 0)
        byte = GetPrevCharL(line, byte);
    pos = MakePos(pos.line, byte);
    ToWordTop(pos);
    return 1;
}

int Document::ToNextTextIfFree(CTextPos& pos) const
{
    if (!m_freeCursor || IsInText(pos))
        return 0;
    return ToNextLogicalLine(pos);
}

int Document::GetNextCharL(const CLLineData& line, int byte) const
{
    const char* const p = line.GetText() + byte;
    const int left = line.GetLength() - byte;
    if (IsWide())
        return byte + (left >= 4 && IsPair(p) ? 4 : 2);
    return byte + CharLength(p, p + left);
}

int Document::GetPrevCharL(const CLLineData& line, int byte) const
{
    const int size = GetUnitSize();
    return IsCharTop(line, byte - size) ? byte - size : byte - 2 * size;
}

// Physical lines start at characters, so the look back ends there.
bool Document::IsCharTop(const CLLineData& line, int byte) const
{
    if (byte <= 0 || byte >= line.GetLength())
        return true;
    const char* const text = line.GetText();
    if (IsWide())
        return !IsPair(text + byte - 2);
    const int start = line.GetStart(line.FindPhysical(byte));
    return !IsInsideCharacter(text + start, text + byte, text + line.GetLength());
}

int Document::GetCharTypeL(const CLLineData& line, int byte) const
{
    return GetCharType(line.GetText(), line.GetLength(), line.GetText() + byte, m_codeType);
}

// Whether two characters, one behind the other, are marks of both kana. They are of one type then,
// which it takes a look at all such marks before them to tell.
bool Document::AreBothMarks(const CLLineData& line, int byte, int next) const
{
    const char* const end = line.GetText() + line.GetLength();
    return IsBothKanaMark(line.GetText() + byte, end, m_codeType) &&
           IsBothKanaMark(line.GetText() + next, end, m_codeType);
}

} // namespace tlvn
