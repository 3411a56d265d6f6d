#include "charcode/convert.h"

#include "charcode/charset.h"
#include "charcode/detect.h"
#include "charcode/japanese.h"
#include "platform/nls.h"

#include <climits>
#include <cstdint>
#include <cstring>

using namespace tlvn;

namespace {

constexpr UINT kShiftJisPage = 932;
constexpr UINT kWesternPage = 1252;
constexpr UINT kIso2022JpPage = 50220;
constexpr UINT kEucJpPage = 51932;
constexpr int kUnitSize = static_cast<int>(sizeof(WCHAR));

// UTF-16 text that is given as bytes at any address.
class Utf16Text {
public:
    Utf16Text(const char* text, int len) : m_count(len / kUnitSize)
    {
        const auto size = static_cast<std::size_t>(m_count) * sizeof(WCHAR);
        if (reinterpret_cast<std::uintptr_t>(text) % alignof(WCHAR) != 0) {
            m_copy.Set(text, static_cast<int>(size));
            text = m_copy;
        }
        m_units = reinterpret_cast<const WCHAR*>(text);
    }
    const WCHAR* Units() const { return m_units; }
    int Count() const { return m_count; }

private:
    CBuffer m_copy;
    const WCHAR* m_units;
    int m_count;
};

int Capacity(INT64 size)
{
    // Leaves room for the rounding of the buffer's capacity.
    if (size > INT_MAX - 64)
        AfxThrowMemoryException();
    return static_cast<int>(size);
}

// Narrow text of a page to UTF-16 bytes.
int Widen(UINT codePage, const char* text, int len, CBuffer& out)
{
    out.Empty();
    const int capacity = MaxUtf16Length(codePage, len);
    char* const bytes = out.GetBuffer(Capacity(INT64{capacity} * kUnitSize));
    int written = 0;
    const int result = GuardMemory([&] {
        return ConvertToUtf16(codePage, text, len, reinterpret_cast<WCHAR*>(bytes), capacity,
                              written);
    });
    out.ReleaseBuffer(written * kUnitSize);
    return result;
}

int NarrowTo(UINT codePage, const Utf16Text& text, CBuffer& out, char replacement)
{
    out.Empty();
    const int capacity = Capacity(MaxNarrowLength(codePage, text.Count()));
    char* const bytes = out.GetBuffer(capacity);
    int written = 0;
    const int result = GuardMemory([&] {
        return ConvertFromUtf16(codePage, text.Units(), text.Count(), bytes, capacity, written,
                                replacement);
    });
    out.ReleaseBuffer(written);
    return result;
}

// UTF-16 bytes to narrow text of a page.
int Narrow(UINT codePage, const char* text, int len, CBuffer& out, int dropUnmappable)
{
    const Utf16Text units(text, len);
    if (units.Count() == 0) {
        out.Empty();
        return kConverted;
    }
    const char replacement = dropUnmappable != 0 ? '\0' : '?';
    const int result = NarrowTo(codePage, units, out, replacement);
    if (result == kConvertedWithLoss && out.IsEmpty())
        NarrowTo(kWesternPage, units, out, replacement);
    return result;
}

bool IsEmptyText(const char* text, int len)
{
    return text == nullptr || len < 1;
}

int Copy(const char* text, int len, CBuffer& out)
{
    out.Set(text, len);
    return kConverted;
}

bool IsPivotedPage(UINT codePage)
{
    return codePage == kIso2022JpPage || codePage == kEucJpPage;
}

// The code page in which text of the page meets UTF-16.
UINT ShiftJisFor(UINT codePage)
{
    return IsPivotedPage(codePage) ? kShiftJisPage : codePage;
}

// Between a pivoted page and Shift_JIS.
void ToShiftJis(UINT codePage, const char* text, int len, CBuffer& out)
{
    if (codePage == kIso2022JpPage)
        ConvertJisToSJis(text, len, out);
    else
        ConvertEucToSJis(text, len, out);
}
void FromShiftJis(UINT codePage, const char* text, int len, CBuffer& out)
{
    if (codePage == kIso2022JpPage)
        ConvertSJisToJis(text, len, out);
    else
        ConvertSJisToEuc(text, len, out);
}

// Makes the text Shift_JIS, held by `scratch`, when it is of a pivoted page. The conversion
// itself passes anything on: the result tells whether the text was valid.
int Pivot(UINT codePage, const char*& text, int& len, CBuffer& scratch)
{
    if (!IsPivotedPage(codePage))
        return kConverted;
    const bool valid = codePage == kIso2022JpPage ? IsValidJis(text, len) : IsValidEuc(text, len);
    ToShiftJis(codePage, text, len, scratch);
    text = scratch;
    len = scratch.GetLength();
    return valid ? kConverted : kConvertedWithLoss;
}

// Makes the Shift_JIS text in `out` one of the page when that is pivoted.
void Unpivot(UINT codePage, CBuffer& out)
{
    if (!IsPivotedPage(codePage))
        return;
    CBuffer shiftJis;
    shiftJis.MoveFrom(out);
    FromShiftJis(codePage, shiftJis, shiftJis.GetLength(), out);
}

// Between two pages of Japanese text, without UTF-16.
void ConvertJapanese(UINT fromCodePage, const char* text, int len, UINT toCodePage, CBuffer& out)
{
    if (!IsPivotedPage(toCodePage)) {
        ToShiftJis(fromCodePage, text, len, out);
        return;
    }
    if (!IsPivotedPage(fromCodePage)) {
        FromShiftJis(toCodePage, text, len, out);
        return;
    }
    CBuffer shiftJis;
    ToShiftJis(fromCodePage, text, len, shiftJis);
    FromShiftJis(toCodePage, shiftJis, shiftJis.GetLength(), out);
}

// The page by which text of the type is converted; JIS and EUC-JP have their own here, too.
UINT HubPage(CodeType t)
{
    switch (t) {
    case CT_JIS:
        return kIso2022JpPage;
    case CT_EUC:
        return kEucJpPage;
    default:
        return CharSetCode2CodePage(t);
    }
}

int ToString(int result, const CBuffer& bytes, CStringA& out)
{
    out.SetString(bytes, bytes.GetLength());
    return result;
}

} // namespace

int ConvertToOtherCodePage2(UINT fromCodePage, const char* text, int len, UINT toCodePage,
                            CBuffer& out, int dropUnmappable)
{
    out.Empty();
    if (IsEmptyText(text, len))
        return kConverted;
    if (fromCodePage == toCodePage)
        return Copy(text, len, out);

    const UINT source = ShiftJisFor(fromCodePage);
    const UINT target = ShiftJisFor(toCodePage);
    if (source == target) {
        ConvertJapanese(fromCodePage, text, len, toCodePage, out);
        return kConverted;
    }
    CBuffer shiftJis;
    const int pivoted = Pivot(fromCodePage, text, len, shiftJis);
    CBuffer utf16;
    const int widened = Widen(source, text, len, utf16);
    if (widened < 0)
        return widened;
    const int narrowed = Narrow(target, utf16, utf16.GetLength(), out, dropUnmappable);
    if (narrowed < 0)
        return narrowed;
    Unpivot(toCodePage, out);
    return pivoted | widened | narrowed;
}

int ConvertToOtherCodeType2(CodeType from, const char* text, int len, CodeType to, CBuffer& out,
                            int dropUnmappable)
{
    out.Empty();
    if (IsEmptyText(text, len))
        return kConverted;
    if (from == to)
        return Copy(text, len, out);

    if (from == CT_UNICODE) {
        const UINT target = HubPage(to);
        const int result = Narrow(ShiftJisFor(target), text, len, out, dropUnmappable);
        Unpivot(target, out);
        return result;
    }
    if (to == CT_UNICODE) {
        const UINT source = HubPage(from);
        CBuffer shiftJis;
        const int pivoted = Pivot(source, text, len, shiftJis);
        return pivoted | Widen(ShiftJisFor(source), text, len, out);
    }
    return ConvertToOtherCodePage2(HubPage(from), text, len, HubPage(to), out, dropUnmappable);
}

void ConvertToWcs(CodeType from, const char* text, int len, CBuffer& out)
{
    out.Empty();
    if (IsEmptyText(text, len))
        return;
    const UINT codePage = CharSetCode2CodePage(from);
    if (codePage == 0)
        Copy(text, len, out);
    else
        Widen(codePage, text, len, out);
}

CStringW ConvertToWcs(CodeType from, const char* text, int len)
{
    CBuffer utf16;
    ConvertToWcs(from, text, len, utf16);
    return CStringW(reinterpret_cast<const WCHAR*>(utf16.GetBuffer()),
                    utf16.GetLength() / kUnitSize);
}

int ConvertToEditable(CodeType t, const char* text, int len, CBuffer& out)
{
    out.Empty();
    if (t == CT_UNKNOWN)
        return 0;
    return ConvertToOtherCodeType2(t, text, len, CodeTypeSave2Edit(t), out, 0) >= 0;
}

int ConvertToMbsIfWcs(CodeType& t, const char* text, int len, CBuffer& out, int dropUnmappable)
{
    out.Empty();
    if (!IsCodeTypeUnicode(t)) {
        out.Add(text, len);
        return 1;
    }
    if (IsEmptyText(text, len)) {
        t = CT_SJIS;
        return 1;
    }
    {
        const Utf16Text units(text, len);
        t = DetectUnicodeCodeType(units.Units(), units.Count(), CT_SJIS);
    }
    return Narrow(CharSetCode2CodePage(t), text, len, out, dropUnmappable) >= 0;
}

int ConvertToMbsIfWcs(CodeType& t, const char* text, int len, CStringA& out, int dropUnmappable)
{
    CBuffer bytes;
    return ToString(ConvertToMbsIfWcs(t, text, len, bytes, dropUnmappable), bytes, out);
}

int ConvertToEditableMbs(CodeType& t, const char* text, int len, CBuffer& out, int dropUnmappable)
{
    out.Empty();
    CBuffer editable;
    if (!ConvertToEditable(t, text, len, editable))
        return 0;
    return ConvertToMbsIfWcs(t, editable, editable.GetLength(), out, dropUnmappable);
}

int ConvertToEditableMbs(CodeType& t, const char* text, int len, CStringA& out, int dropUnmappable)
{
    CBuffer bytes;
    return ToString(ConvertToEditableMbs(t, text, len, bytes, dropUnmappable), bytes, out);
}

int ConvertSjisToCTEditable(const CBuffer& sjis, CodeType t, CBuffer& out, int dropUnmappable)
{
    const int len = sjis.GetLength();
    if (IsCodeTypeUnicode(t)) {
        ConvertToWcs(CT_SJIS, sjis, len, out);
        return 1;
    }
    if (CharSetCode2CodePage(t) == kShiftJisPage) {
        out = sjis;
        return 1;
    }
    return ConvertToOtherCodeType2(CT_SJIS, sjis, len, CodeTypeSave2Edit(t), out, dropUnmappable) >=
           0;
}

int ConvertUnicodeToCTEditable(const CBuffer& utf16, CodeType t, CBuffer& out, int dropUnmappable)
{
    if (IsCodeTypeUnicode(t)) {
        out = utf16;
        return 1;
    }
    return ConvertToOtherCodeType2(CT_UNICODE, utf16, utf16.GetLength(), CodeTypeSave2Edit(t), out,
                                   dropUnmappable) >= 0;
}
