// The real dialog of XMessageBox: what it shows, and what each way to close it answers.

#include "TlvnMisc.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// What is done to the dialog once it is there, and what was seen of it.
struct Visit {
    UINT message;
    WPARAM wParam;
    int pressButton; // -1: send the message instead
    std::vector<tlvn::WString> buttons;
    tlvn::WString text;
    bool closeEnabled;
    bool fits;
};
Visit g_visit;

tlvn::WString TextOf(HWND window)
{
    WCHAR text[300] = {};
    ::GetWindowTextW(window, text, 300);
    return text;
}

void CALLBACK VisitDialog(HWND, UINT, UINT_PTR timer, DWORD)
{
    const HWND dialog = ::FindWindowW(TW("#32770"), TW("Owner"));
    if (dialog == nullptr)
        return;
    ::KillTimer(nullptr, timer);
    RECT client;
    ::GetClientRect(dialog, &client);
    HWND pressed = nullptr;
    g_visit.fits = true;
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        WCHAR name[32] = {};
        ::GetClassNameW(child, name, 32);
        RECT rect;
        ::GetWindowRect(child, &rect);
        ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
        g_visit.fits = g_visit.fits && rect.left >= 0 && rect.right <= client.right &&
                       rect.top >= 0 && rect.bottom <= client.bottom && rect.right > rect.left;
        if (tlvn::WString(name) != TW("Button")) {
            if (!TextOf(child).empty())
                g_visit.text = TextOf(child);
            continue;
        }
        if (static_cast<int>(g_visit.buttons.size()) == g_visit.pressButton)
            pressed = child;
        g_visit.buttons.push_back(TextOf(child));
    }
    const UINT close = ::GetMenuState(::GetSystemMenu(dialog, FALSE), SC_CLOSE, MF_BYCOMMAND);
    g_visit.closeEnabled = (close & (MF_GRAYED | MF_DISABLED)) == 0;
    if (pressed != nullptr) {
        ::PostMessageW(pressed, BM_CLICK, 0, 0);
        return;
    }
    ::SendMessageW(dialog, g_visit.message, g_visit.wParam, 0);
    // Where that closes nothing, the last button ends the box.
    if (!g_visit.closeEnabled)
        ::PostMessageW(dialog, WM_COMMAND, 100 + g_visit.buttons.size() - 1, 0);
}

} // namespace

TEST(XMessageBox, ButtonsAndAnswers)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, "Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 300,
                               200, nullptr, nullptr));
    // Retry, continue, cancel in Japanese.
    const char* const buttons[] = {"\x83\x8A\x83\x67\x83\x89\x83\x43(&R)", "&B", "Cancel"};
    const struct {
        int count, cancel, pressButton;
        UINT message;
        WPARAM wParam;
        int expected;
    } cases[] = {
        {2, 1, 0, 0, 0, 0},
        {2, 1, 1, 0, 0, 1},
        {3, 1, 2, 0, 0, 2},
        {3, 1, -1, WM_CLOSE, 0, 1},
        {3, 2, -1, WM_COMMAND, IDCANCEL, 2},  // Esc
        {2, -1, -1, WM_COMMAND, IDCANCEL, 1}, // does nothing
        {1, 0, 0, 0, 0, 0},
    };
    for (const auto& c : cases) {
        g_visit = {c.message, c.wParam, c.pressButton, {}, {}, false, false};
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 20, &VisitDialog);
        EXPECT_EQ(XMessageBox(&owner, "\x95\xDB\x91\xB6\nsecond line & more", MB_ICONEXCLAMATION,
                              buttons, c.count, c.cancel),
                  c.expected);
        ::KillTimer(nullptr, timer);
        ASSERT_EQ(static_cast<int>(g_visit.buttons.size()), c.count);
        EXPECT_TRUE(g_visit.buttons[0] == TW("\u30EA\u30C8\u30E9\u30A4(&R)"));
        EXPECT_TRUE(g_visit.text == TW("\u4FDD\u5B58\nsecond line & more"));
        EXPECT_EQ(g_visit.closeEnabled, c.cancel >= 0);
        EXPECT_TRUE(g_visit.fits);
        EXPECT_TRUE(::IsWindowEnabled(owner.m_hWnd));
    }
    owner.DestroyWindow();
}
