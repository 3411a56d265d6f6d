// The container in which enciphered data is stored.
//
// Plain content, integers little-endian: the length L of the data in 32 bits, the L bytes of
// data, zeros up to a multiple of 8. All of it is enciphered with Blowfish (blowfish.h) block by
// block, under the MD5 digest of the key text. Nothing in it authenticates the data: a wrong
// key is noticed because the length it gives does not fit the container.
//
// `out` is replaced and must not hold the input. Digest, length and whatever was deciphered
// beyond the data are wiped from memory. The memory exception is thrown when there is no memory
// or the container would exceed a buffer.

#pragma once

#include "foundation/buffer.h"

// Puts `length` bytes into a container. Returns 1; no data (null, or a length below 1) gives an
// empty `out`. Without a key text (null or empty), `out` is the data as it is and the result 0.
TLVN_API int EncodeBlowFish(const char* keyText, const unsigned char* data, int length,
                            CBuffer& out);

// Takes the data out of a container. Returns 1, for no input (null, or a length below 1) with an
// empty `out`; or 0 with the reason in `message`, which is else left alone, and an empty `out`:
// no key text, a length that is no multiple of 8, or a content that does not fit.
TLVN_API int DecodeBlowFish(const char* keyText, const unsigned char* data, int length,
                            CBuffer& out, CString& message);
