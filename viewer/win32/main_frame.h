// TolvanView's window: folders, the list of the mails in one, and the mail chosen, in a frame of
// three panes; below them the find bar and a status line.
//
//   MainFrame frame;
//   if (frame.CreateFrame(settingsPath) == 0)
//       return 1;
//   frame.Open(path);                           // a folder, an mbox file or one mail
//   return RunMessageLoop();
//
// Reading folders and mails goes on by a timer, so that the window stays alive.
//   main_frame.cpp           the window and its parts, the timer, opening
//   main_frame_command.cpp   the commands, the search, the panes
//   main_frame_mail.cpp      the mail shown: markers, replies, export
//   main_frame_settings.cpp  what is remembered, and the commands that change it

#pragma once

#include "editor/editor_wnd.h"
#include "ui/accel_data.h"
#include "ui/three_pane_wnd.h"
#include "viewer/command_state.h"
#include "viewer/mail_compose.h"
#include "viewer/marker_file.h"
#include "viewer/text_search.h"
#include "viewer/view_settings.h"
#include "viewer/win32/find_bar.h"
#include "viewer/win32/folder_tree_wnd.h"
#include "viewer/win32/mail_list_wnd.h"

#include <memory>
#include <vector>

namespace tlvn {

class ComposeWindow;

class MainFrame : public CWnd {
public:
    // Reads the settings (a narrow path), asking for the password of an enciphered file, and
    // shows the window. Returns 1, or 0 when the system refuses.
    int CreateFrame(const std::string& settingsPath);

    // Shows a folder or an mbox file, or a mail in its folder; of a list the first mail. What is
    // wrong is told in a box, and the window stays as it was. UTF-8; empty for the last folder.
    void Open(std::string path);

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    int OnCreate(LPCREATESTRUCT create);
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* old);
    void OnActivate(UINT state, CWnd* other, BOOL minimized);
    void OnGetMinMaxInfo(MINMAXINFO* limits);
    void OnTimer(UINT_PTR id);
    void OnClose();
    BOOL OnQueryEndSession();
    void OnEndSession(BOOL ending);
    void OnDestroy();
    void OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu);
    LRESULT OnShowChosen(WPARAM wParam, LPARAM lParam);
    LRESULT OnFindChanged(WPARAM wParam, LPARAM lParam);
    LRESULT OnDraftSaved(WPARAM wParam, LPARAM lParam);
    LRESULT OnComposeClosed(WPARAM wParam, LPARAM lParam);
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    DECLARE_MESSAGE_MAP()

private:
    // Hands the notifications of the panes' windows on to the frame.
    class Panes : public C3PaneWnd {
    protected:
        BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    };

    void CreateStatus();
    void LayOut();
    void Redraw();
    void StartReading();
    void ShowFolder(const MailFolder& folder);
    void ShowProgress();
    void SetStatus(WStringView text);

    CommandContext GetContext();
    bool RunOnField(int command);
    void Run(int command);
    void RunMail(int command);
    void RunView(int command);
    void RunSettings(int command);
    void CheckSplitType(CMenu& menu);

    void OpenFindBar();
    void CloseFindBar();
    void FindAll();
    void GoToHit(bool backward);

    void ShowMailAt(int row);
    bool ShowMailBytes(std::string bytes, const std::string& path);
    void CloseMail(WStringView message);
    void ShowNoMail(const std::string& path, const std::string& error);
    std::string GetMarkerText() const;
    void LoadMarkers();
    void SaveMarkers();
    void Mark(int command);
    void Compose(const Draft& draft);
    void Reply(bool all);
    void Export();

    void LoadSettings(const std::string& path);
    void SaveSettings();
    void MakeKeys();
    void ChangeFont();
    void ChangeColor(bool background);
    void ChangeKeys();
    void ChangeAddress();
    void ChangePassword();

    ViewSettings m_settings;
    CAccelData m_keys;
    HACCEL m_accelerators = nullptr;

    Panes m_panes;
    FolderTreeWnd m_folders;
    MailListWnd m_list;
    CEditorWnd m_editor;
    FindBar m_findBar;
    bool m_findBarOpen = false;
    CWnd m_status;
    CWnd m_progress;
    HWND m_lastFocus = nullptr;

    std::string m_wantedFile; // to be chosen once the list is there
    std::unique_ptr<Mail> m_mail;
    std::string m_mailPath;
    int m_shownMail = -1; // its number in the list
    bool m_showPosted = false;
    MarkerFile m_markers;
    TextSearch m_search;
    std::vector<ComposeWindow*> m_composing;
    bool m_exporting = false;
};

} // namespace tlvn
