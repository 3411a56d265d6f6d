#include "viewer/view_window.h"

#include "platform/nls.h"
#include "viewer/show_text.h"

namespace tlvn {

namespace {

const char kWindowClass[] = "TolvanViewWndClass";
const char kProgramName[] = "TolvanView";

} // namespace

IMPLEMENT_DYNAMIC(ViewWindow, CWnd)

BEGIN_MESSAGE_MAP(ViewWindow, CWnd)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_SETFOCUS()
ON_WM_DESTROY()
END_MESSAGE_MAP()

int ViewWindow::CreateViewWindow()
{
    RegisterWindowClass(kWindowClass, 0, LoadStandardCursor(IDC_ARROW),
                        reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
    if (!CreateEx(0, kWindowClass, kProgramName, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                  CRect(CPoint(40, 40), CSize(760, 640)), nullptr, 0))
        return 0;
    ShowWindow(SW_SHOW);
    UpdateWindow();
    return 1;
}

void ViewWindow::ShowMail(const Mail& mail)
{
    WString title;
    ConvertToUtf16(65001, MakeHarmless(mail.GetHeaderText("Subject"), false), title);
    if (!title.empty())
        title += TW(" - ");
    title += WidenText(kProgramName);
    SetWindowText(title.c_str());
    ShowMailInEditor(mail, m_editor);
    m_editor.UpdateWindow();
}

int ViewWindow::OnCreate(LPCREATESTRUCT create)
{
    if (CWnd::OnCreate(create) == -1)
        return -1;
    const int created = m_editor.CreateEditorWnd(
        WS_EX_CLIENTEDGE, WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | WS_TABSTOP,
        CRect(0, 0, 0, 0), this, 1, CEditorMetrics(), CEditorColor());
    return created != 0 ? 0 : -1;
}

void ViewWindow::OnSize(UINT type, int width, int height)
{
    CWnd::OnSize(type, width, height);
    if (m_editor.GetSafeHwnd() != nullptr)
        m_editor.MoveWindow(0, 0, width, height, TRUE);
}

void ViewWindow::OnSetFocus(CWnd*)
{
    m_editor.SetFocus();
}

void ViewWindow::OnDestroy()
{
    CWnd::OnDestroy();
    ::PostQuitMessage(0);
}

} // namespace tlvn
