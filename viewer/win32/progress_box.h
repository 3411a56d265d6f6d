// A box that shows how far something is that takes long, with a button to give it up.
//
//   window.EnableWindow(FALSE);
//   ProgressBox box;
//   box.Open(&window, IDS_TITLE);
//   while (more && box.Show(text, done, total))
//       more = Step();
//   window.EnableWindow(TRUE);                  // before the box goes, or another window comes up
//   box.DestroyWindow();

#pragma once

#include "framework/framework.h"

namespace tlvn {

class ProgressBox : public CWnd {
public:
    // When the system refuses, it goes on without a box.
    void Open(CWnd* owner, UINT title);

    // Shows the text and the part that is done, and handles the messages that wait. False when
    // the user has given up, or the program ends.
    bool Show(const WString& text, int done, int total);

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

private:
    bool m_givenUp = false;
};

} // namespace tlvn
