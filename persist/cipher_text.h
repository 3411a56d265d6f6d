// Short texts, such as passwords, enciphered for a settings file.
//
// The text is prefixed with its length in bytes and "=", put into a container
// (cipher_container.h) under a key that every copy of the program has, and written in Base64.
// This keeps a password from being read over a shoulder, not from somebody who has the program.
//
// `out` is replaced and must not hold the input. The memory exception is thrown when there is no
// memory.

#pragma once

#include "foundation/buffer.h"

// Enciphers the terminated `text`; null is the empty text. Returns 1 always and leaves `message`
// alone.
TLVN_API int EncryptText(const char* text, CBuffer& out, CString& message);

// The reverse. Returns 1, for null and the empty text with an empty result; or 0 with the reason
// in `message` and an empty `out` when `text` is nothing that EncryptText made.
TLVN_API int DecryptText(const char* text, CBuffer& out, CString& message);
