// The text of an editor as UTF-16, and back: text in a Unicode code type is UTF-16 as it stands,
// any other goes through the code page of its type.

#pragma once

#include "foundation/code_type.h"
#include "platform/nls.h"

#include <string>
#include <string_view>

namespace tlvn {

// The code page of narrow text of the type: the multibyte code page in force when the type does
// not say.
TLVN_API UINT GetTextPage(CodeType codeType);

// `out` is replaced. Half a unit at the end of UTF-16 text is left out; what the code page lacks
// becomes "?", and UnitsToText then returns false. Both throw std::bad_alloc or std::length_error
// for lack of memory.
TLVN_API void TextToUnits(CodeType codeType, std::string_view text, WString& out);
TLVN_API bool UnitsToText(CodeType codeType, WStringView units, std::string& out);

} // namespace tlvn
