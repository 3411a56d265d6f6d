// Finding a phrase in a text: the first occurrence or the last, in narrow text, in UTF-16, or in
// text of a given code type.
//
// Rules that all of them share:
// - A null text or phrase gives null. A length below 0 means up to the terminating zero; then a
//   text or a phrase of less than one character gives null.
// - A match lies whole inside the text. In narrow text it never begins on the trail byte of a
//   double-byte character, and one whose last byte is only the lead byte of such a character is
//   none either. In UTF-16 it begins at any unit.
// - noCase other than 0 folds A-Z and the full-width letters of the multibyte code page, in
//   UTF-16 by the simple case mapping of Unicode.
// - A zero byte (unit) inside the phrase ends the comparison, as it does in the runtime: of a
//   phrase with a given length, what follows its first zero matches anything.
//
// Time is in proportion to the text, whatever it and the phrase hold. A search that needs more
// memory than there is throws CMemoryException*; so does a phrase of UTF-16 above INT_MAX bytes.

#pragma once

#include "foundation/code_type.h"
#include "framework/framework.h"

// First occurrence of `find` in narrow text, or null. One exception to the rules: with both
// lengths below 0 and noCase 0 an empty phrase is found at the start of the text.
TLVN_API const char* mbsnnstr(const char* text, int textLen, const char* find, int findLen,
                              int noCase);
// The same in UTF-16, lengths in units.
TLVN_API const WCHAR* wcsnnstr(const WCHAR* text, int textLen, const WCHAR* find, int findLen,
                               int noCase);

// Last occurrence, or null: that which begins last. There is no exception for an empty phrase.
TLVN_API const char* mbsrnnstr(const char* text, int textLen, const char* find, int findLen,
                               int noCase);
TLVN_API const WCHAR* wcsrnnstr(const WCHAR* text, int textLen, const WCHAR* find, int findLen,
                                int noCase);

// First occurrence in text of a code type, both lengths in bytes: as wcsnnstr when the type is a
// Unicode one, whose text is UTF-16 (at any address; an odd byte at the end is left out), else as
// mbsnnstr in the multibyte code page in force.
TLVN_API const char* txtnnstr(CodeType ct, const void* text, int textLen, const void* find,
                              int findLen, int noCase);
