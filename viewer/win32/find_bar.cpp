#include "viewer/win32/find_bar.h"

#include "viewer/win32/resource.h"
#include "viewer/win32/window_text.h"

namespace tlvn {

namespace {

const char kBarClass[] = "TolvanFindBarClass";
constexpr int kMargin = 4;
constexpr int kFieldPadding = 10;

enum ControlId : UINT { kLabel = 1, kField, kRegexp, kCase, kResult };

} // namespace

BEGIN_MESSAGE_MAP(FindBar, CWnd)
ON_WM_SIZE()
END_MESSAGE_MAP()

int FindBar::GetHeight()
{
    return GetDialogFontHeight() + kFieldPadding + 2 * kMargin;
}

int FindBar::CreateBar(CWnd* parent, UINT id)
{
    RegisterWindowClass(kBarClass, 0, LoadStandardCursor(IDC_ARROW),
                        reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
    if (!CreateEx(WS_EX_CONTROLPARENT, kBarClass, "", WS_CHILD | WS_CLIPCHILDREN, CRect(0, 0, 0, 0),
                  parent, id))
        return 0;
    CreateControl(m_label, "STATIC", IDS_FIND_LABEL, SS_CENTERIMAGE, kLabel);
    CreateControl(m_field, "EDIT", 0, WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, kField);
    CreateControl(m_next, "BUTTON", IDS_FIND_NEXT, WS_TABSTOP, ID_SEARCH_NEXT);
    CreateControl(m_previous, "BUTTON", IDS_FIND_PREVIOUS, WS_TABSTOP, ID_SEARCH_PREVIOUS);
    CreateControl(m_regexp, "BUTTON", IDS_FIND_REGEXP, WS_TABSTOP | BS_AUTOCHECKBOX, kRegexp);
    CreateControl(m_case, "BUTTON", IDS_FIND_CASE, WS_TABSTOP | BS_AUTOCHECKBOX, kCase);
    CreateControl(m_result, "STATIC", 0, SS_CENTERIMAGE, kResult);
    CreateControl(m_close, "BUTTON", IDS_FIND_CLOSE, WS_TABSTOP, ID_SEARCH_CLOSE);
    return 1;
}

void FindBar::CreateControl(CWnd& control, const char* className, UINT text, DWORD style, UINT id)
{
    control.Create(className, "", WS_CHILD | WS_VISIBLE | style, CRect(0, 0, 0, 0), this, id);
    control.SetFont(GetDialogFont());
    if (text != 0)
        control.SetWindowText(LoadText(text).c_str());
}

void FindBar::Enter()
{
    m_field.SetFocus();
    m_field.SendMessage(EM_SETSEL, 0, -1);
}

std::string FindBar::GetPattern() const
{
    return Utf16ToUtf8(GetTextOf(m_field));
}

SearchOptions FindBar::GetOptions() const
{
    return {m_case.SendMessage(BM_GETCHECK) == BST_CHECKED,
            m_regexp.SendMessage(BM_GETCHECK) != BST_CHECKED};
}

void FindBar::SetResult(WStringView text)
{
    m_result.SetWindowText(WString(text).c_str());
}

BOOL FindBar::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const UINT id = LOWORD(wParam);
    const UINT code = HIWORD(wParam);
    if ((id == kField && code == EN_CHANGE) ||
        ((id == kRegexp || id == kCase) && code == BN_CLICKED)) {
        GetParent()->PostMessage(kFindChanged);
        return TRUE;
    }
    if (id >= ID_COMMAND_FIRST && code == BN_CLICKED) {
        GetParent()->PostMessage(WM_COMMAND, id);
        return TRUE;
    }
    return CWnd::OnCommand(wParam, lParam);
}

void FindBar::OnSize(UINT type, int width, int height)
{
    CWnd::OnSize(type, width, height);
    const int em = GetDialogFontHeight();
    const struct {
        CWnd& control;
        int width;
    } row[] = {
        {m_label, 3 * em},  {m_field, 14 * em}, {m_next, 3 * em},    {m_previous, 3 * em},
        {m_regexp, 6 * em}, {m_case, 12 * em},  {m_result, 12 * em},
    };
    int x = kMargin;
    for (const auto& place : row) {
        place.control.MoveWindow(x, kMargin, place.width, height - 2 * kMargin);
        x += place.width + kMargin;
    }
    // The last one has its place at the right edge, and what is under it has to end there.
    m_close.MoveWindow(std::max(x, width - kMargin - 2 * em), kMargin, 2 * em,
                       height - 2 * kMargin);
}

BOOL FindBar::Field::PreTranslateMessage(MSG* message)
{
    if (message->message != WM_KEYDOWN ||
        (message->wParam != VK_RETURN && message->wParam != VK_ESCAPE))
        return CWnd::PreTranslateMessage(message);
    const bool back = ::GetKeyState(VK_SHIFT) < 0;
    const UINT command = message->wParam == VK_ESCAPE ? ID_SEARCH_CLOSE
                         : back                       ? ID_SEARCH_PREVIOUS
                                                      : ID_SEARCH_NEXT;
    GetParent()->GetParent()->PostMessage(WM_COMMAND, command);
    return TRUE;
}

} // namespace tlvn
