#include "charcode/detect.h"

#include "charcode/charset.h"
#include "charcode/convert.h"
#include "platform/ascii_run.h"
#include "platform/nls.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

using namespace tlvn;

namespace {

constexpr int kScanLength = 1024;
constexpr UINT kShiftJisPage = 932;

constexpr bool In(int b, int first, int last)
{
    return b >= first && b <= last;
}
constexpr bool IsSJisTrail(int b)
{
    return In(b, 0x40, 0x7E) || In(b, 0x80, 0xFC);
}

// One forward scan. Undecided: Japanese, Shift_JIS or EUC-JP.
class Scan {
public:
    Scan(const char* text, int len)
        : m_text(reinterpret_cast<const BYTE*>(text)), m_end(std::min(len, kScanLength))
    {}

    CodeType Run()
    {
        for (m_pos = 0; m_pos < m_end && !m_decided; ++m_pos) {
            SkipPlain();
            if (m_pos < m_end)
                Step(m_text[m_pos]);
        }
        if (m_decided)
            return m_codeType;
        return m_undecided ? CT_EUC : CT_ASCII;
    }

private:
    // Passes whole blocks of bytes that mean nothing: ASCII without an escape.
    void SkipPlain()
    {
#ifdef TLVN_HAS_SSE2
        for (; m_end - m_pos >= 16; m_pos += 16) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(m_text + m_pos));
            const __m128i escape = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(0x1B));
            const auto found =
                static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(bytes, escape)));
            if (found != 0) {
                m_pos += std::countr_zero(found);
                return;
            }
        }
#endif
    }

    // Behind the scanned range there are zeros.
    int Next()
    {
        ++m_pos;
        return m_pos < m_end ? m_text[m_pos] : 0;
    }
    void Decide(CodeType codeType)
    {
        m_decided = true;
        m_codeType = codeType;
    }

    void Step(int x)
    {
        if (x == 0x1B)
            StepEscape();
        else if (x == 0x8E)
            StepSingleShift(Next());
        else if (In(x, 0x81, 0x9F))
            Decide(CT_SJIS);
        else if (In(x, 0xA1, 0xDF))
            StepKatakanaRange(Next());
        else if (In(x, 0xE0, 0xEF))
            StepHighLead(Next());
        else if (In(x, 0xF0, 0xFE))
            Decide(CT_EUC);
    }

    void StepEscape()
    {
        const int d = Next();
        if (d == '$') {
            const int e = Next();
            if (e == 'B' || e == '@')
                Decide(CT_JIS);
        } else if (d == '(') {
            const int e = Next();
            if (e == 'B' || e == 'J' || e == 'H' || e == 'I')
                Decide(CT_JIS);
        } else if (d == 'K' || d == 'H') {
            Decide(CT_JIS);
        }
    }

    void StepSingleShift(int d)
    {
        if (In(d, 0xA1, 0xDF))
            m_undecided = true;
        else if (IsSJisTrail(d))
            Decide(CT_SJIS);
    }

    // Half-width katakana of Shift_JIS, or the first byte of an EUC-JP character.
    void StepKatakanaRange(int d)
    {
        if (In(d, 0xA1, 0xDF)) {
            m_undecided = true;
        } else if (In(d, 0xE0, 0xEF)) {
            m_undecided = true;
            StepRun();
        } else if (In(d, 0xF0, 0xFE)) {
            Decide(CT_EUC);
        }
    }

    // Looks for a byte that only one of the two codes has, up to the next byte below 40.
    void StepRun()
    {
        for (int b = Next(); b >= 0x40 && !m_decided; b = Next()) {
            if (In(b, 0x81, 0x8D) || In(b, 0x8F, 0x9F))
                Decide(CT_SJIS);
            else if (In(b, 0xFD, 0xFE))
                Decide(CT_EUC);
        }
    }

    void StepHighLead(int d)
    {
        if (In(d, 0x40, 0x7E) || In(d, 0x80, 0xA0))
            Decide(CT_SJIS);
        else if (In(d, 0xA1, 0xFC))
            m_undecided = true;
        else if (In(d, 0xFD, 0xFE))
            Decide(CT_EUC);
    }

    const BYTE* m_text;
    int m_end;
    int m_pos = 0;
    bool m_undecided = false;
    bool m_decided = false;
    CodeType m_codeType = CT_ASCII;
};

// Number of continuation bytes behind a lead byte, 0 when the byte is none.
int ContinuationCount(BYTE lead)
{
    if ((lead & 0xE0) == 0xC0)
        return 1;
    if ((lead & 0xF0) == 0xE0)
        return 2;
    if ((lead & 0xF8) == 0xF0)
        return 3;
    if ((lead & 0xFC) == 0xF8)
        return 4;
    if ((lead & 0xFE) == 0xFC)
        return 5;
    return 0;
}

// Judges the 64 bytes at p, where a sequence or an ASCII character starts: returns the length
// of the whole ones among them, or 0 when there is anything but well-formed sequences of two and
// three bytes. Sets `found` when there is a sequence.
int WellFormedLength(const BYTE* p, int& found)
{
#ifdef TLVN_HAS_SSE2
    std::uint64_t high = 0, continuation = 0, three = 0, four = 0;
    const auto mask = [](__m128i bytes, int shift) {
        return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(bytes))) << shift;
    };
    for (int i = 0; i < 64; i += 16) {
        // As signed numbers 80 is the least byte and ASCII lies above all others.
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
        high |= mask(bytes, i);
        continuation |= mask(_mm_cmplt_epi8(bytes, _mm_set1_epi8(-0x40)), i);
        three |= mask(_mm_cmpgt_epi8(bytes, _mm_set1_epi8(-0x21)), i);
        four |= mask(_mm_cmpgt_epi8(bytes, _mm_set1_epi8(-0x11)), i);
    }
    const std::uint64_t lead = high & ~continuation;
    three &= high;
    if ((lead << 1 | three << 2) != continuation || (four & high) != 0)
        return 0;
    found |= high != 0;
    if (lead >> 63 != 0)
        return 63;
    return (three >> 62 & 1) != 0 ? 62 : 64;
#else
    static_cast<void>(p);
    static_cast<void>(found);
    return 0;
#endif
}

// Whether the bytes are UTF-16 text of characters that Shift_JIS has. Most other text shows
// that it is not in its first units, so it is looked at in pieces.
bool IsShiftJisInUtf16(const char* text, int len)
{
    constexpr int kPiece = 256;
    WCHAR units[kPiece];
    char bytes[kPiece * 2];
    const int count = len / 2;
    int size = 0;
    for (int pos = 0; pos < count; pos += size) {
        size = std::min(pos == 0 ? 16 : kPiece, count - pos);
        std::memcpy(units, text + 2 * pos, static_cast<std::size_t>(size) * sizeof(WCHAR));
        int written = 0;
        if (ConvertFromUtf16(kShiftJisPage, units, size, bytes, sizeof(bytes), written) !=
            kConverted)
            return false;
    }
    return count > 0;
}

bool IsDefinedUtf16(const char* text, int len)
{
    if (len % 2 != 0)
        return false;
    for (int pos = 0; pos < len; pos += 2) {
        WCHAR unit;
        std::memcpy(&unit, text + pos, sizeof(unit));
        if (!IsDefinedCharacter(unit))
            return false;
    }
    return true;
}

bool IsValidAs(CodeType t, const char* text, int len)
{
    CBuffer utf16;
    return ConvertToOtherCodeType2(t, text, len, CT_UNICODE, utf16, 0) == kConverted;
}

} // namespace

CodeType DetectCodeType(const char* text, int len)
{
    if (text == nullptr || len < 1)
        return CT_ASCII;
    return Scan(text, len).Run();
}

int IsUTF8(const char* text, int len)
{
    if (text == nullptr || len < 1)
        return 0;
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + len;
    int found = 0;
    while (p < end) {
        if (end - p >= 64) {
            const int length = WellFormedLength(p, found);
            p += length;
            if (length != 0)
                continue;
        }
        if (*p < 0x80) {
            p += AsciiRunLength(p, end);
            continue;
        }
        const int count = ContinuationCount(*p);
        if (count == 0 || end - p <= count)
            return 0;
        for (int i = 1; i <= count; ++i) {
            if ((p[i] & 0xC0) != 0x80)
                return 0;
        }
        p += count + 1;
        found = 1;
    }
    return found;
}

CodeType DetectCodeType2(const char* text, int len)
{
    if (text == nullptr || len < 1)
        return CT_ASCII;
    if (IsUTF8(text, len))
        return CT_UTF8;
    if (IsShiftJisInUtf16(text, len))
        return CT_UNICODE;
    return DetectCodeType(text, len);
}

CodeType DetectCodeType3(const char* text, int len, CodeType hint)
{
    if (text == nullptr || len < 0)
        len = 0;
    if (hint == CT_UNKNOWN)
        return DetectCodeType(text, len);
    if (hint == CT_UNICODE)
        return IsDefinedUtf16(text, len) ? hint : DetectCodeType(text, len);
    if ((hint == CT_SJIS || hint == CT_EUC) && len > 0 &&
        std::memchr(text, 0x1B, static_cast<std::size_t>(len)) != nullptr &&
        IsValidAs(CT_JIS, text, len))
        return CT_JIS;
    return IsValidAs(hint, text, len) ? hint : DetectCodeType(text, len);
}

CodeType DetectUnicodeCodeType(const WCHAR* text, int count, CodeType def)
{
    if (text == nullptr)
        return def;
    for (int i = 0; i < count; ++i) {
        const unsigned c = text[i];
        if (c >= 0x3040 && c <= 0x30FF)
            return CT_SJIS;
        if ((c >= 0x3130 && c <= 0x318F) || (c >= 0x1100 && c <= 0x11FF) ||
            (c >= 0xAC00 && c <= 0xD7A3))
            return CT_KSC5601;
    }
    return def;
}

CodeType DetectUnicodeCodeType2(const WCHAR* text, int count, CBuffer* out)
{
    CBuffer scratch;
    CBuffer& result = out != nullptr ? *out : scratch;
    result.Empty();
    if (text == nullptr || count < 1)
        return CT_ASCII;
    const bool ascii = std::all_of(text, text + count, [](WCHAR c) { return c < 0x80; });
    const CodeType codeType = ascii ? CT_ASCII : CT_SJIS;
    const char* const bytes = reinterpret_cast<const char*>(text);
    if (count > INT_MAX / 2)
        AfxThrowMemoryException();
    if (ConvertToOtherCodeType2(CT_UNICODE, bytes, count * 2, codeType, result, 0) == kConverted)
        return codeType;
    result.Set(bytes, count * 2);
    return CT_UNICODE;
}
