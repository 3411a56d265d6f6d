// Quoted-printable of MIME bodies (RFC 2045, section 6.7).
//
// `out` is replaced and must not hold the input. The memory exception is thrown when there is
// no memory or the result would exceed a buffer.

#pragma once

#include "foundation/buffer.h"

// Decodes the terminated `text`. A "=" at the end of a line, with or without white space behind
// it, joins the line with the next; one that is followed by anything but two hexadecimal digits
// stays. White space at the end of a line is dropped. Returns 1 always; a null text gives
// nothing. "_" is not a blank here, in header words neither.
TLVN_API int DecodeQuotedPrintable(const char* text, CBuffer& out);

// Encodes `len` bytes in lines of at most 75 characters and the "=" of a soft line break. With
// keepLineBreaks not 0, CR LF and a lone CR or LF are line ends and become CR LF; otherwise they
// are encoded like other control characters.
TLVN_API void EncodeQuotedPrintable(const unsigned char* data, int len, int keepLineBreaks,
                                    CBuffer& out);

// 1 when the text is ASCII and its escapes make up about a tenth of it, at least; 0 for null.
TLVN_API int IsQuotedPrintable(const char* text);
