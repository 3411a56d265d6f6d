// The multibyte code page and text in it.
//
// One double-byte code page is in force in the whole process: 932 (Shift_JIS) unless the
// system's ANSI code page is 936, 949 or 950, or the caller sets another. A double-byte
// character is a lead byte followed by a trail byte of that page; a lead byte followed by
// anything else is a single byte. Case folds for A-Z and for the page's full-width letters,
// nothing else. The C runtime's locale plays no part.
//
// Positions, counts and lengths are in bytes. Null pointers are not accepted unless said.
// Not for changing while other threads work on narrow text.

#pragma once

#include "platform/types.h"

#include <array>

namespace tlvn {

// 932, 936, 949 or 950, or a page without double-byte characters.
TLVN_API UINT GetMultibytePage() noexcept;
// Pages other than the four double-byte ones make every byte a character of its own.
TLVN_API void SetMultibytePage(UINT codePage) noexcept;

namespace detail {
// Bit 0: lead byte, bit 1: trail byte of the page in force.
TLVN_API extern std::array<BYTE, 256> g_multibyteClass;
} // namespace detail

inline bool IsLeadByte(char c) noexcept
{
    return (detail::g_multibyteClass[static_cast<BYTE>(c)] & 1) != 0;
}
inline bool IsTrailByte(char c) noexcept
{
    return (detail::g_multibyteClass[static_cast<BYTE>(c)] & 2) != 0;
}
// True when s[0] and s[1] form a double-byte character. Reads s[1] only after a lead byte.
inline bool IsDoubleByte(const char* s) noexcept
{
    return IsLeadByte(s[0]) && IsTrailByte(s[1]);
}
// The same within [s, end).
inline bool IsDoubleByte(const char* s, const char* end) noexcept
{
    return end - s >= 2 && IsDoubleByte(s);
}
// Length of the character at s < end: 2 for a double-byte character, else 1.
inline int CharLength(const char* s, const char* end) noexcept
{
    return IsDoubleByte(s, end) ? 2 : 1;
}
// True when the byte at `p` is the trail byte of a character, scanning from `begin`, of which
// `p` may be any position before `end`.
TLVN_API bool IsInsideCharacter(const char* begin, const char* p, const char* end) noexcept;

// White space of the C locale: 9-13 and 32.
constexpr bool IsSpace(char c) noexcept
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}
constexpr bool IsDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}
constexpr bool IsAlpha(char c) noexcept
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
constexpr bool IsAlnum(char c) noexcept
{
    return IsDigit(c) || IsAlpha(c);
}
constexpr char ToLowerAscii(char c) noexcept
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}
constexpr char ToUpperAscii(char c) noexcept
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

// Case of one character: a byte, or lead byte x 256 + trail byte.
TLVN_API unsigned ToLowerMbc(unsigned c) noexcept;
TLVN_API unsigned ToUpperMbc(unsigned c) noexcept;

// Comparisons by character value: below, equal to or above 0. The n forms compare at most n
// bytes and stop at a terminator that both texts have.
TLVN_API int CompareMbs(const char* a, const char* b) noexcept;
TLVN_API int CompareMbsNoCase(const char* a, const char* b) noexcept;
TLVN_API int CompareMbsN(const char* a, const char* b, int n) noexcept;
TLVN_API int CompareMbsNNoCase(const char* a, const char* b, int n) noexcept;

// Comparisons of bytes, folding only A-Z.
TLVN_API int CompareAsciiNNoCase(const char* a, const char* b, int n) noexcept;

// Length in bytes of the terminated text at s.
TLVN_API int MbsLength(const char* s) noexcept;

// First or last occurrence in a terminated text, never starting on a trail byte; null when
// there is none. `c` is a byte, or lead byte x 256 + trail byte. An empty `find` is found at
// once.
TLVN_API const char* FindMbc(const char* text, unsigned c) noexcept;
TLVN_API const char* FindLastMbc(const char* text, unsigned c) noexcept;
TLVN_API const char* FindMbs(const char* text, const char* find) noexcept;
// First character of `text` that is in `set`, or null.
TLVN_API const char* FindOneOfMbs(const char* text, const char* set) noexcept;

// Change the case of `length` bytes in place.
TLVN_API void ToLowerMbs(char* text, int length) noexcept;
TLVN_API void ToUpperMbs(char* text, int length) noexcept;

} // namespace tlvn
