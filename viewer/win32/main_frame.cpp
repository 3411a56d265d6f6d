#include "viewer/win32/main_frame.h"

#include "platform/file.h"
#include "platform/folder.h"
#include "viewer/mail_file.h"
#include "viewer/win32/compose_window.h"
#include "viewer/win32/resource.h"
#include "viewer/win32/window_text.h"

#include <algorithm>
#include <utility>

namespace tlvn {

namespace {

const char kWindowClass[] = "TolvanViewWndClass";
const char kProgramName[] = "TolvanView";
constexpr UINT kShowChosen = WM_APP + 2;

enum WindowId : UINT {
    kPanesId = 1,
    kFoldersId,
    kListId,
    kEditorId,
    kFindBarId,
    kStatusId,
    kProgressId
};

constexpr UINT_PTR kReadTimer = 1;
constexpr UINT kReadPause = 10; // milliseconds between two steps
constexpr int kReadStep = 20;
constexpr int kProgressSteps = 1'000;
constexpr int kProgressWidth = 160;

} // namespace

BEGIN_MESSAGE_MAP(MainFrame, CWnd)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_SETFOCUS()
ON_WM_ACTIVATE()
ON_WM_GETMINMAXINFO()
ON_WM_TIMER()
ON_WM_CLOSE()
ON_WM_QUERYENDSESSION()
ON_WM_ENDSESSION()
ON_WM_DESTROY()
ON_WM_INITMENUPOPUP()
ON_MESSAGE(kShowChosen, &MainFrame::OnShowChosen)
ON_MESSAGE(kFindChanged, &MainFrame::OnFindChanged)
ON_MESSAGE(kDraftSaved, &MainFrame::OnDraftSaved)
ON_MESSAGE(kComposeClosed, &MainFrame::OnComposeClosed)
END_MESSAGE_MAP()

int MainFrame::CreateFrame(const std::string& settingsPath)
{
    LoadSettings(settingsPath);
    CRect screen;
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
    const WindowPlace place = m_settings.GetWindowPlace(screen);
    RegisterWindowClass(kWindowClass, 0, LoadStandardCursor(IDC_ARROW),
                        reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
    const HMENU menu = ::LoadMenuW(::GetModuleHandleW(nullptr), TW("MAINMENU"));
    if (!CreateEx(0, kWindowClass, kProgramName, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                  place.rect.left, place.rect.top, place.rect.Width(), place.rect.Height(), nullptr,
                  menu)) {
        ::DestroyMenu(menu);
        return 0;
    }
    MakeKeys();
    ShowWindow(place.maximized ? SW_SHOWMAXIMIZED : SW_SHOW);
    UpdateWindow();
    if (!m_settings.File().GetMessage().empty())
        Complain(this, IDS_SETTINGS_TROUBLE, m_settings.File().GetMessage());
    return 1;
}

int MainFrame::OnCreate(LPCREATESTRUCT create)
{
    if (CWnd::OnCreate(create) == -1)
        return -1;
    CSettingData& settings = m_settings.File().Data();
    const CRect none(0, 0, 0, 0);
    if (!m_panes.Create(nullptr, "", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, none, this,
                        kPanesId) ||
        m_folders.CreateTree(&m_panes, kFoldersId) == 0 ||
        m_list.CreateList(&m_panes, kListId, m_settings) == 0 ||
        m_findBar.CreateBar(this, kFindBarId) == 0)
        return -1;
    CEditorMetrics metrics;
    metrics.GetEditorMetrics(&settings, ViewSettings::kViewerSection, 1);
    CEditorColor colors;
    colors.GetEditorColor(&settings, ViewSettings::kColorSection);
    if (m_editor.CreateEditorWnd(WS_EX_CLIENTEDGE,
                                 WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | WS_TABSTOP, none,
                                 &m_panes, kEditorId, metrics, colors) == 0)
        return -1;
    m_editor.SetReadOnly(1);
    CreateStatus();

    m_panes.SetPaneWnd(&m_folders, &m_list, &m_editor);
    constexpr int kFoldersWidth = 180;
    constexpr int kListHeight = 180;
    m_panes.InitPaneSize(&settings, ViewSettings::kFrameSection, SPLIT_LEFT, VFOLD_NORMAL,
                         VFOLD_NORMAL, HFOLD_NORMAL, HFOLD_NORMAL, kFoldersWidth, 3 * kFoldersWidth,
                         kListHeight, 2 * kListHeight);
    return 0;
}

void MainFrame::CreateStatus()
{
    m_status.Create(STATUSCLASSNAMEA, "", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, CRect(0, 0, 0, 0),
                    this, kStatusId);
    m_status.SetFont(GetDialogFont());
    m_progress.Create(PROGRESS_CLASSA, "", WS_CHILD, CRect(0, 0, 0, 0), &m_status, kProgressId);
    m_progress.SendMessage(PBM_SETRANGE32, 0, kProgressSteps);
}

void MainFrame::OnSize(UINT type, int width, int height)
{
    CWnd::OnSize(type, width, height);
    if (type == SIZE_MINIMIZED)
        return;
    LayOut();
    Redraw();
}

// The system's lists and bars keep pieces of what they drew at another size.
void MainFrame::Redraw()
{
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void MainFrame::LayOut()
{
    if (m_status.GetSafeHwnd() == nullptr)
        return;
    m_status.SendMessage(WM_SIZE);
    CRect client;
    GetClientRect(&client);
    CRect status;
    m_status.GetWindowRect(&status);
    const int bar = m_findBarOpen ? FindBar::GetHeight() : 0;
    const int bottom = std::max(0, client.Height() - status.Height());
    m_panes.MoveWindow(0, 0, client.Width(), std::max(0, bottom - bar));
    m_findBar.MoveWindow(0, std::max(0, bottom - bar), client.Width(), bar);
    constexpr int kEdge = 3;
    m_progress.MoveWindow(std::max(0, client.Width() - kProgressWidth - status.Height()), kEdge,
                          kProgressWidth, std::max(0, status.Height() - 2 * kEdge));
}

void MainFrame::OnSetFocus(CWnd*)
{
    ::SetFocus(m_lastFocus != nullptr && ::IsWindow(m_lastFocus) ? m_lastFocus : m_list.m_hWnd);
}

void MainFrame::OnActivate(UINT state, CWnd* other, BOOL minimized)
{
    if (state == WA_INACTIVE) {
        const HWND focus = ::GetFocus();
        if (focus != nullptr && ::IsChild(m_hWnd, focus))
            m_lastFocus = focus;
        return;
    }
    CWnd::OnActivate(state, other, minimized);
    // Another window may have marked the mail meanwhile.
    if (m_mail != nullptr)
        LoadMarkers();
}

void MainFrame::OnGetMinMaxInfo(MINMAXINFO* limits)
{
    limits->ptMinTrackSize = {0, 0};
}

BOOL MainFrame::PreTranslateMessage(MSG* message)
{
    return ::TranslateAcceleratorW(m_hWnd, m_accelerators, message) != 0 ||
           CWnd::PreTranslateMessage(message);
}

void MainFrame::OnClose()
{
    if (!OnQueryEndSession())
        return;
    // A window that closes takes itself out of the list.
    const std::vector<ComposeWindow*> composing = m_composing;
    for (ComposeWindow* window : composing)
        window->DestroyWindow();
    SaveSettings();
    DestroyWindow();
}

// A user who has not saved a mail is asked; the system waits for the answer.
BOOL MainFrame::OnQueryEndSession()
{
    return !m_exporting && std::all_of(m_composing.begin(), m_composing.end(),
                                       [](ComposeWindow* window) { return window->CanClose(); });
}

// The process ends as soon as this returns.
void MainFrame::OnEndSession(BOOL ending)
{
    if (ending)
        SaveSettings();
}

void MainFrame::OnDestroy()
{
    ::DestroyAcceleratorTable(m_accelerators);
    m_accelerators = nullptr;
    CWnd::OnDestroy();
    ::PostQuitMessage(0);
}

BOOL MainFrame::Panes::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (C3PaneWnd::OnNotify(wParam, lParam, result))
        return TRUE;
    *result = GetParent()->SendMessage(WM_NOTIFY, wParam, lParam);
    return TRUE;
}

BOOL MainFrame::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    auto* const header = reinterpret_cast<NMHDR*>(lParam);
    if (header->hwndFrom == m_list.m_hWnd && m_list.m_hWnd != nullptr) {
        if (m_list.HandleNotify(header))
            return TRUE;
        // Several changes come for one choice, and one for each row when all are chosen.
        if (header->code == LVN_ITEMCHANGED && !std::exchange(m_showPosted, true))
            PostMessage(kShowChosen);
    }
    if (header->hwndFrom == m_folders.m_hWnd && header->code == TVN_SELCHANGEDW) {
        if (const MailFolder* const folder = m_folders.GetChosen(); folder != nullptr)
            ShowFolder(*folder);
        return TRUE;
    }
    return CWnd::OnNotify(wParam, lParam, result);
}

// --- opening and reading -------------------------------------------------------------------------

void MainFrame::Open(std::string path)
{
    if (path.empty())
        path = m_settings.GetLastFolder();
    if (path.empty())
        return;
    std::string narrow;
    std::string error;
    // A relative path would change its meaning with the current folder.
    if (ToNarrowPath(path, narrow))
        path = FromNarrowPath(GetFullPath(narrow.c_str()));
    std::string bytes;
    m_wantedFile.clear();
    if (m_folders.Open(path, error)) {
        m_settings.SetLastFolder(path);
    } else if (LoadMailAt(path, bytes, error)) {
        std::string folder = path.substr(0, path.size() - GetLastName(path).size());
        if (folder.size() > 3)
            folder.pop_back(); // the separator; a root keeps it
        m_wantedFile = path;
        std::string ignored;
        m_folders.Open(folder, ignored);
        ShowMailBytes(std::move(bytes), path);
    } else {
        Complain(this, IDS_CANNOT_OPEN, path + ": " + error);
        return;
    }
    StartReading();
}

void MainFrame::StartReading()
{
    SetTimer(kReadTimer, kReadPause);
    m_progress.SendMessage(PBM_SETPOS, 0);
    m_progress.ShowWindow(SW_SHOW);
}

void MainFrame::ShowFolder(const MailFolder& folder)
{
    std::string error;
    const bool opened = m_list.Open(folder.path, error);
    m_shownMail = -1;
    StartReading();
    if (!opened) {
        ShowProgress();
        ShowNoMail(folder.path, error);
    }
}

void MainFrame::OnTimer(UINT_PTR id)
{
    if (id != kReadTimer) {
        CWnd::OnTimer(id);
        return;
    }
    // Reading on would change the rows that are being exported.
    if (m_exporting)
        return;
    // The mails first; the folders are read when they are there.
    if (m_list.GetMails().IsReading()) {
        if (!m_list.Step(kReadStep) && m_list.GetFocusedRow() < 0) {
            const bool wanted = !m_wantedFile.empty();
            m_list.ChooseRow(wanted ? m_list.FindFile(m_wantedFile) : 0);
            if (!wanted && m_list.GetMails().GetCount() == 0)
                CloseMail({});
        }
        ShowProgress();
        return;
    }
    if (!m_folders.Step(kReadStep))
        KillTimer(kReadTimer);
}

void MainFrame::ShowProgress()
{
    const MailList& mails = m_list.GetMails();
    const WString count = Utf8ToUtf16(std::to_string(mails.GetCount()));
    if (mails.IsReading()) {
        const INT64 total = std::max(mails.GetTotal(), INT64{1});
        m_progress.SendMessage(PBM_SETPOS,
                               static_cast<WPARAM>(mails.GetDone() * kProgressSteps / total));
        SetStatus(LoadText(IDS_READING, count));
        return;
    }
    m_progress.ShowWindow(SW_HIDE);
    WString text = LoadText(IDS_MAIL_COUNT, count);
    if (mails.IsCut())
        text += TW(' ') + LoadText(IDS_CUT);
    if (!mails.GetReadError().empty())
        text += TW(' ') + Utf8ToUtf16(mails.GetReadError());
    SetStatus(text);
}

void MainFrame::SetStatus(WStringView text)
{
    m_status.SetWindowText(WString(text).c_str());
}

LRESULT MainFrame::OnShowChosen(WPARAM, LPARAM)
{
    m_showPosted = false;
    ShowMailAt(m_list.GetFocusedRow());
    return 0;
}

} // namespace tlvn
