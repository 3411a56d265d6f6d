// Character properties, collation and date texts by ICU.

#include "platform/nls.h"

#include "platform/clock.h"

#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/udat.h>
#include <unicode/uloc.h>

#include <memory>

namespace tlvn {

namespace {

struct CloseDateFormat {
    void operator()(UDateFormat* format) const { udat_close(format); }
};
using DateFormat = std::unique_ptr<UDateFormat, CloseDateFormat>;

// The collation order of the user's locale, for the life of the process; null when ICU has no
// data for it.
const UCollator* UserCollator()
{
    static const UCollator* const collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        // The C locale orders by code; the order of no particular language stands in.
        const char* const locale = uloc_getDefault();
        const bool plain = std::string_view(locale) == "en_US_POSIX";
        UCollator* opened = ucol_open(plain ? "" : locale, &status);
        return U_SUCCESS(status) ? opened : nullptr;
    }();
    return collator;
}

WString Repeated(WCHAR letter, std::size_t count)
{
    return WString(count, letter);
}

// `text` as the plain text of an ICU pattern.
WString Quoted(WStringView text)
{
    WString result(1, TW('\''));
    for (const WCHAR c : text) {
        if (c == TW('\''))
            result += c;
        result += c;
    }
    return result + TW('\'');
}

// ICU's letters for a run of one letter in the Windows notation of dates, or of times.
WString TranslateDateRun(WCHAR letter, std::size_t count, const std::tm& local)
{
    switch (letter) {
    case TW('d'):
        return count <= 2 ? Repeated(TW('d'), count) : Repeated(TW('E'), count == 3 ? 3 : 4);
    case TW('M'):
        return Repeated(TW('M'), count > 4 ? 4 : count);
    case TW('y'):
        if (count == 1) {
            const int year = local.tm_year % 100; // ICU has no form without the leading zero
            WString digits;
            if (year >= 10)
                digits += static_cast<WCHAR>(TW('0') + year / 10);
            return digits + static_cast<WCHAR>(TW('0') + year % 10);
        }
        return Repeated(TW('y'), count == 2 ? 2 : 4);
    case TW('g'):
        return TW("G");
    default:
        return Quoted(Repeated(letter, count));
    }
}

WString TranslateTimeRun(WCHAR letter, std::size_t count, const std::tm&)
{
    switch (letter) {
    case TW('h'):
    case TW('H'):
    case TW('m'):
    case TW('s'):
        return Repeated(letter, count > 2 ? 2 : count);
    case TW('t'):
        return count == 1 ? TW("aaaaa") : TW("a");
    default:
        return Quoted(Repeated(letter, count));
    }
}

// Reads a text between apostrophes, of which two stand for one; `i` goes behind it.
WString ReadQuoted(WStringView format, std::size_t& i)
{
    WString text;
    for (i++; i < format.size(); i++) {
        if (format[i] == TW('\'')) {
            if (i + 1 == format.size() || format[i + 1] != TW('\'')) {
                i++;
                break;
            }
            i++;
        }
        text += format[i];
    }
    return text;
}

using TranslateRun = WString (*)(WCHAR letter, std::size_t count, const std::tm& local);

WString Translate(WStringView format, const std::tm& local, TranslateRun translateRun)
{
    WString pattern;
    for (std::size_t i = 0; i < format.size();) {
        const WCHAR c = format[i];
        if (c == TW('\'')) {
            const WString text = ReadQuoted(format, i);
            if (!text.empty())
                pattern += Quoted(text);
            continue;
        }
        const std::size_t next = format.find_first_not_of(c, i);
        const std::size_t count = (next == WStringView::npos ? format.size() : next) - i;
        pattern += translateRun(c, count, local);
        i += count;
    }
    return pattern;
}

// Without a format the styles of the locale apply.
bool FormatLocal(INT64 time, const WCHAR* format, TranslateRun translateRun,
                 UDateFormatStyle dateStyle, UDateFormatStyle timeStyle, WString& out)
{
    std::tm local;
    if (!ToLocalTime(time, local))
        return false;

    WString pattern;
    if (format != nullptr) {
        pattern = Translate(format, local, translateRun);
        if (pattern.empty()) {
            out.clear();
            return true;
        }
    }
    // The local fields are shown as if they were UTC: the zone's rules are the system's.
    UErrorCode status = U_ZERO_ERROR;
    const DateFormat opened(udat_open(
        format != nullptr ? UDAT_PATTERN : timeStyle, format != nullptr ? UDAT_PATTERN : dateStyle,
        nullptr, u"GMT", -1, pattern.c_str(), static_cast<int>(pattern.size()), &status));
    if (U_FAILURE(status))
        return false;

    const double milliseconds = static_cast<double>(FromUtcTime(local)) * 1000;
    WString text(64, 0);
    int length = udat_format(opened.get(), milliseconds, text.data(), static_cast<int>(text.size()),
                             nullptr, &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        status = U_ZERO_ERROR;
        text.resize(static_cast<std::size_t>(length));
        length = udat_format(opened.get(), milliseconds, text.data(), length, nullptr, &status);
    }
    if (U_FAILURE(status))
        return false;
    text.resize(static_cast<std::size_t>(length));
    out = std::move(text);
    return true;
}

} // namespace

bool IsDefinedCharacter(WCHAR c)
{
    return u_charType(c) != U_UNASSIGNED;
}

WCHAR ToLowerW(WCHAR c)
{
    if (c < 0x80)
        return c >= TW('A') && c <= TW('Z') ? static_cast<WCHAR>(c + 0x20) : c;
    const UChar32 lower = u_tolower(c);
    return u_toupper(lower) == c ? static_cast<WCHAR>(lower) : c;
}

WCHAR ToUpperW(WCHAR c)
{
    if (c < 0x80)
        return c >= TW('a') && c <= TW('z') ? static_cast<WCHAR>(c - 0x20) : c;
    const UChar32 upper = u_toupper(c);
    return u_tolower(upper) == c ? static_cast<WCHAR>(upper) : c;
}

int CollateTexts(const char* a, const char* b)
{
    const WString wideA = WidenText(a);
    const WString wideB = WidenText(b);
    const UCollator* const collator = UserCollator();
    if (collator == nullptr)
        return wideA.compare(wideB);
    return ucol_strcoll(collator, wideA.data(), static_cast<int>(wideA.size()), wideB.data(),
                        static_cast<int>(wideB.size()));
}

void MakeCollationKey(WStringView text, std::string& key)
{
    key.clear();
    const UCollator* const collator = UserCollator();
    if (collator == nullptr) {
        for (const WCHAR c : text) {
            key += static_cast<char>(c >> 8);
            key += static_cast<char>(c & 0xFF);
        }
        return;
    }
    const int length = static_cast<int>(text.size());
    key.resize(text.size() * 4 + 16);
    for (;;) {
        const int size =
            ucol_getSortKey(collator, text.data(), length, reinterpret_cast<uint8_t*>(key.data()),
                            static_cast<int>(key.size()));
        const bool whole = size <= static_cast<int>(key.size());
        key.resize(static_cast<std::size_t>(size));
        if (whole)
            return;
    }
}

bool FormatLocalDate(INT64 time, const WCHAR* format, WString& out)
{
    return FormatLocal(time, format, TranslateDateRun, UDAT_SHORT, UDAT_NONE, out);
}

bool FormatLocalTime(INT64 time, const WCHAR* format, WString& out)
{
    return FormatLocal(time, format, TranslateTimeRun, UDAT_NONE, UDAT_MEDIUM, out);
}

} // namespace tlvn
