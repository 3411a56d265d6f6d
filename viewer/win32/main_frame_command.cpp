#include "viewer/win32/main_frame.h"

#include "viewer/win32/dialogs.h"
#include "viewer/win32/resource.h"
#include "viewer/win32/window_text.h"

namespace tlvn {

CommandContext MainFrame::GetContext()
{
    CommandContext context;
    context.chosenMails = m_list.GetChosenCount();
    context.mailShown = m_mail != nullptr;
    WCHAR focusClass[8] = {};
    ::GetClassNameW(::GetFocus(), focusClass, 8);
    const bool inField = WStringView(focusClass) == TW("Edit");
    context.textSelected = inField || m_editor.IsTextSelected() != 0;
    context.bodySelected = m_editor.IsBodyTextSelected() != 0;
    context.markersDrawn = m_editor.IsLineMarkerDrawn() != 0;
    context.hits = m_editor.GetFoundArray().GetSize() > 0;
    context.findBarOpen = m_findBarOpen;
    context.exporting = m_exporting;
    return context;
}

void MainFrame::OnInitMenuPopup(CMenu* menu, UINT, BOOL systemMenu)
{
    if (systemMenu)
        return;
    const CommandContext context = GetContext();
    for (UINT i = 0; i < menu->GetMenuItemCount(); ++i) {
        const auto id = static_cast<int>(menu->GetMenuItemID(static_cast<int>(i)));
        if (id < 0)
            continue; // opens a submenu
        const bool enabled = IsCommandEnabled(id, context);
        menu->EnableMenuItem(i, MF_BYPOSITION | (enabled ? MF_ENABLED : MF_GRAYED));
    }
    CheckSplitType(*menu);
}

void MainFrame::CheckSplitType(CMenu& menu)
{
    for (UINT id = ID_VIEW_SPLIT_FIRST; id <= ID_VIEW_SPLIT_LAST; ++id) {
        const bool checked = static_cast<int>(id) - ID_VIEW_SPLIT_FIRST == m_panes.GetSplitType();
        menu.CheckMenuItem(id, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
    }
}

BOOL MainFrame::OnCommand(WPARAM wParam, LPARAM lParam)
{
    if (lParam != 0)
        return CWnd::OnCommand(wParam, lParam);
    const int command = LOWORD(wParam);
    if (IsCommandEnabled(command, GetContext()) && !RunOnField(command))
        Run(command);
    return TRUE;
}

// The clipboard's commands are for a field that has the focus.
bool MainFrame::RunOnField(int command)
{
    const HWND focus = ::GetFocus();
    if (focus == nullptr || ::GetParent(focus) != m_findBar.m_hWnd)
        return false;
    if (command == ID_EDIT_COPY)
        ::SendMessageW(focus, WM_COPY, 0, 0);
    else if (command == ID_EDIT_SELECT_ALL)
        ::SendMessageW(focus, EM_SETSEL, 0, -1);
    else
        return false;
    return true;
}

void MainFrame::Run(int command)
{
    std::string path;
    switch (command) {
    case ID_FILE_OPEN_FOLDER:
        if (AskFolder(this, path))
            Open(path);
        return;
    case ID_FILE_OPEN_FILE:
        if (AskFileToOpen(this, IDS_FILTER_MAIL, path))
            Open(path);
        return;
    case ID_FILE_EXIT:
        PostMessage(WM_CLOSE);
        return;
    case ID_EDIT_COPY:
        m_editor.Copy();
        return;
    case ID_EDIT_SELECT_ALL:
        if (GetFocus() == &m_list)
            m_list.ChooseAll();
        else
            m_editor.SelectAll();
        return;
    case ID_SEARCH_FIND:
        OpenFindBar();
        return;
    case ID_SEARCH_NEXT:
    case ID_SEARCH_PREVIOUS:
        GoToHit(command == ID_SEARCH_PREVIOUS);
        return;
    case ID_SEARCH_CLOSE:
        CloseFindBar();
        return;
    default:
        RunMail(command);
        RunView(command);
        RunSettings(command);
        return;
    }
}

void MainFrame::RunView(int command)
{
    if (command >= ID_VIEW_SPLIT_FIRST && command <= ID_VIEW_SPLIT_LAST) {
        m_panes.SetSplitType(static_cast<SplitType>(command - ID_VIEW_SPLIT_FIRST));
        Redraw();
        return;
    }
    CWnd* const focus = GetFocus();
    if (command == ID_VIEW_MAXIMIZE) {
        const int pane = m_panes.GetPaneIdx(focus);
        m_panes.MaximizePane(pane >= 0 ? pane : m_panes.GetPaneIdx(&m_editor));
    } else if (command == ID_VIEW_NEXT_PANE || command == ID_VIEW_PREVIOUS_PANE) {
        int wrapped = 0;
        const int step = command == ID_VIEW_NEXT_PANE ? 1 : -1;
        if (CWnd* const next = m_panes.GetNextWnd(focus, step, wrapped); next != nullptr)
            next->SetFocus();
    }
}

// --- search --------------------------------------------------------------------------------------

void MainFrame::OpenFindBar()
{
    if (!m_findBarOpen) {
        m_findBarOpen = true;
        m_findBar.ShowWindow(SW_SHOW);
        LayOut();
        FindAll();
    }
    m_findBar.Enter();
}

void MainFrame::CloseFindBar()
{
    m_findBarOpen = false;
    m_findBar.ShowWindow(SW_HIDE);
    m_editor.ClearFoundArray();
    m_editor.SetFocus();
    LayOut();
}

LRESULT MainFrame::OnFindChanged(WPARAM, LPARAM)
{
    FindAll();
    return 0;
}

// Marks all hits in the mail shown, and tells their number.
void MainFrame::FindAll()
{
    m_editor.ClearFoundArray();
    const std::string pattern = m_findBar.GetPattern();
    std::string error;
    if (!m_findBarOpen || m_mail == nullptr || pattern.empty()) {
        m_findBar.SetResult({});
        return;
    }
    if (!m_search.SetPattern(pattern, m_findBar.GetOptions(), error)) {
        m_findBar.SetResult(Utf8ToUtf16(error));
        return;
    }
    HitArray hits;
    const bool all = m_search.FindAll(m_editor.GetDoc(), hits);
    const auto count = hits.GetSize();
    m_editor.AddFoundArray(hits);
    UINT result = IDS_HITS;
    if (!all)
        result = count == 0 ? IDS_NOT_IN_CODE : IDS_TOO_MANY_HITS;
    else if (count == 0)
        result = IDS_NO_HITS;
    m_findBar.SetResult(LoadText(result, Utf8ToUtf16(std::to_string(count))));
}

void MainFrame::GoToHit(bool backward)
{
    CTextPos start;
    CTextPos end;
    m_editor.GetSelectRange(start, end);
    const CEditorTextViewRangeArray& hits = m_editor.GetFoundArray();
    const int next = FindNextHit(hits, start, end, backward);
    if (next >= 0)
        m_editor.SelectText(hits[next]->start, hits[next]->end, 1, 1);
}

} // namespace tlvn
