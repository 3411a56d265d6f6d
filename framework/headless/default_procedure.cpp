// DefWindowProcW.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

LRESULT OnPositionChanged(HWND handle, const WINDOWPOS& position)
{
    Window* window = FindWindowOf(handle);
    if ((position.flags & SWP_NOCLIENTMOVE) == 0) {
        POINT origin = {window->rect.left + window->client.left,
                        window->rect.top + window->client.top};
        SendMessageW(handle, WM_MOVE, 0, MAKELPARAM(origin.x, origin.y));
        window = FindWindowOf(handle);
    }
    if (window != nullptr && (position.flags & SWP_NOCLIENTSIZE) == 0) {
        window->sizePending = false;
        const SIZE size = window->ClientSize();
        SendMessageW(handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(size.cx, size.cy));
    }
    return 0;
}

LRESULT CalculateDefaultClient(const Window& window, RECT& rect)
{
    const RECT client = DefaultClient(window);
    rect = Offset(client, rect.left, rect.top);
    return 0;
}

LRESULT EraseBackground(const Window& window, HDC dc)
{
    bool empty = false;
    const HBRUSH brush = window.windowClass->background;
    if (brush == nullptr)
        return 0;
    BrushColor(brush, empty);
    if (empty)
        return 0;
    RECT clip = {};
    GetClipBox(dc, &clip);
    FillRect(dc, &clip, brush);
    return 1;
}

LRESULT HitTest(const Window& window, LONG x, LONG y)
{
    const POINT origin = ScreenOrigin(window);
    const LONG left = x - origin.x;
    const LONG top = y - origin.y;
    if (!Contains({0, 0, Width(window.rect), Height(window.rect)}, left, top))
        return HTNOWHERE;
    if (Contains(window.client, left, top))
        return HTCLIENT;
    if (HasVerticalBar(window) && left >= window.client.right && top >= window.client.top &&
        top < window.client.bottom)
        return HTVSCROLL;
    if (HasHorizontalBar(window) && top >= window.client.bottom && left >= window.client.left &&
        left < window.client.right)
        return HTHSCROLL;
    if (top < window.client.top && (window.style & WS_CAPTION) == WS_CAPTION)
        return window.menu != nullptr && top >= window.client.top - GetSystemMetrics(SM_CYMENU)
                   ? HTMENU
                   : HTCAPTION;
    return HTBORDER;
}

// `under` is the window under the mouse, `handle` it or a parent that was asked first.
LRESULT OnSetCursor(HWND handle, HWND under, LPARAM lParam)
{
    const Window* const window = FindWindowOf(handle);
    if (window->IsChildWindow() &&
        SendMessageW(window->parent, WM_SETCURSOR, reinterpret_cast<WPARAM>(under), lParam) != 0)
        return TRUE;
    if (static_cast<SHORT>(LOWORD(lParam)) != HTCLIENT) {
        SetCursor(LoadCursorW(nullptr, IDC_ARROW));
        return TRUE;
    }
    const Window* const target = FindWindowOf(under);
    if (target == nullptr || target->windowClass->cursor == nullptr)
        return FALSE;
    SetCursor(target->windowClass->cursor);
    return TRUE;
}

LRESULT CopyText(const WString& text, WPARAM capacity, LPARAM target)
{
    if (capacity == 0)
        return 0;
    auto* const out = reinterpret_cast<WCHAR*>(target);
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(capacity) - 1);
    text.copy(out, length);
    out[length] = 0;
    return static_cast<LRESULT>(length);
}

} // namespace
} // namespace tlvn::headless

using namespace tlvn::headless;

LRESULT DefWindowProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam)
{
    Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return 0;
    switch (message) {
    case WM_NCCREATE: {
        const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        if (creation->lpszName != nullptr)
            window->text = creation->lpszName;
        return TRUE;
    }
    case WM_NCCALCSIZE:
        // NCCALCSIZE_PARAMS starts with the same rectangle.
        return CalculateDefaultClient(*window, *reinterpret_cast<RECT*>(lParam));
    case WM_WINDOWPOSCHANGED:
        return OnPositionChanged(handle, *reinterpret_cast<const WINDOWPOS*>(lParam));
    case WM_PAINT: {
        PAINTSTRUCT paint;
        BeginPaint(handle, &paint);
        EndPaint(handle, &paint);
        return 0;
    }
    case WM_ERASEBKGND:
        return EraseBackground(*window, reinterpret_cast<HDC>(wParam));
    case WM_SETTEXT:
        window->text.clear();
        if (lParam != 0)
            window->text = reinterpret_cast<LPCWSTR>(lParam);
        return TRUE;
    case WM_GETTEXT:
        return CopyText(window->text, wParam, lParam);
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(window->text.size());
    case WM_QUERYENDSESSION:
        return TRUE;
    case WM_CLOSE:
        DestroyWindow(handle);
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE && !IsChild(handle, GetFocus()))
            SetFocus(handle);
        return 0;
    case WM_NCACTIVATE:
        window->framePending = true;
        return TRUE;
    case WM_NCHITTEST:
        return HitTest(*window, static_cast<SHORT>(LOWORD(lParam)),
                       static_cast<SHORT>(HIWORD(lParam)));
    case WM_SETCURSOR:
        return OnSetCursor(handle, reinterpret_cast<HWND>(wParam), lParam);
    case WM_MOUSEACTIVATE:
        if (window->IsChildWindow()) {
            const LRESULT answer = SendMessageW(window->parent, WM_MOUSEACTIVATE, wParam, lParam);
            if (answer != 0)
                return answer;
        }
        return MA_ACTIVATE;
    case WM_SETREDRAW:
        window->redraw = wParam != 0;
        return 0;
    case WM_CANCELMODE:
        if (Desk().capture == handle)
            ReleaseCapture();
        return 0;
    case WM_MOUSEWHEEL:
    case WM_CONTEXTMENU:
        if (window->IsChildWindow())
            return SendMessageW(window->parent, message, wParam, lParam);
        return 0;
    case WM_RBUTTONUP: {
        POINT point = {static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam))};
        ClientToScreen(handle, &point);
        SendMessageW(handle, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle),
                     MAKELPARAM(point.x, point.y));
        return 0;
    }
    case WM_KEYUP:
        if (wParam == VK_APPS)
            SendMessageW(handle, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle), -1);
        return 0;
    case WM_IME_CHAR:
        PostMessageW(handle, WM_CHAR, wParam, lParam);
        return 0;
    case WM_IME_COMPOSITION:
        if ((static_cast<DWORD>(lParam) & GCS_RESULTSTR) != 0) {
            // Unless the window took the result itself, it comes as characters.
            if (InputContext* const context = Desk().inputContexts.Find(window->inputContext);
                context != nullptr) {
                const tlvn::WString result = context->resultText;
                for (const WCHAR c : result)
                    SendMessageW(handle, WM_IME_CHAR, c, 1);
            }
        }
        return 0;
    default:
        return 0;
    }
}
