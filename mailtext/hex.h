// Percent escapes of URLs (RFC 3986, section 2.1) and the form encoding of queries.
//
// Text is passed as bytes, whatever its code: what is escaped is bytes. `out` is replaced and
// must not hold the input. The memory exception is thrown when there is no memory or the result
// might exceed a buffer; null texts give nothing.

#pragma once

#include "foundation/buffer.h"

// Value of a hexadecimal digit of either case; 0 for every other character.
TLVN_API int DecodeHex(char c);

// Decodes "%" and two digits to one byte, which may be zero. A "%" that is followed by something
// else stays, and so does "+".
TLVN_API void DecodeHex(const char* text, CBuffer& out);

// Writes every byte as "%" and two digits in upper case, but leaves ASCII letters and digits as
// they are unless encodeAll is other than 0. Returns the content of `out`, never null.
TLVN_API const char* EncodeHex(const char* text, int encodeAll, CBuffer& out);

// The same for a query in form encoding: letters, digits and "-._" stay, a blank becomes "+".
TLVN_API const char* EncodeUrlEncode(const char* text, CBuffer& out);
