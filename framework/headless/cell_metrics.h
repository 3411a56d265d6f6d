// Text measured in fixed cells, as by a Japanese monospaced font.
//
// A half-width character is half the font's height wide, a full-width one the height. ASCII,
// Latin-1 and half-width katakana are half; kana, ideographs, full-width forms and the symbols
// of JIS X 0208 are full; a surrogate pair is full (its low unit adds nothing). Measuring reads
// one table entry per unit and allocates nothing.

#pragma once

#include "platform/types.h"

#include <array>

namespace tlvn::headless {

// Width of each UTF-16 unit in half-width cells (0, 1 or 2), two bits a unit.
TLVN_API extern const std::array<BYTE, 0x4000> g_cellWidths;

inline int CellsOf(WCHAR c)
{
    return g_cellWidths[static_cast<unsigned>(c) >> 2] >> ((c & 3) * 2) & 3;
}

struct TLVN_API CellFont {
    int height = 16;
    int ascent = 14;
    int half = 8; // width of a half-width character
    int full = 16;

    int WidthOf(WCHAR c) const
    {
        const int cells = CellsOf(c);
        return cells == 1 ? half : cells == 2 ? full : 0;
    }
    // Width of `length` units in pixels, at most INT_MAX.
    int WidthOf(const WCHAR* text, int length) const;
    // Units that fit in `limit` pixels; `width` becomes theirs.
    int FitIn(const WCHAR* text, int length, int limit, int& width) const;
};

// The cells of a font of lfHeight (absolute value; 0 means 16) and lfWidth (0: half of it).
TLVN_API CellFont MakeCellFont(LONG height, LONG width);

} // namespace tlvn::headless
