#include "framework/headless/cell_metrics.h"

#include <algorithm>
#include <climits>

namespace tlvn::headless {
namespace {

struct UnitRange {
    unsigned first;
    unsigned last;
};

// Full width in a Japanese monospaced font: East Asian Width W and F, and of the ambiguous
// characters those that JIS X 0208 has.
constexpr UnitRange kFull[] = {
    {0x0391, 0x03C9},                   // Greek
    {0x0401, 0x0451},                   // Cyrillic
    {0x1100, 0x115F},                   // Hangul jamo
    {0x2010, 0x2027},                   // dashes, quotation marks, leaders
    {0x2030, 0x205E}, {0x2100, 0x27BF}, // letterlike, numbers, arrows, mathematics, boxes, shapes
    {0x2E80, 0xA4CF},                   // radicals to Yi: kana and ideographs lie here
    {0xA960, 0xA97F}, {0xAC00, 0xDBFF}, // Hangul syllables; high surrogates
    {0xE000, 0xFAFF},                   // private use, compatibility ideographs
    {0xFE10, 0xFE1F}, {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE7},
};
constexpr UnitRange kNone = {0xDC00, 0xDFFF}; // low surrogates

constexpr std::array<BYTE, 0x4000> MakeCellWidths()
{
    std::array<BYTE, 0x4000> table{};
    for (BYTE& four : table)
        four = 0x55; // 1 for each of four units
    const auto set = [&table](UnitRange range, int cells) {
        for (unsigned c = range.first; c <= range.last; ++c) {
            const unsigned shift = (c & 3) * 2;
            BYTE& four = table[c >> 2];
            four =
                static_cast<BYTE>((four & ~(3u << shift)) | static_cast<unsigned>(cells) << shift);
        }
    };
    for (const UnitRange& range : kFull)
        set(range, 2);
    set(kNone, 0);
    return table;
}

} // namespace

constexpr std::array<BYTE, 0x4000> g_cellWidths = MakeCellWidths();

int CellFont::WidthOf(const WCHAR* text, int length) const
{
    INT64 halves = 0;
    INT64 fulls = 0;
    for (int i = 0; i < length; ++i) {
        const int cells = CellsOf(text[i]);
        halves += cells & 1;
        fulls += cells >> 1;
    }
    return static_cast<int>(std::min<INT64>(halves * half + fulls * full, INT_MAX));
}

int CellFont::FitIn(const WCHAR* text, int length, int limit, int& width) const
{
    width = 0;
    for (int i = 0; i < length; ++i) {
        const int next = WidthOf(text[i]);
        if (next > limit - width)
            return i;
        width += next;
    }
    return length;
}

CellFont MakeCellFont(LONG height, LONG width)
{
    CellFont font;
    // LONG_MIN has no absolute value; no font is that high.
    height = std::clamp<LONG>(height, -4096, 4096);
    font.height = height == 0 ? 16 : height < 0 ? -height : height;
    font.full = font.height;
    font.half = std::max(1, font.height / 2);
    if (width != 0) {
        font.half = std::clamp<LONG>(width < 0 ? -(width + 1) + 1 : width, 1, 4096);
        font.full = font.half * 2;
    }
    font.ascent = font.height - (font.height + 4) / 8;
    return font;
}

} // namespace tlvn::headless
