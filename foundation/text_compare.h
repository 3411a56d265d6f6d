// Comparing texts: equal, at the end of another, in a list, by a pattern with wildcards, or in an
// order in which numbers count by value.
//
// A null text counts as an empty one. noCase other than 0 folds A-Z and the full-width letters of
// the multibyte code page; in UTF-16 by the simple case mapping of Unicode.

#pragma once

#include "foundation/code_type.h"
#include "framework/framework.h"

// Below, equal to or above 0: by the values of the characters in the multibyte code page.
TLVN_API int CompareText(const char* a, const char* b, int noCase);

// 1 when text ends with tail, else 0; every text ends with an empty tail. In narrow text the tail
// begins where a character of the text begins, never on the trail byte of a double-byte one. In
// UTF-16 it may begin at any unit.
TLVN_API int EndsWith(const char* text, const char* tail, int noCase);
TLVN_API int EndsWith(const WCHAR* text, const WCHAR* tail, int noCase);

// Index of the first element that is equal to s, or -1.
TLVN_API int LookupStringArray(const CStringArray& a, const char* s, int noCase);
TLVN_API int LookupStringArray(const CArray<CStringW>& a, const WCHAR* s, int noCase);

// 0 when the pattern matches the whole text, 1 when not: the order of a comparison. "?" matches
// any one byte, "*" any number of them, another byte itself, A-Z without regard to case; all by
// bytes, also of double-byte characters. Two deliberate oddities: what follows a "*" directly is
// taken literally at first, so that "*?" matches only where a "?" stands; and of a pattern that
// ends in "**" the last "*" needs a "*" in the text.
//
// Takes time in proportion to the text times the longest stretch between two "*", at worst, and
// no memory.
TLVN_API int wildicmp(const char* text, const char* pattern);

// Below, equal to or above 0: the order of the user's locale, in which runs of the digits 0-9
// count by value ("item 9" comes before "item 10"). Each run is compared as if it were written
// with at least nine digits, zeros before them, and without the blanks before it; so above
// 999999999 the order is that of the digits. An empty text comes first.
//
// The texts are narrow, in the multibyte code page. Their code types do not matter: blanks and
// digits are never part of a double-byte character.
TLVN_API int lstrcmp_num(const char* a, CodeType ca, const char* b, CodeType cb);
