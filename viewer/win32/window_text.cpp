#include "viewer/win32/window_text.h"

#include "framework/framework.h"

namespace tlvn {

namespace {

constexpr int kFontHeight = 12;
const WCHAR kProgramName[] = TW("TolvanView");

WString Replaced(WString text, WStringView mark, WStringView by)
{
    const std::size_t at = text.find(mark);
    return at == text.npos ? text : text.replace(at, mark.size(), by);
}

} // namespace

WString LoadText(UINT id)
{
    // With no room given, the address of the text in the resources is stored.
    const WCHAR* text = nullptr;
    const int length =
        ::LoadStringW(::GetModuleHandleW(nullptr), id, reinterpret_cast<WCHAR*>(&text), 0);
    return length > 0 ? WString(text, static_cast<std::size_t>(length)) : WString();
}

WString LoadText(UINT id, WStringView first, WStringView second)
{
    return Replaced(Replaced(LoadText(id), TW("%1"), first), TW("%2"), second);
}

WString GetTextOf(HWND window)
{
    WString text(static_cast<std::size_t>(::GetWindowTextLengthW(window)), WCHAR{});
    const int length = ::GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

CFont* GetDialogFont()
{
    static CFont font;
    if (font.GetSafeHandle() == nullptr) {
        LOGFONTW description = {};
        description.lfHeight = -kFontHeight;
        description.lfCharSet = SHIFTJIS_CHARSET;
        WStringView(TW("MS UI Gothic")).copy(description.lfFaceName, LF_FACESIZE - 1);
        font.CreateFontIndirect(&description);
    }
    return &font;
}

int GetDialogFontHeight()
{
    return kFontHeight;
}

void Complain(CWnd* owner, UINT id, const std::string& details)
{
    WString text = LoadText(id);
    if (!details.empty())
        text += TW("\n\n") + Utf8ToUtf16(details);
    ShowMessageBox(owner == nullptr ? nullptr : owner->m_hWnd, text.c_str(), kProgramName,
                   MB_OK | MB_ICONEXCLAMATION);
}

void Tell(CWnd* owner, const std::string& utf8)
{
    ShowMessageBox(owner == nullptr ? nullptr : owner->m_hWnd, Utf8ToUtf16(utf8).c_str(),
                   kProgramName, MB_OK | MB_ICONINFORMATION);
}

} // namespace tlvn
