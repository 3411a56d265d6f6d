// Walking over text without splitting double-byte characters, and the questions asked on the way.
//
// Positions and lengths are in bytes for narrow text, which is in the multibyte code page, and in
// units for UTF-16. A length below 0 means up to the terminating zero.
//
//   int pos = 0;
//   while (SkipSpace(text, len, pos)) {      // pos is at a word
//       const int start = pos;
//       SkipNotSpace(text, len, pos);        // [start, pos) is the word
//   }
//
// Every function takes time in proportion to what it passes over.

#pragma once

#include "foundation/code_type.h"
#include "framework/framework.h"

// Moves pos forward to the first character that stops the scan and returns 1; returns 0 when
// the text ends first (pos is then len), and at once when s is null or pos < 0.
//
// SkipSpace, narrow: stops only at a single byte that is not white space. A double-byte
// character is stepped over as if it were blank; callers rely on that.
TLVN_API int SkipSpace(const char* s, int len, int& pos);
TLVN_API int SkipSpace(const WCHAR* s, int len, int& pos);
// SkipNotSpace: stops at the first white space; a double-byte character is none.
TLVN_API int SkipNotSpace(const char* s, int len, int& pos);
TLVN_API int SkipNotSpace(const WCHAR* s, int len, int& pos);

// 1 when a line starts at pos: pos is 0, or CR or LF stands before it; 0 when not, when pos is
// outside 0 to len, or when s is null.
TLVN_API int IsLineHead(const char* s, int len, int pos);
TLVN_API int IsLineHead(const WCHAR* s, int len, int pos);
// 1 when a line ends at pos: pos is len, or CR or LF stands at it; 0 as above.
TLVN_API int IsLineTail(const char* s, int len, int pos);
TLVN_API int IsLineTail(const WCHAR* s, int len, int pos);

// 1 when c occurs in the terminated text `set`, else 0, also for a null set and for a zero c.
// ispbrk compares bytes; istpbrk compares characters, of which c is a single-byte one.
TLVN_API int ispbrk(char c, const char* set);
TLVN_API int istpbrk(char c, const char* set);
TLVN_API int iswpbrk(WCHAR c, const WCHAR* set);

// Number of characters: a double-byte one counts once. 0 for a null s.
TLVN_API int CountMoji(const char* s, int len);
// The same for `len` bytes of text in a code type. Text of a Unicode type is UTF-16, of which
// every unit counts.
TLVN_API int CountMoji(const void* s, int len, CodeType ct);

// Cuts s to at most len bytes, never inside a double-byte character, or to len units. Returns 1
// when something was cut off, else 0. A len below 0 cuts nothing.
TLVN_API int TruncateEx(CStringA& s, int len);
TLVN_API int TruncateEx(CStringW& s, int len);
