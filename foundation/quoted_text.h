// The quoted strings, comments in parentheses and delimiters of mail headers.
//
// Narrow text is in the multibyte code page. A double-byte character is stepped over whole, so
// that its trail byte never passes for a backslash or a delimiter; also behind a backslash, which
// makes the character after it literal. Positions and lengths are in bytes. Every function takes
// time in proportion to the text, and those that write a text throw CMemoryException* when there
// is no memory for it.

#pragma once

#include "framework/framework.h"

// Puts a backslash before every backslash and every double quote, and double quotes around all.
TLVN_API void EnquoteText(CStringA& s);

// Takes a double quote off the front and one off the end, the latter unless a backslash stands
// before it; then turns "\\" into a backslash and "\"" into a double quote. Other backslashes
// stay. (A text that ends in a backslash does not come back from EnquoteText: its closing double
// quote then has a backslash before it.)
TLVN_API void DequoteText(CStringA& s);

// Length of the quoted string that s starts with, both double quotes included; -1 when s is null,
// starts with something else, or ends before the closing one.
TLVN_API int GetEnquotedLength(const char* s);

// Removes every backslash, keeping the character after it.
TLVN_API void GetQuotedToken(CStringA& s);

// Parts the terminated text at its first balanced group of parentheses. `inner` receives what
// is between the last "(" before the group closes and the ")" that closes it, `rest` the text
// without that and those two; the result is the position of that "(". So of nested groups the
// token starts at the innermost, and for "a (b (c) d)" inner is "c) d" and rest "a (b "; callers
// rely on it. Without a balanced group: -1, inner is empty and rest the text. `text` may be one
// of the two strings, which are two.
TLVN_API int GetParenthesisToken(const char* text, CStringA& inner, CStringA& rest);

// Position of the ")" that closes the "(" at openPos, or -1. Parentheses between double quotes
// do not count, unless noQuotes is other than 0. A len below 0 means up to the terminating zero.
TLVN_API int GetCorrespondParen(const char* text, int len, int openPos, int noQuotes);

// Position of the first `delim` in the terminated text, at or after start, that is not between
// double quotes, or -1, also for a null text and a start outside it. With quotes 0, double quotes
// are characters like others. With escapeMode 1 the character after a backslash between double
// quotes is skipped; with any escapeMode but 0 a double quote behind a backslash neither opens
// nor closes.
TLVN_API int FindDelimiter(const char* text, int start, char delim, int quotes, int escapeMode);
