// The hands of editor_script.cpp for real windows: input comes in where that of keyboard and
// mouse does, pictures are of the screen.

#include "tests/support/editor_hands.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace tlvn;

// The caret must not blink while it is looked at.
constexpr UINT kNoBlinking = 600000;

class WindowHands : public EditorHands {
public:
    WindowHands() : m_blinkTime(::GetCaretBlinkTime()) { ::SetCaretBlinkTime(kNoBlinking); }
    ~WindowHands() override { ::SetCaretBlinkTime(m_blinkTime); }

    void Key(int key, bool down) override
    {
        const bool extended = key >= VK_PRIOR && key <= VK_DELETE;
        ::keybd_event(static_cast<BYTE>(key),
                      static_cast<BYTE>(::MapVirtualKeyW(static_cast<UINT>(key), 0)),
                      (down ? 0 : KEYEVENTF_KEYUP) | (extended ? KEYEVENTF_EXTENDEDKEY : 0), 0);
    }
    void MoveMouse(CPoint point) override
    {
        // The screen is 65,536 wide and high.
        const auto scale = [](LONG value, int metric) {
            const DWORD size = static_cast<DWORD>(::GetSystemMetrics(metric));
            return (static_cast<DWORD>(value) * 0x10000 + size - 1) / size;
        };
        ::mouse_event(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, scale(point.x, SM_CXSCREEN),
                      scale(point.y, SM_CYSCREEN), 0, 0);
    }
    void Button(bool down) override
    {
        ::mouse_event(down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    }
    void Wheel(int delta) override
    {
        ::mouse_event(MOUSEEVENTF_WHEEL, 0, 0, static_cast<DWORD>(delta), 0);
    }
    bool Wait(const std::function<bool()>& condition, int milliseconds) override
    {
        const DWORD start = ::GetTickCount();
        while (::GetTickCount() - start < static_cast<DWORD>(milliseconds)) {
            PumpPendingMessages();
            if (condition())
                return true;
            ::Sleep(5);
        }
        return false;
    }

    Picture Look(CEditorWnd& editor) override
    {
        editor.UpdateWindow();
        CRect client;
        editor.GetClientRect(&client);
        Picture picture(client.right, client.bottom);
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = client.right;
        info.bmiHeader.biHeight = -client.bottom; // the top row first
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        CClientDC window(&editor);
        CDC copy;
        copy.CreateCompatibleDC(&window);
        void* bits = nullptr;
        const HBITMAP bitmap =
            ::CreateDIBSection(window.m_hDC, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        const HGDIOBJ old = ::SelectObject(copy.m_hDC, bitmap);
        copy.BitBlt(0, 0, client.right, client.bottom, &window, 0, 0, SRCCOPY);
        ::GdiFlush();
        const RGBQUAD* pixel = static_cast<const RGBQUAD*>(bits);
        for (std::uint64_t& color : picture.pixels) {
            color = RGB(pixel->rgbRed, pixel->rgbGreen, pixel->rgbBlue);
            ++pixel;
        }
        ::SelectObject(copy.m_hDC, old);
        ::DeleteObject(bitmap);
        return picture;
    }

    bool Compose(CEditorWnd& editor, const WCHAR* text) override
    {
        editor.SendMessage(WM_IME_STARTCOMPOSITION);
        const HIMC context = ::ImmGetContext(editor.m_hWnd);
        WString composed = text;
        const BOOL taken = ::ImmSetCompositionStringW(
            context, SCS_SETSTR, composed.data(),
            static_cast<DWORD>(composed.size() * sizeof(WCHAR)), nullptr, 0);
        ::ImmReleaseContext(editor.m_hWnd, context);
        return taken != 0;
    }
    void EndComposing(CEditorWnd& editor, const WCHAR*) override
    {
        const HIMC context = ::ImmGetContext(editor.m_hWnd);
        ::ImmNotifyIME(context, NI_COMPOSITIONSTR, CPS_COMPLETE, 0);
        ::ImmReleaseContext(editor.m_hWnd, context);
    }
    // The other program is this one again, running the test below.
    bool AskOtherProgram() override
    {
        WCHAR program[MAX_PATH] = {};
        ::GetModuleFileNameW(nullptr, program, MAX_PATH);
        WString command = TW("\"") + WString(program) +
                          TW("\" --gtest_also_run_disabled_tests "
                             "--gtest_filter=DISABLED_ClipboardPeer.Answers");
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION peer{};
        if (!::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                              &start, &peer))
            return false;
        DWORD result = STILL_ACTIVE;
        Wait(
            [&] {
                ::GetExitCodeProcess(peer.hProcess, &result);
                return result != STILL_ACTIVE;
            },
            30000);
        ::CloseHandle(peer.hThread);
        ::CloseHandle(peer.hProcess);
        return result == 0;
    }

private:
    UINT m_blinkTime;
};

} // namespace

TEST(DISABLED_ClipboardPeer, Answers)
{
    EXPECT_TRUE(AnswerOnClipboard());
}

std::unique_ptr<tlvn::EditorHands> tlvn::MakeEditorHands()
{
    return std::make_unique<WindowHands>();
}
