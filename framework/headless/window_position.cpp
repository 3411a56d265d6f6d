// Position, size, z-order and visibility.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

int BorderWidth(DWORD style, DWORD exStyle)
{
    int border = 0;
    if ((style & WS_THICKFRAME) != 0)
        border = GetSystemMetrics(SM_CXFRAME);
    else if ((style & WS_DLGFRAME) != 0)
        border = 3;
    else if ((style & WS_BORDER) != 0)
        border = 1;
    if ((exStyle & WS_EX_STATICEDGE) != 0)
        border += 1;
    if ((exStyle & WS_EX_CLIENTEDGE) != 0)
        border += GetSystemMetrics(SM_CXEDGE);
    return border;
}

// Invalidates what was under `rect` (in the parent's client coordinates) and is no longer
// covered by `still`.
void Uncover(const Window& window, const RECT& rect, const RECT& still)
{
    if (!window.IsChildWindow())
        return;
    Window* const parent = FindWindowOf(window.parent);
    if (parent == nullptr)
        return;
    Region uncovered(rect);
    uncovered.Subtract(still);
    if (!uncovered.IsEmpty())
        InvalidateWindow(*parent, &uncovered, true);
}

void Reorder(const Window& window, HWND after)
{
    std::vector<HWND>& siblings = SiblingsOf(window);
    if (after == window.handle)
        return;
    std::erase(siblings, window.handle);
    auto at = siblings.begin();
    if (after == HWND_BOTTOM) {
        at = siblings.end();
    } else if (after != HWND_TOP && after != HWND_TOPMOST && after != HWND_NOTOPMOST) {
        at = std::find(siblings.begin(), siblings.end(), after);
        if (at != siblings.end())
            ++at;
    }
    siblings.insert(at, window.handle);
}

struct Placement {
    RECT rect;
    RECT client;
    bool visible;
};

// What has to be painted after a window went from `before` to where it is now.
void InvalidateAfter(Window& window, const Placement& before, UINT flags)
{
    const bool visible = (window.style & WS_VISIBLE) != 0;
    if (before.visible)
        Uncover(window, before.rect, visible ? window.rect : RECT{});
    if (!visible)
        return;
    const RECT whole = {0, 0, Width(window.client), Height(window.client)};
    const RECT old = {0, 0, Width(before.client), Height(before.client)};
    const UINT classStyle = window.windowClass->style;
    const bool all = !before.visible || (flags & SWP_NOCOPYBITS) != 0 ||
                     before.client.left != window.client.left ||
                     before.client.top != window.client.top ||
                     ((classStyle & CS_HREDRAW) != 0 && Width(old) != Width(whole)) ||
                     ((classStyle & CS_VREDRAW) != 0 && Height(old) != Height(whole));
    Region exposed(whole);
    if (!all)
        exposed.Subtract(old);
    if (!exposed.IsEmpty())
        InvalidateWindow(window, &exposed, true);
    if (!before.visible || (flags & SWP_NOSIZE) == 0 || (flags & SWP_FRAMECHANGED) != 0)
        window.framePending = true;
}

} // namespace

bool HasVerticalBar(const Window& window)
{
    return (window.style & WS_VSCROLL) != 0 && Width(window.rect) >= GetSystemMetrics(SM_CXVSCROLL);
}

bool HasHorizontalBar(const Window& window)
{
    return (window.style & WS_HSCROLL) != 0 && Height(window.rect) > GetSystemMetrics(SM_CYHSCROLL);
}

RECT DefaultClient(const Window& window)
{
    const int border = BorderWidth(window.style, window.exStyle);
    RECT client = {border, border, Width(window.rect) - border, Height(window.rect) - border};
    if ((window.style & WS_CAPTION) == WS_CAPTION)
        client.top += GetSystemMetrics(SM_CYCAPTION);
    if (!window.IsChildWindow() && window.menu != nullptr)
        client.top += GetSystemMetrics(SM_CYMENU);
    if (HasVerticalBar(window))
        client.right -= GetSystemMetrics(SM_CXVSCROLL);
    if (HasHorizontalBar(window))
        client.bottom -= GetSystemMetrics(SM_CYHSCROLL);
    client.right = std::max(client.right, client.left);
    client.bottom = std::max(client.bottom, client.top);
    return client;
}

void FrameChanged(HWND window)
{
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

} // namespace tlvn::headless

using namespace tlvn::headless;

BOOL AdjustWindowRectEx(LPRECT rect, DWORD style, BOOL menu, DWORD exStyle)
{
    const int border = BorderWidth(style, exStyle);
    *rect = {rect->left - border, rect->top - border, rect->right + border, rect->bottom + border};
    if ((style & WS_CAPTION) == WS_CAPTION)
        rect->top -= GetSystemMetrics(SM_CYCAPTION);
    if (menu)
        rect->top -= GetSystemMetrics(SM_CYMENU);
    return TRUE;
}

BOOL SetWindowPos(HWND handle, HWND after, int x, int y, int width, int height, UINT flags)
{
    Window* window = FindWindowOf(handle);
    if (window == nullptr)
        return FALSE;
    WINDOWPOS position = {handle, after, x, y, width, height, flags};
    if ((flags & SWP_NOMOVE) != 0) {
        position.x = window->rect.left;
        position.y = window->rect.top;
    }
    if ((flags & SWP_NOSIZE) != 0) {
        position.cx = Width(window->rect);
        position.cy = Height(window->rect);
    }
    if ((flags & SWP_NOSENDCHANGING) == 0) {
        SendMessageW(handle, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&position));
        window = FindWindowOf(handle);
        if (window == nullptr)
            return FALSE;
    }
    const Placement before = {window->rect, window->client, (window->style & WS_VISIBLE) != 0};
    RECT rect = window->rect;
    if ((position.flags & SWP_NOMOVE) == 0)
        rect = Offset(rect, ClampCoordinate(position.x) - rect.left,
                      ClampCoordinate(position.y) - rect.top);
    if ((position.flags & SWP_NOSIZE) == 0) {
        rect.right = rect.left + ClampCoordinate(std::max(position.cx, 0));
        rect.bottom = rect.top + ClampCoordinate(std::max(position.cy, 0));
    }
    // Flags now say what really changes.
    if (rect.left == before.rect.left && rect.top == before.rect.top)
        position.flags |= SWP_NOMOVE;
    if (Width(rect) == Width(before.rect) && Height(rect) == Height(before.rect))
        position.flags |= SWP_NOSIZE;
    if (before.visible)
        position.flags &= ~SWP_SHOWWINDOW;
    else
        position.flags &= ~SWP_HIDEWINDOW;

    if ((position.flags & SWP_NOZORDER) == 0)
        Reorder(*window, position.hwndInsertAfter);
    window->rect = rect;
    if ((position.flags & SWP_NOSIZE) == 0 || (position.flags & SWP_FRAMECHANGED) != 0) {
        NCCALCSIZE_PARAMS sizes = {};
        const POINT origin = ScreenOrigin(*window);
        sizes.rgrc[0] = {origin.x, origin.y, origin.x + Width(rect), origin.y + Height(rect)};
        sizes.lppos = &position;
        SendMessageW(handle, WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&sizes));
        window = FindWindowOf(handle);
        if (window == nullptr)
            return FALSE;
        window->client = Offset(sizes.rgrc[0], -origin.x, -origin.y);
        const SIZE size = window->ClientSize();
        window->update.IntersectWith(RECT{0, 0, size.cx, size.cy});
    }
    if ((position.flags & SWP_SHOWWINDOW) != 0)
        window->style |= WS_VISIBLE;
    if ((position.flags & SWP_HIDEWINDOW) != 0) {
        window->style &= ~WS_VISIBLE;
        window->update.Clear();
        window->drawing.Clear();
    }
    if (Width(before.client) == Width(window->client) &&
        Height(before.client) == Height(window->client))
        position.flags |= SWP_NOCLIENTSIZE;
    if (before.rect.left + before.client.left == window->rect.left + window->client.left &&
        before.rect.top + before.client.top == window->rect.top + window->client.top)
        position.flags |= SWP_NOCLIENTMOVE;
    if ((position.flags & SWP_NOREDRAW) == 0)
        InvalidateAfter(*window, before, position.flags);
    if ((position.flags & SWP_HIDEWINDOW) != 0)
        DropFocusWithin(handle);
    if ((position.flags & SWP_NOACTIVATE) == 0 && FindWindowOf(handle) != nullptr &&
        !window->IsChildWindow() && (window->style & WS_VISIBLE) != 0)
        Activate(handle, WA_ACTIVE);

    constexpr UINT kNothing = SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER;
    const bool changed =
        (position.flags & kNothing) != kNothing ||
        (position.flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW | SWP_FRAMECHANGED)) != 0;
    if (changed && IsWindow(handle)) {
        window = FindWindowOf(handle);
        position.x = window->rect.left;
        position.y = window->rect.top;
        position.cx = Width(window->rect);
        position.cy = Height(window->rect);
        SendMessageW(handle, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position));
    }
    return TRUE;
}

BOOL MoveWindow(HWND handle, int x, int y, int width, int height, BOOL repaint)
{
    const UINT flags = SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? 0 : SWP_NOREDRAW);
    return SetWindowPos(handle, nullptr, x, y, width, height, flags);
}

BOOL ShowWindow(HWND handle, int command)
{
    Window* window = FindWindowOf(handle);
    if (window == nullptr)
        return FALSE;
    const bool was = (window->style & WS_VISIBLE) != 0;
    const bool show = command != SW_HIDE;
    if (was == show)
        return was;
    SendMessageW(handle, WM_SHOWWINDOW, show, 0);
    window = FindWindowOf(handle);
    if (window == nullptr)
        return was;
    UINT flags = SWP_NOSIZE | SWP_NOMOVE | (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW);
    const bool activate =
        show && !window->IsChildWindow() && command != SW_SHOWNA && command != SW_SHOWNOACTIVATE;
    if (!activate)
        flags |= SWP_NOACTIVATE | SWP_NOZORDER;
    SetWindowPos(handle, HWND_TOP, 0, 0, 0, 0, flags);
    window = FindWindowOf(handle);
    if (show && window != nullptr && window->sizePending) {
        window->sizePending = false;
        const SIZE size = window->ClientSize();
        const POINT origin = ClientScreenOrigin(*window);
        SendMessageW(handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(size.cx, size.cy));
        SendMessageW(handle, WM_MOVE, 0, MAKELPARAM(origin.x, origin.y));
    }
    return was;
}

namespace {
struct DeferredMove {
    HWND window;
    HWND after;
    int x, y, width, height;
    UINT flags;
};
using Batch = std::vector<DeferredMove>;
} // namespace

HDWP BeginDeferWindowPos(int count)
{
    auto* const batch = new Batch;
    batch->reserve(static_cast<std::size_t>(std::clamp(count, 0, 1024)));
    return reinterpret_cast<HDWP>(batch);
}

HDWP DeferWindowPos(HDWP handle, HWND window, HWND after, int x, int y, int width, int height,
                    UINT flags)
{
    auto* const batch = reinterpret_cast<Batch*>(handle);
    if (!IsWindow(window)) {
        // The batch is lost, as the documentation has it.
        delete batch;
        return nullptr;
    }
    batch->push_back({window, after, x, y, width, height, flags});
    return handle;
}

BOOL EndDeferWindowPos(HDWP handle)
{
    if (handle == nullptr)
        return FALSE;
    const std::unique_ptr<Batch> batch(reinterpret_cast<Batch*>(handle));
    for (const DeferredMove& m : *batch)
        SetWindowPos(m.window, m.after, m.x, m.y, m.width, m.height, m.flags);
    return TRUE;
}
