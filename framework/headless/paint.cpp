// Invalid regions, WM_PAINT and the device contexts of windows.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

// The window's client area without what ancestors, and children when they are clipped, cover.
// Holds until the next call: painting again and again what has not changed allocates nothing.
Region& DrawableClient(const Window& window)
{
    static Region region;
    region.Clear();
    if (!IsWindowVisible(window.handle))
        return region;
    region.Set(VisibleClient(window));
    if ((window.style & WS_CLIPCHILDREN) != 0) {
        for (const HWND handle : window.children) {
            const Window* const child = FindWindowOf(handle);
            if ((child->style & WS_VISIBLE) != 0)
                region.Subtract(child->rect);
        }
    }
    return region;
}

bool NeedsPaint(const Window& window)
{
    return !window.update.IsEmpty() || window.internalPaint || window.framePending;
}

HWND FindPaintableIn(const std::vector<HWND>& list)
{
    for (const HWND handle : list) {
        const Window* const window = FindWindowOf(handle);
        if ((window->style & WS_VISIBLE) == 0)
            continue;
        if (NeedsPaint(*window))
            return handle;
        if (const HWND child = FindPaintableIn(window->children); child != nullptr)
            return child;
    }
    return nullptr;
}

void ValidateWindow(Window& window, const RECT* rect)
{
    if (rect != nullptr)
        window.update.Subtract(*rect);
    else
        window.update.Clear();
    if (window.update.IsEmpty()) {
        window.erase = false;
        window.internalPaint = false;
    }
}

void UpdateTree(HWND handle, bool children)
{
    Window* window = FindWindowOf(handle);
    if (window == nullptr || !IsWindowVisible(handle))
        return;
    if (NeedsPaint(*window))
        SendMessageW(handle, WM_PAINT, 0, 0);
    window = FindWindowOf(handle);
    if (window == nullptr || !children)
        return;
    const std::vector<HWND> list = window->children;
    for (const HWND child : list)
        UpdateTree(child, true);
}

} // namespace

void InvalidateWindow(Window& window, const Region* region, bool erase)
{
    if (!IsWindowVisible(window.handle) || !window.redraw)
        return;
    Region& added = DrawableClient(window);
    if (region != nullptr)
        added.IntersectWith(*region);
    if (!added.IsEmpty()) {
        window.update.Add(added);
        window.erase = window.erase || erase;
    }
    if ((window.style & WS_CLIPCHILDREN) != 0)
        return;
    for (const HWND handle : window.children) {
        Window* const child = FindWindowOf(handle);
        const RECT clientOnParent = Offset(child->client, child->rect.left, child->rect.top);
        Region part = region != nullptr ? *region : Region(kEverything);
        part.IntersectWith(clientOnParent);
        part.Offset(-clientOnParent.left, -clientOnParent.top);
        if (!part.IsEmpty())
            InvalidateWindow(*child, &part, erase);
    }
}

HWND FindPaintable()
{
    return FindPaintableIn(Desk().topLevel);
}

HDC MakeDc(HWND window, const POINT& origin, const Region& visible)
{
    Desktop& desk = Desk();
    std::unique_ptr<DeviceContext> dc;
    if (desk.spareDcs.empty()) {
        dc = std::make_unique<DeviceContext>();
    } else {
        dc = std::move(desk.spareDcs.back());
        desk.spareDcs.pop_back();
    }
    dc->window = window;
    dc->bitmap = nullptr;
    dc->memory = false;
    dc->origin = origin;
    dc->visible = visible;
    dc->saved.clear();
    DcState state;
    state.font = static_cast<HFONT>(desk.stock[SYSTEM_FONT]);
    state.brush = static_cast<HBRUSH>(desk.stock[WHITE_BRUSH]);
    state.pen = static_cast<HPEN>(desk.stock[BLACK_PEN]);
    dc->state = std::move(state);
    return desk.dcs.Add(std::move(dc));
}

void FreeDc(HDC handle)
{
    if (std::unique_ptr<DeviceContext> dc = Desk().dcs.Remove(handle); dc != nullptr)
        Desk().spareDcs.push_back(std::move(dc));
}

} // namespace tlvn::headless

using namespace tlvn::headless;

BOOL RedrawWindow(HWND handle, const RECT* rect, HRGN regionHandle, UINT flags)
{
    Window* window = FindWindowOf(handle);
    if (window == nullptr)
        return FALSE;
    Region limited;
    const Region* region = nullptr;
    if (const GdiObject* const object = FindGdi(regionHandle, GdiObject::Kind::Region);
        object != nullptr) {
        region = &object->region;
    } else if (rect != nullptr) {
        limited = Region(ClampRect(*rect));
        region = &limited;
    }
    if ((flags & RDW_INVALIDATE) != 0) {
        InvalidateWindow(*window, region, (flags & RDW_ERASE) != 0);
        if ((flags & RDW_FRAME) != 0)
            window->framePending = true;
        if ((flags & RDW_ALLCHILDREN) != 0 && (window->style & WS_CLIPCHILDREN) != 0) {
            for (const HWND child : window->children)
                InvalidateWindow(*FindWindowOf(child), nullptr, (flags & RDW_ERASE) != 0);
        }
    } else if ((flags & RDW_VALIDATE) != 0) {
        if (region == nullptr)
            ValidateWindow(*window, nullptr);
        else
            for (const RECT& r : region->Rects())
                ValidateWindow(*window, &r);
    }
    if ((flags & RDW_INTERNALPAINT) != 0)
        window->internalPaint = true;
    if ((flags & RDW_NOINTERNALPAINT) != 0)
        window->internalPaint = false;
    if ((flags & RDW_UPDATENOW) != 0)
        UpdateTree(handle, (flags & RDW_NOCHILDREN) == 0);
    return TRUE;
}

BOOL InvalidateRect(HWND handle, const RECT* rect, BOOL erase)
{
    return RedrawWindow(handle, rect, nullptr, RDW_INVALIDATE | (erase ? RDW_ERASE : 0));
}

BOOL InvalidateRgn(HWND handle, HRGN region, BOOL erase)
{
    return RedrawWindow(handle, nullptr, region, RDW_INVALIDATE | (erase ? RDW_ERASE : 0));
}

BOOL ValidateRect(HWND handle, const RECT* rect)
{
    return RedrawWindow(handle, rect, nullptr, RDW_VALIDATE);
}

BOOL ValidateRgn(HWND handle, HRGN region)
{
    return RedrawWindow(handle, nullptr, region, RDW_VALIDATE);
}

BOOL UpdateWindow(HWND handle)
{
    return RedrawWindow(handle, nullptr, nullptr, RDW_UPDATENOW);
}

BOOL GetUpdateRect(HWND handle, LPRECT rect, BOOL)
{
    const Window* const window = FindWindowOf(handle);
    const RECT bounds = window != nullptr ? window->update.Bounds() : RECT{};
    if (rect != nullptr)
        *rect = bounds;
    return !IsEmpty(bounds);
}

int GetUpdateRgn(HWND handle, HRGN regionHandle, BOOL)
{
    const Window* const window = FindWindowOf(handle);
    GdiObject* const object = FindGdi(regionHandle, GdiObject::Kind::Region);
    if (window == nullptr || object == nullptr)
        return ERROR;
    object->region = window->update;
    const std::size_t count = object->region.Rects().size();
    return count == 0 ? NULLREGION : count == 1 ? SIMPLEREGION : COMPLEXREGION;
}

HDC BeginPaint(HWND handle, LPPAINTSTRUCT paint)
{
    Window* window = FindWindowOf(handle);
    *paint = {};
    if (window == nullptr)
        return nullptr;
    HideCaret(handle);
    if (window->framePending) {
        window->framePending = false;
        SendMessageW(handle, WM_NCPAINT, 1, 0);
        window = FindWindowOf(handle);
        if (window == nullptr)
            return nullptr;
    }
    Region& visible = DrawableClient(*window);
    visible.IntersectWith(window->update);
    const bool erase = window->erase;
    ValidateWindow(*window, nullptr);
    window->internalPaint = false;
    paint->rcPaint = visible.Bounds();
    visible.Offset(window->client.left, window->client.top);
    paint->hdc = MakeDc(handle, {window->client.left, window->client.top}, visible);
    if (erase && !visible.IsEmpty()) {
        paint->fErase =
            SendMessageW(handle, WM_ERASEBKGND, reinterpret_cast<WPARAM>(paint->hdc), 0) == 0;
        if (paint->fErase && IsWindow(handle))
            FindWindowOf(handle)->erase = true;
    }
    return paint->hdc;
}

BOOL EndPaint(HWND handle, const PAINTSTRUCT* paint)
{
    FreeDc(paint->hdc);
    ShowCaret(handle);
    return TRUE;
}

HDC GetDC(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr) {
        // The screen: to measure with; nothing drawn on it is kept.
        return handle == nullptr ? MakeDc(nullptr, {}, {}) : nullptr;
    }
    Region& visible = DrawableClient(*window);
    visible.Offset(window->client.left, window->client.top);
    return MakeDc(handle, {window->client.left, window->client.top}, visible);
}

HDC GetWindowDC(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return GetDC(handle);
    Region visible;
    if (IsWindowVisible(handle))
        visible.Set({0, 0, Width(window->rect), Height(window->rect)});
    return MakeDc(handle, {}, visible);
}

int ReleaseDC(HWND, HDC handle)
{
    const DeviceContext* const dc = Desk().dcs.Find(handle);
    if (dc == nullptr || dc->memory)
        return 0;
    FreeDc(handle);
    return 1;
}

HWND WindowFromDC(HDC handle)
{
    const DeviceContext* const dc = Desk().dcs.Find(handle);
    return dc != nullptr ? dc->window : nullptr;
}
