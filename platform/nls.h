// National-language services: code pages, character properties, collation, date texts.
//
// ConvertToUtf16 and ConvertFromUtf16 are the one road between a code page and UTF-16. Pages
// 932, 65001 and the single-byte pages are converted by the library's own code and tables,
// the same on every system; the other pages go to the operating system (Windows) or ICU.
//
// Lengths are in bytes for narrow text and in units for UTF-16, always explicit; a zero byte
// is a character like any other. No function throws except for lack of memory.

#pragma once

#include "platform/types.h"

#include <string>
#include <string_view>

namespace tlvn {

using WString = std::basic_string<WCHAR>;
using WStringView = std::basic_string_view<WCHAR>;

// Outcome of a conversion: 0 = every character converted, 1 = some had no counterpart,
// negative = the page is not known or the system failed (nothing is written).
using ConversionResult = int;
constexpr ConversionResult kConverted = 0;
constexpr ConversionResult kConvertedWithLoss = 1;
constexpr ConversionResult kUnknownCodePage = static_cast<int>(0x80070057); // E_INVALIDARG

// Bytes that are invalid in the page become what Windows makes of them in that page and count
// as loss. `out` is replaced.
TLVN_API ConversionResult ConvertToUtf16(UINT codePage, std::string_view text, WString& out);

// Without best fit: a unit converts only to a code that decodes to it. What has no code
// becomes `replacement` (nothing when it is '\0') and counts as loss; a surrogate pair that
// has none becomes two of them in a double-byte or single-byte page. `out` is replaced.
TLVN_API ConversionResult ConvertFromUtf16(UINT codePage, WStringView text, std::string& out,
                                           char replacement = '?');

// The raw forms of the same, for callers with storage of their own. `capacity` is that of
// `out`: at least MaxUtf16Length / MaxNarrowLength of the input, else the result is
// kUnknownCodePage. `written` receives the units or bytes.
TLVN_API ConversionResult ConvertToUtf16(UINT codePage, const char* text, int length, WCHAR* out,
                                         int capacity, int& written);
TLVN_API ConversionResult ConvertFromUtf16(UINT codePage, const WCHAR* text, int length, char* out,
                                           INT64 capacity, int& written, char replacement = '?');
// Most units that `length` bytes of the page can give, most bytes that `length` units can.
TLVN_API int MaxUtf16Length(UINT codePage, int length);
TLVN_API INT64 MaxNarrowLength(UINT codePage, int length);

// True when the page can be converted on this system.
TLVN_API bool IsCodePageKnown(UINT codePage);
// The system's ANSI code page (65001 on POSIX).
TLVN_API UINT GetSystemCodePage();

// True when Unicode assigns a character to the unit, as GetStringTypeW's C1_DEFINED does.
TLVN_API bool IsDefinedCharacter(WCHAR c);
// Simple case mapping of one unit, independent of the locale: of the letters whose other case
// leads back to them, so that no sign (U+212A Kelvin, U+017F long s) becomes an ASCII letter.
TLVN_API WCHAR ToLowerW(WCHAR c);
TLVN_API WCHAR ToUpperW(WCHAR c);
// White space: U+0009-000D, 0020, 0085, 00A0, 1680, 2000-200A, 2028, 2029, 202F, 205F, 3000.
constexpr bool IsSpaceW(WCHAR c)
{
    if (c < 0x80)
        return c == ' ' || (c >= '\t' && c <= '\r');
    if (c < 0x1680)
        return c == 0x85 || c == 0xA0;
    if (c >= 0x2000 && c <= 0x205F)
        return c <= 0x200A || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F;
    return c == 0x3000 || c == 0x1680;
}

// Compares two texts of the multibyte code page in the order of the user's locale: below,
// equal to or above 0.
TLVN_API int CollateTexts(const char* a, const char* b);
// Sets `key` to bytes that compare (as unsigned ones) with those of another text as the texts
// do in the order of the user's locale: for sorting many texts.
TLVN_API void MakeCollationKey(WStringView text, std::string& key);

// Date and time of `time` (seconds since 1970 UTC, shown in local time) in the user's locale,
// with a format in the letters of GetDateFormat / GetTimeFormat, or null for the locale's
// own. False when it cannot be formatted.
TLVN_API bool FormatLocalDate(INT64 time, const WCHAR* format, WString& out);
TLVN_API bool FormatLocalTime(INT64 time, const WCHAR* format, WString& out);

// Conversions by the multibyte code page, with '?' for what it cannot hold.
TLVN_API WString WidenText(std::string_view text);
TLVN_API std::string NarrowText(WStringView text);

// Conversions between UTF-8 and UTF-16; what is invalid is replaced as above.
TLVN_API WString Utf8ToUtf16(std::string_view utf8);
TLVN_API std::string Utf16ToUtf8(WStringView wide);

} // namespace tlvn
