// Synthesised input on its way to windows; mouse, cursor and caret.

#include "framework/headless/desktop.h"

#include <cstdlib>
#include <utility>

namespace tlvn::headless {
namespace {

void SetState(BYTE* state, int key, bool down)
{
    key &= 0xFF;
    if (down && (state[key] & 0x80) == 0)
        state[key] ^= 1; // the toggle of a lock key
    state[key] = static_cast<BYTE>(down ? state[key] | 0x80 : state[key] & ~0x80);
    const int left = key == VK_SHIFT     ? VK_LSHIFT
                     : key == VK_CONTROL ? VK_LCONTROL
                     : key == VK_MENU    ? VK_LMENU
                                         : 0;
    if (left != 0)
        state[left] = state[key];
}

bool IsDown(int key)
{
    return (Desk().keyState[key & 0xFF] & 0x80) != 0;
}

WPARAM MouseFlags()
{
    return (IsDown(VK_LBUTTON) ? MK_LBUTTON : 0) | (IsDown(VK_RBUTTON) ? MK_RBUTTON : 0) |
           (IsDown(VK_MBUTTON) ? MK_MBUTTON : 0) | (IsDown(VK_SHIFT) ? MK_SHIFT : 0) |
           (IsDown(VK_CONTROL) ? MK_CONTROL : 0);
}

bool MakeKeyMessage(const InputEvent& event, MSG& message)
{
    const Desktop& desk = Desk();
    const HWND target = desk.focus != nullptr ? desk.focus : desk.active;
    if (target == nullptr)
        return false;
    const bool alt = IsDown(VK_MENU) || (event.key == VK_MENU && event.down);
    const bool system =
        desk.focus == nullptr || event.key == VK_F10 || (alt && !IsDown(VK_CONTROL));
    const bool extended = (event.key >= VK_PRIOR && event.key <= VK_DOWN) ||
                          event.key == VK_INSERT || event.key == VK_DELETE;
    DWORD bits = 1 | MapVirtualKeyW(static_cast<UINT>(event.key), MAPVK_VK_TO_VSC) << 16;
    bits |= extended ? 1u << 24 : 0;
    bits |= system && alt ? 1u << 29 : 0;
    bits |= !event.down || IsDown(event.key) ? 1u << 30 : 0;
    bits |= event.down ? 0 : 1u << 31;
    const UINT kind =
        event.down ? (system ? WM_SYSKEYDOWN : WM_KEYDOWN) : (system ? WM_SYSKEYUP : WM_KEYUP);
    message = MakeMessage(target, kind, static_cast<WPARAM>(event.key), static_cast<LPARAM>(bits));
    return true;
}

UINT ButtonMessage(int button, bool down)
{
    switch (button) {
    case VK_RBUTTON:
        return down ? WM_RBUTTONDOWN : WM_RBUTTONUP;
    case VK_MBUTTON:
        return down ? WM_MBUTTONDOWN : WM_MBUTTONUP;
    default:
        return down ? WM_LBUTTONDOWN : WM_LBUTTONUP;
    }
}

// A second press of the same button at the same place in time makes a double click, for windows
// that want them. Remembers the press.
bool IsDoubleClick(const InputEvent& event, HWND target)
{
    Desktop& desk = Desk();
    const Window* const window = FindWindowOf(target);
    const bool twice =
        window != nullptr && (window->windowClass->style & CS_DBLCLKS) != 0 &&
        desk.lastClickWindow == target && desk.lastClickButton == event.key &&
        event.time - desk.lastClickTime <= GetDoubleClickTime() &&
        std::abs(event.point.x - desk.lastClickPoint.x) <= GetSystemMetrics(SM_CXDOUBLECLK) / 2 &&
        std::abs(event.point.y - desk.lastClickPoint.y) <= GetSystemMetrics(SM_CYDOUBLECLK) / 2;
    desk.lastClickWindow = twice ? nullptr : target;
    desk.lastClickButton = event.key;
    desk.lastClickTime = event.time;
    desk.lastClickPoint = event.point;
    return twice;
}

bool MakeMouseMessage(const InputEvent& event, MSG& message, bool remove)
{
    Desktop& desk = Desk();
    const POINT point = event.point;
    HWND target = desk.capture;
    LRESULT hit = HTCLIENT;
    if (target == nullptr) {
        target = WindowFromPoint(point);
        if (target == nullptr || !IsWindowEnabled(GetAncestor(target, GA_ROOT)))
            return false;
        hit = SendMessageW(target, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
        if (hit == HTTRANSPARENT) {
            target = GetAncestor(target, GA_PARENT);
            hit = HTCLIENT;
        }
        if (!IsWindow(target))
            return false;
    }
    UINT kind =
        event.kind == InputEvent::Kind::Move ? WM_MOUSEMOVE : ButtonMessage(event.key, event.down);
    const bool press = event.kind == InputEvent::Kind::Button && event.down;
    if (remove && press && IsDoubleClick(event, target))
        kind += WM_LBUTTONDBLCLK - WM_LBUTTONDOWN;
    if (remove)
        TrackLeave(target);
    if (remove && desk.capture == nullptr) {
        const HWND top = GetAncestor(target, GA_ROOT);
        if (press) {
            const LRESULT activation = SendMessageW(
                target, WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(top), MAKELPARAM(hit, kind));
            if (activation != MA_NOACTIVATE && activation != MA_NOACTIVATEANDEAT)
                Activate(top, WA_CLICKACTIVE);
            if (activation == MA_ACTIVATEANDEAT || activation == MA_NOACTIVATEANDEAT)
                return false;
        }
        SendMessageW(target, WM_SETCURSOR, reinterpret_cast<WPARAM>(target), MAKELPARAM(hit, kind));
        if (!IsWindow(target))
            return false;
    }
    POINT local = point;
    if (hit == HTCLIENT) {
        ScreenToClient(target, &local);
        message = MakeMessage(target, kind, MouseFlags(), MAKELPARAM(local.x, local.y));
    } else {
        message = MakeMessage(target, kind - WM_MOUSEMOVE + WM_NCMOUSEMOVE,
                              static_cast<WPARAM>(hit), MAKELPARAM(point.x, point.y));
    }
    return true;
}

bool MakeInputMessage(const InputEvent& event, MSG& message, bool remove)
{
    switch (event.kind) {
    case InputEvent::Kind::Key:
        return MakeKeyMessage(event, message);
    case InputEvent::Kind::Wheel:
        if (Desk().focus == nullptr)
            return false;
        message = MakeMessage(Desk().focus, WM_MOUSEWHEEL, MAKEWPARAM(MouseFlags(), event.delta),
                              MAKELPARAM(event.point.x, event.point.y));
        return true;
    default:
        return MakeMouseMessage(event, message, remove);
    }
}

void Enqueue(InputEvent event)
{
    event.time = Now();
    Desk().input.push_back(event);
}

} // namespace

void TrackLeave(HWND under)
{
    Desktop& desk = Desk();
    std::vector<HWND> all = desk.topLevel;
    for (std::size_t i = 0; i < all.size(); ++i) {
        Window* const window = FindWindowOf(all[i]);
        if (window->trackLeave && all[i] != under) {
            window->trackLeave = false;
            PostMessageW(all[i], WM_MOUSELEAVE, 0, 0);
        }
        all.insert(all.end(), window->children.begin(), window->children.end());
    }
}

bool TakeInput(MSG& message, HWND window, UINT first, UINT last, bool remove)
{
    Desktop& desk = Desk();
    while (!desk.input.empty()) {
        const InputEvent event = desk.input.front();
        const bool isKey = event.kind == InputEvent::Kind::Key;
        // A message filtered out stays for later.
        if ((first != 0 || last != 0) && (isKey ? last < WM_KEYFIRST || first > WM_KEYLAST
                                                : last < WM_MOUSEFIRST || first > WM_MOUSELAST))
            return false;
        if (!remove)
            return MakeInputMessage(event, message, false) && Matches(message, window, first, last);
        desk.input.pop_front();
        if (event.kind == InputEvent::Kind::Button)
            SetState(desk.keyState, event.key, event.down);
        const bool made = MakeInputMessage(event, message, true);
        if (isKey)
            SetState(desk.keyState, event.key, event.down);
        if (made)
            message.time = static_cast<DWORD>(event.time);
        if (made && Matches(message, window, first, last))
            return true;
    }
    return false;
}

void SendKey(int virtualKey, bool down)
{
    Desktop& desk = Desk();
    InputEvent event;
    event.kind = InputEvent::Kind::Key;
    event.key = virtualKey & 0xFF;
    event.down = down;
    event.point = desk.mouse;
    SetState(desk.asyncKeyState, event.key, down);
    Enqueue(event);
}

void SendKeyPress(int virtualKey)
{
    SendKey(virtualKey, true);
    SendKey(virtualKey, false);
}

void SendText(WStringView text)
{
    for (const WCHAR c : text)
        PostMessageW(Desk().focus, WM_CHAR, c, 1);
}

void SetKeyDown(int virtualKey, bool down)
{
    SetState(Desk().keyState, virtualKey, down);
    SetState(Desk().asyncKeyState, virtualKey, down);
}

void SendMouseMove(POINT point)
{
    Desktop& desk = Desk();
    desk.mouse = point;
    InputEvent event;
    event.kind = InputEvent::Kind::Move;
    event.point = point;
    Enqueue(event);
}

void SendMouseButton(int button, bool down)
{
    Desktop& desk = Desk();
    InputEvent event;
    event.kind = InputEvent::Kind::Button;
    event.key = button & 0xFF;
    event.down = down;
    event.point = desk.mouse;
    SetState(desk.asyncKeyState, event.key, down);
    Enqueue(event);
}

void SendMouseClick(POINT point, int button)
{
    SendMouseMove(point);
    SendMouseButton(button, true);
    SendMouseButton(button, false);
}

void SendMouseWheel(int delta)
{
    InputEvent event;
    event.kind = InputEvent::Kind::Wheel;
    event.delta = delta;
    event.point = Desk().mouse;
    Enqueue(event);
}

CaretState GetCaretState()
{
    const Caret& caret = Desk().caret;
    CaretState state = {};
    state.window = caret.window;
    state.rect = {caret.position.x, caret.position.y, caret.position.x + caret.size.cx,
                  caret.position.y + caret.size.cy};
    state.visible = caret.window != nullptr && caret.hidden <= 0;
    return state;
}

} // namespace tlvn::headless

using namespace tlvn::headless;

UINT GetDoubleClickTime()
{
    return 500;
}

BOOL TrackMouseEvent(TRACKMOUSEEVENT* event)
{
    Window* const window = FindWindowOf(event->hwndTrack);
    if (window == nullptr)
        return FALSE;
    if ((event->dwFlags & TME_LEAVE) != 0) {
        window->trackLeave = (event->dwFlags & TME_CANCEL) == 0;
        if (window->trackLeave && WindowFromPoint(Desk().mouse) != event->hwndTrack) {
            window->trackLeave = false;
            PostMessageW(event->hwndTrack, WM_MOUSELEAVE, 0, 0);
        }
    }
    return TRUE;
}

HCURSOR LoadCursorW(HINSTANCE, LPCWSTR name)
{
    std::vector<std::unique_ptr<Cursor>>& cursors = Desk().cursors;
    Cursor wanted;
    if (IS_INTRESOURCE(name))
        wanted.number = static_cast<int>(reinterpret_cast<UINT_PTR>(name));
    else
        wanted.name = name;
    for (const auto& cursor : cursors) {
        if (cursor->number == wanted.number && cursor->name == wanted.name)
            return reinterpret_cast<HCURSOR>(cursor.get());
    }
    cursors.push_back(std::make_unique<Cursor>(std::move(wanted)));
    return reinterpret_cast<HCURSOR>(cursors.back().get());
}

HCURSOR SetCursor(HCURSOR cursor)
{
    return std::exchange(Desk().cursor, cursor);
}

HCURSOR GetCursor()
{
    return Desk().cursor;
}

BOOL GetCursorPos(LPPOINT point)
{
    *point = Desk().mouse;
    return TRUE;
}

BOOL SetCursorPos(int x, int y)
{
    SendMouseMove({x, y});
    return TRUE;
}

BOOL CreateCaret(HWND window, HBITMAP, int width, int height)
{
    if (!IsWindow(window))
        return FALSE;
    Caret& caret = Desk().caret;
    caret = {};
    caret.window = window;
    caret.size = {width != 0 ? width : 1, height != 0 ? height : 1};
    caret.hidden = 1;
    return TRUE;
}

BOOL DestroyCaret()
{
    const bool had = Desk().caret.window != nullptr;
    Desk().caret = {};
    return had;
}

BOOL SetCaretPos(int x, int y)
{
    Caret& caret = Desk().caret;
    if (caret.window == nullptr)
        return FALSE;
    caret.position = {x, y};
    return TRUE;
}

BOOL GetCaretPos(LPPOINT point)
{
    *point = Desk().caret.position;
    return Desk().caret.window != nullptr;
}

BOOL ShowCaret(HWND window)
{
    Caret& caret = Desk().caret;
    if (caret.window == nullptr || (window != nullptr && window != caret.window))
        return FALSE;
    if (caret.hidden > 0)
        --caret.hidden;
    return TRUE;
}

BOOL HideCaret(HWND window)
{
    Caret& caret = Desk().caret;
    if (caret.window == nullptr || (window != nullptr && window != caret.window))
        return FALSE;
    ++caret.hidden;
    return TRUE;
}

UINT GetCaretBlinkTime()
{
    return 530;
}
