// The window in which a mail is written: fields for addresses and subject, an editor for the text.
//
//   auto* window = new ComposeWindow(owner, settings);
//   window->Open(draft);                        // deletes itself when it is closed
//
// Half-width katakana and machine-dependent characters are counted in the last line and pointed
// out before the draft is saved. The owner hears of a saved draft by kDraftSaved, whose lParam is
// the path (const std::string*), and of the window's end by kComposeClosed, whose lParam is the
// window.

#pragma once

#include "editor/editor_wnd.h"
#include "ui/accel_data.h"
#include "viewer/command_state.h"
#include "viewer/draft_check.h"
#include "viewer/view_settings.h"

namespace tlvn {

constexpr UINT kDraftSaved = WM_APP + 10;
constexpr UINT kComposeClosed = WM_APP + 11;

class ComposeWindow : public CWnd {
public:
    // `folder` is where drafts are saved if the user does not choose another one.
    ComposeWindow(CWnd* owner, const CSettingData& settings, std::string folder);
    ~ComposeWindow() override;

    // Shows the window. 0, and the object is gone, when the system refuses.
    int Open(const Draft& draft);

    // Asks the user when the draft is not saved; false when the window has to stay.
    bool CanClose();

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    int OnCreate(LPCREATESTRUCT create);
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* old);
    void OnActivate(UINT state, CWnd* other, BOOL minimized);
    void OnClose();
    void OnTimer(UINT_PTR id);
    void OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu);
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    void PostNcDestroy() override;
    DECLARE_MESSAGE_MAP()

private:
    enum Field { kFrom, kTo, kCc, kSubject, kFields };

    // Goes on in Unicode when it is given what the code of the draft does not have.
    class Editor : public CEditorWnd {
    protected:
        void OnTextNotInCode() override { SetCodeType(CT_UNICODE); }
    };

    static void OnEditorNotify(CEditorWnd* editor, EditorNotify what, DWORD user);

    void ShowDraft(const Draft& draft);
    Draft ReadDraft() const;
    bool IsModified() const;
    CommandContext GetContext() const;
    void Run(int command);
    void Save();
    bool AskAboutFlaws(Draft& draft);
    void CheckDraft();
    void GoToFlaw();
    void ReplaceFlaws(Draft& draft);
    int FindOffset(const CTextPos& pos) const;
    CTextPos FindPosition(int offset) const;

    CWnd* m_owner;
    std::string m_folder;
    CEditorMetrics m_metrics;
    CEditorColor m_colors;
    CAccelData m_keys;
    HACCEL m_accelerators = nullptr;
    CWnd m_labels[kFields];
    CWnd m_fields[kFields];
    Editor m_editor;
    CWnd m_status;
    Draft m_draft; // as it was given; its fields and code type stay
    bool m_fieldsModified = false;
    DraftFlaws m_flaws;
    HWND m_lastFocus = nullptr;
};

} // namespace tlvn
