// Focus, activation, capture and the enabled state.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

void SendActivate(HWND handle, WPARAM how, HWND other)
{
    SendMessageW(handle, WM_NCACTIVATE, how != WA_INACTIVE, 0);
    SendMessageW(handle, WM_ACTIVATE, how, reinterpret_cast<LPARAM>(other));
}

// Gives the focus to `handle`, whose top-level window is active already.
void MoveFocus(HWND handle)
{
    Desktop& desk = Desk();
    const HWND previous = desk.focus;
    if (previous == handle)
        return;
    desk.focus = handle;
    if (previous != nullptr)
        SendMessageW(previous, WM_KILLFOCUS, reinterpret_cast<WPARAM>(handle), 0);
    // The window losing the focus may have moved it on.
    if (desk.focus == handle && IsWindow(handle))
        SendMessageW(handle, WM_SETFOCUS, reinterpret_cast<WPARAM>(previous), 0);
}

bool IsWithin(HWND handle, HWND top)
{
    return handle != nullptr && (handle == top || IsChild(top, handle));
}

} // namespace

void Activate(HWND handle, WPARAM how)
{
    Desktop& desk = Desk();
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr || desk.active == handle || (window->style & WS_DISABLED) != 0)
        return;
    const HWND previous = desk.active;
    desk.active = handle;
    if (previous != nullptr)
        SendActivate(previous, WA_INACTIVE, handle);
    if (desk.active == handle)
        SendActivate(handle, how, previous);
    if (desk.active == handle && desk.focus != nullptr && !IsWithin(desk.focus, handle))
        MoveFocus(handle);
}

void DropFocusWithin(HWND handle)
{
    Desktop& desk = Desk();
    if (IsWithin(desk.capture, handle))
        ReleaseCapture();
    if (IsWithin(desk.focus, handle)) {
        const Window* const window = FindWindowOf(handle);
        const HWND next = window != nullptr && window->IsChildWindow() ? window->parent : nullptr;
        MoveFocus(next);
    }
    if (desk.active == handle) {
        desk.active = nullptr;
        const Window* const window = FindWindowOf(handle);
        const HWND owner = window != nullptr ? window->owner : nullptr;
        SendActivate(handle, WA_INACTIVE, owner);
        if (owner != nullptr && IsWindowVisible(owner))
            SetActiveWindow(owner);
    }
}

} // namespace tlvn::headless

using namespace tlvn::headless;

HWND SetFocus(HWND handle)
{
    Desktop& desk = Desk();
    const HWND previous = desk.focus;
    if (handle == nullptr) {
        MoveFocus(nullptr);
        return previous;
    }
    if (!IsWindow(handle))
        return nullptr;
    for (HWND h = handle; h != nullptr; h = GetAncestor(h, GA_PARENT)) {
        if (!IsWindowEnabled(h) || IsIconic(h))
            return nullptr;
    }
    if (previous == handle)
        return previous;
    Activate(GetAncestor(handle, GA_ROOT), WA_ACTIVE);
    if (IsWindow(handle))
        MoveFocus(handle);
    return previous;
}

HWND GetFocus()
{
    return Desk().focus;
}

HWND SetActiveWindow(HWND handle)
{
    const HWND previous = Desk().active;
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr || window->IsChildWindow())
        return nullptr;
    SetWindowPos(handle, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Activate(handle, WA_ACTIVE);
    return previous;
}

HWND GetActiveWindow()
{
    return Desk().active;
}

BOOL SetForegroundWindow(HWND handle)
{
    const HWND top = GetAncestor(handle, GA_ROOT);
    if (top == nullptr)
        return FALSE;
    SetActiveWindow(top);
    return TRUE;
}

HWND GetForegroundWindow()
{
    return Desk().active;
}

HWND SetCapture(HWND handle)
{
    Desktop& desk = Desk();
    const HWND previous = desk.capture;
    if (handle != nullptr && !IsWindow(handle))
        return nullptr;
    desk.capture = handle;
    // The window that loses the mouse hears of it even when it takes the mouse again.
    if (previous != nullptr)
        SendMessageW(previous, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(handle));
    return previous;
}

HWND GetCapture()
{
    return Desk().capture;
}

BOOL ReleaseCapture()
{
    SetCapture(nullptr);
    return TRUE;
}

BOOL EnableWindow(HWND handle, BOOL enable)
{
    Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return FALSE;
    const bool wasDisabled = (window->style & WS_DISABLED) != 0;
    if (enable && wasDisabled) {
        window->style &= ~WS_DISABLED;
        SendMessageW(handle, WM_ENABLE, TRUE, 0);
    } else if (!enable && !wasDisabled) {
        SendMessageW(handle, WM_CANCELMODE, 0, 0);
        if (Window* const still = FindWindowOf(handle); still != nullptr) {
            still->style |= WS_DISABLED;
            if (Desk().focus == handle)
                MoveFocus(nullptr);
            if (Desk().capture == handle)
                ReleaseCapture();
            SendMessageW(handle, WM_ENABLE, FALSE, 0);
        }
    }
    return wasDisabled;
}
