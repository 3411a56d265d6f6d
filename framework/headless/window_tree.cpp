// Relations between windows and their coordinates.

#include "framework/headless/desktop.h"

namespace tlvn::headless {

POINT ClientScreenOrigin(const Window& window)
{
    const POINT origin = ScreenOrigin(window);
    return {origin.x + window.client.left, origin.y + window.client.top};
}

POINT ScreenOrigin(const Window& window)
{
    POINT origin = {window.rect.left, window.rect.top};
    if (window.IsChildWindow()) {
        if (const Window* const parent = FindWindowOf(window.parent); parent != nullptr) {
            const POINT base = ClientScreenOrigin(*parent);
            origin.x += base.x;
            origin.y += base.y;
        }
    }
    return origin;
}

RECT VisibleClient(const Window& window)
{
    const SIZE size = window.ClientSize();
    RECT visible = {0, 0, size.cx, size.cy};
    LONG dx = 0;
    LONG dy = 0;
    for (const Window* w = &window; w->IsChildWindow();) {
        const Window* const parent = FindWindowOf(w->parent);
        if (parent == nullptr)
            break;
        dx += w->rect.left + w->client.left;
        dy += w->rect.top + w->client.top;
        const SIZE room = parent->ClientSize();
        visible = Intersect(visible, Offset({0, 0, room.cx, room.cy}, -dx, -dy));
        w = parent;
    }
    return IsEmpty(visible) ? RECT{} : visible;
}

} // namespace tlvn::headless

using namespace tlvn::headless;

BOOL IsWindowVisible(HWND handle)
{
    const Window* window = FindWindowOf(handle);
    while (window != nullptr && (window->style & WS_VISIBLE) != 0) {
        if (!window->IsChildWindow())
            return TRUE;
        window = FindWindowOf(window->parent);
    }
    return FALSE;
}

BOOL IsWindowEnabled(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    return window != nullptr && (window->style & WS_DISABLED) == 0;
}

BOOL IsIconic(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    return window != nullptr && (window->style & WS_MINIMIZE) != 0;
}

BOOL IsZoomed(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    return window != nullptr && (window->style & WS_MAXIMIZE) != 0;
}

BOOL IsChild(HWND ancestor, HWND handle)
{
    const Window* window = FindWindowOf(handle);
    while (window != nullptr && window->IsChildWindow()) {
        if (window->parent == ancestor)
            return TRUE;
        window = FindWindowOf(window->parent);
    }
    return FALSE;
}

BOOL GetClientRect(HWND handle, LPRECT rect)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return FALSE;
    const SIZE size = window->ClientSize();
    *rect = {0, 0, size.cx, size.cy};
    return TRUE;
}

BOOL GetWindowRect(HWND handle, LPRECT rect)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return FALSE;
    const POINT origin = ScreenOrigin(*window);
    *rect = {origin.x, origin.y, origin.x + Width(window->rect), origin.y + Height(window->rect)};
    return TRUE;
}

int MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count)
{
    const Window* const source = FindWindowOf(from);
    const Window* const target = FindWindowOf(to);
    if ((from != nullptr && source == nullptr) || (to != nullptr && target == nullptr))
        return 0;
    const POINT a = source != nullptr ? ClientScreenOrigin(*source) : POINT{0, 0};
    const POINT b = target != nullptr ? ClientScreenOrigin(*target) : POINT{0, 0};
    for (UINT i = 0; i < count; ++i) {
        points[i].x += a.x - b.x;
        points[i].y += a.y - b.y;
    }
    return MAKELONG(a.x - b.x, a.y - b.y);
}

BOOL ClientToScreen(HWND handle, LPPOINT point)
{
    if (FindWindowOf(handle) == nullptr)
        return FALSE;
    MapWindowPoints(handle, nullptr, point, 1);
    return TRUE;
}

BOOL ScreenToClient(HWND handle, LPPOINT point)
{
    if (FindWindowOf(handle) == nullptr)
        return FALSE;
    MapWindowPoints(nullptr, handle, point, 1);
    return TRUE;
}

HWND GetParent(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return nullptr;
    if (window->IsChildWindow())
        return window->parent;
    return (window->style & WS_POPUP) != 0 ? window->owner : nullptr;
}

HWND SetParent(HWND handle, HWND parent)
{
    Window* const window = FindWindowOf(handle);
    if (window == nullptr || !window->IsChildWindow() || FindWindowOf(parent) == nullptr ||
        parent == handle || IsChild(handle, parent))
        return nullptr;
    const HWND previous = window->parent;
    const bool visible = (window->style & WS_VISIBLE) != 0;
    if (visible)
        ShowWindow(handle, SW_HIDE);
    std::erase(SiblingsOf(*window), handle);
    window->parent = parent;
    std::vector<HWND>& siblings = SiblingsOf(*window);
    siblings.insert(siblings.begin(), handle);
    if (visible)
        ShowWindow(handle, SW_SHOWNA);
    return previous;
}

HWND GetAncestor(HWND handle, UINT kind)
{
    const Window* window = FindWindowOf(handle);
    if (window == nullptr)
        return nullptr;
    if (kind == GA_PARENT)
        return window->IsChildWindow() ? window->parent : nullptr;
    while (window->IsChildWindow() && FindWindowOf(window->parent) != nullptr)
        window = FindWindowOf(window->parent);
    while (kind == GA_ROOTOWNER && FindWindowOf(window->owner) != nullptr)
        window = FindWindowOf(window->owner);
    return window->handle;
}

HWND GetWindow(HWND handle, UINT relation)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return nullptr;
    if (relation == GW_OWNER)
        return window->owner;
    if (relation == GW_CHILD)
        return window->children.empty() ? nullptr : window->children.front();
    const std::vector<HWND>& siblings = SiblingsOf(*window);
    const auto at = std::find(siblings.begin(), siblings.end(), handle);
    switch (relation) {
    case GW_HWNDFIRST:
        return siblings.front();
    case GW_HWNDLAST:
        return siblings.back();
    case GW_HWNDNEXT:
        return at + 1 != siblings.end() ? at[1] : nullptr;
    case GW_HWNDPREV:
        return at != siblings.begin() ? at[-1] : nullptr;
    default:
        return nullptr;
    }
}

HWND GetDlgItem(HWND handle, int id)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return nullptr;
    for (const HWND child : window->children) {
        if (static_cast<int>(FindWindowOf(child)->id) == id)
            return child;
    }
    return nullptr;
}

int GetDlgCtrlID(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    return window != nullptr ? static_cast<int>(window->id) : 0;
}

BOOL EnumChildWindows(HWND handle, WNDENUMPROC procedure, LPARAM value)
{
    const Window* const window = FindWindowOf(handle);
    const std::vector<HWND> children = window != nullptr ? window->children : Desk().topLevel;
    for (const HWND child : children) {
        if (!IsWindow(child))
            continue;
        if (procedure(child, value) == 0)
            return FALSE;
        if (window != nullptr && IsWindow(child) && !EnumChildWindows(child, procedure, value))
            return FALSE;
    }
    return TRUE;
}

HWND WindowFromPoint(POINT point)
{
    HWND found = nullptr;
    std::vector<HWND>* list = &Desk().topLevel;
    while (list != nullptr) {
        std::vector<HWND>* next = nullptr;
        for (const HWND handle : *list) {
            Window* const window = FindWindowOf(handle);
            const POINT origin = ScreenOrigin(*window);
            const RECT rect = {origin.x, origin.y, origin.x + Width(window->rect),
                               origin.y + Height(window->rect)};
            if ((window->style & WS_VISIBLE) == 0 || !Contains(rect, point.x, point.y) ||
                (window->IsChildWindow() && (window->style & WS_DISABLED) != 0))
                continue;
            found = handle;
            if (Contains(Offset(window->client, origin.x, origin.y), point.x, point.y))
                next = &window->children;
            break;
        }
        list = next;
    }
    return found;
}
