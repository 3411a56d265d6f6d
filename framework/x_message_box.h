// A message box whose buttons have texts of the caller's.
//
//   const char* const buttons[] = {"&Retry", "Cancel"};
//   if (XMessageBox(this, text, MB_ICONEXCLAMATION, buttons, 2, 1) == 0)
//       ...
//
// On Windows it is a dialog with the look of the system's message box. Windows in memory answer
// at once, by way of tlvn::ShowMessageBox with a box of the nearest kind: two buttons are OK and
// Cancel, three are Yes, No and Cancel, and the last one is the default.

#pragma once

#include "framework/framework.h"

// Shows the box until a button is pressed and returns the button's index. `icon` is one of the
// MB_ICON values or 0. There are `count` buttons (1 to 3) from left to right, the first one is
// the default; Esc and the box's close button press the one at `cancel`, with -1 they do
// nothing. The texts are in the multibyte code page, "&" marks the letter of a button. The owner
// (its top-level window; null for none) is disabled meanwhile and gives the box its caption.
TLVN_API int XMessageBox(CWnd* owner, const char* text, UINT icon, const char* const* buttons,
                         int count, int cancel);

namespace tlvn {

// What a box is to show; the texts are valid during the call.
struct ButtonBox {
    // As the arguments of XMessageBox; `caption` is the title of the owner's top-level window.
    HWND owner;
    const WCHAR* text;
    const WCHAR* caption;
    UINT icon;
    const WCHAR* const* buttons;
    int count;
    int cancel;
};

// Every XMessageBox is shown by this procedure, which returns the index of the button pressed.
// A null one means the window system's. Gives the procedure that was set before.
using ButtonBoxProcedure = int (*)(const ButtonBox& box);
TLVN_API ButtonBoxProcedure SetButtonBoxProcedure(ButtonBoxProcedure procedure);

// The window system's own way to show it.
int ShowSystemButtonBox(const ButtonBox& box);

} // namespace tlvn
