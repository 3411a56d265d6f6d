// The scroll bars of windows, and scrolling what is drawn.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

ScrollBar* FindBar(HWND handle, int bar)
{
    Window* const window = FindWindowOf(handle);
    if (window == nullptr || (bar != SB_HORZ && bar != SB_VERT))
        return nullptr;
    return &window->bars[bar];
}

DWORD StyleOf(int bar)
{
    return bar == SB_HORZ ? WS_HSCROLL : WS_VSCROLL;
}

// Page and position within the range.
void Clamp(ScrollBar& bar)
{
    const INT64 span = static_cast<INT64>(bar.most) - bar.least + 1;
    bar.page = static_cast<int>(std::clamp<INT64>(bar.page, 0, std::max<INT64>(span, 0)));
    bar.position = std::clamp(bar.position, bar.least, bar.HighestPosition());
}

} // namespace
} // namespace tlvn::headless

using namespace tlvn::headless;

int SetScrollInfo(HWND handle, int index, LPCSCROLLINFO info, BOOL)
{
    ScrollBar* const bar = FindBar(handle, index);
    if (bar == nullptr)
        return 0;
    if ((info->fMask & SIF_PAGE) != 0)
        bar->page = static_cast<int>(std::min<UINT>(info->nPage, INT_MAX));
    if ((info->fMask & SIF_POS) != 0)
        bar->position = info->nPos;
    if ((info->fMask & SIF_RANGE) != 0) {
        // A range turned round, or wider than an int counts, is none.
        const bool valid =
            info->nMin <= info->nMax && static_cast<INT64>(info->nMax) - info->nMin < INT_MAX;
        bar->least = valid ? info->nMin : 0;
        bar->most = valid ? info->nMax : 0;
    }
    Clamp(*bar);
    bar->track = bar->position;
    const int position = bar->position;
    if ((info->fMask & (SIF_RANGE | SIF_PAGE)) != 0) {
        const bool needless = bar->least >= bar->HighestPosition();
        if ((info->fMask & SIF_DISABLENOSCROLL) != 0) {
            bar->disabled = needless;
        } else {
            bar->disabled = false;
            ShowScrollBar(handle, index, !needless);
        }
    }
    if (Window* const window = FindWindowOf(handle); window != nullptr)
        window->framePending = window->framePending || IsWindowVisible(handle);
    return position;
}

BOOL GetScrollInfo(HWND handle, int index, LPSCROLLINFO info)
{
    const ScrollBar* const bar = FindBar(handle, index);
    if (bar == nullptr)
        return FALSE;
    if ((info->fMask & SIF_PAGE) != 0)
        info->nPage = static_cast<UINT>(bar->page);
    if ((info->fMask & SIF_POS) != 0)
        info->nPos = bar->position;
    if ((info->fMask & SIF_TRACKPOS) != 0)
        info->nTrackPos = bar->track;
    if ((info->fMask & SIF_RANGE) != 0) {
        info->nMin = bar->least;
        info->nMax = bar->most;
    }
    return TRUE;
}

int SetScrollPos(HWND handle, int index, int position, BOOL redraw)
{
    const int previous = GetScrollPos(handle, index);
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_POS;
    info.nPos = position;
    SetScrollInfo(handle, index, &info, redraw);
    return previous;
}

int GetScrollPos(HWND handle, int index)
{
    const ScrollBar* const bar = FindBar(handle, index);
    return bar != nullptr ? bar->position : 0;
}

BOOL SetScrollRange(HWND handle, int index, int least, int most, BOOL redraw)
{
    if (FindBar(handle, index) == nullptr)
        return FALSE;
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE;
    info.nMin = least;
    info.nMax = most;
    SetScrollInfo(handle, index, &info, redraw);
    return TRUE;
}

BOOL GetScrollRange(HWND handle, int index, int* least, int* most)
{
    const ScrollBar* const bar = FindBar(handle, index);
    *least = bar != nullptr ? bar->least : 0;
    *most = bar != nullptr ? bar->most : 0;
    return bar != nullptr;
}

BOOL ShowScrollBar(HWND handle, int index, BOOL show)
{
    Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return FALSE;
    const DWORD style = index == SB_BOTH ? WS_HSCROLL | WS_VSCROLL : StyleOf(index);
    const DWORD before = window->style;
    window->style = show ? before | style : before & ~style;
    if (window->style != before)
        FrameChanged(handle);
    return TRUE;
}

BOOL EnableScrollBar(HWND handle, UINT index, UINT arrows)
{
    Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return FALSE;
    for (const int bar : {SB_HORZ, SB_VERT}) {
        if (index == SB_BOTH || index == static_cast<UINT>(bar))
            window->bars[bar].disabled = arrows == ESB_DISABLE_BOTH;
    }
    return TRUE;
}

int ScrollWindowEx(HWND handle, int dx, int dy, const RECT* scroll, const RECT* clip, HRGN update,
                   LPRECT updateRect, UINT flags)
{
    Window* const window = FindWindowOf(handle);
    if (window == nullptr)
        return ERROR;
    const SIZE size = window->ClientSize();
    const RECT client = {0, 0, size.cx, size.cy};
    RECT area = client;
    if (scroll != nullptr)
        area = Intersect(area, *scroll);
    dx = ClampCoordinate(dx);
    dy = ClampCoordinate(dy);
    // Bits come from `area` and go where it is moved to, within `clip`.
    const RECT limit = clip != nullptr ? Intersect(client, *clip) : client;
    const RECT moved = Intersect(Offset(area, dx, dy), limit);
    Region exposed(Intersect(area, limit));
    exposed.Subtract(moved);
    // What waited to be painted moves along, and the place it comes from is to be painted too.
    Region pending = window->update;
    pending.IntersectWith(area);
    if (!pending.IsEmpty()) {
        pending.Offset(dx, dy);
        pending.IntersectWith(moved);
        window->update.Add(pending);
    }
    const POINT origin = {window->client.left, window->client.top};
    window->drawing.Scroll(Offset(area, origin.x, origin.y), dx, dy,
                           Offset(moved, origin.x, origin.y),
                           Offset(Intersect(area, limit), origin.x, origin.y));

    if (GdiObject* const region = FindGdi(update, GdiObject::Kind::Region); region != nullptr)
        region->region = exposed;
    if (updateRect != nullptr)
        *updateRect = exposed.Bounds();
    if ((flags & SW_SCROLLCHILDREN) != 0) {
        const std::vector<HWND> children = window->children;
        for (const HWND child : children) {
            const Window* const moving = FindWindowOf(child);
            if (moving == nullptr || IsEmpty(Intersect(moving->rect, area)))
                continue;
            SetWindowPos(child, nullptr, moving->rect.left + dx, moving->rect.top + dy, 0, 0,
                         SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
    }
    Caret& caret = Desk().caret;
    if (caret.window == handle && Contains(area, caret.position.x, caret.position.y)) {
        caret.position.x += dx;
        caret.position.y += dy;
    }
    const std::size_t count = exposed.Rects().size();
    if (Window* const still = FindWindowOf(handle);
        still != nullptr && (flags & SW_INVALIDATE) != 0)
        InvalidateWindow(*still, &exposed, (flags & SW_ERASE) != 0);
    return count == 0 ? NULLREGION : count == 1 ? SIMPLEREGION : COMPLEXREGION;
}

BOOL ScrollWindow(HWND handle, int dx, int dy, const RECT* scroll, const RECT* clip)
{
    const UINT children = scroll == nullptr ? SW_SCROLLCHILDREN : 0;
    return ScrollWindowEx(handle, dx, dy, scroll, clip, nullptr, nullptr,
                          children | SW_INVALIDATE | SW_ERASE) != ERROR;
}
