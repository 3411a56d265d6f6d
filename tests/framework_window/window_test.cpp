#include "tests/framework_window/sample_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

using Log = std::vector<std::string>;

// The entries of `log` that are in `wanted`, in their order: systems send more than these.
Log Only(const Log& log, const Log& wanted)
{
    Log kept;
    std::copy_if(log.begin(), log.end(), std::back_inserter(kept), [&](const std::string& entry) {
        return std::find(wanted.begin(), wanted.end(), entry) != wanted.end();
    });
    return kept;
}

// Fails when a message comes before the object knows its window, or after PostNcDestroy.
TEST(Window, LivesFromCreateToPostNcDestroy)
{
    CSampleNote note;
    {
        SampleWindows windows;
        ASSERT_TRUE(
            note.Create(nullptr, "title", WS_VISIBLE, CRect(0, 0, 120, 80), &windows.frame, 5));
        EXPECT_EQ(CWnd::FromHandlePermanent(note.m_hWnd), &note);
        EXPECT_EQ(note.GetParent(), &windows.frame);
        EXPECT_EQ(windows.frame.GetDlgItem(5), &note);
        const Log wanted = {"create title", "size 120x80", "show"};
        EXPECT_EQ(Only(note.log, wanted), wanted);
        note.log.clear();
    }
    // The parent's end ends the child.
    const Log wanted = {"destroy", "ncdestroy", "postncdestroy"};
    EXPECT_EQ(Only(note.log, wanted), wanted);
    EXPECT_EQ(note.m_hWnd, nullptr);
}

TEST(Window, FailedCreationLeavesNothing)
{
    SampleWindows windows;
    CSampleNote note;
    note.failCreation = true;
    EXPECT_FALSE(note.Create(nullptr, "x", WS_VISIBLE, CRect(0, 0, 10, 10), &windows.frame, 5));
    EXPECT_EQ(note.m_hWnd, nullptr);
    EXPECT_EQ(windows.frame.GetDlgItem(5), nullptr);
    const Log wanted = {"ncdestroy", "postncdestroy"};
    EXPECT_EQ(Only(note.log, wanted), wanted);
    // An unknown class never gets as far as a message.
    CSampleNote unknown;
    EXPECT_FALSE(unknown.Create("NoSuchClass", "x", 0, CRect(0, 0, 9, 9), &windows.frame, 6));
    EXPECT_EQ(unknown.log, Log{"postncdestroy"});
}

TEST(Window, DestructorDestroysTheWindow)
{
    SampleWindows windows;
    HWND handle = nullptr;
    {
        CWnd local;
        ASSERT_TRUE(local.Create(nullptr, "", 0, CRect(0, 0, 9, 9), &windows.frame, 5));
        handle = local.m_hWnd;
    }
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
}

TEST(Window, DispatchesMessagesCommandsAndNotifications)
{
    SampleWindows windows;
    EXPECT_EQ(windows.note.SendMessage(kMessagePing, 4, 2), 42);

    windows.frame.SendMessage(WM_COMMAND, MAKEWPARAM(kCommandCopy, 0));
    windows.frame.SendMessage(WM_COMMAND, MAKEWPARAM(kCommandCopy, 1));  // an accelerator
    windows.frame.SendMessage(WM_COMMAND, MAKEWPARAM(kCommandPaste, 0)); // not in the map
    windows.frame.SendMessage(WM_COMMAND, MAKEWPARAM(kFirstZoom, 0));
    windows.frame.SendMessage(WM_COMMAND, MAKEWPARAM(kLastZoom, 0));
    windows.frame.SendMessage(WM_COMMAND, MAKEWPARAM(kLastZoom + 1, 0));
    NMHDR header = {windows.note.m_hWnd, kNoteId, 1};
    EXPECT_EQ(windows.frame.SendMessage(WM_NOTIFY, kNoteId, reinterpret_cast<LPARAM>(&header)), 42);
    header.code = 2;
    windows.frame.SendMessage(WM_NOTIFY, kNoteId, reinterpret_cast<LPARAM>(&header));
    const Log wanted = {"copy", "copy", "zoom 0", "zoom 9", "notify"};
    EXPECT_EQ(Only(windows.frame.log, wanted), wanted);
}

TEST(Window, FocusGoesWithCaret)
{
    SampleWindows windows;
    windows.note.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &windows.note);
    EXPECT_EQ(CWnd::GetCaretPos(), CPoint(4, 0));
    CWnd::SetCaretPos(CPoint(20, 16));
    EXPECT_EQ(CWnd::GetCaretPos(), CPoint(20, 16));
    windows.frame.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &windows.frame);
    const Log wanted = {"setfocus", "killfocus"};
    EXPECT_EQ(Only(windows.note.log, wanted), wanted);
    windows.note.EnableWindow(FALSE);
    windows.note.SetFocus();
    EXPECT_NE(CWnd::GetFocus(), &windows.note) << "a disabled window takes no focus";
}

// Posted keys go through PreTranslateMessage of the window and its parents, and become
// characters when nobody takes them.
TEST(Window, KeysAreTranslated)
{
    SampleWindows windows;
    windows.note.SetFocus();
    windows.note.log.clear();
    windows.note.PostMessage(WM_KEYDOWN, VK_F5, 1);
    windows.note.PostMessage(WM_KEYDOWN, VK_LEFT, 1);
    windows.note.PostMessage(WM_CHAR, 0x3042, 1); // a Unicode window gets UTF-16
    EXPECT_TRUE(tlvn::PumpPendingMessages());
    EXPECT_EQ(windows.note.translated, 1);
    const Log wanted = {"key 37", "char 12354"};
    EXPECT_EQ(Only(windows.note.log, {"key 116", "key 37", "char 12354"}), wanted);
}

TEST(Window, KeyStateFollowsTheKeyboard)
{
    SampleWindows windows;
    BYTE before[256];
    ASSERT_TRUE(::GetKeyboardState(before));
    BYTE state[256] = {};
    state[VK_SHIFT] = 0x80;
    ASSERT_TRUE(::SetKeyboardState(state));
    windows.note.SendMessage(WM_KEYDOWN, VK_DOWN, 1);
    std::memset(state, 0, sizeof(state));
    ::SetKeyboardState(state);
    windows.note.SendMessage(WM_KEYDOWN, VK_DOWN, 1);
    ::SetKeyboardState(before);
    const Log wanted = {"key 40 shift", "key 40"};
    EXPECT_EQ(Only(windows.note.log, wanted), wanted);
}

TEST(Window, MouseIsCapturedWhileDragging)
{
    SampleWindows windows;
    windows.note.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(30, 20));
    EXPECT_EQ(CWnd::GetCapture(), &windows.note);
    windows.note.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-5, 20));
    windows.note.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(-5, 21));
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    const Log wanted = {"down 30,20", "drag -5,20", "up -5,21", "capturechanged"};
    EXPECT_EQ(Only(windows.note.log, wanted), wanted);
}

// The wheel that a handler declines is the parent's.
TEST(Window, WheelGoesOnToTheParent)
{
    SampleWindows windows;
    windows.note.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -120), 0);
    windows.note.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    EXPECT_EQ(Only(windows.note.log, {"wheel -120", "wheel 120"}),
              (Log{"wheel -120", "wheel 120"}));
    EXPECT_EQ(Only(windows.frame.log, {"wheel -120", "wheel 120"}), Log{"wheel 120"});
}

// Positions are kept inside the range less the page, and a bar without use disappears.
TEST(Window, ScrollBarKeepsItsBounds)
{
    SampleWindows windows;
    const struct {
        int least, most;
        UINT page;
        int wanted, got;
        bool shown;
    } cases[] = {
        {0, 99, 10, 50, 50, true}, {0, 99, 10, 95, 90, true}, {0, 99, 10, -3, 0, true},
        {0, 9, 10, 5, 0, false},   {0, 10, 10, 5, 1, true},   {5, 20, 0, 30, 20, true},
        {0, 99, 0, 99, 99, true},  {0, 0, 0, 0, 0, false},
    };
    for (const auto& c : cases) {
        SCROLLINFO info = {};
        info.fMask = SIF_ALL;
        info.nMin = c.least;
        info.nMax = c.most;
        info.nPage = c.page;
        info.nPos = c.wanted;
        windows.note.SetScrollInfo(SB_VERT, &info);
        SCROLLINFO now = {};
        ASSERT_TRUE(windows.note.GetScrollInfo(SB_VERT, &now));
        EXPECT_EQ(now.nPos, c.got) << c.least << ".." << c.most << " page " << c.page;
        EXPECT_EQ((windows.note.GetStyle() & WS_VSCROLL) != 0, c.shown) << c.most;
        CRect client;
        windows.note.GetClientRect(&client);
        EXPECT_EQ(client.Width(), c.shown ? 400 - ::GetSystemMetrics(SM_CXVSCROLL) : 400);
    }
}

TEST(Window, TimerFiresUntilKilled)
{
    SampleWindows windows;
    ASSERT_NE(windows.note.SetTimer(3, 20), 0u);
    const DWORD start = ::GetTickCount();
    const auto fired = [&] {
        return std::count(windows.note.log.begin(), windows.note.log.end(), "timer 3");
    };
    while (fired() < 2 && ::GetTickCount() - start < 5000)
        tlvn::PumpMessage();
    EXPECT_GE(fired(), 2);
    EXPECT_TRUE(windows.note.KillTimer(3));
    EXPECT_FALSE(windows.note.KillTimer(3));
}

TEST(Window, TextGoesThroughTheCodePage)
{
    SampleWindows windows;
    windows.note.SetWindowText("\x93\xFA\x96\x7B"); // nihon
    CStringW wide;
    windows.note.GetWindowText(wide);
    EXPECT_EQ(wide, CStringW(TW("\u65E5\u672C")));
    EXPECT_EQ(windows.note.GetWindowTextLength(), 4);
    // No half character in a short buffer.
    char text[4];
    EXPECT_EQ(windows.note.GetWindowText(text, 4), 2);
    EXPECT_STREQ(text, "\x93\xFA");
}

TEST(Window, ClientAndScreenCoordinatesAreInverse)
{
    SampleWindows windows;
    CRect rect(10, 20, 30, 50);
    windows.note.ClientToScreen(&rect);
    EXPECT_EQ(rect.Size(), CSize(20, 30));
    CRect outer;
    windows.note.GetWindowRect(&outer);
    EXPECT_EQ(rect.TopLeft(), CPoint(outer.left + 10, outer.top + 20));
    windows.note.ScreenToClient(&rect);
    EXPECT_EQ(rect, CRect(10, 20, 30, 50));
}

TEST(Window, DeferredMovesHappenTogether)
{
    SampleWindows windows;
    windows.note.log.clear();
    HDWP batch = ::BeginDeferWindowPos(1);
    batch = ::DeferWindowPos(batch, windows.note.m_hWnd, nullptr, 5, 6, 100, 50,
                             SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(Only(windows.note.log, {"size 100x50"}), Log{});
    EXPECT_TRUE(::EndDeferWindowPos(batch));
    EXPECT_EQ(Only(windows.note.log, {"size 100x50"}), Log{"size 100x50"});
    CRect rect;
    windows.note.GetWindowRect(&rect);
    windows.frame.ScreenToClient(&rect);
    EXPECT_EQ(rect, CRect(5, 6, 105, 56));
}

// Temporary objects are one per window, and gone after idle time but not inside a handler.
TEST(Window, TemporaryObjects)
{
    SampleWindows windows;
    const HWND other = ::CreateWindowExW(0, TW("STATIC"), TW(""), WS_CHILD, 0, 0, 5, 5,
                                         windows.frame.m_hWnd, nullptr, nullptr, nullptr);
    // The headless system has no controls but tool tips.
    const HWND plain = other != nullptr ? other : windows.note.m_hWnd;
    if (other == nullptr)
        windows.note.UnsubclassWindow();
    CWnd* const first = CWnd::FromHandle(plain);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(CWnd::FromHandle(plain), first);
    EXPECT_EQ(CWnd::FromHandlePermanent(plain), nullptr);
    EXPECT_EQ(first->GetParent(), &windows.frame);
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
    tlvn::DeleteTemporaryObjects();
    EXPECT_TRUE(::IsWindow(plain)) << "a temporary object must not end the window";
    ::DestroyWindow(plain);
}

TEST(Window, SubclassingGivesTheProcedureBack)
{
    SampleWindows windows;
    CWnd plain;
    ASSERT_TRUE(plain.Create(nullptr, "plain", 0, CRect(0, 0, 9, 9), &windows.frame, 9));
    const HWND handle = plain.UnsubclassWindow();
    CSampleNote note;
    ASSERT_TRUE(note.SubclassWindow(handle));
    EXPECT_EQ(::SendMessageW(handle, kMessagePing, 1, 1), 11);
    EXPECT_EQ(note.UnsubclassWindow(), handle);
    EXPECT_EQ(::SendMessageW(handle, kMessagePing, 1, 1), 0);
    ::DestroyWindow(handle);
}

std::vector<tlvn::WString> g_boxes;

int RecordBox(HWND, const WCHAR* text, const WCHAR* caption, UINT)
{
    g_boxes.push_back(tlvn::WString(caption) + TW(":") + text);
    return IDYES;
}

TEST(Window, MessageBoxesGoThroughTheProcedure)
{
    SampleWindows windows;
    g_boxes.clear();
    tlvn::SetMessageBoxProcedure(&RecordBox);
    EXPECT_EQ(windows.note.MessageBox("\x82\xA0", "cap", MB_YESNO), IDYES);
    EXPECT_EQ(windows.note.MessageBox("b"), IDYES);
    tlvn::SetMessageBoxProcedure(nullptr);
    ASSERT_EQ(g_boxes.size(), 2u);
    EXPECT_EQ(g_boxes[0], TW("cap:\u3042"));
    EXPECT_EQ(g_boxes[1], TW("frame:b"));
}

// An exception must neither pass the window procedure nor make the painting go on for ever.
TEST(Window, HandlerExceptionsAreReported)
{
    SampleWindows windows;
    tlvn::PumpPendingMessages();
    g_boxes.clear();
    tlvn::SetMessageBoxProcedure(&RecordBox);
    windows.note.throwWhilePainting = true;
    windows.note.Invalidate();
    EXPECT_TRUE(tlvn::PumpPendingMessages());
    tlvn::SetMessageBoxProcedure(nullptr);
    EXPECT_EQ(g_boxes.size(), 1u);
    windows.note.throwWhilePainting = false;
}

TEST(Window, QuitEndsTheLoop)
{
    SampleWindows windows;
    windows.note.PostMessage(WM_CHAR, 'a', 1);
    ::PostQuitMessage(7);
    EXPECT_EQ(tlvn::RunMessageLoop(), 7);
    const auto& log = windows.note.log;
    EXPECT_NE(std::find(log.begin(), log.end(), "char 97"), log.end())
        << "what was posted before comes first";
}

} // namespace
