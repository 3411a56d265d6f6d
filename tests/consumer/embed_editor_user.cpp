// Linked into the example of docs/embedding.md, works it as a user would: goes a line down, types,
// makes the window smaller and closes it. A timer of the thread does so, once the message loop
// runs; so the example needs nothing of it.

#include <TlvnMisc.h>

#include <cstdio>
#include <cstdlib>

namespace {

// Ends the program, when the window is not what the example says it is.
void Demand(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "The example: %s\n", what);
    std::exit(1);
}

void CALLBACK WorkTheExample(HWND, UINT, UINT_PTR timer, DWORD)
{
    ::KillTimer(nullptr, timer);
    CWnd* const focus = CWnd::GetFocus();
    auto* const editor = DYNAMIC_DOWNCAST(CEditorWnd, focus);
    Demand(editor != nullptr, "the editor has no focus");
    CWnd* const frame = editor->GetParent();
    CString title;
    frame->GetWindowText(title);
    Demand(title == "Note", "the window bears a wrong title");

    MSG down = {};
    down.hwnd = editor->m_hWnd;
    down.message = WM_KEYDOWN;
    down.wParam = VK_DOWN;
    down.lParam = 1;
    Demand(tlvn::PreTranslateForTree(&down), "the editor takes no keys");
    for (const UINT c : {0x672CU, 0x6587U, 0x3067U, 0x3059U}) // 本文です
        editor->SendMessage(WM_CHAR, c, 1);
    frame->GetWindowText(title);
    Demand(title == "Note *", "it is not told of changes");

    frame->MoveWindow(0, 0, 300, 200);
    CRect inside;
    CRect filled;
    frame->GetClientRect(&inside);
    editor->GetWindowRect(&filled);
    Demand(inside.Width() == filled.Width() && inside.Height() == filled.Height(),
           "the editor does not fill its window");
    frame->PostMessage(WM_CLOSE);
}

[[maybe_unused]] const UINT_PTR g_timer = ::SetTimer(nullptr, 0, 10, &WorkTheExample);

} // namespace
