// Runs of ASCII, the common part of every code page: passed 16 characters at a time where
// SSE2 is there, one by one elsewhere, with the same result.

#pragma once

#include "platform/types.h"

#if defined(__SSE2__) || defined(_M_X64)
#define TLVN_HAS_SSE2 1
#include <emmintrin.h>
#endif

#include <bit>

namespace tlvn {

// WidenAscii, NarrowAscii and CopyAscii convert the ASCII characters at the start of [p, end)
// and return how many there were. `out` must have room for end - p elements: what lies behind
// those that were converted is scratch.

inline int WidenAscii(const BYTE* p, const BYTE* end, WCHAR* out) noexcept
{
    const BYTE* const start = p;
#ifdef TLVN_HAS_SSE2
    const __m128i zero = _mm_setzero_si128();
    while (end - p >= 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(bytes, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), _mm_unpackhi_epi8(bytes, zero));
        const auto high = static_cast<unsigned>(_mm_movemask_epi8(bytes));
        if (high != 0)
            return static_cast<int>(p - start) + std::countr_zero(high);
        p += 16;
        out += 16;
    }
#endif
    while (p < end && *p < 0x80)
        *out++ = static_cast<WCHAR>(*p++);
    return static_cast<int>(p - start);
}

inline int NarrowAscii(const WCHAR* p, const WCHAR* end, BYTE* out) noexcept
{
    const WCHAR* const start = p;
#ifdef TLVN_HAS_SSE2
    const __m128i notAscii = _mm_set1_epi16(static_cast<short>(0xFF80));
    const __m128i zero = _mm_setzero_si128();
    while (end - p >= 16) {
        const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 8));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(low, high));
        const __m128i isAscii =
            _mm_packs_epi16(_mm_cmpeq_epi16(_mm_and_si128(low, notAscii), zero),
                            _mm_cmpeq_epi16(_mm_and_si128(high, notAscii), zero));
        const unsigned others = static_cast<unsigned>(_mm_movemask_epi8(isAscii)) ^ 0xFFFFu;
        if (others != 0)
            return static_cast<int>(p - start) + std::countr_zero(others);
        p += 16;
        out += 16;
    }
#endif
    while (p < end && *p < 0x80)
        *out++ = static_cast<BYTE>(*p++);
    return static_cast<int>(p - start);
}

// The same from bytes to bytes.
inline int CopyAscii(const BYTE* p, const BYTE* end, BYTE* out) noexcept
{
    const BYTE* const start = p;
#ifdef TLVN_HAS_SSE2
    while (end - p >= 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
        const auto high = static_cast<unsigned>(_mm_movemask_epi8(bytes));
        if (high != 0)
            return static_cast<int>(p - start) + std::countr_zero(high);
        p += 16;
        out += 16;
    }
#endif
    while (p < end && *p < 0x80)
        *out++ = *p++;
    return static_cast<int>(p - start);
}

// Number of ASCII characters at the start of [p, end).
inline int AsciiRunLength(const BYTE* p, const BYTE* end) noexcept
{
    const BYTE* const start = p;
#ifdef TLVN_HAS_SSE2
    while (end - p >= 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const auto high = static_cast<unsigned>(_mm_movemask_epi8(bytes));
        if (high != 0)
            return static_cast<int>(p - start) + std::countr_zero(high);
        p += 16;
    }
#endif
    while (p < end && *p < 0x80)
        ++p;
    return static_cast<int>(p - start);
}

} // namespace tlvn
