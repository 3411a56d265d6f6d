// Sending, the queue, timers and hooks.

#include "framework/headless/desktop.h"

#include <chrono>
#include <thread>

namespace tlvn::headless {

MSG MakeMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return {window, message, wParam, lParam, static_cast<DWORD>(Now()), Desk().mouse};
}

bool Matches(const MSG& message, HWND window, UINT first, UINT last)
{
    if (window != nullptr && message.hwnd != window && !IsChild(window, message.hwnd))
        return false;
    return (first == 0 && last == 0) || (message.message >= first && message.message <= last);
}

void ForgetWindowMessages(HWND window)
{
    Desktop& desk = Desk();
    std::erase_if(desk.posted, [&](const MSG& m) { return m.hwnd == window; });
    std::erase_if(desk.timers, [&](const Timer& t) { return t.window == window; });
}

namespace {

bool TakePosted(MSG& message, HWND window, UINT first, UINT last, bool remove)
{
    std::deque<MSG>& posted = Desk().posted;
    for (auto at = posted.begin(); at != posted.end(); ++at) {
        if (!Matches(*at, window, first, last))
            continue;
        message = *at;
        if (remove)
            posted.erase(at);
        return true;
    }
    return false;
}

bool TakePaint(MSG& message, HWND window, UINT first, UINT last)
{
    const HWND waiting = FindPaintable();
    if (waiting == nullptr)
        return false;
    message = MakeMessage(waiting, WM_PAINT, 0, 0);
    return Matches(message, window, first, last);
}

bool TakeTimer(MSG& message, HWND window, UINT first, UINT last, bool remove)
{
    const INT64 now = Now();
    Timer* due = nullptr;
    for (Timer& timer : Desk().timers) {
        const MSG candidate = MakeMessage(timer.window, WM_TIMER, timer.id, 0);
        if (timer.due <= now && (due == nullptr || timer.due < due->due) &&
            Matches(candidate, window, first, last))
            due = &timer;
    }
    if (due == nullptr)
        return false;
    message = MakeMessage(due->window, WM_TIMER, due->id, reinterpret_cast<LPARAM>(due->procedure));
    if (remove)
        due->due = now + due->period;
    return true;
}

} // namespace
} // namespace tlvn::headless

using namespace tlvn::headless;

LRESULT CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return procedure(window, message, wParam, lParam);
}

LRESULT SendMessageW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr || window->procedure == nullptr)
        return 0;
    if (window->unicode || (message != WM_CHAR && message != WM_IME_CHAR))
        return window->procedure(handle, message, wParam, lParam);
    // An ANSI window gets the bytes one by one, or from the input method both at once.
    const WCHAR unit = static_cast<WCHAR>(wParam);
    const std::string bytes = tlvn::NarrowText(tlvn::WStringView(&unit, 1));
    WPARAM whole = 0;
    for (const char byte : bytes)
        whole = whole << 8 | static_cast<BYTE>(byte);
    const WNDPROC procedure = window->procedure;
    if (message == WM_CHAR && whole > 0xFF) {
        procedure(handle, message, whole >> 8, lParam);
        whole &= 0xFF;
    }
    return procedure(handle, message, whole, lParam);
}

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (window != nullptr && !IsWindow(window))
        return FALSE;
    Desk().posted.push_back(MakeMessage(window, message, wParam, lParam));
    return TRUE;
}

void PostQuitMessage(int exitCode)
{
    Desk().quitPosted = true;
    Desk().exitCode = exitCode;
}

BOOL PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT flags)
{
    Desktop& desk = Desk();
    const bool remove = (flags & PM_REMOVE) != 0;
    const auto taken = [&] {
        desk.messageTime = static_cast<LONG>(message->time);
        desk.messagePos = static_cast<DWORD>(MAKELONG(message->pt.x, message->pt.y));
        return TRUE;
    };
    if (TakePosted(*message, window, first, last, remove))
        return taken();
    if (desk.quitPosted) {
        *message = MakeMessage(nullptr, WM_QUIT, static_cast<WPARAM>(desk.exitCode), 0);
        if (remove)
            desk.quitPosted = false;
        return taken();
    }
    if (TakeInput(*message, window, first, last, remove) ||
        TakePaint(*message, window, first, last) ||
        TakeTimer(*message, window, first, last, remove))
        return taken();
    return FALSE;
}

BOOL GetMessageW(LPMSG message, HWND window, UINT first, UINT last)
{
    while (!PeekMessageW(message, window, first, last, PM_REMOVE)) {
        const Desktop& desk = Desk();
        if (desk.testClock || desk.timers.empty()) {
            *message = MakeMessage(nullptr, WM_QUIT, 0, 0);
            return FALSE;
        }
        INT64 due = desk.timers.front().due;
        for (const Timer& timer : desk.timers)
            due = std::min(due, timer.due);
        std::this_thread::sleep_for(std::chrono::milliseconds(std::max<INT64>(due - Now(), 1)));
    }
    return message->message != WM_QUIT;
}

LRESULT DispatchMessageW(const MSG* message)
{
    if (message->message == WM_TIMER && message->lParam != 0) {
        const auto procedure = reinterpret_cast<TIMERPROC>(message->lParam);
        procedure(message->hwnd, WM_TIMER, message->wParam, message->time);
        return 0;
    }
    return SendMessageW(message->hwnd, message->message, message->wParam, message->lParam);
}

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure)
{
    constexpr DWORD kShortest = 10;
    Desktop& desk = Desk();
    if (window != nullptr && !IsWindow(window))
        return 0;
    if (window == nullptr)
        id = desk.nextTimerId++;
    KillTimer(window, id);
    Timer timer;
    timer.window = window;
    timer.id = id;
    timer.period = std::max<DWORD>(milliseconds, kShortest);
    timer.due = Now() + timer.period;
    timer.procedure = procedure;
    desk.timers.push_back(timer);
    return window == nullptr ? id : std::max<UINT_PTR>(id, 1);
}

BOOL KillTimer(HWND window, UINT_PTR id)
{
    return std::erase_if(Desk().timers,
                         [&](const Timer& t) { return t.window == window && t.id == id; }) != 0;
}

LONG GetMessageTime()
{
    return Desk().messageTime;
}

DWORD GetMessagePos()
{
    return Desk().messagePos;
}

HHOOK SetWindowsHookExW(int kind, HOOKPROC procedure, HINSTANCE, DWORD)
{
    if (kind != WH_CBT || procedure == nullptr)
        return nullptr;
    Desk().hooks.push_back(procedure);
    return reinterpret_cast<HHOOK>(procedure);
}

BOOL UnhookWindowsHookEx(HHOOK hook)
{
    std::vector<HOOKPROC>& hooks = Desk().hooks;
    for (std::size_t i = hooks.size(); i-- > 0;) {
        if (reinterpret_cast<HHOOK>(hooks[i]) != hook)
            continue;
        hooks.erase(hooks.begin() + static_cast<std::ptrdiff_t>(i));
        return TRUE;
    }
    return FALSE;
}

LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam)
{
    const std::vector<HOOKPROC>& hooks = Desk().hooks;
    for (std::size_t i = hooks.size(); i-- > 1;) {
        if (reinterpret_cast<HHOOK>(hooks[i]) == hook)
            return hooks[i - 1](code, wParam, lParam);
    }
    return 0;
}

int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type)
{
    Desktop& desk = Desk();
    desk.messageBoxes.push_back(
        {owner, text != nullptr ? text : TW(""), caption != nullptr ? caption : TW(""), type});
    if (desk.messageBoxAnswer != 0)
        return desk.messageBoxAnswer;
    switch (type & MB_TYPEMASK) {
    case MB_ABORTRETRYIGNORE:
        return IDABORT;
    case MB_YESNOCANCEL:
    case MB_YESNO:
        return (type & MB_DEFBUTTON2) != 0 ? IDNO : IDYES;
    case MB_RETRYCANCEL:
        return IDRETRY;
    default:
        return (type & MB_DEFBUTTON2) != 0 ? IDCANCEL : IDOK;
    }
}

BOOL MessageBeep(UINT)
{
    return TRUE;
}
