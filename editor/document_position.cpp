#include "editor/document.h"

#include <algorithm>
#include <climits>

namespace tlvn {

namespace {

int Sum(int a, INT64 b)
{
    return static_cast<int>(std::clamp<INT64>(a + b, 0, INT_MAX));
}

} // namespace

int Document::GetSerialLineP(int line, int physical) const
{
    const int known = std::clamp(line, 0, GetLineCount());
    return Sum(m_lines.GetSerial(known), INT64{line} - known + physical);
}

CTextPos Document::FindSerialLineP(int serial) const
{
    if (serial < 0)
        return CTextPos();
    if (serial >= GetPhysicalCount())
        return CTextPos(Sum(GetLineCount(), INT64{serial} - GetPhysicalCount()), 0);
    const int line = m_lines.FindLine(serial);
    CTextPos pos(line, serial - m_lines.GetSerial(line), 0);
    pos.logicalByte = GetLine(line).GetStart(pos.physical);
    return pos;
}

int Document::GetLineCountP(int line) const
{
    if (line >= 0 && line < GetLineCount())
        return GetLine(line).GetPhysicalCount();
    return m_freeCursor && line >= 0 ? 1 : 0;
}

int Document::GetLineByteCountP(int line, int physical) const
{
    if (line < 0 || line >= GetLineCount())
        return 0;
    const CLLineData& data = GetLine(line);
    if (physical < 0 || physical >= data.GetPhysicalCount())
        return 0;
    return data.GetEnd(physical) - data.GetStart(physical);
}

int Document::GetLineByteCountL(int line) const
{
    return line >= 0 && line < GetLineCount() ? GetLine(line).GetLength() : 0;
}

void Document::L2PByteIndex(CTextPos& pos) const
{
    pos.physical = 0;
    pos.byte = pos.logicalByte;
    if (pos.line < 0 || pos.line >= GetLineCount())
        return;
    const CLLineData& line = GetLine(pos.line);
    pos.physical = line.FindPhysical(pos.logicalByte);
    pos.byte -= line.GetStart(pos.physical);
}

void Document::P2LByteIndex(CTextPos& pos, int clamp) const
{
    pos.logicalByte = 0;
    const bool inside = pos.line >= 0 && pos.line < GetLineCount();
    if (!inside && clamp != 0)
        pos.byte = 0;
    if (!inside || (pos.physical < 1 && pos.byte < 1))
        return;
    const CLLineData& line = GetLine(pos.line);
    pos.physical = std::max(pos.physical, 0);
    const bool behindLast = pos.physical >= line.GetPhysicalCount();
    if (behindLast)
        pos.physical = line.GetPhysicalCount() - 1;
    const int start = line.GetStart(pos.physical);
    const int length = line.GetEnd(pos.physical) - start;
    if (behindLast || (clamp != 0 && pos.byte > length))
        pos.byte = length;
    pos.byte = std::max(pos.byte, 0);
    pos.logicalByte = Sum(start, pos.byte);
}

CTextPos Document::Completed(CTextPos pos) const
{
    const bool hasDisplay = pos.physical != 0 || pos.byte != 0;
    if (hasDisplay && pos.logicalByte == 0)
        P2LByteIndex(pos, 0);
    else if (!hasDisplay && pos.logicalByte != 0)
        L2PByteIndex(pos);
    return pos;
}

void Document::ByteL2ViewIndex(int line, int byte, CTextPos& pos) const
{
    pos = CTextPos(line, byte);
    L2PByteIndex(pos);
}

int Document::ViewIndex2ByteL(const CTextPos& pos) const
{
    CTextPos known = pos;
    P2LByteIndex(known, 0);
    return known.logicalByte;
}

void Document::ToText(CTextPos& pos) const
{
    const int count = GetLineCount();
    if (count == 0 || pos.line < 0)
        return pos.ToDocHome();
    if (pos.line >= count)
        pos = CTextPos(count - 1, INT_MAX);
    pos.logicalByte = std::clamp(pos.logicalByte, 0, GetLine(pos.line).GetLength());
    pos.logicalByte -= pos.logicalByte % GetUnitSize();
    L2PByteIndex(pos);
}

void Document::ToCharTop(CTextPos& pos) const
{
    ToText(pos);
    if (GetLineCount() == 0 || IsCharTop(GetLine(pos.line), pos.logicalByte))
        return;
    pos.logicalByte -= GetUnitSize();
    L2PByteIndex(pos);
}

bool Document::IsInText(const CTextPos& pos) const
{
    return pos.line >= 0 && pos.line < GetLineCount() && pos.logicalByte >= 0 &&
           pos.logicalByte <= GetLine(pos.line).GetLength();
}

CTextPos Document::GetDocEnd() const
{
    CTextPos pos(GetLineCount(), 0);
    ToText(pos);
    return pos;
}

CTextPos Document::MakePos(int line, int byte) const
{
    CTextPos pos(line, byte);
    L2PByteIndex(pos);
    return pos;
}

} // namespace tlvn
