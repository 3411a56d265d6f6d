#include "platform/browser.h"

#include <shellapi.h>
#include <shlwapi.h>

namespace tlvn {

namespace {

bool Execute(const WCHAR* file, const WCHAR* parameters)
{
    // Above 32 for success, by the contract of ShellExecute.
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(nullptr, L"open", file, parameters, nullptr, SW_SHOWNORMAL));
    return result > 32;
}

// The program that opens web pages, or an empty text.
WString GetWebBrowser()
{
    DWORD size = 0;
    AssocQueryStringW(ASSOCF_NONE, ASSOCSTR_EXECUTABLE, L"http", L"open", nullptr, &size);
    WString path(size, WCHAR{});
    if (size == 0 || FAILED(AssocQueryStringW(ASSOCF_NONE, ASSOCSTR_EXECUTABLE, L"http", L"open",
                                              path.data(), &size)))
        return WString();
    path.resize(path.find(L'\0'));
    return path;
}

// A backslash before the closing quote would make it a letter.
WString Quote(WStringView argument)
{
    const std::size_t last = argument.find_last_not_of(L'\\');
    const std::size_t backslashes = argument.size() - (last == argument.npos ? 0 : last + 1);
    return L'"' + WString(argument) + WString(backslashes, L'\\') + L'"';
}

} // namespace

bool OpenByScheme(WStringView address)
{
    return Execute(WString(address).c_str(), nullptr);
}

bool OpenInWebBrowser(WStringView address)
{
    const WString browser = GetWebBrowser();
    return !browser.empty() && Execute(browser.c_str(), Quote(address).c_str());
}

} // namespace tlvn
