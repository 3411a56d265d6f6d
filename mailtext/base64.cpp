#include "mailtext/base64.h"

#include "mailtext/base64_avx2.h"
#include "platform/ascii_run.h"
#include "platform/cpu.h"

#include <array>
#include <climits>
#include <cstring>

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr signed char kOutside = -1;

// Values of the alphabet's bytes. "=" takes its place in a group with the value 0.
constexpr std::array<signed char, 256> MakeValues()
{
    std::array<signed char, 256> values{};
    values.fill(kOutside);
    for (int i = 0; i < 64; ++i)
        values[static_cast<BYTE>(kAlphabet[i])] = static_cast<signed char>(i);
    values['='] = 0;
    return values;
}
constexpr auto kValues = MakeValues();

// The same for whole groups: the four tables hold a byte's value shifted to each of the four
// places, with the top bit set for "=" and every byte outside the alphabet, so that one test
// tells whether a group is plain.
constexpr std::uint32_t kNotPlain = 0x80000000;
struct PlaceTables {
    std::uint32_t place[4][256];
};
constexpr PlaceTables MakePlaceTables()
{
    PlaceTables tables{};
    for (int i = 0; i < 4; ++i) {
        for (int b = 0; b < 256; ++b) {
            const signed char value = kValues[static_cast<std::size_t>(b)];
            tables.place[i][b] = value == kOutside || b == '='
                                     ? kNotPlain
                                     : static_cast<std::uint32_t>(value) << (18 - 6 * i);
        }
    }
    return tables;
}
constexpr PlaceTables kPlaces = MakePlaceTables();

// Two characters for each value of twelve bits.
struct PairTable {
    char pair[4096][2];
};
constexpr PairTable MakePairTable()
{
    PairTable table{};
    for (int i = 0; i < 4096; ++i) {
        table.pair[i][0] = kAlphabet[i >> 6];
        table.pair[i][1] = kAlphabet[i & 63];
    }
    return table;
}
constexpr PairTable kPairs = MakePairTable();

// Collects the next group, skipping what is outside the alphabet. False at the end of the text.
bool ReadGroup(const BYTE*& p, const BYTE* end, BYTE (&group)[4])
{
    for (int count = 0; count < 4;) {
        if (p == end)
            return false;
        const BYTE b = *p++;
        if (kValues[b] != kOutside)
            group[count++] = b;
    }
    return true;
}

inline char* PutGroup(const BYTE* data, char* out)
{
    const unsigned bits = static_cast<unsigned>(data[0] << 16 | data[1] << 8 | data[2]);
    std::memcpy(out, kPairs.pair[bits >> 12], 2);
    std::memcpy(out + 2, kPairs.pair[bits & 4095], 2);
    return out + 4;
}

#ifdef TLVN_HAS_SSE2

// Four groups at a time, with the arithmetic of SSE2, which has no table look-up: the values come
// to their places by shifts, and values and characters differ by an amount for each range of the
// alphabet.
constexpr int kBlockBytes = 12;
constexpr int kBlockCharacters = 16;

inline int Load32(const BYTE* p)
{
    int value;
    std::memcpy(&value, p, sizeof value);
    return value;
}

inline __m128i Shifted(__m128i bits, int left, int mask)
{
    const __m128i moved = left >= 0 ? _mm_slli_epi32(bits, left) : _mm_srli_epi32(bits, -left);
    return _mm_and_si128(moved, _mm_set1_epi32(mask));
}

inline __m128i Or(__m128i a, __m128i b)
{
    return _mm_or_si128(a, b);
}

// `amount` where the mask is set.
inline __m128i Where(__m128i mask, int amount)
{
    return _mm_and_si128(mask, _mm_set1_epi8(static_cast<char>(amount)));
}

inline __m128i IsAbove(__m128i bytes, int limit)
{
    return _mm_cmpgt_epi8(bytes, _mm_set1_epi8(static_cast<char>(limit)));
}

inline void PutBlock(const BYTE* data, char* out)
{
    // A group in each 32 bits; the last is loaded so that nothing behind it is read.
    const int last = static_cast<int>(static_cast<unsigned>(Load32(data + 8)) >> 8);
    const __m128i groups = _mm_set_epi32(last, Load32(data + 6), Load32(data + 3), Load32(data));
    const __m128i values = Or(
        Or(Shifted(groups, -2, 0x3F), Or(Shifted(groups, 12, 0x3000), Shifted(groups, -4, 0xF00))),
        Or(Or(Shifted(groups, 10, 0x3C0000), Shifted(groups, -6, 0x30000)),
           Shifted(groups, 8, 0x3F000000)));
    __m128i text = _mm_add_epi8(values, _mm_set1_epi8('A'));
    text = _mm_add_epi8(text, Where(IsAbove(values, 25), 'a' - 'A' - 26));
    text = _mm_add_epi8(text, Where(IsAbove(values, 51), '0' - 'a' - 26));
    text = _mm_add_epi8(text, Where(IsAbove(values, 61), '+' - '0' - 10));
    text = _mm_add_epi8(text, Where(IsAbove(values, 62), '/' - '+' - 1));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), text);
}

// Decodes the 16 characters at p, and returns how many of them, from the first on, are of the
// alphabet. 14 bytes at out are written, of which those of whole groups of these count.
inline int GetBlock(const BYTE* p, char* out)
{
    const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const auto within = [&](int first, int last) {
        return _mm_andnot_si128(IsAbove(text, last), IsAbove(text, first - 1));
    };
    const __m128i upper = within('A', 'Z');
    const __m128i lower = within('a', 'z');
    const __m128i digit = within('0', '9');
    const __m128i plus = _mm_cmpeq_epi8(text, _mm_set1_epi8('+'));
    const __m128i slash = _mm_cmpeq_epi8(text, _mm_set1_epi8('/'));
    const __m128i amounts =
        Or(Or(Where(upper, -'A'), Where(lower, 26 - 'a')),
           Or(Where(digit, 52 - '0'), Or(Where(plus, 62 - '+'), Where(slash, 63 - '/'))));
    const __m128i values = _mm_add_epi8(text, amounts);
    const __m128i groups = Or(Or(Or(Shifted(values, 2, 0xFC), Shifted(values, -12, 0x03)),
                                 Or(Shifted(values, 4, 0xF000), Shifted(values, -10, 0x0F00))),
                              Or(Shifted(values, 6, 0xC00000), Shifted(values, -8, 0x3F0000)));
    // Two groups to each 64 bits, without the gap between them.
    const __m128i pairs = Or(_mm_and_si128(groups, _mm_set_epi32(0, 0xFFFFFF, 0, 0xFFFFFF)),
                             _mm_and_si128(_mm_srli_epi64(groups, 8),
                                           _mm_set_epi32(0xFFFF, static_cast<int>(0xFF000000),
                                                         0xFFFF, static_cast<int>(0xFF000000))));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), pairs);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out + 6), _mm_srli_si128(pairs, 8));

    const __m128i known = Or(Or(upper, lower), Or(digit, Or(plus, slash)));
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(known)) ^ 0x1FFFFu;
    return std::countr_zero(mask);
}

// The whole groups in `len` bytes, as far as they are made in blocks; returns the bytes done.
inline int PutBlocks(const BYTE* data, int len, char* out)
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

// Decodes blocks and passes over line ends, as long as no group is divided by anything.
inline void GetBlocks(const BYTE*& p, const BYTE* end, char*& out)
{
    while (end - p >= kBlockCharacters) {
        const int groups = GetBlock(p, out) / 4;
        p += groups * 4;
        out += groups * 3;
        if (groups == kBlockCharacters / 4)
            continue;
        if (*p != '\r' && *p != '\n')
            break;
        while (p != end && (*p == '\r' || *p == '\n'))
            ++p;
    }
}

#else

inline int PutBlocks(const BYTE*, int, char*)
{
    return 0;
}

inline void GetBlocks(const BYTE*&, const BYTE*, char*&) {}

#endif

// The characters of `len` bytes in one line.
char* PutLine(const BYTE* data, int len, bool avx2, char* out)
{
    const BYTE* const end = data + len;
    int done = avx2 ? tlvn::PutBase64BlocksAvx2(data, len, out) : 0;
    if (done == 0)
        done = PutBlocks(data, len, out);
    data += done;
    out += done / 3 * 4;
    for (; end - data >= 3; data += 3)
        out = PutGroup(data, out);
    if (data == end)
        return out;
    const BYTE last[3] = {data[0], end - data == 2 ? data[1] : BYTE{0}, 0};
    out = PutGroup(last, out);
    out[-1] = '=';
    if (end - data == 1)
        out[-2] = '=';
    return out;
}

char* PutLineEnd(char* out)
{
    *out++ = '\r';
    *out++ = '\n';
    return out;
}

} // namespace

int DecodeBase64(const char* text, CBuffer& out)
{
    out.Empty();
    if (text == nullptr || *text == '\0')
        return 1;
    const std::size_t length = std::strlen(text);
    if (length > INT_MAX - 3)
        AfxThrowMemoryException();
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + length;
    const bool avx2 = tlvn::HasAvx2();
    char* const start = out.GetBuffer((static_cast<int>(length) + 3) / 4 * 3);
    char* o = start;
    for (;;) {
        if (avx2)
            tlvn::GetBase64BlocksAvx2(p, end, o);
        GetBlocks(p, end, o);
        while (end - p >= 4) {
            const std::uint32_t bits = kPlaces.place[0][p[0]] | kPlaces.place[1][p[1]] |
                                       kPlaces.place[2][p[2]] | kPlaces.place[3][p[3]];
            if (bits >= kNotPlain)
                break;
            o[0] = static_cast<char>(bits >> 16);
            o[1] = static_cast<char>(bits >> 8);
            o[2] = static_cast<char>(bits);
            o += 3;
            p += 4;
        }
        BYTE group[4];
        if (!ReadGroup(p, end, group))
            break;
        const unsigned bits =
            static_cast<unsigned>(kValues[group[0]] << 18 | kValues[group[1]] << 12 |
                                  kValues[group[2]] << 6 | kValues[group[3]]);
        *o++ = static_cast<char>(bits >> 16);
        if (group[2] == '=')
            break;
        *o++ = static_cast<char>(bits >> 8);
        if (group[3] == '=')
            break;
        *o++ = static_cast<char>(bits);
    }
    out.ReleaseBuffer(static_cast<int>(o - start));
    return 1;
}

void EncodeBase64(const unsigned char* data, int len, int lineLen, CBuffer& out)
{
    out.Empty();
    if (data == nullptr || len < 1)
        return;
    const INT64 characters = (INT64{len} + 2) / 3 * 4;
    const INT64 lineEnds = lineLen > 0 ? (characters - 1) / lineLen * 2 + 2 : 0;
    if (characters + lineEnds > INT_MAX - 64)
        AfxThrowMemoryException();
    const bool avx2 = tlvn::HasAvx2();
    char* const start = out.GetBuffer(static_cast<int>(characters + lineEnds));
    char* o = start;
    if (lineLen <= 0) {
        o = PutLine(data, len, avx2, o);
    } else if (lineLen % 4 == 0) {
        const int lineBytes = lineLen / 4 * 3;
        for (int pos = 0; pos < len; pos += lineBytes) {
            o = PutLine(data + pos, len - pos < lineBytes ? len - pos : lineBytes, avx2, o);
            o = PutLineEnd(o);
            if (len - pos <= lineBytes)
                break;
        }
    } else {
        // Line ends fall inside groups: the text is made at the end of the space and moved to
        // the front line by line.
        const char* text = start + lineEnds;
        PutLine(data, len, avx2, start + lineEnds);
        for (INT64 left = characters; left > 0;) {
            const std::size_t size = static_cast<std::size_t>(left < lineLen ? left : lineLen);
            std::memmove(o, text, size);
            o = PutLineEnd(o + size);
            text += size;
            left -= static_cast<INT64>(size);
        }
    }
    out.ReleaseBuffer(static_cast<int>(o - start));
}

void ExtractBase64Text(const char* p, int len, CBuffer& out)
{
    out.Empty();
    if (p == nullptr || len < 1)
        return;
    const char* const end = p + len;
    const auto isMember = [](char c) {
        return c == '\0' || (c != '=' && kValues[static_cast<BYTE>(c)] != kOutside);
    };
    while (p != end && !isMember(*p))
        ++p;
    const char* const start = p;
    while (p != end && isMember(*p))
        ++p;
    while (p != end && *p == '=')
        ++p;
    out.Set(start, static_cast<int>(p - start));
}
