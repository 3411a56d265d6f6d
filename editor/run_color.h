// In which colours a stretch of text is drawn: the first of these rules that applies to a
// character decides, and the run goes on as long as nothing changes.
//
//   1. the selection                   selection colours
//   2. what a search found             found colours
//   3. a line marker                   colours of the marker's kind
//   4. half-width katakana, then machine-dependent characters, when the text is edited in
//      Shift_JIS                       their colour on the line's background
//   5. a link                          the link colour on the line's background
//   6. anything else                   the line's base colours
//
// Whatever lies in a link is underlined, so a run also ends where a link begins or ends.
//
//   tlvn::RunColor coloring(colors, document.GetCodeType());
//   coloring.SetSelection(anchor, caret);
//   coloring.SetFoundRanges(&found);
//   coloring.SetMarkers(&markers);
//   for (each visible physical line) {
//       coloring.SetLine({line, text, start, end, &links, baseText, baseBack});
//       for (int byte = start; byte < end; byte += run.length) {
//           coloring.GetRun(byte, run);
//           Draw(text + byte, run);
//       }
//   }
//
// Making one costs nothing and it allocates nothing; the arrays and the line's text and links
// are used as they are, and must outlive it. Ranges are compared by logical line and logical
// byte: their logical byte indices have to be right, their physical ones need not be. Both arrays
// are in the order of the text and their ranges do not overlap (ranges that do lose part of their
// colour, nothing worse): a range is found in O(log n). Walking over a line from its start takes
// time in proportion to its length, however many runs there are.

#pragma once

#include "editor/color.h"
#include "editor/line_marker.h"
#include "editor/link_range.h"
#include "editor/text_pos.h"

#include <climits>
#include <vector>

namespace tlvn {

// A run and how it is drawn.
struct DrawRun {
    int length = 0; // in bytes
    COLORREF text = 0;
    COLORREF back = 0;
    bool underline = false;
    bool special = false; // false when no rule but the last applied
};

// A physical line, or a part of one. Positions are bytes of the logical line.
struct DrawLine {
    int line = 0;               // index of the logical line
    const char* text = nullptr; // of the whole logical line
    int start = 0;
    int end = 0;                                          // no run goes beyond it
    const std::vector<CEditorLineRange>* links = nullptr; // of the logical line; null for none
    COLORREF baseText = 0;
    COLORREF baseBack = 0;
};

class TLVN_API RunColor {
public:
    RunColor(const CEditorColor& colors, CodeType codeType);

    // In either order; equal ones are no selection.
    void SetSelection(const CTextPos& anchor, const CTextPos& end);
    // Null for none.
    void SetFoundRanges(const CEditorTextViewRangeArray* found) { m_found = found; }
    void SetMarkers(const CEditorLineMarkerArray* markers) { m_markers = markers; }

    void SetLine(const DrawLine& line);

    // The run from `byte` of the line on, where a character starts. At the end of the line, and
    // outside, its length is 0. Bytes may be asked for in any order; ascending is fast.
    void GetRun(int byte, DrawRun& run);

    // The base colours of a line: the colour of its quote level (below 0: not quoted), the
    // background of the header block or of the text.
    static void GetBaseColors(const CEditorColor& colors, bool isHeader, int quoteLevel,
                              COLORREF& text, COLORREF& back);

private:
    // The run of flagged characters that is the first to end behind `from`, or behind whatever is
    // between `from` and its end.
    struct FlaggedRun {
        int from = INT_MAX;
        int start = INT_MAX;
        int end = INT_MAX;
    };
    using Finder = int (*)(const char* text, int length);

    // Each returns whether one of its rules applies at the byte, and brings `end`, the end of the
    // run, to where that or a stronger one begins or ends.
    bool ApplyRange(int byte, int& end, DrawRun& run) const;
    bool ApplyFlagged(int byte, int& end, DrawRun& run);
    // Makes `flagged` right for the byte.
    void Look(int byte, Finder find, Finder measure, FlaggedRun& flagged) const;

    const CEditorColor& m_colors;
    bool m_flagsCharacters;
    CTextPos m_selStart;
    CTextPos m_selEnd;
    const CEditorTextViewRangeArray* m_found = nullptr;
    const CEditorLineMarkerArray* m_markers = nullptr;
    DrawLine m_line;
    FlaggedRun m_katakana;
    FlaggedRun m_machineDepend;
};

// Puts the logical forms of `added` into `ranges`, in the order of the text; ranges that overlap
// become one, empty ones are left out, ends in the wrong order are exchanged. This is how the
// array of found ranges is kept. `ranges` owns its records.
TLVN_API void AddTextRanges(std::vector<CEditorTextViewRange> added,
                            CEditorTextViewRangeArray& ranges);

} // namespace tlvn
