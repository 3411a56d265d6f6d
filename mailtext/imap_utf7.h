// Names of IMAP folders: modified UTF-7 (RFC 3501, section 5.1.3) and the Base64 inside it.
//
//   "Sent & ~drafts"  <->  "Sent &- ~drafts"
//   "送信済"          <->  "&kAFP4W4I-"
//
// The Base64 stands for UTF-16 in big-endian order; its alphabet has "," in the place of "/",
// and there is no padding. Units are passed on whatever they are, half surrogate pairs included.
//
// `out` is replaced and must not hold the input. A null text or a length below 1 gives nothing.
// The memory exception is thrown when there is no memory or the result would exceed a buffer.

#pragma once

#include "foundation/buffer.h"

// Decodes the terminated `text` up to the first byte that is not in the alphabet. Characters at
// the end that do not make up a whole unit are left out. Returns 1 always.
TLVN_API int DecodeImap4Base64(const char* text, CStringW& out);

// Encodes `len` units.
TLVN_API void EncodeImap4Base64(const WCHAR* text, int len, CBuffer& out);

// Decodes `len` bytes. Bytes outside the shifted runs become units of the same value, also those
// that have no business there. A run lacking its "-" goes to the end of the text; of a run that
// holds anything but Base64 the rest is left out; so is "&" as the last byte. Returns 1.
TLVN_API int DecodeImap4UTF7(const char* text, int len, CStringW& out);

// Encodes `len` units: U+0020-007E as they are, "&" as "&-", and each longest run of others as
// one shifted run.
TLVN_API void EncodeImap4UTF7(const WCHAR* text, int len, CBuffer& out);
