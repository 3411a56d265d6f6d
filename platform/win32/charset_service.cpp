#include "platform/charset_service.h"

#include "platform/nls.h"

#include <objbase.h>

#include <mlang.h>
#include <oleauto.h>

namespace tlvn {
namespace {

// Not in every toolchain's import libraries.
constexpr CLSID kMultiLanguageClass = {
    0x275C23E2, 0x3747, 0x11D0, {0x9F, 0xEA, 0x00, 0xAA, 0x00, 0x3F, 0x86, 0x46}};
constexpr IID kMultiLanguageInterface = {
    0x275C23E1, 0x3747, 0x11D0, {0x9F, 0xEA, 0x00, 0xAA, 0x00, 0x3F, 0x86, 0x46}};

} // namespace

UINT AskCharsetCodePage(const char* name)
{
    IMultiLanguage* service = nullptr;
    if (FAILED(CoCreateInstance(kMultiLanguageClass, nullptr, CLSCTX_INPROC_SERVER,
                                kMultiLanguageInterface, reinterpret_cast<void**>(&service))))
        return 0;
    WString wideName;
    ConvertToUtf16(20127, name, wideName);
    UINT codePage = 0;
    if (BSTR text = SysAllocString(wideName.c_str())) {
        MIMECSETINFO info = {};
        if (SUCCEEDED(service->GetCharsetInfo(text, &info)))
            codePage = info.uiInternetEncoding;
        SysFreeString(text);
    }
    service->Release();
    return codePage;
}

} // namespace tlvn
