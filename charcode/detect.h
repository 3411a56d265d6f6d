// Finding out the character code of a text that does not say it.
//
//   CodeType t = DetectCodeType2(body, length);     // a mail without a charset label
//
// The core is one scan over the beginning of the text that tells ASCII, ISO-2022-JP, Shift_JIS
// and EUC-JP apart by the byte ranges they use; the other functions try UTF-8, UTF-16 or a hint
// first. Detection never fails: an empty text is CT_ASCII, undecidable Japanese is CT_EUC.

#pragma once

#include "foundation/buffer.h"
#include "foundation/code_type.h"

// CT_ASCII, CT_JIS, CT_EUC or CT_SJIS. Reads the first 1024 bytes at most and stops at the
// first that decides; a sequence cut off there counts as cut off by the end of the text.
// Allocates nothing.
TLVN_API CodeType DetectCodeType(const char* text, int len);

// The same, with CT_UTF8 before it, and CT_UNICODE when the bytes, read as UTF-16, are all
// characters of Shift_JIS.
TLVN_API CodeType DetectCodeType2(const char* text, int len);

// For a text that is said to be `hint`: the hint when the text can be read so without loss;
// CT_JIS when Shift_JIS or EUC-JP is said of a text that has escape sequences and can be read
// as ISO-2022-JP; else the result of DetectCodeType.
TLVN_API CodeType DetectCodeType3(const char* text, int len, CodeType hint);

// 1 when every byte above 7F belongs to a lead byte and its continuation bytes (up to five)
// and there is at least one such sequence. Overlong forms and surrogates are not refused.
TLVN_API int IsUTF8(const char* text, int len);

// The narrow code for `count` units of UTF-16: CT_SJIS when a kana comes first, CT_KSC5601 when
// a Hangul does, `def` when there is neither.
TLVN_API CodeType DetectUnicodeCodeType(const WCHAR* text, int count, CodeType def);

// The first of CT_ASCII and CT_SJIS that can hold every unit, CT_UNICODE when neither can;
// `out`, when not null, receives the text in that code. Empty text is CT_ASCII.
TLVN_API CodeType DetectUnicodeCodeType2(const WCHAR* text, int count, CBuffer* out);
