// What belongs to a code type: MIME charset names, font character set, code page, locale; and
// the rules by which a text's code type changes between storing, editing and sending.
//
// A text has one code type in the form it is received, stored or sent in (its save form, such
// as CT_JIS) and another while it is edited and shown (its edit form, such as CT_SJIS):
//
//   CodeType save = CharSetName2Code("ISO-2022-JP");     // CT_JIS
//   CodeType edit = CodeTypeSave2Edit(save);             // CT_SJIS
//   CharSetCode2Name(CodeType2DefSend(edit));            // "ISO-2022-JP"
//
// No function fails: unknown names and code types give the default that is named with each.
// Names are compared without regard to case. Predicates answer 1 or 0; those of a family of code
// types are beside the types (foundation/code_type.h).

#pragma once

#include "foundation/buffer.h"
#include "foundation/code_type.h"

// The columns that `bytes` bytes of ASCII text take in code type t: half as many in a Unicode
// type, whose text is held in UTF-16.
TLVN_API int AsciiByte2Column(int bytes, CodeType t);

// 1 when a text of type `current` becomes one of type `other` by a part in that type: anything
// known replaces CT_UNKNOWN, anything but CT_UNKNOWN replaces CT_ASCII.
TLVN_API int IsPriorCodeType(CodeType current, CodeType other);

// The code type of a charset name. Exact: CT_UNKNOWN for a name that is not in the table. The
// other reads unknown and missing names as CT_JIS, the historical default of Japanese mail.
TLVN_API CodeType CharSetName2CodeExact(const char* name);
TLVN_API CodeType CharSetName2Code(const char* name);

// The MIME name, or null (CT_UNKNOWN, CT_UNICODE).
TLVN_API const char* CharSetCode2Name(CodeType t);
// The charset number of a LOGFONT; the Japanese one, 128, for ASCII and types without a name.
TLVN_API int CharSetCode2FontCharSet(CodeType t);
// The language identifier, 1024 standing for the user's own; 0 for a type without a name.
TLVN_API LCID CharSetCode2LCID(CodeType t);

// The code page by which text of the type is converted: that of Shift_JIS for the Japanese
// types and ASCII, of the type itself for the others, 0 for a type without a name. The second
// form gives ISO-2022-JP, EUC-JP and US-ASCII their own pages, too.
TLVN_API UINT CharSetCode2CodePage(CodeType t);
TLVN_API UINT CharSetCode2CodePage2(CodeType t);

// Replaces a known charset name by the preferred one ("x-sjis" by "Shift_JIS") and leaves
// others alone; lower-cases the name of a transfer encoding. Both return the text.
TLVN_API const char* ReformCharSet(CStringA& name);
TLVN_API const char* ReformEncoding(CStringA& encoding);

// The code type of a received text: by its charset name, or detected when that is empty.
TLVN_API CodeType GetCodeType(const char* charset, const char* text, int len);

// The code type in which a text stored as t is edited, and in which one edited as t is sent by
// default.
TLVN_API CodeType CodeTypeSave2Edit(CodeType t);
TLVN_API CodeType CodeType2DefSend(CodeType t);

// The one code type that can hold texts of both types.
TLVN_API CodeType GetPriorCodeType(CodeType a, CodeType b);

// Converts `text` from the edit form of `from` to the edit form of `to`. Where that is not
// possible, as for CT_UNKNOWN, the text stays as it is.
TLVN_API void ConvToPriorCodeType(CodeType from, CodeType to, CBuffer& text);

// The transfer encoding of a body part in code type t: "base64" when a or b is 0, that is when
// lines of text must not be relied on; else "7bit" or "8bit".
TLVN_API const char* GetDefaultSendEncoding(int a, int b, CodeType t);
