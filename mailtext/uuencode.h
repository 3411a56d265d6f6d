// uuencode, the form of attachments before MIME.
//
//   begin 644 photo.jpg
//   M_]C_X``02D9)1@`!`0$`2`!(...      (length, then 4 characters for 3 bytes)
//   `
//   end
//
// `out` is replaced and must not hold the input. The memory exception is thrown when there is
// no memory or the result would exceed a buffer.

#pragma once

#include "foundation/buffer.h"

// 1 when `line` is "begin ", a mode of three octal digits and a name. `mode` and `name`, each
// of which may be null, receive both, empty when the line is something else.
TLVN_API int DecodeUuencodeBegin(const char* line, CStringA* mode, CStringA* name);

// Decodes a whole text; its first line that is not empty must be the "begin" line. Returns 1,
// or 0 for a text of another shape (`out` then holds what was read so far). With a null `out`
// only the "begin" line is checked. A null or empty text gives nothing and 1.
TLVN_API int DecodeUuencode(const char* text, CStringA* mode, CStringA* name, CBuffer* out);

// Encodes `len` bytes in lines of 45. A null or empty mode is "644", name "dummy".
TLVN_API void EncodeUuencode(const char* mode, const char* name, const unsigned char* data, int len,
                             CBuffer& out);
