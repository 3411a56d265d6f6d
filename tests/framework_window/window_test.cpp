#include "tests/framework_window/sample_window.h"

namespace {

using Window = SampleWindows;

// Fails when a message comes before the object knows its window, or after PostNcDestroy.
TEST_F(Window, LivesFromCreateToPostNcDestroy)
{
    CSampleNote child;
    ASSERT_TRUE(child.Create(nullptr, "title", WS_VISIBLE, CRect(0, 0, 120, 80), &frame, 5));
    EXPECT_EQ(CWnd::FromHandlePermanent(child.m_hWnd), &child);
    EXPECT_EQ(child.GetParent(), &frame);
    EXPECT_EQ(frame.GetDlgItem(5), &child);
    child.log.Expect({"title", "size 120 80", "show 1"});
    frame.DestroyWindow(); // the parent's end ends the child
    child.log.Expect({"destroy", "ncdestroy", "postncdestroy"});
    EXPECT_EQ(child.m_hWnd, nullptr);
}

TEST_F(Window, FailedCreationLeavesNothing)
{
    CSampleNote child;
    child.failCreation = true;
    EXPECT_FALSE(child.Create(nullptr, "x", WS_VISIBLE, CRect(0, 0, 10, 10), &frame, 5));
    EXPECT_EQ(child.m_hWnd, nullptr);
    EXPECT_EQ(frame.GetDlgItem(5), nullptr);
    child.log.Expect({"ncdestroy", "postncdestroy"});
    // An unknown class never gets as far as a message.
    CSampleNote unknown;
    EXPECT_FALSE(unknown.Create("NoSuchClass", "x", 0, CRect(0, 0, 9, 9), &frame, 6));
    unknown.log.Expect({"postncdestroy"}, {"x", "ncdestroy"});
}

TEST_F(Window, DispatchesMessagesCommandsAndNotifications)
{
    EXPECT_EQ(note.SendMessage(kMessagePing, 4, 2), 42);

    const WPARAM fromAccelerator = MAKEWPARAM(kCommandCopy, 1);
    for (const WPARAM command : {WPARAM{kCommandCopy}, fromAccelerator, WPARAM{kCommandPaste},
                                 WPARAM{kFirstZoom}, WPARAM{kLastZoom}, WPARAM{kLastZoom + 1}})
        frame.SendMessage(WM_COMMAND, command);
    frame.log.Expect({"copy", "copy", "zoom 0", "zoom 9"}, {"zoom 10"});
    for (const UINT code : {1u, 2u}) {
        NMHDR header = {note.m_hWnd, kNoteId, code};
        EXPECT_EQ(frame.SendMessage(WM_NOTIFY, kNoteId, reinterpret_cast<LPARAM>(&header)),
                  code == 1 ? 42 : 0);
    }
}

// Posted keys go through PreTranslateMessage of the window and its parents, which takes F5, and
// become characters when nobody takes them.
TEST_F(Window, KeysAreTranslated)
{
    note.SetFocus();
    note.PostMessage(WM_KEYDOWN, VK_F5, 1);
    note.PostMessage(WM_KEYDOWN, VK_LEFT, 1);
    note.PostMessage(WM_CHAR, 0x3042, 1); // a Unicode window gets UTF-16
    EXPECT_TRUE(tlvn::PumpPendingMessages());
    note.log.Expect({"key 37", "char 12354"}, {"key 116"});
}

// The wheel that a handler declines is the parent's.
TEST_F(Window, WheelGoesOnToTheParent)
{
    note.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -120), 0);
    note.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    note.log.Expect({"wheel -120", "wheel 120"});
    frame.log.Expect({"wheel 120"}, {"wheel -120"});
}

// Positions are kept inside the range less the page, and a bar without use disappears.
TEST_F(Window, ScrollBarKeepsItsBounds)
{
    const std::tuple<int, int, UINT, int, int, bool> cases[] = {
        {0, 99, 10, 50, 50, true}, {0, 99, 10, 95, 90, true}, {0, 99, 10, -3, 0, true},
        {0, 9, 10, 5, 0, false},   {0, 10, 10, 5, 1, true},   {5, 20, 0, 30, 20, true},
        {0, 99, 0, 99, 99, true},  {0, 0, 0, 0, 0, false},
    };
    for (const auto& [least, most, page, wanted, got, shown] : cases) {
        SCROLLINFO info = {sizeof info, SIF_ALL, least, most, page, wanted, 0};
        note.SetScrollInfo(SB_VERT, &info);
        SCROLLINFO now = {};
        ASSERT_TRUE(note.GetScrollInfo(SB_VERT, &now));
        EXPECT_EQ(now.nPos, got) << least << ".." << most << " page " << page;
        EXPECT_EQ((note.GetStyle() & WS_VSCROLL) != 0, shown) << most;
        CRect client;
        note.GetClientRect(&client);
        EXPECT_EQ(client.Width(), shown ? 400 - ::GetSystemMetrics(SM_CXVSCROLL) : 400);
    }
}

TEST_F(Window, TimerFiresUntilKilled)
{
    ASSERT_NE(note.SetTimer(3, 20), 0u);
    while (note.log.Count("timer 3") < 2)
        tlvn::PumpMessage();
    EXPECT_TRUE(note.KillTimer(3));
    EXPECT_FALSE(note.KillTimer(3));
}

TEST_F(Window, TextGoesThroughTheCodePage)
{
    note.SetWindowText("\x93\xFA\x96\x7B"); // nihon
    CStringW wide;
    note.GetWindowText(wide);
    EXPECT_EQ(wide, CStringW(TW("\u65E5\u672C")));
    EXPECT_EQ(note.GetWindowTextLength(), 4);
    // No half character in a short buffer.
    char text[4];
    EXPECT_EQ(note.GetWindowText(text, 4), 2);
    EXPECT_STREQ(text, "\x93\xFA");
}

TEST_F(Window, ClientAndScreenCoordinatesAreInverse)
{
    CRect rect(10, 20, 30, 50), outer;
    note.ClientToScreen(&rect);
    note.GetWindowRect(&outer);
    EXPECT_EQ(rect, CRect(10, 20, 30, 50) + outer.TopLeft());
    note.ScreenToClient(&rect);
    EXPECT_EQ(rect, CRect(10, 20, 30, 50));
}

// Temporary objects are one per window, and gone after idle time but not inside a handler.
TEST_F(Window, TemporaryObjects)
{
    const HWND plain = note.UnsubclassWindow();
    CWnd* const first = CWnd::FromHandle(plain);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(CWnd::FromHandle(plain), first);
    EXPECT_EQ(CWnd::FromHandlePermanent(plain), nullptr);
    EXPECT_EQ(first->GetParent(), &frame);
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
    tlvn::DeleteTemporaryObjects();
    EXPECT_TRUE(::IsWindow(plain)) << "a temporary object must not end the window";
}

TEST_F(Window, SubclassingGivesTheProcedureBackAndTheDestructorEndsTheWindow)
{
    HWND handle = nullptr;
    {
        CWnd plain;
        ASSERT_TRUE(plain.Create(nullptr, "plain", 0, CRect(0, 0, 9, 9), &frame, 9));
        handle = plain.UnsubclassWindow();
    }
    {
        CSampleNote subclass;
        ASSERT_TRUE(subclass.SubclassWindow(handle));
        EXPECT_EQ(::SendMessageW(handle, kMessagePing, 1, 1), 11);
        EXPECT_EQ(subclass.UnsubclassWindow(), handle);
        EXPECT_EQ(::SendMessageW(handle, kMessagePing, 1, 1), 0);
        subclass.SubclassWindow(handle);
    }
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
}

std::vector<tlvn::WString> g_boxes;

int RecordBox(HWND, const WCHAR* text, const WCHAR* caption, UINT)
{
    g_boxes.push_back(tlvn::WString(caption) + TW(":") + text);
    return IDYES;
}

// An exception of a handler, which a box tells, must neither pass the window procedure nor make
// the painting go on for ever.
TEST_F(Window, MessageBoxesGoThroughTheProcedure)
{
    g_boxes.clear();
    tlvn::SetMessageBoxProcedure(&RecordBox);
    EXPECT_EQ(note.MessageBox("\x82\xA0", "cap", MB_YESNO), IDYES);
    EXPECT_EQ(note.MessageBox("b"), IDYES);
    EXPECT_EQ(g_boxes, (std::vector<tlvn::WString>{TW("cap:\u3042"), TW("frame:b")}));

    note.throwWhilePainting = true;
    note.Invalidate();
    EXPECT_TRUE(tlvn::PumpPendingMessages());
    tlvn::SetMessageBoxProcedure(nullptr);
    EXPECT_EQ(g_boxes.size(), 3u);
    note.throwWhilePainting = false;
}

TEST_F(Window, QuitEndsTheLoop)
{
    note.PostMessage(WM_CHAR, 'a', 1); // comes before what was posted later
    ::PostQuitMessage(7);
    EXPECT_EQ(tlvn::RunMessageLoop(), 7);
    note.log.Expect({"char 97"});
}

} // namespace
