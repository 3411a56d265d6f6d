#include "mailtext/quoted_printable.h"

#include "mailtext/hex_digit.h"
#include "platform/ascii_run.h"

#include <algorithm>
#include <climits>
#include <cstring>

using tlvn::HexValue;
using tlvn::kHexDigits;

namespace {

constexpr int kMaxColumn = 75;
constexpr int kEscapeLength = 3;

constexpr bool IsBlank(int c)
{
    return c == ' ' || c == '\t';
}
constexpr bool IsLineEnd(int c)
{
    return c == '\r' || c == '\n';
}
// Bytes that are encoded as they are, blanks only where no line ends behind them.
constexpr bool IsLiteral(int b)
{
    return (b >= ' ' && b <= '~' && b != '=') || b == '\t';
}

struct Tables {
    signed char hexValue[256];
    char escape[256][4]; // "=XX" and a byte that does not count
};
constexpr Tables MakeTables()
{
    Tables tables{};
    for (int b = 0; b < 256; ++b) {
        tables.hexValue[b] = static_cast<signed char>(HexValue(static_cast<char>(b)));
        tables.escape[b][0] = '=';
        tables.escape[b][1] = kHexDigits[b >> 4];
        tables.escape[b][2] = kHexDigits[b & 15];
    }
    return tables;
}
constexpr Tables kTables = MakeTables();

// Value of two hexadecimal digits, below 0 for anything else. Behind a first that is none the
// second is not read.
inline int HexPair(const char* p)
{
    const int high = kTables.hexValue[static_cast<BYTE>(p[0])];
    return high < 0 ? -1 : high * 16 | kTables.hexValue[static_cast<BYTE>(p[1])];
}

// Copies what stands before the first "=" or line end in [p, end), moving both. `out` has room
// for as many bytes as there are up to the end.
inline void CopyLine(const char*& p, const char* end, char*& out)
{
#ifdef TLVN_HAS_SSE2
    const auto equal = [](__m128i bytes, char c) {
        return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c));
    };
    while (end - p >= 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
        const __m128i stops =
            _mm_or_si128(equal(bytes, '='), _mm_or_si128(equal(bytes, '\r'), equal(bytes, '\n')));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(stops));
        const int count = std::countr_zero(mask | 0x10000u);
        p += count;
        out += count;
        if (mask != 0)
            return;
    }
#endif
    while (p != end && *p != '=' && !IsLineEnd(*p))
        *out++ = *p++;
}

// Copies literal bytes from the front of `left` bytes, at most `room`; returns how many. `out`
// has room for `left` bytes.
inline int CopyLiterals(const BYTE* data, int left, int room, char* out)
{
    int count = 0;
#ifdef TLVN_HAS_SSE2
    while (left - count >= 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + count));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + count), bytes);
        const __m128i printable = _mm_andnot_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\x7F')),
                                                   _mm_cmpgt_epi8(bytes, _mm_set1_epi8(' ' - 1)));
        const __m128i literal =
            _mm_or_si128(_mm_andnot_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('=')), printable),
                         _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\t')));
        const int found =
            std::countr_zero(static_cast<unsigned>(_mm_movemask_epi8(literal)) ^ 0x1FFFFu);
        count += found;
        if (count >= room)
            return room;
        if (found < 16)
            return count;
    }
#endif
    while (count < left && count < room && IsLiteral(data[count])) {
        out[count] = static_cast<char>(data[count]);
        ++count;
    }
    return count;
}

// Bytes from 80 on at the front of `left` bytes: all escaped, and the most of text that is not
// ASCII.
inline int CountHigh(const BYTE* data, int left)
{
    int count = 0;
#ifdef TLVN_HAS_SSE2
    while (left - count >= 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + count));
        const int high =
            std::countr_zero(static_cast<unsigned>(_mm_movemask_epi8(bytes)) ^ 0x1FFFFu);
        count += high;
        if (high < 16)
            return count;
    }
#endif
    while (count < left && data[count] >= 0x80)
        ++count;
    return count;
}

// The end of the encoded text, and the column it is in.
struct Line {
    char* next;
    int column = 0;

    void End()
    {
        next[0] = '\r';
        next[1] = '\n';
        next += 2;
        column = 0;
    }
    void BreakSoftly()
    {
        *next++ = '=';
        End();
    }
    void PutEscapes(const BYTE* data, int count)
    {
        while (count > 0) {
            const int fit = std::min(count, (kMaxColumn - column) / kEscapeLength);
            if (fit == 0) {
                BreakSoftly();
                continue;
            }
            for (int i = 0; i < fit; ++i)
                std::memcpy(next + i * kEscapeLength, kTables.escape[data[i]], 4);
            data += fit;
            count -= fit;
            next += fit * kEscapeLength;
            column += fit * kEscapeLength;
        }
    }
};

} // namespace

int DecodeQuotedPrintable(const char* text, CBuffer& out)
{
    out.Empty();
    if (text == nullptr || *text == '\0')
        return 1;
    const std::size_t length = std::strlen(text);
    if (length > INT_MAX - 64)
        AfxThrowMemoryException();
    char* const start = out.GetBuffer(static_cast<int>(length));
    char* o = start;
    const char* const end = text + length;
    for (const char* p = text; p != end;) {
        char* const run = o;
        CopyLine(p, end, o);
        if (*p == '=') {
            int value = HexPair(p + 1);
            if (value >= 0) {
                do {
                    *o++ = static_cast<char>(value);
                    p += kEscapeLength;
                } while (*p == '=' && (value = HexPair(p + 1)) >= 0);
                continue;
            }
            const char* behind = p + 1;
            while (IsBlank(*behind))
                ++behind;
            if (behind == end) {
                p = end;
            } else if (IsLineEnd(*behind)) {
                p = behind + (behind[0] == '\r' && behind[1] == '\n' ? 2 : 1);
            } else {
                *o++ = *p++;
            }
            continue;
        }
        // The line ends, or the text.
        while (o != run && IsBlank(o[-1]))
            --o;
        if (p[0] == '\r' && p[1] == '\n') {
            o[0] = '\r';
            o[1] = '\n';
            o += 2;
            p += 2;
        } else if (p != end) {
            *o++ = *p++;
        }
    }
    out.ReleaseBuffer(static_cast<int>(o - start));
    return 1;
}

void EncodeQuotedPrintable(const unsigned char* data, int len, int keepLineBreaks, CBuffer& out)
{
    out.Empty();
    if (data == nullptr || len < 1)
        return;
    // Escapes only, and a soft line break of three characters for every line of at least 73.
    const INT64 escaped = INT64{len} * 3;
    const INT64 most = escaped + escaped / (kMaxColumn - 2) * 3;
    if (most > INT_MAX - 64)
        AfxThrowMemoryException();
    char* const start = out.GetBuffer(static_cast<int>(most));
    Line line{start};
    for (int i = 0; i < len;) {
        const int count = CopyLiterals(data + i, len - i, kMaxColumn - line.column, line.next);
        i += count;
        line.next += count;
        line.column += count;
        const bool lineEnds = i == len || IsLineEnd(data[i]);
        if (count > 0 && lineEnds && IsBlank(data[i - 1])) {
            --line.next;
            --line.column;
            line.PutEscapes(data + i - 1, 1);
        }
        if (i == len)
            break;
        if (keepLineBreaks != 0 && IsLineEnd(data[i])) {
            i += data[i] == '\r' && i + 1 < len && data[i + 1] == '\n' ? 2 : 1;
            line.End();
        } else if (IsLiteral(data[i])) {
            line.BreakSoftly();
        } else {
            const int run = std::max(CountHigh(data + i, len - i), 1);
            line.PutEscapes(data + i, run);
            i += run;
        }
    }
    out.ReleaseBuffer(static_cast<int>(line.next - start));
}

int IsQuotedPrintable(const char* text)
{
    if (text == nullptr || *text == '\0')
        return 0;
    INT64 escapes = 0;
    const char* p = text;
    for (; *p != '\0'; ++p) {
        if (static_cast<BYTE>(*p) >= 0x80)
            return 0;
        if (*p == '=' && HexValue(p[1]) >= 0 && HexValue(p[2]) >= 0)
            ++escapes;
    }
    return 3 * escapes >= 3 * INT64{p - text} / 10;
}
