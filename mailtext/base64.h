// Base64 of MIME bodies and header words (RFC 2045, section 6.8).
//
// `out` is replaced and must not hold the input. The memory exception is thrown when there is
// no memory or the result would exceed a buffer.

#pragma once

#include "foundation/buffer.h"

// Decodes the terminated `text`. Bytes outside the alphabet are skipped, "=" excepted. Decoding
// ends at a group with "=" in its third or fourth place, at the end of the text, or in the
// middle of a group, which is then dropped. Returns 1 always; a null text gives nothing.
TLVN_API int DecodeBase64(const char* text, CBuffer& out);

// Encodes `len` bytes, with "=" at the end where needed. With lineLen > 0 a line end (CR LF)
// follows every lineLen characters and the end of the text, but never twice.
TLVN_API void EncodeBase64(const unsigned char* data, int len, int lineLen, CBuffer& out);

// Copies the first run of Base64 text in the `len` bytes at p: bytes of the alphabet, and the "="
// behind them. A zero byte counts as one of the alphabet; callers rely on it.
TLVN_API void ExtractBase64Text(const char* p, int len, CBuffer& out);
