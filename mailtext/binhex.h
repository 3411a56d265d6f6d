// BinHex 4.0, the form in which the files of the old Macintosh travel (RFC 1741, appendix A);
// decoding only.
//
//   (This file must be converted with BinHex 4.0)
//   :$f*TEQKPH#jKDBZ!!!!!!!...:
//
// Between the colons stand characters of six bits; their bytes are packed by run lengths and
// give a header, the data fork, the resource fork and three checksums.

#pragma once

#include "foundation/buffer.h"

// Replaces `out` by the data fork of the first block in the terminated `text`. The checksums are
// not verified and the resource fork is left out; characters outside the alphabet are skipped,
// and of a block that ends early comes what is there. Returns 1, also for a null or empty text,
// or 0 when there is no block. The growth increment of `out` becomes 1024. The memory exception
// is thrown when there is no memory or the result would exceed a buffer.
TLVN_API int DecodeBinHex(const char* text, CBuffer& out);
