// What the finders of addresses and URLs share: the two forms of text they read, and a search
// for the few characters at which a link can be recognised.
//
// Both kinds of links hold a character that is rare in other text ("@", or ":" and "\"). The
// finders look for that, 16 bytes at a time, and then back for the beginning of the link, which
// makes them as fast as the text is plain.

#pragma once

#include "foundation/character_boundary.h"
#include "foundation/text_length.h"
#include "platform/ascii_run.h"

#include <algorithm>
#include <climits>

namespace tlvn {

// In UTF-16 every unit counts as a character.
class UnitBoundary {
public:
    explicit UnitBoundary(const WCHAR*) {}
    bool IsStart(const WCHAR*) const { return true; }
};

template <class Char>
struct LinkText;

template <>
struct LinkText<char> {
    using Boundary = CharacterBoundary;
    static bool IsLead(char c) { return IsLeadByte(c); }
};

template <>
struct LinkText<WCHAR> {
    using Boundary = UnitBoundary;
    static bool IsLead(WCHAR) { return false; }
};

// Units in `length` bytes; below 0 up to the terminator. Results in bytes fit an int.
template <class Char>
int CountLinkUnits(const Char* text, int length)
{
    constexpr int kUnitSize = sizeof(Char);
    if (length >= 0)
        return length / kUnitSize;
    return std::min(TextLength(text), INT_MAX / kUnitSize);
}

// First of the units a and b in [p, end), or end.
template <class Char>
const Char* FindEither(const Char* p, const Char* end, Char a, Char b)
{
#ifdef TLVN_HAS_SSE2
    constexpr int kUnits = 16 / static_cast<int>(sizeof(Char));
    const auto fill = [](Char c) {
        if constexpr (sizeof(Char) == 1)
            return _mm_set1_epi8(static_cast<char>(c));
        else
            return _mm_set1_epi16(static_cast<short>(c));
    };
    const auto equal = [](__m128i x, __m128i y) {
        if constexpr (sizeof(Char) == 1)
            return _mm_cmpeq_epi8(x, y);
        else
            return _mm_cmpeq_epi16(x, y);
    };
    const __m128i wantedA = fill(a);
    const __m128i wantedB = fill(b);
    const auto hits = [&](const Char* q) {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(q));
        return _mm_or_si128(equal(units, wantedA), equal(units, wantedB));
    };
    // Two blocks at a time share the test for the ordinary case, that there is nothing.
    while (end - p >= 2 * kUnits) {
        const __m128i first = hits(p);
        const __m128i second = hits(p + kUnits);
        if (_mm_movemask_epi8(_mm_or_si128(first, second)) != 0) {
            const auto mask = static_cast<unsigned>(_mm_movemask_epi8(first)) |
                              static_cast<unsigned>(_mm_movemask_epi8(second)) << 16;
            return p + static_cast<unsigned>(std::countr_zero(mask)) / sizeof(Char);
        }
        p += 2 * kUnits;
    }
#endif
    while (p != end && *p != a && *p != b)
        ++p;
    return p;
}

} // namespace tlvn
