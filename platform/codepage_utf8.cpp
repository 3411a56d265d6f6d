#include "platform/codepage.h"

#include "platform/ascii_run.h"

namespace tlvn::codepage {
namespace {

constexpr WCHAR kBadSequence = 0xFFFD;

constexpr bool IsHighSurrogate(unsigned c)
{
    return (c & 0xFC00) == 0xD800;
}
constexpr bool IsLowSurrogate(unsigned c)
{
    return (c & 0xFC00) == 0xDC00;
}
constexpr bool IsContinuation(BYTE b)
{
    return (b & 0xC0) == 0x80;
}

// One sequence that starts with a byte of 80 or more: its code point and length in bytes; for
// a malformed one kMalformed and the length of the part that one U+FFFD stands for.
constexpr unsigned kMalformed = 0xFFFFFFFF;
struct Sequence {
    unsigned codePoint;
    int length;
};

Sequence ReadSequence(const BYTE* p, const BYTE* end)
{
    const BYTE lead = *p;
    int length = 0;
    BYTE low = 0x80;  // range of the second byte: keeps out what is overlong, a surrogate or
    BYTE high = 0xBF; // above U+10FFFF
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0)
            low = 0xA0;
        if (lead == 0xED)
            high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0)
            low = 0x90;
        if (lead == 0xF4)
            high = 0x8F;
    } else {
        return {kMalformed, 1};
    }
    if (end - p < 2 || p[1] < low || p[1] > high)
        return {kMalformed, 1};
    unsigned codePoint = (lead & (0x7Fu >> length)) << 6 | (p[1] & 0x3Fu);
    for (int i = 2; i < length; ++i) {
        if (end - p <= i || !IsContinuation(p[i]))
            return {kMalformed, i};
        codePoint = codePoint << 6 | (p[i] & 0x3Fu);
    }
    return {codePoint, length};
}

constexpr int kUnitsAtOnce = 8;

// Encodes the units of three bytes each at the start of the kUnitsAtOnce units at p and returns
// how many there were. `out` must have room for two bytes more than all of them take; what lies
// behind the encoded ones is scratch. Without SSE2 there are none.
int EncodeTriples(const WCHAR* p, BYTE* out)
{
#ifdef TLVN_HAS_SSE2
    const auto lanes = [](int value) { return _mm_set1_epi16(static_cast<short>(value)); };
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i top = _mm_and_si128(units, lanes(0xF800));
    const __m128i others = _mm_or_si128(_mm_cmpeq_epi16(top, _mm_setzero_si128()),
                                        _mm_cmpeq_epi16(top, lanes(0xD800)));
    const auto bits = static_cast<unsigned>(_mm_movemask_epi8(others));

    const __m128i first = _mm_or_si128(_mm_srli_epi16(units, 12), lanes(0xE0));
    const __m128i second = _mm_and_si128(_mm_slli_epi16(units, 2), lanes(0x3F00));
    const __m128i lead = _mm_or_si128(_mm_or_si128(first, second), lanes(0x8000));
    const __m128i last = _mm_or_si128(_mm_and_si128(units, lanes(0x3F)), lanes(0x80));
    // Two characters of four bytes, the last one empty, become six bytes.
    const __m128i even = _mm_set_epi32(0, 0xFFFFFF, 0, 0xFFFFFF);
    const auto put = [&](__m128i characters, BYTE* at) {
        const __m128i odd = _mm_andnot_si128(even, _mm_srli_epi64(characters, 8));
        const __m128i packed = _mm_or_si128(_mm_and_si128(characters, even), odd);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(at), packed);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(at + 6), _mm_srli_si128(packed, 8));
    };
    put(_mm_unpacklo_epi16(lead, last), out);
    put(_mm_unpackhi_epi16(lead, last), out + 12);
    return std::countr_zero(bits | 1u << 16) / 2;
#else
    static_cast<void>(p);
    static_cast<void>(out);
    return 0;
#endif
}

} // namespace

int DecodeUtf8(const char* text, int length, WCHAR* out, bool& loss)
{
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + length;
    WCHAR* o = out;
    bool lost = false;
    while (p < end) {
        if (*p < 0x80) {
            const int run = WidenAscii(p, end, o);
            p += run;
            o += run;
            continue;
        }
        // The kana and most kanji: a lead byte E1-EC has no special second byte.
        if (end - p >= 3 && *p >= 0xE1 && *p <= 0xEC && IsContinuation(p[1]) &&
            IsContinuation(p[2])) {
            *o++ = static_cast<WCHAR>((p[0] & 0x0Fu) << 12 | (p[1] & 0x3Fu) << 6 | (p[2] & 0x3Fu));
            p += 3;
            continue;
        }
        const Sequence sequence = ReadSequence(p, end);
        p += sequence.length;
        if (sequence.codePoint == kMalformed) {
            lost = true;
            *o++ = kBadSequence;
        } else if (sequence.codePoint < 0x10000) {
            *o++ = static_cast<WCHAR>(sequence.codePoint);
        } else {
            *o++ = static_cast<WCHAR>(0xD7C0 + (sequence.codePoint >> 10));
            *o++ = static_cast<WCHAR>(0xDC00 + (sequence.codePoint & 0x3FF));
        }
    }
    loss = loss || lost;
    return static_cast<int>(o - out);
}

INT64 EncodeUtf8(const WCHAR* text, int length, char* out, char replacement, bool& loss)
{
    const WCHAR* p = text;
    const WCHAR* const end = p + length;
    BYTE* const start = reinterpret_cast<BYTE*>(out);
    BYTE* o = start;
    bool lost = false;
    while (p < end) {
        const WCHAR* const before = p;
        while (end - p > kUnitsAtOnce) {
            const int count = EncodeTriples(p, o);
            if (count < kUnitsAtOnce) {
                p += count;
                o += 3 * count;
                break;
            }
            p += kUnitsAtOnce;
            o += 3 * kUnitsAtOnce;
        }
        const int run = NarrowAscii(p, end, o);
        p += run;
        o += run;
        if (p == end || (p != before && end - p > kUnitsAtOnce))
            continue;
        unsigned c = *p++;
        if (c < 0x800) {
            o[0] = static_cast<BYTE>(0xC0 | c >> 6);
            o[1] = static_cast<BYTE>(0x80 | (c & 0x3F));
            o += 2;
            continue;
        }
        if (IsHighSurrogate(c) && p < end && IsLowSurrogate(*p)) {
            const unsigned codePoint = 0x10000 + ((c & 0x3FF) << 10) + (*p++ & 0x3FFu);
            o[0] = static_cast<BYTE>(0xF0 | codePoint >> 18);
            o[1] = static_cast<BYTE>(0x80 | (codePoint >> 12 & 0x3F));
            o[2] = static_cast<BYTE>(0x80 | (codePoint >> 6 & 0x3F));
            o[3] = static_cast<BYTE>(0x80 | (codePoint & 0x3F));
            o += 4;
            continue;
        }
        if (IsHighSurrogate(c) || IsLowSurrogate(c)) {
            lost = true;
            if (replacement == '\0')
                continue;
            c = kBadSequence;
        }
        o[0] = static_cast<BYTE>(0xE0 | c >> 12);
        o[1] = static_cast<BYTE>(0x80 | (c >> 6 & 0x3F));
        o[2] = static_cast<BYTE>(0x80 | (c & 0x3F));
        o += 3;
    }
    loss = loss || lost;
    return o - start;
}

} // namespace tlvn::codepage
