// Lists of mail addresses: the header fields To, Cc and the like, and what users type into them.
//
//   CStringArray items;
//   CString message;
//   GetAddrArray2("\"Sato, Ken\" <ken@example.jp>, mika@example.jp", items, message);  // 2 items
//
// Narrow text is in the multibyte code page; positions are in bytes, of the wide forms in units.
// A null text counts as empty, as does a null address or name. Comparisons fold A-Z and the
// full-width letters of the code page. Every function takes time in proportion to its list.

#pragma once

#include "framework/framework.h"

// Finds the next `delimiter` at or after `start` that is outside double quotes and parentheses.
// In quotes a backslash makes the character after it literal; quotes inside parentheses do not
// count, nor do those behind a backslash; a quote at `start` that is never closed is a character
// like others, and then so are all quotes. Returns 1 with the position, which is -1 when there is
// no delimiter or `start` is outside the text; or 0 when quotes or parentheses are not closed:
// `message` then tells the user, with the rest of the text from `start` on its second line.
TLVN_API int FindAddrDelimiter(const char* text, int start, char delimiter, int& position,
                               CString& message);
TLVN_API int FindAddrDelimiter(const WCHAR* text, int start, WCHAR delimiter, int& position,
                               CStringW& message);

// Appends the items of a list, parted by "," found in that way, trimmed; empty ones are left
// out. Returns 1, or 0 with the message when the last of them is malformed.
TLVN_API int GetAddrArray2(const char* list, CStringArray& addresses, CString& message);
TLVN_API int GetAddrArray2(const WCHAR* list, CArray<CStringW>& addresses, CStringW& message);

// Appends the pieces between commas and white space, of a list of bare addresses. Returns how
// many there are; empty ones do not count.
TLVN_API int ParseAddrList(const char* list, CStringArray& addresses);

// Appends the items of a list to two parallel arrays, each item split by SplitMailAddr. Returns
// 1, or 0 when the list or an item is malformed (a malformed item is a name).
TLVN_API int GetAddrNameArray(const char* list, CStringArray& addresses, CStringArray& names);

// The item of a list in which the byte `offset`, 0 to the length, lies; its "," counts to it, and
// white space before it does not. Returns 1 with the bounds, or 0 when there is none or the
// list is malformed before its end.
TLVN_API int GetAddressRange(const char* list, int offset, int& start, int& end);

// Index in two parallel arrays: of the address, when there is one; else of the name, of the
// entries without an address. -1 when it is not there or both are empty.
TLVN_API int LookupAddrNameArray(const CStringArray& addresses, const CStringArray& names,
                                 const char* address, const char* name);

// 1 when an item of the list has that address; with `other` not 0, when an item has another one
// (or none). Malformed items are passed over.
TLVN_API int IsAddressIncluded(const char* address, int other, const char* list);

// 1 when one of the patterns matches the address by wildicmp; with `other` not 0, when one does
// not.
TLVN_API int IsWildAddrIncluded(const CStringArray& patterns, int other, const char* address);
