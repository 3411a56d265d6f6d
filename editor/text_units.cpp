#include "editor/text_units.h"

#include "charcode/charset.h"
#include "foundation/multibyte.h"

#include <cstring>

namespace tlvn {

UINT GetTextPage(CodeType codeType)
{
    const UINT page = CharSetCode2CodePage(codeType);
    return page != 0 ? page : GetMultibyteCodePage();
}

void TextToUnits(CodeType codeType, std::string_view text, WString& out)
{
    if (IsCodeTypeUnicode(codeType) == 0) {
        ConvertToUtf16(GetTextPage(codeType), text, out);
        return;
    }
    out.resize(text.size() / sizeof(WCHAR));
    if (!out.empty())
        std::memcpy(out.data(), text.data(), out.size() * sizeof(WCHAR));
}

bool UnitsToText(CodeType codeType, WStringView units, std::string& out)
{
    if (IsCodeTypeUnicode(codeType) == 0)
        return ConvertFromUtf16(GetTextPage(codeType), units, out) == kConverted;
    out.assign(reinterpret_cast<const char*>(units.data()), units.size() * sizeof(WCHAR));
    return true;
}

} // namespace tlvn
