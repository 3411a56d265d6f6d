#include "viewer/win32/dialogs.h"

#include "editor/font_info.h"
#include "platform/folder.h"
#include "viewer/win32/resource.h"
#include "viewer/win32/window_text.h"

#include <algorithm>
#include <commdlg.h>
#include <shlobj.h>

namespace tlvn {

namespace {

constexpr int kMaxPath = 32'768;

struct Question {
    UINT title;
    UINT label;
    bool secret;
    std::string* text;
};

INT_PTR CALLBACK TextProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        const auto& question = *reinterpret_cast<const Question*>(lParam);
        ::SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
        ::SetWindowTextW(dialog, LoadText(question.title).c_str());
        ::SetDlgItemTextW(dialog, IDC_LABEL, LoadText(question.label).c_str());
        ::SetDlgItemTextW(dialog, IDC_TEXT, Utf8ToUtf16(*question.text).c_str());
        constexpr WCHAR kDot = 0x25CF;
        if (question.secret)
            ::SendDlgItemMessageW(dialog, IDC_TEXT, EM_SETPASSWORDCHAR, kDot, 0);
        return TRUE;
    }
    if (message != WM_COMMAND || (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL))
        return FALSE;
    const auto& question =
        *reinterpret_cast<const Question*>(::GetWindowLongPtrW(dialog, GWLP_USERDATA));
    if (LOWORD(wParam) == IDOK)
        *question.text = Utf16ToUtf8(GetTextOf(::GetDlgItem(dialog, IDC_TEXT)));
    ::EndDialog(dialog, LOWORD(wParam));
    return TRUE;
}

HWND HandleOf(const CWnd* owner)
{
    return owner == nullptr ? nullptr : owner->m_hWnd;
}

// The filter's "|" are zeros for the system.
bool AskFile(CWnd* owner, UINT filter, const WCHAR* extension, DWORD flags,
             BOOL(WINAPI* ask)(OPENFILENAMEW*), std::string& path)
{
    WString filters = LoadText(filter);
    std::replace(filters.begin(), filters.end(), TW('|'), WCHAR{});
    WString file = Utf8ToUtf16(path);
    file.resize(kMaxPath);
    OPENFILENAMEW question = {};
    question.lStructSize = sizeof question;
    question.hwndOwner = HandleOf(owner);
    question.lpstrFilter = filters.c_str();
    question.lpstrFile = file.data();
    question.nMaxFile = kMaxPath;
    question.lpstrDefExt = extension;
    question.Flags = flags | OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
    if (!ask(&question))
        return false;
    path = Utf16ToUtf8(file.c_str());
    return true;
}

} // namespace

bool AskText(CWnd* owner, UINT title, UINT label, bool secret, std::string& text)
{
    Question question = {title, label, secret, &text};
    return ::DialogBoxParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_TEXT),
                             HandleOf(owner), TextProcedure,
                             reinterpret_cast<LPARAM>(&question)) == IDOK;
}

bool AskFolder(CWnd* owner, std::string& path)
{
    const WString title = LoadText(IDS_TITLE_FOLDER);
    BROWSEINFOW question = {};
    question.hwndOwner = HandleOf(owner);
    question.lpszTitle = title.c_str();
    question.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
    PIDLIST_ABSOLUTE const chosen = ::SHBrowseForFolderW(&question);
    if (chosen == nullptr)
        return false;
    WCHAR folder[MAX_PATH] = {};
    const bool found = ::SHGetPathFromIDListW(chosen, folder) != FALSE;
    ::CoTaskMemFree(chosen);
    if (found)
        path = Utf16ToUtf8(folder);
    return found;
}

bool AskFileToOpen(CWnd* owner, UINT filter, std::string& path)
{
    return AskFile(owner, filter, nullptr, OFN_FILEMUSTEXIST, ::GetOpenFileNameW, path);
}

bool AskFileToSave(CWnd* owner, UINT filter, const WCHAR* extension, std::string& path)
{
    return AskFile(owner, filter, extension, OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST,
                   ::GetSaveFileNameW, path);
}

bool AskFont(CWnd* owner, CFontInfo& font)
{
    const HDC screen = ::GetDC(nullptr);
    LOGFONTW description = font.MakeLogFont(::GetDeviceCaps(screen, LOGPIXELSY), font.GetIndex());
    ::ReleaseDC(nullptr, screen);
    CHOOSEFONTW question = {};
    question.lStructSize = sizeof question;
    question.hwndOwner = HandleOf(owner);
    question.lpLogFont = &description;
    question.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_NOVERTFONTS | CF_NOSTYLESEL;
    if (!::ChooseFontW(&question))
        return false;
    constexpr int kTenthsOfPoint = 10;
    font = CFontInfo(CStringA(description.lfFaceName), question.iPointSize / kTenthsOfPoint,
                     font.GetIndex());
    return true;
}

bool AskColor(CWnd* owner, COLORREF& color)
{
    static COLORREF ownColors[16] = {};
    CHOOSECOLORW question = {};
    question.lStructSize = sizeof question;
    question.hwndOwner = HandleOf(owner);
    question.rgbResult = color;
    question.lpCustColors = ownColors;
    question.Flags = CC_RGBINIT | CC_FULLOPEN;
    if (!::ChooseColorW(&question))
        return false;
    color = question.rgbResult;
    return true;
}

} // namespace tlvn
