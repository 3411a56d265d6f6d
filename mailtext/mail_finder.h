// Finding mail addresses in running text.
//
//   for (int pos = 0, len; pos < size; pos += len) {
//       const int found = FindEMailA(text + pos, size - pos, len);
//       if (found < 0)
//           break;
//       Mark(pos += found, len);
//   }
//
// An address is a run of address characters, "@", a run of the same without ".", "." and a
// further run, which does not start with ".". The address characters are letters, digits and
// "._-=^~!$%&*+/?|": the end of a sentence belongs to the address. A run before "@" reaches back
// to the first other character, or to where a candidate before it was given up.
//
// Near the end of the text less is found, and callers rely on it: an address starts at least 5
// characters before the end, and a run of two characters or more that reaches the last 4 before
// its "@" ends the search. So "a@b.c" is found and "abcdefgh@x.y" is not.
//
// Time is in proportion to the text up to the end of the address. There is no limit to how long
// an address can be.

#pragma once

#include "platform/types.h"

// Position of the first address in the `length` bytes of narrow text (below 0: up to the zero),
// and its length; or -1, and 0. A double-byte character is stepped over whole.
TLVN_API int FindEMailA(const char* text, int length, int& foundLength);

// The same in UTF-16. The length, the position and foundLength are in bytes nevertheless, an
// odd byte at the end being left out.
TLVN_API int FindEMailW(const WCHAR* text, int length, int& foundLength);
