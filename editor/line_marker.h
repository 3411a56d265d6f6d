// Line markers: coloured marks that the user lays over stretches of text.
//
// A marker array owns its records. Where marks are stored beside a mail they are text:
//
//   [0,0,0,5,2], [3,1,4,0,0]        start line, start byte, end line, end byte, kind; ...
//
// by the logical forms of the positions, lines counted from a base line.
//
// What the user did is kept as a history of marks, a later one lying over those before it;
// tlvn::MarkerHistory turns it into the arranged array, which is drawn: records in text order,
// none overlapping another.

#pragma once

#include "editor/text_pos.h"

#include <memory>
#include <vector>

class TLVN_API CEditorLineMarker {
public:
    CEditorLineMarker() = default;
    // By the logical forms of the positions, the end not included.
    CEditorLineMarker(const CTextPos& start_, const CTextPos& end_, int kind_)
        : start(start_), end(end_), kind(kind_)
    {}

    // Only the logical forms count.
    CTextPos start;
    CTextPos end;
    int kind = 0; // index of the colours, 0 to 5; below 0 in a history: erases what it covers
};

// Marks that the array owns: ClearLineMarkerArray deletes them.
using CEditorLineMarkerArray = CTypedPtrArray<CPtrArray, CEditorLineMarker*>;

// Deletes the records and empties the array.
TLVN_API void ClearLineMarkerArray(CEditorLineMarkerArray& markers);
// Clears dst and fills it with copies of the records of src, which is another array.
TLVN_API void CopyLineMarkerArray(const CEditorLineMarkerArray& src, CEditorLineMarkerArray& dst);
// 1 when both have equal records in the same order, by logical line and byte of start and end
// and by kind.
TLVN_API int IsSameLineMarkerArrayL(const CEditorLineMarkerArray& a,
                                    const CEditorLineMarkerArray& b);
// Writes the records as text, lines counted from lineBase.
TLVN_API void SerializeLineMarkerArray(const CEditorLineMarkerArray& markers, int lineBase,
                                       CString& out);
// Replaces the records by those of the text (display forms 0); a null text is empty. Returns 1,
// or 0 at the first record that is malformed; the records before it are in the array.
TLVN_API int SerializeLineMarkerArray(const char* text, int lineBase,
                                      CEditorLineMarkerArray& markers);

namespace tlvn {

// A change of the text, by the logical forms: what was inserted or deleted lay or lies between
// start and end.
struct TextChange {
    // Logical lines, and bytes in them.
    bool inserted;
    int line1;
    int byte1;
    int line2;
    int byte2;
};

// Moves the logical form of a position as the text around it moved. Inserting: what is behind
// line1, byte1 moves along, a position there stays. Deleting: what is behind moves along, what is
// inside comes to line1, byte1. The display form becomes 0.
TLVN_API void MovePosition(CTextPos& pos, const TextChange& change);

// The marks in the order in which the user made them.
class TLVN_API MarkerHistory {
public:
    // All marks, those that can be redone among them.
    int GetCount() const { return static_cast<int>(m_marks.size()); }
    // Marks in force; those beyond can be redone.
    int GetUsedCount() const { return m_used; }
    void SetUsedCount(int count);
    CEditorLineMarker& GetAt(int index) { return m_marks[static_cast<std::size_t>(index)]; }

    // Forgets all marks.
    void Clear();
    // Appends a mark behind those in force; those beyond are dropped.
    void Add(const CEditorLineMarker& mark);
    // Moves all marks along with the text.
    void Move(const TextChange& change);

    // Appends to `out` the stretches that show: at each place the last mark in force that covers
    // it; only logical forms are set. O(n log n).
    void Arrange(std::vector<CEditorLineMarker>& out) const;

private:
    std::vector<CEditorLineMarker> m_marks;
    int m_used = 0;
};

} // namespace tlvn
