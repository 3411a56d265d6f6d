// Taking the wrapping off names, addresses and message identifiers of header fields.
//
// White space at both ends is removed first, always.

#pragma once

#include "framework/framework.h"

// Remove a double quote at the start and one at the end, or "<" at the start and ">" at the end;
// each where it is, whether the other is there or not.
TLVN_API void ExcludeQuote(CString& text);
TLVN_API void ExcludeQuote(CStringW& text);
TLVN_API void ExcludeAngleBracket(CString& text);
TLVN_API void ExcludeAngleBracket(CStringW& text);

// Keeps what is between the last "<" and the first ">" behind it: of a References field the last
// identifier. Without both the text stays.
TLVN_API void ExtractLastMessageID(CString& text);
