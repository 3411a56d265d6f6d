// The messages, from the string table of the DLL this code is in.

#include "platform/string_table.h"

namespace tlvn {

namespace {

HINSTANCE OwnModule()
{
    static const HINSTANCE module = [] {
        HMODULE found = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                               GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<LPCWSTR>(&OwnModule), &found);
        return found;
    }();
    return module;
}

} // namespace

WStringView FindMessage(UINT id)
{
    // Without a buffer, LoadString gives the text where it lies in the DLL.
    const WCHAR* text = nullptr;
    const int length = LoadStringW(OwnModule(), id, reinterpret_cast<LPWSTR>(&text), 0);
    return length > 0 ? WStringView(text, static_cast<std::size_t>(length)) : WStringView();
}

} // namespace tlvn
