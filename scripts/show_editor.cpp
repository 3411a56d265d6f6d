// Shows the picture of editor_picture.h in a window of the system, for five seconds.

#include "scripts/editor_picture.h"

int main()
{
    CEditorWnd editor;
    CreateEditorPicture(editor);
    editor.SetTimer(1000, 5000, [](HWND, UINT, UINT_PTR, DWORD) { ::PostQuitMessage(0); });
    return tlvn::RunMessageLoop();
}
