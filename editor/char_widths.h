// Pixel widths of the characters of one font, measured once and kept.
//
//   CharWidths widths;
//   widths.Select(dc, font, CT_SJIS);
//   int width = widths.Measure(text, length);
//   widths.Decode(text, length, units, advances);       // and draws what it measured:
//   ::ExtTextOutW(dc, x, y, 0, nullptr, units.data(), ..., advances.data());
//
// A character is as wide as the font draws it alone: Measure adds up, and ExtTextOutW with the
// advances of Decode puts each character where it was measured, also where the system would move
// the letters of a script together. Narrow text is drawn as the UTF-16 that its code page makes
// of it, character by character; bytes that are no character are drawn as what the page gives for
// them, or U+FFFD when that is not one unit. Control characters and NUL are drawn as the font has
// them. The tab has no width: where it ends is for the caller to know.
//
// Widths are in tables by code (text_code.h). A hit is one load; a miss asks the device, for the
// neighbours of the character at the same time where they cannot act on one another. Select keeps
// what it can: for another code type of one font nothing is measured again.
//
// Not for sharing between threads.

#pragma once

#include "editor/text_code.h"
#include "framework/framework.h"
#include "platform/nls.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace tlvn {

class TLVN_API CharWidths {
public:
    // Until the first Select everything is 0 wide.
    CharWidths();
    ~CharWidths();
    CharWidths(const CharWidths&) = delete;
    CharWidths& operator=(const CharWidths&) = delete;

    // Measures text of the code type from now on, in the font as the device (null: the screen)
    // draws it. Neither has to live on. Returns 1 when widths may differ from before, else 0.
    // Throws CMemoryException*.
    int Select(HDC device, HFONT font, CodeType codeType);

    const TextCode& GetCode() const { return m_code; }
    // Height of the font; width of a column, a half-width letter's on average. At least 1.
    int GetHeight() const { return m_height; }
    int GetColumnWidth() const { return m_columnWidth; }
    // The least width of all characters measured so far, at least 0.
    int GetNarrowest() const { return m_narrowest; }

    // Width of the character of that code.
    int GetWidth(unsigned code)
    {
        const unsigned width = code < kCodes ? m_current[code] : kUnknown;
        return width != kUnknown ? static_cast<int>(width) : MeasureMissing(code);
    }
    // Width of the text, tabs left out, at most INT_MAX.
    int Measure(const char* text, int length);

    // The unit that a narrow character is drawn as; of UTF-16 text the code itself.
    unsigned GetUnit(unsigned code);
    // Appends the units that draw the text and the advance of each; a pair's is that of its first
    // unit. Allocates only when the vectors have to grow.
    void Decode(const char* text, int length, WString& units, std::vector<int>& advances);

private:
    using Width = std::uint16_t;
    using Table = std::unique_ptr<Width[]>;

    static constexpr unsigned kCodes = 0x10000;
    static constexpr unsigned kPlanes = 16; // above the first
    static constexpr Width kUnknown = 0xFFFF;
    static constexpr Width kWidest = 0xFFFE;

    static Table MakeTable();
    bool SelectFont(HDC device, HFONT font);
    bool SelectCode(CodeType codeType, bool newFont);
    void ReleaseDevice();
    void MeasureFont();
    int MeasureMissing(unsigned code);
    Width MeasureUnit(unsigned unit);
    Width MeasurePair(unsigned code);
    Width MeasureAlone(const WCHAR* units, int count);
    void MeasureBlock(unsigned unit);
    Width Keep(int width);
    unsigned DecodeNarrow(unsigned code) const;

    TextCode m_code;
    HDC m_dc = nullptr;     // in memory, with m_font selected
    HFONT m_font = nullptr; // a copy of the caller's
    LOGFONTW m_description{};
    std::array<int, 4> m_device{};

    Table m_units;                       // by unit
    Table m_narrow;                      // by code of narrow text; null until there is some
    std::unique_ptr<WCHAR[]> m_decoded;  // the units of those that m_narrow knows
    std::array<Table, kPlanes> m_planes; // by code point less 0x10000
    const Width* m_current;              // m_units or m_narrow; knows no tab
    UINT m_page = 0;                     // of m_narrow
    int m_height = 1;
    int m_columnWidth = 1;
    int m_narrowest = 0;
};

} // namespace tlvn
