// The operations behind CStringT, for both widths: narrow text by the characters of the
// multibyte code page, wide text by UTF-16 units.
//
// Lack of memory throws the framework's memory exception. Every operation takes time in
// proportion to the text.

#pragma once

#include "platform/nls.h"

#include <cstdarg>
#include <string>
#include <string_view>

namespace tlvn {

// The white space that trimming without an argument takes off.
template <typename Char>
constexpr std::basic_string_view<Char> kWhiteSpace;
template <>
inline constexpr std::string_view kWhiteSpace<char> = "\t\n\v\f\r ";
template <>
inline constexpr WStringView kWhiteSpace<WCHAR> =
    TW("\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009"
       "\u200A\u2028\u2029\u202F\u205F\u3000");

// Below, equal to or above 0: by character value, without regard to case, in the order of the
// user's locale.
TLVN_API int CompareViews(std::string_view a, std::string_view b);
TLVN_API int CompareViews(WStringView a, WStringView b);
TLVN_API int CompareViewsNoCase(std::string_view a, std::string_view b);
TLVN_API int CompareViewsNoCase(WStringView a, WStringView b);
TLVN_API int CollateViews(std::string_view a, std::string_view b);
TLVN_API int CollateViews(WStringView a, WStringView b);

// Index of the first occurrence at or behind `start`, -1 when there is none or `start` is out
// of range. An empty `find` is found at `start`.
TLVN_API int FindInText(std::string_view text, std::string_view find, int start);
TLVN_API int FindInText(WStringView text, WStringView find, int start);
TLVN_API int FindInText(std::string_view text, char c, int start);
TLVN_API int FindInText(WStringView text, WCHAR c, int start);
// Index of the last occurrence, or -1.
TLVN_API int FindLastInText(std::string_view text, char c);
TLVN_API int FindLastInText(WStringView text, WCHAR c);

// Length of the longest beginning whose characters are all in `set` (`inside`) or all not.
TLVN_API int SpanOf(std::string_view text, std::string_view set, bool inside);
TLVN_API int SpanOf(WStringView text, WStringView set, bool inside);
// Length of the text without the characters of `set` at its end.
TLVN_API int LengthWithoutTrailing(std::string_view text, std::string_view set);
TLVN_API int LengthWithoutTrailing(WStringView text, WStringView set);
// Length of the character at `index`, which is inside the text.
TLVN_API int CharLengthAt(std::string_view text, int index);
TLVN_API int CharLengthAt(WStringView text, int index);

// Replaces every occurrence of `find`, from left to right; returns how many there were. The
// arguments may lie in the text itself.
TLVN_API int ReplaceInText(std::string& text, std::string_view find, std::string_view replacement);
TLVN_API int ReplaceInText(WString& text, WStringView find, WStringView replacement);

TLVN_API void UpperText(char* text, int length);
TLVN_API void UpperText(WCHAR* text, int length);
TLVN_API void LowerText(char* text, int length);
TLVN_API void LowerText(WCHAR* text, int length);
// Reverses the order of the characters; a surrogate pair counts as two.
TLVN_API void ReverseText(char* text, int length);
TLVN_API void ReverseText(WCHAR* text, int length);

// The other width, by the multibyte code page.
TLVN_API WString ConvertText(std::string_view text);
TLVN_API std::string ConvertText(WStringView text);

// FormatV of framework/format.h with the framework's exceptions; a null format is empty.
TLVN_API std::string FormatText(const char* format, std::va_list args);
TLVN_API WString FormatText(const WCHAR* format, std::va_list args);

// A message of the string table. False, and `text` as it was, when there is none.
TLVN_API bool LoadMessage(UINT id, std::string& text);
TLVN_API bool LoadMessage(UINT id, WString& text);

} // namespace tlvn
