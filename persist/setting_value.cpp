// The typed values of CSettingData.

#include "persist/setting_data.h"

#include <algorithm>
#include <limits>
#include <string>

namespace {

using tlvn::ViewOf;
using tlvn::WStringView;

constexpr WCHAR kNumberSeparator = ',';
constexpr WCHAR kTextSeparator = '\t';
constexpr int kRectNumbers = 4;

bool IsDigit(WCHAR c)
{
    return c >= '0' && c <= '9';
}

// -1 for anything else than a hexadecimal digit.
int HexDigit(WCHAR c)
{
    if (IsDigit(c))
        return c - '0';
    const WCHAR lower = c | 0x20;
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// The decimal number at the start of the text, white space and a sign before it allowed,
// brought into the range of 64 bits.
INT64 ToInt64(WStringView text)
{
    constexpr INT64 kMost = std::numeric_limits<INT64>::max();
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r')))
        ++i;
    const bool negative = i < text.size() && text[i] == '-';
    if (i < text.size() && (text[i] == '-' || text[i] == '+'))
        ++i;
    // Kept below 0, where there is one number more.
    INT64 value = 0;
    for (; i < text.size() && IsDigit(text[i]); ++i) {
        const int digit = text[i] - '0';
        if (value < (-kMost - 1 + digit) / 10)
            return negative ? -kMost - 1 : kMost;
        value = value * 10 - digit;
    }
    if (negative)
        return value;
    return value < -kMost ? kMost : -value;
}

template <class Number>
Number ToNumber(WStringView text)
{
    constexpr INT64 kLeast = std::numeric_limits<int>::min();
    constexpr INT64 kMost = std::numeric_limits<Number>::max();
    // A negative number read as an unsigned one keeps its bits.
    return static_cast<Number>(std::clamp(ToInt64(text), kLeast, kMost));
}

template <>
INT64 ToNumber<INT64>(WStringView text)
{
    return ToInt64(text);
}

// Calls `take` with each part of the text between separators; not at all for an empty text.
template <class Take>
void Split(WStringView text, WCHAR separator, const Take& take)
{
    if (text.empty())
        return;
    std::size_t end;
    while ((end = text.find(separator)) != WStringView::npos) {
        take(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    take(text);
}

template <class Array>
void ToNumbers(WStringView text, Array& out)
{
    using Number = std::decay_t<decltype(out[0])>;
    out.RemoveAll();
    Split(text, kNumberSeparator, [&](WStringView part) { out.Add(ToNumber<Number>(part)); });
}

template <class Array>
CStringW FromNumbers(const Array& numbers, const WCHAR* format)
{
    CStringW text;
    for (int i = 0; i < numbers.GetSize(); ++i) {
        if (i > 0)
            text += kNumberSeparator;
        text.AppendFormat(format, numbers[i]);
    }
    return text;
}

template <class Number>
CStringW FromNumber(const WCHAR* format, Number number)
{
    CStringW text;
    text.Format(format, number);
    return text;
}

} // namespace

void CSettingData::SetValue(const char* key, const char* name, const CStringW& value)
{
    Store(key, name, ViewOf(value));
}

void CSettingData::SetValue(const char* key, const char* name, const WCHAR* value)
{
    Store(key, name, ViewOf(CStringW(value)));
}

void CSettingData::SetValue(const char* key, const char* name, const CString& value)
{
    Store(key, name, ViewOf(CStringW(value)));
}

void CSettingData::SetValue(const char* key, const char* name, const char* value)
{
    Store(key, name, ViewOf(CStringW(value)));
}

void CSettingData::SetValue(const char* key, const char* name, int value)
{
    Store(key, name, ViewOf(FromNumber(TW("%d"), value)));
}

void CSettingData::SetValue(const char* key, const char* name, DWORD value)
{
    Store(key, name, ViewOf(FromNumber(TW("%u"), value)));
}

void CSettingData::SetValue(const char* key, const char* name, INT64 value)
{
    Store(key, name, ViewOf(FromNumber(TW("%I64d"), value)));
}

void CSettingData::SetValue(const char* key, const char* name, const CRect& value)
{
    CStringW text;
    text.Format(TW("%d,%d,%d,%d"), value.left, value.top, value.right, value.bottom);
    Store(key, name, ViewOf(text));
}

void CSettingData::SetValue(const char* key, const char* name, const CUIntArray& value)
{
    Store(key, name, ViewOf(FromNumbers(value, TW("%u"))));
}

void CSettingData::SetValue(const char* key, const char* name, const CArray<int, int>& value)
{
    Store(key, name, ViewOf(FromNumbers(value, TW("%d"))));
}

void CSettingData::SetValue(const char* key, const char* name, const CStringArray& value)
{
    CStringW text;
    for (int i = 0; i < value.GetSize(); ++i) {
        if (i > 0)
            text += kTextSeparator;
        text += CStringW(value[i]);
    }
    Store(key, name, ViewOf(text));
}

void CSettingData::SetHexValue(const char* key, const char* name, DWORD value)
{
    Store(key, name, ViewOf(FromNumber(TW("0x%08X"), value)));
}

int CSettingData::GetValue(const char* key, const char* name, CStringW& out) const
{
    const CSettingDataPair* const pair = FindPair(key, name);
    if (pair == nullptr)
        return 0;
    const tlvn::WStringView value = pair->GetValueView();
    out.SetString(value.data(), static_cast<int>(value.size()));
    return 1;
}

int CSettingData::GetValue(const char* key, const char* name, CString& out) const
{
    const CSettingDataPair* const pair = FindPair(key, name);
    if (pair == nullptr)
        return 0;
    out = CString(pair->GetValue());
    return 1;
}

int CSettingData::GetValue(const char* key, const char* name, int& out) const
{
    const CSettingDataPair* const pair = FindPair(key, name);
    if (pair == nullptr)
        return 0;
    out = ToNumber<int>(pair->GetValueView());
    return 1;
}

int CSettingData::GetValue(const char* key, const char* name, DWORD& out) const
{
    const CSettingDataPair* const pair = FindPair(key, name);
    if (pair == nullptr)
        return 0;
    out = ToNumber<DWORD>(pair->GetValueView());
    return 1;
}

int CSettingData::GetValue(const char* key, const char* name, INT64& out) const
{
    const CSettingDataPair* const pair = FindPair(key, name);
    if (pair == nullptr)
        return 0;
    out = ToNumber<INT64>(pair->GetValueView());
    return 1;
}

int CSettingData::GetValue(const char* key, const char* name, CRect& out) const
{
    const CSettingDataPair* const pair = FindPair(key, name);
    if (pair == nullptr)
        return 0;
    // Numbers that are missing are 0, those beyond the fourth count for nothing.
    int numbers[kRectNumbers] = {};
    int count = 0;
    Split(pair->GetValueView(), kNumberSeparator, [&](WStringView part) {
        if (count < kRectNumbers)
            numbers[count++] = ToNumber<int>(part);
    });
    out = CRect(numbers[0], numbers[1], numbers[2], numbers[3]);
    return 1;
}

int CSettingData::GetValue(const char* key, const char* name, CUIntArray& out) const
{
    const CSettingDataPair* const pair = FindPair(key, name);
    if (pair == nullptr)
        return 0;
    ToNumbers(pair->GetValueView(), out);
    return 1;
}

int CSettingData::GetValue(const char* key, const char* name, CArray<int, int>& out) const
{
    const CSettingDataPair* const pair = FindPair(key, name);
    if (pair == nullptr)
        return 0;
    ToNumbers(pair->GetValueView(), out);
    return 1;
}

int CSettingData::GetValue(const char* key, const char* name, CStringArray& out) const
{
    const CSettingDataPair* const pair = FindPair(key, name);
    if (pair == nullptr)
        return 0;
    out.RemoveAll();
    Split(pair->GetValueView(), kTextSeparator,
          [&](WStringView part) { out.Add(CString(tlvn::ToString(part))); });
    return 1;
}

int CSettingData::GetHexValue(const char* key, const char* name, DWORD& out) const
{
    const CSettingDataPair* const pair = FindPair(key, name);
    if (pair == nullptr)
        return 0;
    WStringView text = pair->GetValueView();
    if (text.size() >= 2 && text[0] == '0' && (text[1] | 0x20) == 'x')
        text.remove_prefix(2);
    std::uint64_t value = 0;
    for (const WCHAR c : text) {
        const int digit = HexDigit(c);
        if (digit < 0)
            break;
        constexpr std::uint64_t kMost = std::numeric_limits<DWORD>::max();
        value = std::min(value * 16 + static_cast<unsigned>(digit), kMost);
    }
    out = static_cast<DWORD>(value);
    return 1;
}

int CSettingData::GetBoolValue(const char* key, const char* name, int defaultValue) const
{
    int value;
    return GetValue(key, name, value) != 0 ? value != 0 : defaultValue;
}

int CSettingData::GetIntValue(const char* key, const char* name, int minimum, int maximum,
                              int defaultValue) const
{
    int value;
    if (GetValue(key, name, value) == 0)
        return defaultValue;
    // The minimum counts when the range is empty.
    return std::max(minimum, std::min(value, maximum));
}
