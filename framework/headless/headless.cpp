#include "framework/headless/headless.h"

#include "framework/headless/desktop.h"

namespace tlvn::headless {

void Reset()
{
    Desktop& desk = Desk();
    while (!desk.topLevel.empty())
        DestroyWindow(desk.topLevel.front());
    desk.focus = desk.active = desk.capture = nullptr;
    desk.caret = {};
    desk.posted.clear();
    desk.input.clear();
    desk.timers.clear();
    desk.quitPosted = false;
    desk.hooks.clear();
    desk.testClock = false;
    desk.cursor = nullptr;
    desk.mouse = {};
    std::fill(std::begin(desk.keyState), std::end(desk.keyState), BYTE{0});
    std::fill(std::begin(desk.asyncKeyState), std::end(desk.asyncKeyState), BYTE{0});
    desk.lastClickWindow = nullptr;
    desk.acceleratorResources.clear();
    ResetClipboard();
    desk.screen = {1280, 1024};
    desk.wheelLines = 3;
    desk.windowDpi = 96;
    desk.highContrast = false;
    desk.messageBoxes.clear();
    desk.messageBoxAnswer = 0;
    desk.shownMenu = nullptr;
    desk.menuAnswer = 0;
    if (InputContext* const context = desk.inputContexts.Find(desk.defaultContext);
        context != nullptr)
        *context = {};
}

void UseTestClock()
{
    Desktop& desk = Desk();
    const INT64 now = Now();
    desk.testClock = true;
    desk.testTime = now;
}

void AdvanceClock(DWORD milliseconds)
{
    Desktop& desk = Desk();
    if (!desk.testClock)
        UseTestClock();
    const INT64 end = desk.testTime + milliseconds;
    for (;;) {
        INT64 due = end + 1;
        for (const Timer& timer : desk.timers)
            due = std::min(due, timer.due);
        if (due > end)
            break;
        desk.testTime = std::max(desk.testTime, due);
        MSG message;
        while (PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE)) {
            if (message.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(message.wParam));
                desk.testTime = end;
                return;
            }
            DispatchMessageW(&message);
        }
    }
    desk.testTime = end;
}

std::vector<DrawnText> GetDrawnTexts(HWND handle)
{
    std::vector<DrawnText> texts;
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return texts;
    const LONG dx = -window->client.left;
    const LONG dy = -window->client.top;
    for (const DrawOperation& op : window->drawing.Operations()) {
        const RECT visible = Intersect(op.Visible(), window->client);
        if (op.kind != DrawKind::Text || IsEmpty(visible))
            continue;
        texts.push_back({{op.bounds.left + dx, op.bounds.top + dy},
                         WString(window->drawing.TextOf(op)),
                         op.color,
                         op.underline,
                         Offset(visible, dx, dy)});
    }
    return texts;
}

const DisplayList* GetDrawing(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    return window != nullptr ? &window->drawing : nullptr;
}

COLORREF GetDrawnColor(HWND handle, int x, int y)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return CLR_INVALID;
    return window->drawing.ColorAt(x + window->client.left, y + window->client.top, CLR_INVALID);
}

const std::vector<MessageBoxRecord>& GetMessageBoxes()
{
    return Desk().messageBoxes;
}

void SetMessageBoxAnswer(int answer)
{
    Desk().messageBoxAnswer = answer;
}

void SetPopupMenuAnswer(UINT command)
{
    Desk().menuAnswer = command;
}

HMENU GetShownMenu()
{
    return Desk().shownMenu;
}

void SetScreenSize(int width, int height)
{
    Desk().screen = {width, height};
}

void SetWheelLines(UINT lines)
{
    Desk().wheelLines = lines;
}

void SetWindowDpi(int dpi)
{
    Desk().windowDpi = dpi;
}

void SetHighContrast(bool on)
{
    Desk().highContrast = on;
}

void AddAcceleratorResource(const WCHAR* name, const ACCEL* entries, int count)
{
    Desk().acceleratorResources[name].assign(entries, entries + count);
}

} // namespace tlvn::headless
