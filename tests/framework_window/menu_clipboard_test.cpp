#include "tests/framework_window/sample_window.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

TEST(Menu, ItemsByPositionAndCommand)
{
    CMenu edit;
    ASSERT_TRUE(edit.CreatePopupMenu());
    ASSERT_TRUE(edit.AppendMenu(MF_STRING, kCommandCopy, "\x83\x52\x83\x73\x81\x5B(&C)"));
    ASSERT_TRUE(edit.AppendMenu(MF_SEPARATOR));
    ASSERT_TRUE(edit.AppendMenu(MF_STRING, kCommandPaste, TW("&Paste\tCtrl+V")));
    CMenu bar;
    ASSERT_TRUE(bar.CreateMenu());
    const HMENU popup = edit.Detach();
    ASSERT_TRUE(bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup), "Edit"));
    EXPECT_EQ(bar.GetMenuItemCount(), 1u);
    EXPECT_EQ(bar.GetMenuItemID(0), ~0u) << "a popup has no command";
    CMenu* const sub = bar.GetSubMenu(0);
    ASSERT_NE(sub, nullptr);
    EXPECT_EQ(sub->GetMenuItemCount(), 3u);
    EXPECT_EQ(sub->GetMenuItemID(2), kCommandPaste);

    // A command is found below the bar.
    CStringA text;
    EXPECT_EQ(bar.GetMenuString(kCommandCopy, text, MF_BYCOMMAND), 10);
    EXPECT_EQ(text, CStringA("\x83\x52\x83\x73\x81\x5B(&C)"));
    ASSERT_TRUE(bar.SetMenuString(kCommandCopy, TW("Copy\tCtrl+C"), MF_BYCOMMAND));
    bar.EnableMenuItem(kCommandCopy, MF_GRAYED);
    EXPECT_EQ(bar.CheckMenuItem(kCommandCopy, MF_CHECKED), MF_UNCHECKED);
    EXPECT_EQ(bar.CheckMenuItem(kCommandCopy, MF_UNCHECKED), MF_CHECKED);
    sub->GetMenuString(0, text, MF_BYPOSITION);
    EXPECT_EQ(text, CStringA("Copy\tCtrl+C")) << "state changes keep the text";
    EXPECT_NE(bar.GetMenuState(kCommandCopy, MF_BYCOMMAND) & MF_GRAYED, 0u);
    EXPECT_EQ(bar.GetMenuString(12345, text, MF_BYCOMMAND), 0);

    ASSERT_TRUE(sub->DeleteMenu(1, MF_BYPOSITION));
    EXPECT_EQ(sub->GetMenuItemID(1), kCommandPaste);
    bar.DestroyMenu();
    EXPECT_FALSE(::IsMenu(popup)) << "popups end with their menu";
    tlvn::DeleteTemporaryObjects();
}

TEST(Menu, BarTakesRoomFromTheClientArea)
{
    SampleWindows windows;
    CRect before;
    windows.frame.GetClientRect(&before);
    CMenu bar;
    bar.CreateMenu();
    bar.AppendMenu(MF_STRING, kCommandCopy, "Copy");
    ASSERT_TRUE(windows.frame.SetMenu(&bar));
    bar.Detach();
    CRect after;
    windows.frame.GetClientRect(&after);
    EXPECT_EQ(before.Height() - after.Height(), ::GetSystemMetrics(SM_CYMENU));
}

TEST(Accelerators, TableIsCopiedAndTranslated)
{
    SampleWindows windows;
    ACCEL entries[] = {{FVIRTKEY | FNOINVERT | FCONTROL, 'C', kCommandCopy},
                       {FVIRTKEY | FNOINVERT, VK_F2, kFirstZoom}};
    const HACCEL table = ::CreateAcceleratorTableW(entries, 2);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(::CopyAcceleratorTableW(table, nullptr, 0), 2);
    ACCEL copy[2] = {};
    EXPECT_EQ(::CopyAcceleratorTableW(table, copy, 2), 2);
    EXPECT_EQ(copy[0].key, 'C');
    EXPECT_EQ(copy[1].cmd, kFirstZoom);

    BYTE before[256];
    ::GetKeyboardState(before);
    BYTE state[256] = {};
    ::SetKeyboardState(state);
    MSG key = {};
    key.hwnd = windows.frame.m_hWnd;
    key.message = WM_KEYDOWN;
    key.wParam = 'C';
    EXPECT_FALSE(::TranslateAcceleratorW(windows.frame.m_hWnd, table, &key)) << "without Ctrl";
    state[VK_CONTROL] = 0x80;
    ::SetKeyboardState(state);
    EXPECT_TRUE(::TranslateAcceleratorW(windows.frame.m_hWnd, table, &key));
    ::SetKeyboardState(before);
    EXPECT_EQ(windows.frame.log.back(), "copy");
    ::DestroyAcceleratorTable(table);
}

HGLOBAL MakeGlobal(const void* data, std::size_t size)
{
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, size);
    std::memcpy(::GlobalLock(memory), data, size);
    ::GlobalUnlock(memory);
    return memory;
}

// Text set in one form is there in the other; Windows does so, and editors count on it.
TEST(Clipboard, GivesTextInBothForms)
{
    SampleWindows windows;
    ASSERT_TRUE(windows.note.OpenClipboard());
    ASSERT_TRUE(::EmptyClipboard());
    EXPECT_FALSE(::IsClipboardFormatAvailable(CF_TEXT));
    EXPECT_FALSE(::IsClipboardFormatAvailable(CF_UNICODETEXT));
    static constexpr WCHAR kWide[] = TW("A\u3042\uFF71");
    ASSERT_NE(::SetClipboardData(CF_UNICODETEXT, MakeGlobal(kWide, sizeof(kWide))), nullptr);
    ASSERT_TRUE(::CloseClipboard());

    EXPECT_TRUE(::IsClipboardFormatAvailable(CF_TEXT));
    ASSERT_TRUE(windows.note.OpenClipboard());
    EXPECT_EQ(::GetClipboardOwner(), windows.note.m_hWnd);
    const HANDLE wide = ::GetClipboardData(CF_UNICODETEXT);
    ASSERT_NE(wide, nullptr);
    EXPECT_EQ(std::memcmp(::GlobalLock(wide), kWide, sizeof(kWide)), 0);
    ::GlobalUnlock(wide);
    EXPECT_GE(::GlobalSize(wide), sizeof(kWide));
    const HANDLE narrow = ::GetClipboardData(CF_TEXT);
    ASSERT_NE(narrow, nullptr);
    EXPECT_STREQ(static_cast<const char*>(::GlobalLock(narrow)), "A\x82\xA0\xB1");
    ::GlobalUnlock(narrow);
    ::EmptyClipboard();
    EXPECT_EQ(::GetClipboardData(CF_TEXT), nullptr);
    ::CloseClipboard();
}

TEST(InputMethod, ContextCanBeTakenAway)
{
    SampleWindows windows;
    const HIMC context = ::ImmGetContext(windows.note.m_hWnd);
    if (context == nullptr)
        GTEST_SKIP() << "this system has no input method";
    ::ImmReleaseContext(windows.note.m_hWnd, context);
    const HIMC previous = ::ImmAssociateContext(windows.note.m_hWnd, nullptr);
    EXPECT_EQ(previous, context);
    EXPECT_EQ(::ImmGetContext(windows.note.m_hWnd), nullptr);
    ::ImmAssociateContext(windows.note.m_hWnd, previous);
    EXPECT_EQ(::ImmGetContext(windows.note.m_hWnd), context);
}

} // namespace
