// From bytes to pixels and back in the physical lines of a document.
//
// What is short is measured each time, by one pass of the layout. Of the last row longer than
// that, x is kept at every kStep bytes or so, so that a caret in a line of megabytes moves
// without measuring from its start again.
//
//   RowPixels pixels;
//   pixels.Attach(&layout, &widths);                // again whenever one of them has changed
//   int x = pixels.GetX(line, physical, byte);
//   pixels.Forget();                                // whenever text or rows have changed
//
// Bytes are counted from the start of the physical line, x in pixels from there.

#pragma once

#include "editor/line_wrap.h"

namespace tlvn {

class RowPixels {
public:
    static constexpr int kStep = 4096;

    // Neither is owned; null ones make everything 0 wide.
    void Attach(const LineWrap* layout, CharWidths* widths);
    void Forget() { m_text = nullptr; }

    // `byte` is at a character and not behind the end of the row.
    int GetX(const CLLineData& line, int physical, int byte);
    // The byte at which the character under x starts, or the end of the row; with `nearest` the
    // boundary nearest to x.
    int FindByte(const CLLineData& line, int physical, int x, bool nearest);

private:
    struct Mark {
        int byte;
        int x;
    };

    const LineWrap* m_layout = nullptr;
    CharWidths* m_widths = nullptr;

    void MarkRow(const char* text, int length);

    const char* m_text = nullptr; // the row that the marks are of
    int m_length = 0;
    std::vector<Mark> m_marks; // ascending, the first at 0
};

} // namespace tlvn
