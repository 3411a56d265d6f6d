// Compiled for AVX2: no inline function that works on vectors or memory is shared with another
// file, or that might get its instructions from here.

#include "mailtext/base64_avx2.h"

#if defined(__x86_64__) || defined(_M_X64)

#include <bit>
#include <immintrin.h>

namespace tlvn {

namespace {

constexpr int kBlockBytes = 24;
constexpr int kBlockCharacters = 32;

// The same table of 16 bytes in both halves.
inline __m256i Table(char b0, char b1, char b2, char b3, char b4, char b5, char b6, char b7,
                     char b8, char b9, char b10, char b11, char b12, char b13, char b14, char b15)
{
    return _mm256_setr_epi8(b0, b1, b2, b3, b4, b5, b6, b7, b8, b9, b10, b11, b12, b13, b14, b15,
                            b0, b1, b2, b3, b4, b5, b6, b7, b8, b9, b10, b11, b12, b13, b14, b15);
}

inline void PutBlock(const BYTE* data, char* out)
{
    // 12 bytes in each half, those of the second behind 4 others, so that nothing behind the
    // block is read. A group of the bytes a, b, c becomes the four b, a, c, b.
    const __m256i bytes =
        _mm256_set_m128i(_mm_loadu_si128(reinterpret_cast<const __m128i*>(data + kBlockBytes - 16)),
                         _mm_loadu_si128(reinterpret_cast<const __m128i*>(data)));
    const __m256i groups = _mm256_shuffle_epi8(
        bytes, _mm256_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10, //
                                5, 4, 6, 5, 8, 7, 9, 8, 11, 10, 12, 11, 14, 13, 15, 14));
    // In words of 16 bits: products move the first and third value down, the others up.
    const __m256i down = _mm256_mulhi_epu16(_mm256_and_si256(groups, _mm256_set1_epi32(0x0FC0FC00)),
                                            _mm256_set1_epi32(0x04000040));
    const __m256i up = _mm256_mullo_epi16(_mm256_and_si256(groups, _mm256_set1_epi32(0x003F03F0)),
                                          _mm256_set1_epi32(0x01000010));
    const __m256i values = _mm256_or_si256(down, up);
    // The range of each value: 0 for a-z, 1 to 10 for 0-9, 11 and 12 for + and /, 13 for A-Z.
    const __m256i upper = _mm256_cmpgt_epi8(_mm256_set1_epi8(26), values);
    const __m256i ranges = _mm256_or_si256(_mm256_subs_epu8(values, _mm256_set1_epi8(51)),
                                           _mm256_and_si256(upper, _mm256_set1_epi8(13)));
    const __m256i amounts = _mm256_shuffle_epi8(
        Table('a' - 26, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52,
              '0' - 52, '0' - 52, '0' - 52, '+' - 62, '/' - 63, 'A', 0, 0),
        ranges);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), _mm256_add_epi8(values, amounts));
}

// Decodes the 32 characters at p into 24 bytes. Returns how many characters, from the first on,
// are of the alphabet.
inline int GetBlock(const BYTE* p, char* out)
{
    const __m256i text = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    const __m256i nibble = _mm256_set1_epi8(0x0F);
    const __m256i high = _mm256_and_si256(_mm256_srli_epi32(text, 4), nibble);
    const __m256i low = _mm256_and_si256(text, nibble);
    // A character is outside when the sets of its two halves have a bit in common: 01 for 2x, 02
    // for 3x, 04 for 4x and 6x, 08 for 5x and 7x, 10 for everything else.
    const __m256i outside =
        _mm256_and_si256(_mm256_shuffle_epi8(Table(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08,
                                                   0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10),
                                             high),
                         _mm256_shuffle_epi8(Table(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                                                   0x11, 0x11, 0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A),
                                             low));
    const __m256i known = _mm256_cmpeq_epi8(outside, _mm256_setzero_si256());
    // What to add depends on the upper half, but for "/", which takes the place below that of "+".
    const __m256i slash = _mm256_cmpeq_epi8(text, _mm256_set1_epi8('/'));
    const __m256i amounts = _mm256_shuffle_epi8(Table(0, 63 - '/', 62 - '+', 52 - '0', -'A', -'A',
                                                      26 - 'a', 26 - 'a', 0, 0, 0, 0, 0, 0, 0, 0),
                                                _mm256_add_epi8(high, slash));
    const __m256i values = _mm256_add_epi8(text, amounts);
    // 6 + 6 bits, 12 + 12 bits, then the three bytes of each 32 bits in their order.
    const __m256i pairs = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
    const __m256i groups = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
    const __m256i bytes =
        _mm256_shuffle_epi8(groups, Table(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
    const __m256i joined =
        _mm256_permutevar8x32_epi32(bytes, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm256_castsi256_si128(joined));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out + 16), _mm256_extracti128_si256(joined, 1));

    const auto mask = ~static_cast<unsigned>(_mm256_movemask_epi8(known));
    return std::countr_zero(mask);
}

} // namespace

int PutBase64BlocksAvx2(const BYTE* data, int len, char* out)
{
    const int whole = len - len % 3;
    if (whole < kBlockBytes)
        return 0;
    int done = 0;
    for (; whole - done >= kBlockBytes; done += kBlockBytes)
        PutBlock(data + done, out + done / 3 * 4);
    // What is left goes in a block with some of what is done already.
    if (done != whole)
        PutBlock(data + whole - kBlockBytes, out + whole / 3 * 4 - kBlockCharacters);
    return whole;
}

void GetBase64BlocksAvx2(const BYTE*& p, const BYTE* end, char*& out)
{
    const BYTE* from = p;
    char* to = out;
    while (end - from >= kBlockCharacters) {
        const int groups = GetBlock(from, to) / 4;
        from += groups * 4;
        to += groups * 3;
        if (groups == kBlockCharacters / 4)
            continue;
        if (*from != '\r' && *from != '\n')
            break;
        while (from != end && (*from == '\r' || *from == '\n'))
            ++from;
    }
    p = from;
    out = to;
}

} // namespace tlvn

#else

namespace tlvn {

int PutBase64BlocksAvx2(const BYTE*, int, char*)
{
    return 0;
}

void GetBase64BlocksAvx2(const BYTE*&, const BYTE*, char*&) {}

} // namespace tlvn

#endif
