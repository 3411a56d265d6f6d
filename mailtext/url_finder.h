// Finding URLs and file paths in running text.
//
// What is found begins, in any case of letters, with "mailto:", "http:", "https:", "ftp:",
// "file:" or "gopher:", with a letter, ":" and "\" (a path on a drive), or with "\\", anything,
// and a further "\" (a path in the network; the further one is followed by something other than
// "\"). The first in the text counts. A beginning behind an ASCII letter or digit is none; of a
// scheme, later occurrences in the text are then not looked for either.
//
// How it goes on, where the URL characters are letters, digits and ".-_=^~!$%&*+/?|#@:;,":
//   - "http:", "https:", "ftp:", "gopher:": after any number of "/" the host, of URL characters
//     and whatever is not ASCII, up to a full-width space; from the next "/" on, URL characters
//     only. So a Japanese word ends a path but not a host.
//   - "mailto:": URL characters; behind the first "?" also double-byte characters and everything
//     else but white space and control characters. After "<" everything up to ">".
//   - paths and "file:": URL characters, "\" and double-byte characters. After "<" everything up
//     to ">", after a double quote everything up to the next.
// The end of a sentence belongs to the URL. In UTF-16 a double-byte character is one of the
// double class of GetCharType.
//
// Time is in proportion to the text up to the end of the URL; only the further "\" of a network
// path can be at any distance, and is looked for to the end of the text once.

#pragma once

#include "foundation/code_type.h"
#include "framework/framework.h"

// Position of the first URL in the `length` bytes of narrow text (below 0: up to the zero) and
// its length; or -1, and 0. `codeType` tells which two bytes are the full-width space; in a code
// in which it has another number of bytes there is none.
TLVN_API int FindUrlA(const char* text, int length, CodeType codeType, int& foundLength);

// The same in UTF-16. The length, the position and foundLength are in bytes nevertheless, an
// odd byte at the end being left out.
TLVN_API int FindUrlW(const WCHAR* text, int length, int& foundLength);

// Appends name and value, as they stand, to the parameters of a "mailto:" URL. A null text
// counts as empty.
TLVN_API void AddMailtoParam(const char* name, const char* value, CString& url);
