// The editor under real keys, with another program's clipboard and the system's input method.

#include "tests/support/editor_fixture.h"

#include <functional>

namespace {

class EditorInputWindow : public tlvn::EditorFixture {
protected:
    EditorInputWindow() { SetDefaultEditorKeys(CEditorWnd::GetAccelData()); }
    ~EditorInputWindow() override { CEditorWnd::GetAccelData() = CAccelData(); }

    void Show()
    {
        ASSERT_EQ(editor.CreateEditorWnd(WS_EX_TOPMOST, kStyle, CRect(0, 0, 400, 300), nullptr, 0,
                                         metrics, colors),
                  1);
        ::SetForegroundWindow(editor.m_hWnd);
        editor.SetFocus();
        ASSERT_EQ(::GetFocus(), editor.m_hWnd);
    }
    // Takes messages until the condition holds, for some seconds at most.
    static bool Wait(const std::function<bool()>& condition)
    {
        for (const DWORD start = ::GetTickCount(); ::GetTickCount() - start < 10000;) {
            tlvn::PumpPendingMessages();
            if (condition())
                return true;
            ::Sleep(5);
        }
        return false;
    }
    static void Press(std::initializer_list<int> keys)
    {
        for (int key : keys)
            Key(key, true);
        for (auto key = std::rbegin(keys); key != std::rend(keys); ++key)
            Key(*key, false);
    }
    static void Key(int key, bool down)
    {
        const bool extended = key >= VK_PRIOR && key <= VK_DELETE;
        ::keybd_event(static_cast<BYTE>(key),
                      static_cast<BYTE>(::MapVirtualKeyW(static_cast<UINT>(key), 0)),
                      (down ? 0 : KEYEVENTF_KEYUP) | (extended ? KEYEVENTF_EXTENDEDKEY : 0), 0);
    }
};

} // namespace

// Letters, a line break, selecting with Shift held and typing over it; deleting by commands.
TEST_F(EditorInputWindow, TakesKeysOfTheKeyboard)
{
    Show();
    for (const int key : std::initializer_list<int>{'A', 'B', 'C', VK_RETURN, 'D'})
        Press({key});
    EXPECT_TRUE(Wait([this] { return Text() == "abc\r\nd"; })) << Text();
    Press({VK_UP});
    Press({VK_SHIFT, VK_RIGHT});
    EXPECT_TRUE(Wait([this] { return Selected() == "b"; })) << Selected();
    Press({VK_SHIFT, 'X'});
    EXPECT_TRUE(Wait([this] { return Text() == "aXc\r\nd"; })) << Text();
    Press({VK_CONTROL, VK_HOME});
    Press({VK_DELETE});
    Press({VK_END});
    Press({VK_BACK});
    EXPECT_TRUE(Wait([this] { return Text() == "X\r\nd"; })) << Text();
    Press({VK_INSERT});
    EXPECT_TRUE(Wait([this] { return editor.IsInsertMode() == 0; }));
}

// Takes the text of the clipboard and puts another there. Run by the test below in a program of
// its own.
TEST(DISABLED_ClipboardPeer, Answers)
{
    CBuffer text;
    ASSERT_TRUE(tlvn::GetTextClipboard(CT_SJIS, nullptr, text));
    text += "!";
    ASSERT_EQ(SetTextClipboard(text, text.GetLength(), CT_SJIS, nullptr), 1);
}

TEST_F(EditorInputWindow, SharesTheClipboardWithAnotherProgram)
{
    Show();
    SetText("\x93\xFA\x96\x7B\r\nabc"); // 日本
    editor.SelectAll();
    ASSERT_EQ(editor.Copy(), 1);

    WCHAR program[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, program, MAX_PATH);
    tlvn::WString command = TW("\"") + tlvn::WString(program) +
                            TW("\" --gtest_also_run_disabled_tests "
                               "--gtest_filter=DISABLED_ClipboardPeer.Answers");
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION peer{};
    ASSERT_TRUE(::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                 nullptr, &start, &peer));
    DWORD result = STILL_ACTIVE;
    Wait([&] {
        ::GetExitCodeProcess(peer.hProcess, &result);
        return result != STILL_ACTIVE;
    });
    ::CloseHandle(peer.hThread);
    ::CloseHandle(peer.hProcess);
    ASSERT_EQ(result, 0u);

    SetText("");
    EXPECT_EQ(editor.Paste(), 1);
    EXPECT_EQ(Text(), "\x93\xFA\x96\x7B\r\nabc!");
}

// The result of a composition is typed in one step, and only once: no WM_IME_CHAR of it follows.
TEST_F(EditorInputWindow, TypesTheResultOfTheInputMethod)
{
    Show();
    SetText("ab");
    editor.SelectText(CTextPos(0, 0), CTextPos(0, 1), 1, 0);
    ::SendMessageW(editor.m_hWnd, WM_IME_STARTCOMPOSITION, 0, 0);
    {
        const tlvn::InputContext context(editor.m_hWnd);
        ASSERT_NE(context.Get(), nullptr);
        COMPOSITIONFORM form{};
        ::ImmGetCompositionWindow(context.Get(), &form);
        EXPECT_EQ(CPoint(form.ptCurrentPos), editor.GetCaretPoint());
        LOGFONTW font{}, own{};
        ::ImmGetCompositionFontW(context.Get(), &font);
        editor.GetCurrentFont()->GetLogFont(&own);
        EXPECT_EQ(font.lfHeight, own.lfHeight);

        WCHAR composed[] = {0x65E5, 0x672C, 0}; // 日本
        if (!::ImmSetCompositionStringW(context.Get(), SCS_SETSTR, composed, 4, nullptr, 0))
            GTEST_SKIP() << "no input method that takes a composition";
        ::ImmNotifyIME(context.Get(), NI_COMPOSITIONSTR, CPS_COMPLETE, 0);
    }
    EXPECT_TRUE(Wait([this] { return Text() != "ab"; }));
    ::Sleep(50);
    tlvn::PumpPendingMessages();
    EXPECT_EQ(Text(), "\x93\xFA\x96\x7B"
                      "b");
    editor.Undo();
    EXPECT_EQ(Text(), "ab");
    editor.SetReadOnly(1);
    EXPECT_EQ(tlvn::InputContext(editor.m_hWnd).Get(), nullptr);
}
