// The window of TolvanView: one mail in an editor that fills it.

#pragma once

#include "viewer/mail_in_editor.h"

namespace tlvn {

class ViewWindow : public CWnd {
    DECLARE_DYNAMIC(ViewWindow)
public:
    // Shows the window on the screen. Returns 1, or 0 when the system refuses.
    int CreateViewWindow();

    // Shows the mail, its subject in the title.
    void ShowMail(const Mail& mail);

protected:
    int OnCreate(LPCREATESTRUCT create);
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* old);
    void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    CEditorWnd m_editor;
};

} // namespace tlvn
