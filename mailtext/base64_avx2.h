// The blocks of Base64 with AVX2; only for a processor that has it.

#pragma once

#include "platform/types.h"

namespace tlvn {

// Encodes the whole groups of three in `len` bytes, when they fill a block (24 bytes); returns
// the bytes done, all of the groups or none.
int PutBase64BlocksAvx2(const BYTE* data, int len, char* out);

// Decodes groups of four characters, passing over line ends between them, and moves p and out;
// stops where a group is divided by anything or a block (32 characters) is not full. Writes 24
// bytes for every block that it begins.
void GetBase64BlocksAvx2(const BYTE*& p, const BYTE* end, char*& out);

} // namespace tlvn
