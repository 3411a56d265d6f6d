// Character properties, collation and date texts by the system.

#include "platform/nls.h"

#include "platform/clock.h"

#include <array>
#include <memory>

namespace tlvn {

namespace {

constexpr int kUnits = 0x10000;

using UnitMap = std::array<WCHAR, kUnits>;

// Every unit in order.
std::unique_ptr<UnitMap> AllUnits()
{
    auto units = std::make_unique<UnitMap>();
    for (unsigned c = 0; c < kUnits; c++)
        (*units)[c] = static_cast<WCHAR>(c);
    return units;
}

// What the system makes of each unit, asked once: a call for each character is slow.
std::unique_ptr<UnitMap> MapUnits(DWORD flags)
{
    const auto units = AllUnits();
    auto mapped = AllUnits();
    LCMapStringEx(LOCALE_NAME_INVARIANT, flags, units->data(), kUnits, mapped->data(), kUnits,
                  nullptr, nullptr, 0);
    return mapped;
}

std::unique_ptr<UnitMap> UnitTypes()
{
    static_assert(sizeof(WCHAR) == sizeof(WORD));
    const auto units = AllUnits();
    auto types = std::make_unique<UnitMap>();
    GetStringTypeW(CT_CTYPE1, units->data(), kUnits, reinterpret_cast<WORD*>(types->data()));
    return types;
}

bool LocalFields(INT64 time, SYSTEMTIME& fields)
{
    std::tm local;
    if (!ToLocalTime(time, local))
        return false;
    fields = {};
    fields.wYear = static_cast<WORD>(local.tm_year + 1900);
    fields.wMonth = static_cast<WORD>(local.tm_mon + 1);
    fields.wDay = static_cast<WORD>(local.tm_mday);
    fields.wDayOfWeek = static_cast<WORD>(local.tm_wday);
    fields.wHour = static_cast<WORD>(local.tm_hour);
    fields.wMinute = static_cast<WORD>(local.tm_min);
    fields.wSecond = static_cast<WORD>(local.tm_sec);
    return true;
}

// `get` is GetDateFormatW or GetTimeFormatW.
template <class Get>
bool FormatFields(INT64 time, const WCHAR* format, WString& out, Get get)
{
    SYSTEMTIME fields;
    if (!LocalFields(time, fields))
        return false;
    const int size = get(LOCALE_USER_DEFAULT, 0, &fields, format, nullptr, 0);
    if (size <= 0)
        return false;
    WString text(static_cast<std::size_t>(size), 0);
    if (get(LOCALE_USER_DEFAULT, 0, &fields, format, text.data(), size) <= 0)
        return false;
    text.pop_back(); // the terminator
    out = std::move(text);
    return true;
}

} // namespace

bool IsDefinedCharacter(WCHAR c)
{
    static const auto types = UnitTypes();
    return ((*types)[c] & C1_DEFINED) != 0;
}

WCHAR ToLowerW(WCHAR c)
{
    if (c < 0x80)
        return c >= TW('A') && c <= TW('Z') ? static_cast<WCHAR>(c + 0x20) : c;
    static const auto lower = MapUnits(LCMAP_LOWERCASE);
    return (*lower)[c];
}

WCHAR ToUpperW(WCHAR c)
{
    if (c < 0x80)
        return c >= TW('a') && c <= TW('z') ? static_cast<WCHAR>(c - 0x20) : c;
    static const auto upper = MapUnits(LCMAP_UPPERCASE);
    return (*upper)[c];
}

int CollateTexts(const char* a, const char* b)
{
    const WString wideA = WidenText(a);
    const WString wideB = WidenText(b);
    const int result =
        CompareStringW(LOCALE_USER_DEFAULT, 0, wideA.data(), static_cast<int>(wideA.size()),
                       wideB.data(), static_cast<int>(wideB.size()));
    return result == 0 ? wideA.compare(wideB) : result - CSTR_EQUAL;
}

void MakeCollationKey(WStringView text, std::string& key)
{
    key.clear();
    if (text.empty())
        return;
    const int length = static_cast<int>(text.size());
    const auto make = [&](WCHAR* out, int size) {
        return LCMapStringEx(LOCALE_NAME_USER_DEFAULT, LCMAP_SORTKEY, text.data(), length, out,
                             size, nullptr, nullptr, 0);
    };
    // A sort key is bytes, although it is handed over as units.
    const int size = make(nullptr, 0);
    if (size <= 0)
        return;
    key.resize(static_cast<std::size_t>(size));
    key.resize(static_cast<std::size_t>(make(reinterpret_cast<WCHAR*>(key.data()), size)));
}

bool FormatLocalDate(INT64 time, const WCHAR* format, WString& out)
{
    return FormatFields(time, format, out, GetDateFormatW);
}

bool FormatLocalTime(INT64 time, const WCHAR* format, WString& out)
{
    return FormatFields(time, format, out, GetTimeFormatW);
}

} // namespace tlvn
