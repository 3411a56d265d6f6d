#include "charcode/japanese.h"

#include "charcode/row_cell.h"
#include "platform/ascii_run.h"

#include <climits>
#include <cstring>

using namespace tlvn;

namespace {

constexpr BYTE kEsc = 0x1B;
constexpr BYTE kShiftOut = 0x0E;
constexpr BYTE kShiftIn = 0x0F;
constexpr BYTE kSingleShift2 = 0x8E;

constexpr bool IsHalfKatakana(BYTE b)
{
    return b >= 0xA1 && b <= 0xDF;
}
constexpr bool IsEucByte(BYTE b)
{
    return b >= 0xA1 && b <= 0xFE;
}

// The common start of the conversions: false when there is nothing to convert.
bool Begin(const char* text, int len, CBuffer& out)
{
    out.Empty();
    if (text == nullptr || len < 1)
        return false;
    if (len > INT_MAX / 2)
        AfxThrowMemoryException();
    return true;
}

// What an escape sequence of ISO-2022-JP does.
struct Designation {
    enum Effect { None, Kanji, Katakana, Ascii } effect;
    int length; // bytes to pass over, ESC included
};

Designation ReadDesignation(const BYTE* p, const BYTE* end)
{
    const auto at = [&](int i) { return end - p > i ? static_cast<int>(p[i]) : -1; };
    switch (at(1)) {
    case '$':
        if (at(2) == '@' || at(2) == 'B')
            return {Designation::Kanji, 3};
        if (at(2) == '(' && at(3) == 'D')
            return {Designation::Kanji, 4};
        return {Designation::None, 1};
    case '(':
        switch (at(2)) {
        case 'B':
        case 'J':
        case 'H':
            return {Designation::Ascii, 3};
        case 'I':
            return {Designation::Katakana, 3};
        default:
            return {Designation::None, 1};
        }
    case '&':
        // Announces the revision of the standard.
        return at(2) == '@' ? Designation{Designation::None, 3}
                            : Designation{Designation::Ascii, 1};
    case 'K':
        return {Designation::Kanji, 2};
    case 'H':
        return {Designation::Ascii, 2};
    default:
        return {Designation::Ascii, 1};
    }
}

// Length of what stands at p < end outside ASCII and is not of the code, but comes out of valid
// Shift_JIS text; 0 for anything else. The lead bytes without a row are passed on alone, their
// trail bytes become whatever they are by themselves.
int PassedOnLength(const BYTE* p, const BYTE* end)
{
    if (*p == 0x80)
        return 1;
    if (*p < 0xF0 || *p > 0xFC)
        return 0;
    return end - p >= 2 && p[1] >= 0x80 && p[1] <= 0xFC ? 2 : 1;
}

// Converts the pairs at the start of [p, end), but for the last few, and moves p and o behind
// them. Full steps are told apart, so that the next need not wait for the count of the last.
template <int (*kConvertPairs)(const BYTE*, int, BYTE*)>
void ConvertRun(const BYTE*& p, const BYTE* end, int highBit, BYTE*& o)
{
    while (end - p >= kPairBytes) {
        const int count = kConvertPairs(p, highBit, o);
        if (count < kPairsAtOnce) {
            p += 2 * count;
            o += 2 * count;
            return;
        }
        p += kPairBytes;
        o += kPairBytes;
    }
}

// Copies the bytes at the start of [p, end) that do not change the mode, as CopyAscii does.
int CopyUnshifted(const BYTE* p, const BYTE* end, BYTE* out)
{
    const BYTE* const start = p;
#ifdef TLVN_HAS_SSE2
    while (end - p >= 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
        const __m128i shift = _mm_cmpeq_epi8(_mm_or_si128(bytes, _mm_set1_epi8(1)),
                                             _mm_set1_epi8(kShiftOut | kShiftIn));
        const __m128i escape = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(kEsc));
        const auto found = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(shift, escape)));
        if (found != 0)
            return static_cast<int>(p - start) + std::countr_zero(found);
        p += 16;
        out += 16;
    }
#endif
    while (p < end && *p != kEsc && *p != kShiftOut && *p != kShiftIn)
        *out++ = *p++;
    return static_cast<int>(p - start);
}

// Writes ISO-2022-JP into a buffer that is reserved ahead.
class JisWriter {
public:
    JisWriter(CBuffer& out, int inputLength)
        : m_out(out), m_start(reinterpret_cast<BYTE*>(out.GetBuffer(2 * inputLength))),
          m_next(m_start), m_end(m_start + 2 * inputLength)
    {}

    enum Mode { Ascii, Kanji, Katakana };

    // Makes room for `size` bytes when `rest` bytes of the input are still to come, an escape
    // sequence not counted. Text that changes its mode all the time outgrows twice its length:
    // then the most the rest can take is reserved.
    void Reserve(int size, INT64 rest)
    {
        if (m_end - m_next >= size + kEscapeLength)
            return;
        const INT64 used = m_next - m_start;
        const INT64 whole = used + size + 4 * rest + 2 * kEscapeLength;
        if (whole > INT_MAX - 16)
            AfxThrowMemoryException();
        m_out.ReleaseBuffer(static_cast<int>(used));
        m_start = reinterpret_cast<BYTE*>(m_out.GetBuffer(static_cast<int>(whole)));
        m_next = m_start + used;
        m_end = m_start + whole;
    }

    void SetMode(Mode mode)
    {
        if (m_mode == mode)
            return;
        static constexpr char kDesignations[][kEscapeLength + 1] = {"\x1B(B", "\x1B$B", "\x1B(I"};
        std::memcpy(m_next, kDesignations[mode], kEscapeLength);
        m_next += kEscapeLength;
        m_mode = mode;
    }

    // The double-byte characters, or the ASCII characters, that the first kChunk bytes at p start
    // with: as many bytes as are returned. Reserve(kChunk) has to precede.
    int PutPairs(const BYTE* p)
    {
        const int count = ConvertSJisPairs(p, 0, m_next + SwitchLength(Kanji));
        return Keep(Kanji, 2 * count);
    }
    int PutAscii(const BYTE* p)
    {
        return Keep(Ascii, CopyAscii(p, p + kChunk, m_next + SwitchLength(Ascii)));
    }

    void PutPair(BYTE s1, BYTE s2)
    {
        PutJisPair(s1, s2, 0, m_next);
        m_next += 2;
    }
    void Put(BYTE b) { *m_next++ = b; }
    static constexpr int kChunk = kPairBytes;

    void Finish() { m_out.ReleaseBuffer(static_cast<int>(m_next - m_start)); }

private:
    static constexpr int kEscapeLength = 3;

    int SwitchLength(Mode mode) const { return m_mode == mode ? 0 : kEscapeLength; }
    // Takes over bytes that already stand behind the place of their designation.
    int Keep(Mode mode, int size)
    {
        if (size > 0) {
            SetMode(mode);
            m_next += size;
        }
        return size;
    }

    CBuffer& m_out;
    BYTE* m_start;
    BYTE* m_next;
    BYTE* m_end;
    Mode m_mode = Ascii;
};

} // namespace

void ConvertJisToSJis(const char* text, int len, CBuffer& out)
{
    if (!Begin(text, len, out))
        return;
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + len;
    BYTE* const start = reinterpret_cast<BYTE*>(out.GetBuffer(len));
    BYTE* o = start;
    bool kanji = false;
    bool katakana = false;
    while (p < end) {
        if (kanji && !katakana) {
            ConvertRun<ConvertJisPairs>(p, end, 0, o);
        } else if (!katakana) {
            const int run = CopyUnshifted(p, end, o);
            p += run;
            o += run;
        }
        if (p == end)
            break;
        const BYTE b = *p;
        if (b == kEsc && end - p >= 3 && p[2] == 'B' && (p[1] == '$' || p[1] == '(')) {
            // The two designations of most texts.
            kanji = p[1] == '$';
            katakana = false;
            p += 3;
        } else if (b == kEsc) {
            const Designation designation = ReadDesignation(p, end);
            p += designation.length;
            if (designation.effect != Designation::None) {
                kanji = designation.effect == Designation::Kanji;
                katakana = designation.effect == Designation::Katakana;
            }
        } else if (b == kShiftOut || b == kShiftIn) {
            katakana = b == kShiftOut;
            ++p;
        } else if (b == '\r' || b == '\n') {
            *o++ = b;
            ++p;
        } else if (katakana) {
            *o++ = static_cast<BYTE>(b | 0x80);
            ++p;
        } else if (kanji && end - p >= 2) {
            PutSJisPair(p[0], p[1], o);
            o += 2;
            p += 2;
        } else {
            *o++ = b;
            ++p;
        }
    }
    out.ReleaseBuffer(static_cast<int>(o - start));
}

void ConvertSJisToJis(const char* text, int len, CBuffer& out)
{
    if (!Begin(text, len, out))
        return;
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + len;
    JisWriter writer(out, len);
    while (p < end) {
        if (end - p >= JisWriter::kChunk) {
            const BYTE* const before = p;
            int size = JisWriter::kChunk;
            while (size == JisWriter::kChunk && end - p >= JisWriter::kChunk) {
                writer.Reserve(JisWriter::kChunk, end - p);
                size = *p < 0x80 ? writer.PutAscii(p) : writer.PutPairs(p);
                p += size;
            }
            if (p != before)
                continue;
        }
        const BYTE b = *p;
        writer.Reserve(2, end - p);
        if (IsSJisLead(b) && end - p >= 2 && IsSJisTrail(p[1])) {
            writer.SetMode(JisWriter::Kanji);
            writer.PutPair(b, p[1]);
            p += 2;
        } else if (IsHalfKatakana(b)) {
            writer.SetMode(JisWriter::Katakana);
            writer.Put(b & 0x7F);
            ++p;
        } else {
            writer.SetMode(JisWriter::Ascii);
            writer.Put(*p++);
            // A lead byte takes a bad trail byte along.
            if (IsSJisLead(b) && p < end)
                writer.Put(*p++);
        }
    }
    writer.Reserve(0, 0);
    writer.SetMode(JisWriter::Ascii);
    writer.Finish();
}

void ConvertEucToSJis(const char* text, int len, CBuffer& out)
{
    if (!Begin(text, len, out))
        return;
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + len;
    BYTE* const start = reinterpret_cast<BYTE*>(out.GetBuffer(len));
    BYTE* o = start;
    while (p < end) {
        const BYTE* const before = p;
        ConvertRun<ConvertJisPairs>(p, end, 0x80, o);
        const int run = CopyAscii(p, end, o);
        p += run;
        o += run;
        if (p == end || (p != before && end - p >= kPairBytes))
            continue;
        const BYTE b = *p;
        if ((IsEucByte(b) || b == kSingleShift2) && end - p >= 2) {
            if (b != kSingleShift2 && IsEucByte(p[1])) {
                PutSJisPair(b - 0x80, p[1] - 0x80, o);
                o += 2;
            } else if (b == kSingleShift2 && IsHalfKatakana(p[1])) {
                *o++ = p[1];
            } else {
                *o++ = b;
                *o++ = p[1];
            }
            p += 2;
        } else {
            *o++ = b;
            ++p;
        }
    }
    out.ReleaseBuffer(static_cast<int>(o - start));
}

void ConvertSJisToEuc(const char* text, int len, CBuffer& out)
{
    if (!Begin(text, len, out))
        return;
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + len;
    BYTE* const start = reinterpret_cast<BYTE*>(out.GetBuffer(2 * len));
    BYTE* o = start;
    while (p < end) {
        const BYTE* const before = p;
        ConvertRun<ConvertSJisPairs>(p, end, 0x80, o);
        const int run = CopyAscii(p, end, o);
        p += run;
        o += run;
        if (p == end || (p != before && end - p >= kPairBytes))
            continue;
        const BYTE b = *p;
        if (IsSJisLead(b) && end - p >= 2) {
            if (IsSJisTrail(p[1])) {
                PutJisPair(b, p[1], 0x80, o);
            } else {
                o[0] = b;
                o[1] = p[1];
            }
            o += 2;
            p += 2;
        } else {
            if (IsHalfKatakana(b))
                *o++ = kSingleShift2;
            *o++ = b;
            ++p;
        }
    }
    out.ReleaseBuffer(static_cast<int>(o - start));
}

namespace tlvn {

bool IsValidJis(const char* text, int len)
{
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + len;
    bool kanji = false;
    bool katakana = false;
    while (p < end) {
        const BYTE b = *p;
        int length = 1;
        if (b == kEsc) {
            const Designation designation = ReadDesignation(p, end);
            length = designation.length;
            if (length == 1)
                return false;
            if (designation.effect != Designation::None) {
                kanji = designation.effect == Designation::Kanji;
                katakana = designation.effect == Designation::Katakana;
            }
        } else if (b == kShiftOut || b == kShiftIn) {
            katakana = b == kShiftOut;
        } else if (b == '\r' || b == '\n') {
            length = 1;
        } else if (katakana) {
            length = b >= 0x21 && b <= 0x5F ? 1 : 0;
        } else if (kanji) {
            length = IsJisByte(b) && end - p >= 2 && IsJisByte(p[1]) ? 2 : 0;
        } else if (b >= 0x80) {
            length = PassedOnLength(p, end);
        }
        if (length == 0)
            return false;
        p += length;
    }
    return true;
}

bool IsValidEuc(const char* text, int len)
{
    const BYTE* p = reinterpret_cast<const BYTE*>(text);
    const BYTE* const end = p + len;
    while (p < end) {
        const BYTE b = *p;
        int length = 0;
        if (b < 0x80)
            length = AsciiRunLength(p, end);
        else if (end - p >= 2 &&
                 (b == kSingleShift2 ? IsHalfKatakana(p[1]) : IsEucByte(b) && IsEucByte(p[1])))
            length = 2;
        else
            length = PassedOnLength(p, end);
        if (length == 0)
            return false;
        p += length;
    }
    return true;
}

} // namespace tlvn
