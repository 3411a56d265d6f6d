// A position in the editor's text, and ranges of positions.
//
// A position has two forms. The display form is the logical line, the physical line in it (the
// row that wrapping made of it) and the byte in that; the logical form is the logical line and
// the byte in it. Whoever changes one form brings the other up to date by Document::L2PByteIndex
// or P2LByteIndex. All counts are from 0, in bytes, also of UTF-16 text.
//
//   CTextPos pos(line, byte);       // logical form
//   document.L2PByteIndex(pos);     // now both
//
// Comparisons look at the display form only.

#pragma once

#include "framework/framework.h"

#include <utility>

class TLVN_API CTextPos {
public:
    constexpr CTextPos() = default;
    // The display form; the logical byte index is 0.
    constexpr CTextPos(int line_, int physical_, int byte_)
        : line(line_), physical(physical_), byte(byte_)
    {}
    // The logical form; the physical line and its byte are 0.
    constexpr CTextPos(int line_, int logicalByte_) : line(line_), logicalByte(logicalByte_) {}

    // To the start of the document.
    void ToDocHome() { *this = CTextPos(); }

    // Adds `delta` to the logical line. Where that leaves [min, max] it is brought back into it
    // and the other fields become 0; otherwise they stay, and the caller recomputes them.
    void UpLineL(int delta, int min, int max);

    // 1 when the position is in [start, end).
    int IsInRange(const CTextPos& start, const CTextPos& end) const
    {
        return *this >= start && *this < end ? 1 : 0;
    }
    // Whether the range from here to `other` is empty: the positions are equal.
    int IsEmpty(const CTextPos& other) const { return *this == other ? 1 : 0; }

    bool operator==(const CTextPos& other) const
    {
        return line == other.line && physical == other.physical && byte == other.byte;
    }
    bool operator!=(const CTextPos& other) const { return !(*this == other); }
    bool operator<(const CTextPos& other) const
    {
        if (line != other.line)
            return line < other.line;
        return physical != other.physical ? physical < other.physical : byte < other.byte;
    }
    bool operator<=(const CTextPos& other) const { return !(other < *this); }
    bool operator>(const CTextPos& other) const { return other < *this; }
    bool operator>=(const CTextPos& other) const { return !(*this < other); }

    int line = 0;        // logical line
    int physical = 0;    // physical line in the logical line
    int byte = 0;        // in the physical line
    int logicalByte = 0; // in the logical line
};

// A range of positions, the end not included.
class TLVN_API CEditorTextViewRange {
public:
    CEditorTextViewRange() = default;
    // From a position up to another one.
    CEditorTextViewRange(const CTextPos& start_, const CTextPos& end_) : start(start_), end(end_) {}

    // The first position in the range, and the one behind it.
    CTextPos start;
    CTextPos end;
};

// Ranges that the array owns.
using CEditorTextViewRangeArray = CTypedPtrArray<CPtrArray, CEditorTextViewRange*>;

// Deletes the ranges and empties the array.
TLVN_API void ClearTextViewRangeArray(CEditorTextViewRangeArray& ranges);

namespace tlvn {

// Compares the logical forms.
inline bool IsBeforeL(const CTextPos& a, const CTextPos& b)
{
    return a.line != b.line ? a.line < b.line : a.logicalByte < b.logicalByte;
}
inline bool IsSameL(const CTextPos& a, const CTextPos& b)
{
    return a.line == b.line && a.logicalByte == b.logicalByte;
}
// Swaps the two when they are not in order.
inline void OrderL(CTextPos& from, CTextPos& to)
{
    if (IsBeforeL(to, from))
        std::swap(from, to);
}

} // namespace tlvn
