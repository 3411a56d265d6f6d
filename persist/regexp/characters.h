// Characters of both widths under one name, for what is written once for both.
//
// A character has a value: a unit of UTF-16, a byte, or lead byte x 256 + trail byte of the
// multibyte code page in force. Positions step by whole characters.

#pragma once

#include "platform/multibyte.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tlvn::regexp {

// The form in which a text is compared when case does not count, by character value. Narrow
// text: small letters of the code page, normal kana for small kana; UTF-16: small letters,
// kana as they are.
struct FoldTable {
    std::array<std::uint16_t, 0x10000> forms;
    std::vector<std::uint16_t> changed; // the values whose form is another
};

// The table for the code page in force, or for UTF-16. Made once for each page and kept.
template <typename Char>
const FoldTable& GetFoldTable();

// The value of the character at p, and its length in units. At the terminator: 0, 1.
inline unsigned ReadCharacter(const char* p, int& length)
{
    const unsigned first = static_cast<BYTE>(*p);
    if (!IsDoubleByte(p)) {
        length = 1;
        return first;
    }
    length = 2;
    return first << 8 | static_cast<BYTE>(p[1]);
}
inline unsigned ReadCharacter(const WCHAR* p, int& length)
{
    length = 1;
    return *p;
}

// True when a value stands for a character of the page in force and not for two, or for half.
inline bool IsCharacter(unsigned value, char)
{
    return value < 0x100 || (IsLeadByte(static_cast<char>(value >> 8)) &&
                             IsTrailByte(static_cast<char>(value & 0xFF)));
}
inline bool IsCharacter(unsigned, WCHAR)
{
    return true;
}

} // namespace tlvn::regexp
