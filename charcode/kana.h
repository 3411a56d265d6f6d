// Forms of Japanese characters: half-width and full-width katakana, small and normal kana,
// small and capital letters.

#pragma once

#include "foundation/buffer.h"
#include "foundation/code_type.h"

// Replace half-width katakana (with its punctuation) by full-width katakana, a kana and the
// voiced or semi-voiced sound mark behind it by the one voiced kana. Return 1 when anything was
// replaced, else 0. Narrow text is Shift_JIS; of a CBuffer only what precedes the first zero
// byte is kept.
TLVN_API int KatakanaHanToZen(CStringA& text);
TLVN_API int KatakanaHanToZen(CStringW& text);
TLVN_API int KatakanaHanToZen(CBuffer& text);

// Fold `count` units in place: with `letters`, a-z and their full-width forms to capitals; with
// `smallKana`, small katakana of both widths and small hiragana to the normal ones. Return 1
// when anything changed, else 0.
TLVN_API int TextToUpperW(WCHAR* text, int count, int letters, int smallKana);

// The same for `len` bytes of text in a code page. What stands for one character is told by the
// multibyte code page; only characters that take as many bytes as what replaces them are folded.
TLVN_API int TextToUpper(int codePage, char* text, int len, int letters, int smallKana);

// Bytes that the Japanese character at the start of the text takes: 2 for a double-byte one of
// the multibyte code page, 1 for half-width katakana when t is CT_SJIS, 0 for anything else.
TLVN_API int GetMultibyteLength(const char* text, int len, CodeType t);
