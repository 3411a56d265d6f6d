// Walking over text without splitting double-byte characters.
//
// Positions and lengths are in bytes for narrow text, in units for UTF-16. A length below 0
// means up to the terminating zero.

#pragma once

#include "framework/framework.h"

// Moves pos forward to the first character that stops the scan and returns 1; returns 0 when
// the text ends first (pos is then len), and at once when s is null or pos < 0.
//
// SkipSpace, narrow: stops only at a single byte that is not white space. A double-byte
// character is stepped over as if it were blank; callers rely on that.
TLVN_API int SkipSpace(const char* s, int len, int& pos);
TLVN_API int SkipSpace(const WCHAR* s, int len, int& pos);
// SkipNotSpace: stops at the first white space; a double-byte character is none.
TLVN_API int SkipNotSpace(const char* s, int len, int& pos);
TLVN_API int SkipNotSpace(const WCHAR* s, int len, int& pos);
