#include "foundation/char_type.h"

#include "platform/multibyte.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace {

#include "foundation/tables/char_type_table.inc"

constexpr int kSingleSpace = CHARTYPE_SINGLE | CHARTYPE_SPACE;
constexpr int kSingleOther = CHARTYPE_SINGLE | CHARTYPE_OTHER;
constexpr int kSingleWord = CHARTYPE_SINGLE | CHARTYPE_WORD;
constexpr int kHalfKatakana = CHARTYPE_SINGLE | CHARTYPE_KATAKANA;
constexpr int kDoubleSpace = CHARTYPE_DOUBLE | CHARTYPE_SPACE;
constexpr int kDoubleOther = CHARTYPE_DOUBLE | CHARTYPE_OTHER;
constexpr int kDoubleWord = CHARTYPE_DOUBLE | CHARTYPE_WORD;
constexpr int kHiragana = CHARTYPE_DOUBLE | CHARTYPE_HIRAGANA;
constexpr int kKatakana = CHARTYPE_DOUBLE | CHARTYPE_KATAKANA;
constexpr int kKanji = CHARTYPE_DOUBLE | CHARTYPE_KANJI;
constexpr int kBothKana = CHARTYPE_HIRAGANA | CHARTYPE_KATAKANA;

constexpr bool Within(unsigned c, unsigned first, unsigned last)
{
    return c >= first && c <= last;
}

unsigned DoubleByteAt(const char* p)
{
    return static_cast<unsigned>(static_cast<BYTE>(p[0])) << 8 | static_cast<BYTE>(p[1]);
}

// The voicing marks and the prolonged-sound mark.
bool IsKanaMark(unsigned c)
{
    return c == 0x814A || c == 0x814B || c == 0x815B;
}

int ShiftJisType(unsigned c)
{
    if (c == 0x8140)
        return kDoubleSpace;
    if (Within(c, 0x824F, 0x8258) || Within(c, 0x8260, 0x8279) || Within(c, 0x8281, 0x829A) ||
        c == 0x8151)
        return kDoubleWord;
    if (Within(c, 0x829F, 0x82F1) || c == 0x8154 || c == 0x8155)
        return kHiragana;
    if (Within(c, 0x8340, 0x8396) || c == 0x8152 || c == 0x8153)
        return kKatakana;
    if (c >= 0x889F || c == 0x8158)
        return kKanji;
    return kDoubleOther;
}

// What the kana mark at p is.
int KanaMarkType(const char* text, const char* p)
{
    while (p > text && tlvn::IsInsideCharacter(text, p - 1, p)) {
        p -= 2;
        const unsigned c = DoubleByteAt(p);
        if (!IsKanaMark(c))
            return ShiftJisType(c) == kHiragana ? kHiragana : kKatakana;
    }
    return kKatakana;
}

int MultibyteType(const char* text, int len, const char* p, CodeType ct)
{
    const bool japanese = IsCodeTypeJapanese(ct) != 0;
    const bool last = len >= 0 && p - text == len - 1;
    if (!last && tlvn::IsDoubleByte(p)) {
        if (!japanese)
            return kDoubleOther;
        const unsigned c = DoubleByteAt(p);
        return IsKanaMark(c) ? KanaMarkType(text, p) : ShiftJisType(c);
    }
    if (tlvn::IsSpace(*p))
        return kSingleSpace;
    if (tlvn::IsAlnum(*p) || *p == '_')
        return kSingleWord;
    if (japanese && Within(static_cast<BYTE>(*p), 0xA1, 0xDF))
        return kHalfKatakana;
    return kSingleOther;
}

int UnicodeType(char32_t c)
{
    const std::uint32_t key = static_cast<std::uint32_t>(c) << 10 | 0x3FF;
    const auto next = std::upper_bound(std::begin(kCharTypeRanges), std::end(kCharTypeRanges), key);
    return static_cast<int>(next[-1] & 0x3FF);
}

constexpr bool IsHighSurrogate(unsigned unit)
{
    return Within(unit, 0xD800, 0xDBFF);
}

constexpr bool IsLowSurrogate(unsigned unit)
{
    return Within(unit, 0xDC00, 0xDFFF);
}

// UTF-16 at any address, by units.
class Units {
public:
    // `count` below 0: a text that ends in a zero.
    Units(const char* bytes, int count) : m_bytes(bytes), m_count(count) {}

    bool IsInside(std::ptrdiff_t i) const { return m_count < 0 ? At(i) != 0 : i < m_count; }

    // Index of the first unit of the character to which unit i belongs.
    std::ptrdiff_t Start(std::ptrdiff_t i) const
    {
        return i > 0 && IsLowSurrogate(At(i)) && IsHighSurrogate(At(i - 1)) ? i - 1 : i;
    }

    // Type of the character that starts at i.
    int Type(std::ptrdiff_t i) const
    {
        const unsigned first = At(i);
        if (IsHighSurrogate(first) && IsInside(i + 1) && IsLowSurrogate(At(i + 1)))
            return UnicodeType(0x10000 + ((first - 0xD800) << 10) + (At(i + 1) - 0xDC00));
        return UnicodeType(first);
    }

private:
    unsigned At(std::ptrdiff_t i) const
    {
        WCHAR unit;
        std::memcpy(&unit, m_bytes + 2 * i, sizeof unit);
        return unit;
    }

    const char* m_bytes;
    int m_count;
};

int Utf16Type(const char* text, int len, const char* p)
{
    const Units units(text, len < 0 ? -1 : len / 2);
    std::ptrdiff_t i = (p - text) / 2;
    if (!units.IsInside(i))
        return 0;
    i = units.Start(i);
    const int type = units.Type(i);
    if ((type & kBothKana) != kBothKana)
        return type;
    while (i > 0) {
        i = units.Start(i - 1);
        const int before = units.Type(i);
        if ((before & CHARTYPE_HIRAGANA) == 0)
            return type & ~CHARTYPE_HIRAGANA;
        if ((before & CHARTYPE_KATAKANA) == 0)
            return type & ~CHARTYPE_KATAKANA;
    }
    return type;
}

} // namespace

int GetCharType(const char* text, int len, const char* p, CodeType ct)
{
    if (text == nullptr || p == nullptr || p < text || (len >= 0 && p - text >= len))
        return 0;
    if (IsCodeTypeUnicode(ct))
        return Utf16Type(text, len, p);
    return len < 0 && *p == '\0' ? 0 : MultibyteType(text, len, p, ct);
}

bool tlvn::IsBothKanaMark(const char* p, const char* end, CodeType ct)
{
    if (end - p < 2)
        return false;
    if (IsCodeTypeUnicode(ct))
        return (Utf16Type(p, 2, p) & kBothKana) == kBothKana;
    return IsCodeTypeJapanese(ct) != 0 && IsKanaMark(DoubleByteAt(p));
}
