#include "viewer/win32/progress_box.h"

#include "viewer/win32/resource.h"
#include "viewer/win32/window_text.h"

#include <algorithm>

namespace tlvn {

namespace {

constexpr int kSteps = 1'000;

INT_PTR CALLBACK TakeNothing(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

} // namespace

void ProgressBox::Open(CWnd* owner, UINT title)
{
    const HWND box = ::CreateDialogParamW(
        ::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_PROGRESS), owner->m_hWnd, TakeNothing, 0);
    if (box == nullptr || !SubclassWindow(box))
        return;
    SetWindowText(LoadText(title).c_str());
    ::SendDlgItemMessageW(m_hWnd, IDC_PROGRESS, PBM_SETRANGE32, 0, kSteps);
    ShowWindow(SW_SHOW);
}

bool ProgressBox::Show(const WString& text, int done, int total)
{
    ::SetDlgItemTextW(m_hWnd, IDC_LABEL, text.c_str());
    const INT64 position = INT64{done} * kSteps / std::max(total, 1);
    ::SendDlgItemMessageW(m_hWnd, IDC_PROGRESS, PBM_SETPOS, static_cast<WPARAM>(position), 0);
    return PumpPendingMessages() && !m_givenUp;
}

BOOL ProgressBox::PreTranslateMessage(MSG* message)
{
    return ::IsDialogMessageW(m_hWnd, message) || CWnd::PreTranslateMessage(message);
}

// Escape and the button in the title come as the button, too.
BOOL ProgressBox::OnCommand(WPARAM wParam, LPARAM lParam)
{
    if (LOWORD(wParam) != IDCANCEL)
        return CWnd::OnCommand(wParam, lParam);
    m_givenUp = true;
    return TRUE;
}

} // namespace tlvn
