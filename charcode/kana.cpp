#include "charcode/kana.h"

#include "platform/multibyte.h"
#include "platform/nls.h"

#include <algorithm>
#include <array>
#include <climits>
#include <map>
#include <mutex>
#include <vector>

using namespace tlvn;

namespace {

// Half-width katakana, U+FF61-FF9F or A1-DF in Shift_JIS.
constexpr WCHAR kFirstHalf = 0xFF61;
constexpr BYTE kFirstHalfByte = 0xA1;
constexpr unsigned kHalfCount = 63;
constexpr unsigned kVoicedMark = 61; // places of the sound marks
constexpr unsigned kSemiVoicedMark = 62;

// A full-width form in both codes. In both, the voiced form of a kana follows it and the
// semi-voiced one follows that, but for VU.
struct FullForm {
    WCHAR unit;
    WORD sjis;
    enum { Plain, Voiced, SemiVoiced } most = Plain; // SemiVoiced: has the voiced form, too
};

constexpr FullForm kFullForms[kHalfCount] = {
    {0x3002, 0x8142},
    {0x300C, 0x8175},
    {0x300D, 0x8176},
    {0x3001, 0x8141},
    {0x30FB, 0x8145},
    {0x30F2, 0x8392},
    {0x30A1, 0x8340},
    {0x30A3, 0x8342},
    {0x30A5, 0x8344},
    {0x30A7, 0x8346},
    {0x30A9, 0x8348},
    {0x30E3, 0x8383},
    {0x30E5, 0x8385},
    {0x30E7, 0x8387},
    {0x30C3, 0x8362},
    {0x30FC, 0x815B},
    {0x30A2, 0x8341},
    {0x30A4, 0x8343},
    {0x30A6, 0x8345},
    {0x30A8, 0x8347},
    {0x30AA, 0x8349},
    {0x30AB, 0x834A, FullForm::Voiced},
    {0x30AD, 0x834C, FullForm::Voiced},
    {0x30AF, 0x834E, FullForm::Voiced},
    {0x30B1, 0x8350, FullForm::Voiced},
    {0x30B3, 0x8352, FullForm::Voiced},
    {0x30B5, 0x8354, FullForm::Voiced},
    {0x30B7, 0x8356, FullForm::Voiced},
    {0x30B9, 0x8358, FullForm::Voiced},
    {0x30BB, 0x835A, FullForm::Voiced},
    {0x30BD, 0x835C, FullForm::Voiced},
    {0x30BF, 0x835E, FullForm::Voiced},
    {0x30C1, 0x8360, FullForm::Voiced},
    {0x30C4, 0x8363, FullForm::Voiced},
    {0x30C6, 0x8365, FullForm::Voiced},
    {0x30C8, 0x8367, FullForm::Voiced},
    {0x30CA, 0x8369},
    {0x30CB, 0x836A},
    {0x30CC, 0x836B},
    {0x30CD, 0x836C},
    {0x30CE, 0x836D},
    {0x30CF, 0x836E, FullForm::SemiVoiced},
    {0x30D2, 0x8371, FullForm::SemiVoiced},
    {0x30D5, 0x8374, FullForm::SemiVoiced},
    {0x30D8, 0x8377, FullForm::SemiVoiced},
    {0x30DB, 0x837A, FullForm::SemiVoiced},
    {0x30DE, 0x837D},
    {0x30DF, 0x837E},
    {0x30E0, 0x8380},
    {0x30E1, 0x8381},
    {0x30E2, 0x8382},
    {0x30E4, 0x8384},
    {0x30E6, 0x8386},
    {0x30E8, 0x8388},
    {0x30E9, 0x8389},
    {0x30EA, 0x838A},
    {0x30EB, 0x838B},
    {0x30EC, 0x838C},
    {0x30ED, 0x838D},
    {0x30EF, 0x838F},
    {0x30F3, 0x8393},
    {0x309B, 0x814A},
    {0x309C, 0x814B},
};
constexpr unsigned kPlaceOfU = 0x12;
constexpr FullForm kFullVu = {0x30F4, 0x8394};

// The full-width form of the kana at place `kana` with the sound mark at place `mark`; its unit
// is 0 when there is none.
FullForm WithMark(unsigned kana, unsigned mark)
{
    const FullForm& form = kFullForms[kana];
    if (mark == kVoicedMark && kana == kPlaceOfU)
        return kFullVu;
    const int step = mark == kVoicedMark && form.most != FullForm::Plain            ? 1
                     : mark == kSemiVoicedMark && form.most == FullForm::SemiVoiced ? 2
                                                                                    : 0;
    if (step == 0)
        return {};
    return {static_cast<WCHAR>(form.unit + step), static_cast<WORD>(form.sjis + step)};
}

// The form of the kana at the start of [p, end), of which `place` tells the place in the table
// of half-width katakana or a number beyond it; `used` receives the characters it stands for.
template <typename Char, typename PlaceOf>
FullForm FormAt(const Char* p, const Char* end, PlaceOf place, int& used)
{
    if (end - p >= 2) {
        const FullForm form = WithMark(place(p[0]), place(p[1]));
        if (form.unit != 0) {
            used = 2;
            return form;
        }
    }
    used = 1;
    return kFullForms[place(p[0])];
}

unsigned PlaceOfByte(char c)
{
    return static_cast<BYTE>(c) - unsigned{kFirstHalfByte};
}
unsigned PlaceOfUnit(WCHAR c)
{
    return c - unsigned{kFirstHalf};
}

struct Pair {
    WCHAR from, to;
};

constexpr Pair kHalfSmallKana[] = {
    {0xFF67, 0xFF71}, {0xFF68, 0xFF72}, {0xFF69, 0xFF73}, {0xFF6A, 0xFF74}, {0xFF6B, 0xFF75},
    {0xFF6C, 0xFF94}, {0xFF6D, 0xFF95}, {0xFF6E, 0xFF96}, {0xFF6F, 0xFF82},
};
constexpr WCHAR kSmallWa = 0x30EE;
constexpr WCHAR kSmallKa = 0x30F5;
constexpr WCHAR kSmallKe = 0x30F6;
constexpr WCHAR kHiraganaOfKatakana = 0x60;

// Small katakana, and the hiragana at the same distance, precede their normal forms.
constexpr bool IsSmallKatakana(unsigned c)
{
    return (c >= 0x30A1 && c <= 0x30A9 && c % 2 == 1) || c == 0x30C3 ||
           (c >= 0x30E3 && c <= 0x30E7 && c % 2 == 1) || c == kSmallWa;
}

constexpr WCHAR UpperLetter(WCHAR c)
{
    const bool lower = (c >= 'a' && c <= 'z') || (c >= 0xFF41 && c <= 0xFF5A);
    return lower ? static_cast<WCHAR>(c - 0x20) : c;
}

constexpr WCHAR NormalKana(WCHAR c)
{
    if (IsSmallKatakana(c) || IsSmallKatakana(c + unsigned{kHiraganaOfKatakana}))
        return static_cast<WCHAR>(c + 1);
    if (c == kSmallKa)
        return 0x30AB;
    if (c == kSmallKe)
        return 0x30B1;
    for (const Pair& pair : kHalfSmallKana) {
        if (pair.from == c)
            return pair.to;
    }
    return c;
}

WCHAR Fold(WCHAR c, bool letters, bool smallKana)
{
    if (letters) {
        const WCHAR upper = UpperLetter(c);
        if (upper != c)
            return upper;
    }
    return smallKana ? NormalKana(c) : c;
}

// What folds in a code page, for one setting of the two flags.
class NarrowFolds {
public:
    NarrowFolds(UINT codePage, bool letters, bool smallKana)
    {
        for (unsigned b = 0; b < m_single.size(); ++b)
            m_single[b] = static_cast<BYTE>(b);
        for (unsigned unit = 0; unit < 0x10000; ++unit) {
            const WCHAR from = static_cast<WCHAR>(unit);
            const WCHAR to = Fold(from, letters, smallKana);
            if (to != from)
                Add(codePage, from, to);
        }
        std::sort(m_double.begin(), m_double.end());
    }

    BYTE Single(char c) const { return m_single[static_cast<BYTE>(c)]; }

    // A code of two bytes, or the same when it does not fold.
    unsigned Double(unsigned code) const
    {
        const auto found = std::lower_bound(m_double.begin(), m_double.end(), DoubleFold{code, 0});
        return found != m_double.end() && found->from == code ? found->to : code;
    }

private:
    struct DoubleFold {
        unsigned from, to;
        auto operator<=>(const DoubleFold&) const = default;
    };

    static unsigned CodeOf(const std::string& bytes)
    {
        return static_cast<unsigned>(static_cast<BYTE>(bytes[0]) << 8 |
                                     static_cast<BYTE>(bytes[1]));
    }

    void Add(UINT codePage, WCHAR from, WCHAR to)
    {
        std::string old, fold;
        if (ConvertFromUtf16(codePage, WStringView(&from, 1), old) != kConverted ||
            ConvertFromUtf16(codePage, WStringView(&to, 1), fold) != kConverted ||
            old.size() != fold.size())
            return;
        if (old.size() == 1)
            m_single[static_cast<BYTE>(old[0])] = static_cast<BYTE>(fold[0]);
        else if (old.size() == 2)
            m_double.push_back({CodeOf(old), CodeOf(fold)});
    }

    std::array<BYTE, 256> m_single;
    std::vector<DoubleFold> m_double; // sorted
};

// Made once for each code page and setting, and kept.
const NarrowFolds& FoldsOf(UINT codePage, bool letters, bool smallKana)
{
    static std::mutex mutex;
    static std::map<std::pair<UINT, int>, NarrowFolds> all;
    const std::lock_guard lock(mutex);
    const std::pair key(codePage, (letters ? 1 : 0) + (smallKana ? 2 : 0));
    return all.try_emplace(key, codePage, letters, smallKana).first->second;
}

} // namespace

int KatakanaHanToZen(CStringA& text)
{
    const char* p = text;
    const char* const end = p + text.GetLength();
    int replaced = 0;
    std::string out;
    GuardMemory([&] {
        const char* copied = p;
        while (p < end) {
            const int length = CharLength(p, end);
            if (length == 2 || PlaceOfByte(*p) >= kHalfCount) {
                p += length;
                continue;
            }
            out.append(copied, p);
            int used = 0;
            const FullForm form = FormAt(p, end, PlaceOfByte, used);
            out += static_cast<char>(form.sjis >> 8);
            out += static_cast<char>(form.sjis);
            p += used;
            copied = p;
            replaced = 1;
        }
        if (replaced != 0)
            out.append(copied, end);
    });
    if (replaced == 0)
        return 0;
    if (out.size() > INT_MAX)
        AfxThrowMemoryException();
    text.SetString(out.data(), static_cast<int>(out.size()));
    return 1;
}

int KatakanaHanToZen(CStringW& text)
{
    int length = text.GetLength();
    WCHAR* const start = text.GetBuffer();
    const WCHAR* p = start;
    const WCHAR* const end = p + length;
    WCHAR* o = start;
    int replaced = 0;
    while (p < end) {
        if (PlaceOfUnit(*p) >= kHalfCount) {
            *o++ = *p++;
            continue;
        }
        int used = 0;
        const FullForm form = FormAt(p, end, PlaceOfUnit, used);
        *o++ = form.unit;
        p += used;
        replaced = 1;
    }
    length = static_cast<int>(o - start);
    text.ReleaseBuffer(length);
    return replaced;
}

int KatakanaHanToZen(CBuffer& text)
{
    if (text.IsEmpty())
        return 0;
    CStringA narrow(static_cast<const char*>(text));
    const int replaced = KatakanaHanToZen(narrow);
    text = narrow;
    return replaced;
}

int TextToUpperW(WCHAR* text, int count, int letters, int smallKana)
{
    if (text == nullptr || (letters == 0 && smallKana == 0))
        return 0;
    int changed = 0;
    for (int i = 0; i < count; ++i) {
        const WCHAR folded = Fold(text[i], letters != 0, smallKana != 0);
        if (folded != text[i]) {
            text[i] = folded;
            changed = 1;
        }
    }
    return changed;
}

int TextToUpper(int codePage, char* text, int len, int letters, int smallKana)
{
    if (text == nullptr || len < 1 || (letters == 0 && smallKana == 0))
        return 0;
    const NarrowFolds& folds = GuardMemory([&]() -> const NarrowFolds& {
        return FoldsOf(static_cast<UINT>(codePage), letters != 0, smallKana != 0);
    });
    int changed = 0;
    char* p = text;
    char* const end = text + len;
    while (p < end) {
        if (IsDoubleByte(p, end)) {
            const unsigned code =
                static_cast<unsigned>(static_cast<BYTE>(p[0]) << 8 | static_cast<BYTE>(p[1]));
            const unsigned folded = folds.Double(code);
            if (folded != code) {
                p[0] = static_cast<char>(folded >> 8);
                p[1] = static_cast<char>(folded);
                changed = 1;
            }
            p += 2;
            continue;
        }
        const char folded = static_cast<char>(folds.Single(*p));
        if (folded != *p) {
            *p = folded;
            changed = 1;
        }
        ++p;
    }
    return changed;
}

int GetMultibyteLength(const char* text, int len, CodeType t)
{
    if (text == nullptr || len < 1)
        return 0;
    if (IsDoubleByte(text, text + len))
        return 2;
    return t == CT_SJIS && PlaceOfByte(text[0]) < kHalfCount ? 1 : 0;
}
