// The transfer encodings by the names that mail headers give them, without regard to case.

#pragma once

#include "foundation/buffer.h"

// Decodes the text of a header's encoded word (RFC 2047): "B" is Base64, "Q" quoted-printable.
// The word has been cut apart by the caller, who also sees to "_". Returns the decoder's result,
// or 0 for another encoding; `out` is replaced.
TLVN_API int DecodeHeaderText(const char* encoding, const char* text, CBuffer& out);

// Encodes a body for a Content-Transfer-Encoding: "base64" in lines of 76 characters,
// "quoted-printable" (see EncodeQuotedPrintable for keepLineBreaks) or "x-uuencode". Any other
// name copies. `out` is replaced and must not hold the data.
TLVN_API void EncodeBody(const char* encoding, const unsigned char* data, int len,
                         int keepLineBreaks, CBuffer& out);
