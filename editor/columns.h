// Columns of text: what a line takes when every half-width character is one column wide.
//
// In a multibyte code a character takes as many columns as bytes; in UTF-16 one of the double
// class of GetCharType takes two, any other one. A tab ends at the next tab stop, the stops being
// `tabColumn` (at least 1) columns apart.

#pragma once

#include "editor/text_code.h"

namespace tlvn {

// Columns of the character of that code of UTF-16 text (text_code.h): 1 or 2.
TLVN_API int GetWideColumns(unsigned code);
// Whether it is a letter or digit of single width: of the class CHARTYPE_SINGLE and
// CHARTYPE_WORD, and not "_".
TLVN_API bool IsSingleAlnum(unsigned code);

// The column at which the text ends when it begins at `column`; at most INT_MAX.
TLVN_API int CountColumns(const TextCode& code, const char* text, int length, int tabColumn,
                          int column = 0);

} // namespace tlvn
