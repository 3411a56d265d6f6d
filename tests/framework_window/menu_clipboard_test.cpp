#include "tests/framework_window/sample_window.h"

namespace {

using Menu = SampleWindows;
using Clipboard = SampleWindows;
using Accelerators = SampleWindows;

TEST_F(Menu, ItemsByPositionAndCommand)
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
    EXPECT_EQ(bar.GetMenuItemID(0), ~0u) << "a popup has no command";
    CMenu* const sub = bar.GetSubMenu(0);
    ASSERT_NE(sub, nullptr);
    EXPECT_EQ(sub->GetMenuItemCount(), 3u);

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

TEST_F(Accelerators, TableIsCopiedAndTranslated)
{
    ACCEL entries[] = {{FVIRTKEY | FNOINVERT | FCONTROL, 'C', kCommandCopy},
                       {FVIRTKEY | FNOINVERT, VK_F2, kFirstZoom}};
    const HACCEL table = ::CreateAcceleratorTableW(entries, 2);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(::CopyAcceleratorTableW(table, nullptr, 0), 2);
    ACCEL copy[2] = {};
    EXPECT_EQ(::CopyAcceleratorTableW(table, copy, 2), 2);
    EXPECT_EQ(copy[0].key, 'C');
    EXPECT_EQ(copy[1].cmd, kFirstZoom);

    BYTE state[256] = {};
    MSG key = {};
    key.hwnd = frame.m_hWnd;
    key.message = WM_KEYDOWN;
    key.wParam = 'C';
    for (const BYTE control : {BYTE{0}, BYTE{0x80}, BYTE{0}}) {
        state[VK_CONTROL] = control;
        ::SetKeyboardState(state);
        EXPECT_EQ(::TranslateAcceleratorW(frame.m_hWnd, table, &key), control != 0);
    }
    frame.log.Expect({"copy"});
    ::DestroyAcceleratorTable(table);
}

// Text set in one form is there in the other; Windows does so, and editors count on it.
TEST_F(Clipboard, GivesTextInBothForms)
{
    ASSERT_TRUE(note.OpenClipboard());
    ASSERT_TRUE(::EmptyClipboard());
    EXPECT_FALSE(::IsClipboardFormatAvailable(CF_TEXT));
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, 8);
    std::memcpy(::GlobalLock(memory), TW("A\u3042\uFF71"), 8);
    ::GlobalUnlock(memory);
    ASSERT_NE(::SetClipboardData(CF_UNICODETEXT, memory), nullptr);
    ASSERT_TRUE(::CloseClipboard());

    EXPECT_TRUE(::IsClipboardFormatAvailable(CF_TEXT));
    ASSERT_TRUE(note.OpenClipboard());
    EXPECT_EQ(::GetClipboardOwner(), note.m_hWnd);
    const HANDLE narrow = ::GetClipboardData(CF_TEXT);
    ASSERT_NE(narrow, nullptr);
    EXPECT_STREQ(static_cast<const char*>(::GlobalLock(narrow)), "A\x82\xA0\xB1");
    ::GlobalUnlock(narrow);
    ::EmptyClipboard();
    EXPECT_EQ(::GetClipboardData(CF_TEXT), nullptr);
    ::CloseClipboard();
}

} // namespace
