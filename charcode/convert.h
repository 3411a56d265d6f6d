// Conversion between any two code types, and of received text into the form it is edited in.
//
// Text of the Japanese codes goes by way of Shift_JIS, everything else by way of UTF-16. UTF-16
// text (CT_UNICODE) is passed as bytes, its length in bytes; an odd last byte is left out.
//
// `out` is replaced and must not hold the input. A null text or a length below 1 gives an empty
// result. A character the target cannot hold becomes "?", or nothing when `dropUnmappable` is
// not 0; no similar character takes its place. The memory exception is thrown for lack of
// memory and for a text too long for a buffer.
//
// The result codes are 0 when every character was converted, 1 when some had no counterpart or
// the text was not valid in its code, and negative when the conversion is not possible, as
// between unknown code types. Between the Japanese codes and ASCII, whose code page is the
// same, nothing is looked at: the result is 0 for any text.

#pragma once

#include "foundation/buffer.h"
#include "foundation/code_type.h"

// Returns a result code. Equal types copy. When nothing of the text can be expressed in the
// target and the result would be empty, code page 1252 is the target instead (and the result
// code 1).
TLVN_API int ConvertToOtherCodeType2(CodeType from, const char* text, int len, CodeType to,
                                     CBuffer& out, int dropUnmappable);

// The same between code pages. 50220 and 51932 are ISO-2022-JP and EUC-JP.
TLVN_API int ConvertToOtherCodePage2(UINT fromCodePage, const char* text, int len, UINT toCodePage,
                                     CBuffer& out, int dropUnmappable);

// To UTF-16 by the code page of `from` (of CT_JIS and CT_EUC: that of Shift_JIS, in which such
// text is edited). Bytes of a type without a code page are copied.
TLVN_API void ConvertToWcs(CodeType from, const char* text, int len, CBuffer& out);
TLVN_API CStringW ConvertToWcs(CodeType from, const char* text, int len);

// Converts text received as t to CodeTypeSave2Edit(t). Returns 1, or 0 when t is CT_UNKNOWN or
// the conversion is not possible.
TLVN_API int ConvertToEditable(CodeType t, const char* text, int len, CBuffer& out);

// Copies the text, unless t is a Unicode type: UTF-16 text is then converted to Korean when it
// is that, else to Shift_JIS, and t becomes the code type of the result. Returns 1, or 0 when
// the conversion is not possible.
TLVN_API int ConvertToMbsIfWcs(CodeType& t, const char* text, int len, CBuffer& out,
                               int dropUnmappable);
TLVN_API int ConvertToMbsIfWcs(CodeType& t, const char* text, int len, CStringA& out,
                               int dropUnmappable);

// ConvertToEditable and then ConvertToMbsIfWcs: received text to narrow text. Returns 1, or 0
// when the text cannot be converted (`out` is then empty).
TLVN_API int ConvertToEditableMbs(CodeType& t, const char* text, int len, CBuffer& out,
                                  int dropUnmappable);
TLVN_API int ConvertToEditableMbs(CodeType& t, const char* text, int len, CStringA& out,
                                  int dropUnmappable);

// Shift_JIS or UTF-16 text to the form in which text of type t is edited. Return 1, or 0 when
// the conversion is not possible.
TLVN_API int ConvertSjisToCTEditable(const CBuffer& sjis, CodeType t, CBuffer& out,
                                     int dropUnmappable);
TLVN_API int ConvertUnicodeToCTEditable(const CBuffer& utf16, CodeType t, CBuffer& out,
                                        int dropUnmappable);
