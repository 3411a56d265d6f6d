// Cuts logical lines into physical ones by the settings of the editor.
//
//   LineWrap wrap(metrics, widths, clientWidth);
//   wrap.Wrap(line, rows);                              // or through a Document
//
// A physical line ends at a break, found so:
//  1. As much as fits, but at least one character: columns (kTurnAtColumn; a character of two
//     bytes, in UTF-16 one of the double class of GetCharType, takes two, any other one) or pixels
//     (kTurnAtWindow). Tab stops are counted from the start of the physical line. With kNoTurn,
//     and in a quoted line with NoTurnQuoted, everything fits.
//  2. When that is the rest, this is the last physical line; there is no empty one behind it.
//  3. With NoTurnURL a break inside a link moves to its start, or behind its end when the link
//     starts the physical line (or began before it).
//  4. With WordWrap a break between two letters or digits of single width moves back to where
//     there is none. Letters are those of the text's code, Cyrillic ones in a Cyrillic code.
//  5. Unless 3. moved it, a break before a character of Head2Prev, not followed by another, moves
//     behind it: the character hangs. Any other moves back as long as a character of Head2Prev is
//     behind it or one of Tail2Next before it.
// When 4. or 5. would leave the physical line empty, the break stays.
//
// Time is in proportion to the length, whatever the text. The metrics are copied as far as they
// are needed; the widths have to live as long as the LineWrap and remain selected as they are.

#pragma once

#include "editor/char_widths.h"
#include "editor/line_layout.h"
#include "editor/line_prefix.h"
#include "editor/metrics.h"

namespace tlvn {

// What decides about breaks.
struct WrapRules {
    WrapRules(const CEditorMetrics& metrics, CharWidths& charWidths, int clientWidth);

    CharWidths& widths;
    int mode;
    INT64 limit;    // columns or pixels
    int tabColumns; // from one tab stop to the next
    INT64 tabWidth; // pixels
    bool wholeQuotes;
    bool wholeLinks;
    bool wholeWords;
    QuoteRules quotes;
    CodeSet heads;
    CodeSet tails;
};

class TLVN_API LineWrap : public LineLayout {
public:
    // Of text in the code type of `widths`, for which the metrics' lists have to be
    // (ChangeCodePage). `clientWidth` pixels are what kTurnAtWindow has.
    LineWrap(const CEditorMetrics& metrics, CharWidths& widths, int clientWidth);

    void Wrap(const CLLineData& line, std::vector<PhysicalLine>& rows) const override;
    void WrapFrom(const CLLineData& line, int start, std::vector<PhysicalLine>& rows,
                  OldBreaks& old) const override;
    int GetReach(const CLLineData& line) const override;
    void GetQuoteMarks(const CLLineData& line, std::string& marks) const override;

    // Pixels from the start of a physical line (byte `start` of the text) to byte `at` behind it,
    // tabs included, at most INT_MAX.
    int GetX(const char* text, int start, int at) const;
    // The byte of the text from `start` to `end` at which the character under pixel x starts, or
    // `end`. With `nearest` the boundary nearest to x.
    int FindByte(const char* text, int start, int end, int x, bool nearest) const;
    // Pixel from the start of a physical line at which a tab that begins at pixel x ends.
    int GetTabStop(int x) const;

private:
    WrapRules m_rules;
};

} // namespace tlvn
