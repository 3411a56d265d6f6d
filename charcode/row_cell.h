// The arithmetic between Shift_JIS and the rows and cells of JIS X 0208, for one character and
// for eight at a time.
//
// A Shift_JIS lead byte stands for two rows: the trail bytes up to 9E for the odd one, those
// from 9F for the even one. 7F is left out of the trail bytes. Nothing is checked, codes outside
// the standard go through the same arithmetic.

#pragma once

#include "platform/ascii_run.h"
#include "platform/types.h"

namespace tlvn {

// The lead bytes that stand for a row of JIS X 0208; F0-FC have no row.
constexpr bool IsSJisLead(BYTE b)
{
    return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xEF);
}
constexpr bool IsSJisTrail(BYTE b)
{
    return b >= 0x40 && b <= 0xFC;
}
constexpr bool IsJisByte(BYTE b)
{
    return b >= 0x21 && b <= 0x7E;
}

// Which of the cases a character is cannot be foreseen, so there are no branches. `highBit` is
// 0x80 for EUC-JP, 0 for JIS.
inline void PutJisPair(int s1, int s2, int highBit, BYTE* out)
{
    const int odd = s2 < 0x9F;
    const int rowOffset = 0xB0 - 0x40 * (s1 < 0xA0);
    const int cellOffset = 0x7E - (-odd & (0x5F - (s2 > 0x7F)));
    out[0] = static_cast<BYTE>(2 * (s1 - rowOffset) - odd + highBit);
    out[1] = static_cast<BYTE>(s2 - cellOffset + highBit);
}

inline void PutSJisPair(int j1, int j2, BYTE* out)
{
    const int odd = j1 & 1;
    const int rowOffset = 0xB0 - 0x40 * (j1 < 0x5F);
    const int cellOffset = 0x7E - (-odd & (0x5F - (j2 > 0x5F)));
    out[0] = static_cast<BYTE>((j1 + 1) / 2 + rowOffset);
    out[1] = static_cast<BYTE>(j2 + cellOffset);
}

constexpr int kPairsAtOnce = 8;
constexpr int kPairBytes = 2 * kPairsAtOnce;

// ConvertSJisPairs and ConvertJisPairs convert the pairs of proper lead and trail bytes (of
// Shift_JIS), or of two bytes 21-7E + highBit (of JIS or EUC-JP), at the start of the kPairBytes
// bytes at p and return how many there were, 8 at most. `out` must have room for kPairBytes;
// what lies behind the converted pairs is scratch. On a machine without SSE2 there are none: the
// caller goes on character by character then as it does behind the last pair.

#ifdef TLVN_HAS_SSE2

namespace detail {

inline __m128i Lanes(int value)
{
    return _mm_set1_epi16(static_cast<short>(value));
}
// All bits set in the lanes where first <= v <= last.
inline __m128i InRange(__m128i v, int first, int last)
{
    return _mm_and_si128(_mm_cmpgt_epi16(v, Lanes(first - 1)), _mm_cmpgt_epi16(Lanes(last + 1), v));
}
// Number of lanes before the first that is not set.
inline int LeadingLanes(__m128i set)
{
    const auto bits = static_cast<unsigned>(_mm_movemask_epi8(set));
    return std::countr_zero(~bits) / 2;
}
inline void StorePairs(__m128i first, __m128i second, BYTE* out)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out),
                     _mm_or_si128(first, _mm_slli_epi16(second, 8)));
}
// The part of the cell offset that an odd row takes off; `high` tells which cells lie behind
// the gap at 7F.
inline __m128i OddRowOffset(__m128i odd, __m128i high)
{
    return _mm_and_si128(odd, _mm_add_epi16(Lanes(0x5F), high));
}

} // namespace detail

inline int ConvertSJisPairs(const BYTE* p, int highBit, BYTE* out)
{
    using namespace detail;
    const __m128i pairs = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i s1 = _mm_and_si128(pairs, Lanes(0xFF));
    const __m128i s2 = _mm_srli_epi16(pairs, 8);
    const __m128i low = InRange(s1, 0x81, 0x9F);
    const __m128i lead = _mm_or_si128(low, InRange(s1, 0xE0, 0xEF));

    const __m128i odd = _mm_cmpgt_epi16(Lanes(0x9F), s2); // -1 where it is
    const __m128i rowOffset = _mm_sub_epi16(Lanes(0xB0), _mm_and_si128(low, Lanes(0x40)));
    const __m128i row = _mm_sub_epi16(s1, rowOffset);
    const __m128i j1 = _mm_add_epi16(_mm_add_epi16(row, row), odd);
    const __m128i cell = _mm_sub_epi16(s2, Lanes(0x7E));
    const __m128i j2 = _mm_add_epi16(cell, OddRowOffset(odd, _mm_cmpgt_epi16(s2, Lanes(0x7F))));
    StorePairs(_mm_add_epi16(j1, Lanes(highBit)), _mm_add_epi16(j2, Lanes(highBit)), out);
    return LeadingLanes(_mm_and_si128(lead, InRange(s2, 0x40, 0xFC)));
}

inline int ConvertJisPairs(const BYTE* p, int highBit, BYTE* out)
{
    using namespace detail;
    const __m128i pairs = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i j1 = _mm_sub_epi16(_mm_and_si128(pairs, Lanes(0xFF)), Lanes(highBit));
    const __m128i j2 = _mm_sub_epi16(_mm_srli_epi16(pairs, 8), Lanes(highBit));

    const __m128i odd = _mm_cmpeq_epi16(_mm_and_si128(j1, Lanes(1)), Lanes(1));
    const __m128i low = _mm_cmpgt_epi16(Lanes(0x5F), j1);
    const __m128i half = _mm_srli_epi16(_mm_add_epi16(j1, Lanes(1)), 1);
    const __m128i s1 =
        _mm_add_epi16(half, _mm_sub_epi16(Lanes(0xB0), _mm_and_si128(low, Lanes(0x40))));
    const __m128i cell = _mm_add_epi16(j2, Lanes(0x7E));
    const __m128i s2 = _mm_sub_epi16(cell, OddRowOffset(odd, _mm_cmpgt_epi16(j2, Lanes(0x5F))));
    StorePairs(s1, s2, out);
    return LeadingLanes(_mm_and_si128(InRange(j1, 0x21, 0x7E), InRange(j2, 0x21, 0x7E)));
}

#else

inline int ConvertSJisPairs(const BYTE*, int, BYTE*)
{
    return 0;
}
inline int ConvertJisPairs(const BYTE*, int, BYTE*)
{
    return 0;
}

#endif

} // namespace tlvn
