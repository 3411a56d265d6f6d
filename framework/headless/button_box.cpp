// Boxes with the caller's buttons, over windows in memory: answered like a message box of the
// nearest kind. The default is the last button, because the first one tends to be the one that
// tries again, and nobody is there to stop it.

#include "framework/x_message_box.h"

namespace tlvn {

int ShowSystemButtonBox(const ButtonBox& box)
{
    if (box.count < 2) {
        ShowMessageBox(box.owner, box.text, box.caption, MB_OK | box.icon);
        return 0;
    }
    const UINT type = box.count == 2 ? MB_OKCANCEL | MB_DEFBUTTON2 : MB_YESNOCANCEL | MB_DEFBUTTON3;
    switch (ShowMessageBox(box.owner, box.text, box.caption, type | box.icon)) {
    case IDOK:
    case IDYES:
        return 0;
    case IDNO:
        return 1;
    default:
        return box.count - 1;
    }
}

} // namespace tlvn
