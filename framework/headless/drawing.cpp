// Drawing calls, recorded on the surface of their device context.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

using Kind = GdiObject::Kind;

// A context with its surface, ready to record: coordinates are brought to the surface and the
// clip region is taken apart into rectangles.
class Painter {
public:
    explicit Painter(HDC handle) : m_dc(Desk().dcs.Find(handle))
    {
        if (m_dc == nullptr)
            return;
        if (m_dc->memory) {
            GdiObject* const bitmap = FindGdi(m_dc->bitmap, Kind::Bitmap);
            m_list = bitmap != nullptr && !bitmap->stock ? &bitmap->drawing : nullptr;
        } else if (Window* const window = FindWindowOf(m_dc->window); window != nullptr) {
            m_list = &window->drawing;
        }
    }

    bool IsValid() const { return m_dc != nullptr; }
    DeviceContext& Dc() const { return *m_dc; }
    DcState& State() const { return m_dc->state; }
    DisplayList* List() const { return m_list; }

    LONG ToX(int x) const
    {
        return ClampCoordinate(static_cast<INT64>(x) + m_dc->origin.x + m_dc->state.viewport.x);
    }
    LONG ToY(int y) const
    {
        return ClampCoordinate(static_cast<INT64>(y) + m_dc->origin.y + m_dc->state.viewport.y);
    }
    RECT ToSurface(const RECT& r) const
    {
        return {ToX(r.left), ToY(r.top), ToX(r.right), ToY(r.bottom)};
    }

    // Calls draw(clip) for each visible rectangle that meets `bounds`.
    template <class Draw>
    void ForEachClip(const RECT& bounds, Draw draw) const
    {
        if (m_list == nullptr)
            return;
        for (const RECT& visible : m_dc->visible.Rects()) {
            const RECT part = Intersect(visible, bounds);
            if (IsEmpty(part))
                continue;
            if (!m_dc->state.clipped) {
                draw(part);
                continue;
            }
            for (const RECT& clip : m_dc->state.clip.Rects()) {
                const RECT both = Intersect(part, Offset(clip, m_dc->origin.x, m_dc->origin.y));
                if (!IsEmpty(both))
                    draw(both);
            }
        }
    }

    void Fill(const RECT& surfaceRect, COLORREF color) const
    {
        ForEachClip(surfaceRect, [&](const RECT& clip) { m_list->Fill(surfaceRect, clip, color); });
    }

    const GdiObject* Font() const
    {
        const GdiObject* const font = FindGdi(State().font, Kind::Font);
        return font != nullptr ? font : Desk().gdi.Find(Desk().stock[SYSTEM_FONT]);
    }

    // Lines through surface points with the context's pen; the last point is not drawn.
    void Stroke(const POINT* points, int count) const
    {
        const GdiObject* const pen = FindGdi(State().pen, Kind::Pen);
        if (pen == nullptr || pen->empty || count < 2)
            return;
        // A straight line of one pixel is a fill, which is exact and can be superseded.
        if (count == 2 && pen->penWidth == 1 && pen->penStyle == PS_SOLID) {
            const POINT a = points[0];
            const POINT b = points[1];
            if (a.y == b.y && a.x != b.x) {
                const RECT run =
                    a.x < b.x ? RECT{a.x, a.y, b.x, a.y + 1} : RECT{b.x + 1, a.y, a.x + 1, a.y + 1};
                Fill(run, pen->color);
                return;
            }
            if (a.x == b.x && a.y != b.y) {
                const RECT run =
                    a.y < b.y ? RECT{a.x, a.y, a.x + 1, b.y} : RECT{a.x, b.y + 1, a.x + 1, a.y + 1};
                Fill(run, pen->color);
                return;
            }
        }
        Record(DrawKind::Polyline, points, count, pen->color, pen->penWidth);
    }

    void Record(DrawKind kind, const POINT* points, int count, COLORREF color, int width) const
    {
        RECT bounds = {points[0].x, points[0].y, points[0].x, points[0].y};
        for (int i = 1; i < count; ++i) {
            bounds = {std::min(bounds.left, points[i].x), std::min(bounds.top, points[i].y),
                      std::max(bounds.right, points[i].x), std::max(bounds.bottom, points[i].y)};
        }
        bounds = {bounds.left - width / 2, bounds.top - width / 2, bounds.right + width / 2 + 1,
                  bounds.bottom + width / 2 + 1};
        ForEachClip(bounds, [&](const RECT& clip) {
            DrawOperation op;
            op.kind = kind;
            op.bounds = bounds;
            op.clip = clip;
            op.color = color;
            op.penWidth = width;
            m_list->Points(op, points, count);
        });
    }

private:
    DeviceContext* m_dc;
    DisplayList* m_list = nullptr;
};

std::vector<POINT> ToSurface(const Painter& painter, const POINT* points, int count)
{
    std::vector<POINT> moved(static_cast<std::size_t>(std::max(count, 0)));
    for (std::size_t i = 0; i < moved.size(); ++i)
        moved[i] = {painter.ToX(points[i].x), painter.ToY(points[i].y)};
    return moved;
}

LONG SumAdvances(const int* advances, int length)
{
    INT64 sum = 0;
    for (int i = 0; i < length; ++i)
        sum += advances[i];
    return ClampCoordinate(sum);
}

} // namespace
} // namespace tlvn::headless

using namespace tlvn::headless;

BOOL TextOutW(HDC handle, int x, int y, LPCWSTR text, int length)
{
    return ExtTextOutW(handle, x, y, 0, nullptr, text, static_cast<UINT>(std::max(length, 0)),
                       nullptr);
}

BOOL ExtTextOutW(HDC handle, int x, int y, UINT options, const RECT* rect, LPCWSTR text,
                 UINT length, const int* advances)
{
    const Painter painter(handle);
    if (!painter.IsValid() || length > INT_MAX)
        return FALSE;
    DcState& state = painter.State();
    const int count = static_cast<int>(length);
    const GdiObject* const object = painter.Font();
    const CellFont& font = object->font;
    if ((state.align & TA_UPDATECP) != 0) {
        x = state.position.x;
        y = state.position.y;
    }
    RECT limit = kEverything;
    if (rect != nullptr) {
        const RECT area = painter.ToSurface(*rect);
        if ((options & ETO_OPAQUE) != 0)
            painter.Fill(area, state.backColor);
        if ((options & ETO_CLIPPED) != 0)
            limit = area;
    }
    if (count == 0)
        return TRUE;
    const LONG width =
        advances != nullptr ? SumAdvances(advances, count) : font.WidthOf(text, count);
    if ((state.align & TA_UPDATECP) != 0)
        state.position.x = ClampCoordinate(static_cast<INT64>(state.position.x) + width);
    LONG left = painter.ToX(x);
    LONG top = painter.ToY(y);
    if ((state.align & TA_CENTER) == TA_CENTER)
        left -= width / 2;
    else if ((state.align & TA_RIGHT) != 0)
        left -= width;
    if ((state.align & TA_BASELINE) == TA_BASELINE)
        top -= font.ascent;
    else if ((state.align & TA_BOTTOM) != 0)
        top -= font.height;

    DrawOperation op;
    op.bounds = {left, top, left + ClampCoordinate(width), top + font.height};
    op.color = state.textColor;
    op.font = font;
    op.bold = object->logFont.lfWeight >= FW_BOLD;
    op.italic = object->logFont.lfItalic != 0;
    op.underline = object->logFont.lfUnderline != 0;
    const RECT visible = Intersect(op.bounds, limit);
    if (state.backMode == OPAQUE)
        painter.Fill(visible, state.backColor);
    painter.ForEachClip(visible, [&](const RECT& clip) {
        op.clip = clip;
        painter.List()->Text(op, text, count, advances);
    });
    return TRUE;
}

int FillRect(HDC handle, const RECT* rect, HBRUSH brush)
{
    const Painter painter(handle);
    if (!painter.IsValid())
        return 0;
    bool empty = false;
    const COLORREF color = BrushColor(brush, empty);
    if (!empty)
        painter.Fill(painter.ToSurface(*rect), color);
    return 1;
}

int FrameRect(HDC handle, const RECT* rect, HBRUSH brush)
{
    const RECT sides[] = {{rect->left, rect->top, rect->right, rect->top + 1},
                          {rect->left, rect->bottom - 1, rect->right, rect->bottom},
                          {rect->left, rect->top, rect->left + 1, rect->bottom},
                          {rect->right - 1, rect->top, rect->right, rect->bottom}};
    for (const RECT& side : sides)
        FillRect(handle, &side, brush);
    return 1;
}

BOOL InvertRect(HDC handle, const RECT* rect)
{
    const Painter painter(handle);
    if (!painter.IsValid())
        return FALSE;
    const RECT area = painter.ToSurface(*rect);
    painter.ForEachClip(area, [&](const RECT& clip) { painter.List()->Invert(area, clip); });
    return TRUE;
}

BOOL DrawFocusRect(HDC handle, const RECT* rect)
{
    const RECT sides[] = {{rect->left, rect->top, rect->right, rect->top + 1},
                          {rect->left, rect->bottom - 1, rect->right, rect->bottom},
                          {rect->left, rect->top + 1, rect->left + 1, rect->bottom - 1},
                          {rect->right - 1, rect->top + 1, rect->right, rect->bottom - 1}};
    for (const RECT& side : sides)
        InvertRect(handle, &side);
    return TRUE;
}

BOOL PatBlt(HDC handle, int x, int y, int width, int height, DWORD operation)
{
    const Painter painter(handle);
    if (!painter.IsValid())
        return FALSE;
    const RECT rect = {x, y, x + width, y + height};
    switch (operation) {
    case DSTINVERT:
    case PATINVERT:
        return InvertRect(handle, &rect);
    case BLACKNESS:
        painter.Fill(painter.ToSurface(rect), 0x000000);
        return TRUE;
    case WHITENESS:
        painter.Fill(painter.ToSurface(rect), 0xFFFFFF);
        return TRUE;
    case PATCOPY:
        return FillRect(handle, &rect, painter.State().brush);
    default:
        return FALSE;
    }
}

BOOL BitBlt(HDC handle, int x, int y, int width, int height, HDC sourceHandle, int sourceX,
            int sourceY, DWORD operation)
{
    if (operation != SRCCOPY)
        return PatBlt(handle, x, y, width, height, operation);
    const Painter target(handle);
    const Painter source(sourceHandle);
    if (!target.IsValid() || !source.IsValid())
        return FALSE;
    const RECT to = target.ToSurface({x, y, x + width, y + height});
    const LONG fromX = source.ToX(sourceX);
    const LONG fromY = source.ToY(sourceY);
    const RECT from = {fromX, fromY, fromX + Width(to), fromY + Height(to)};
    if (source.List() == nullptr)
        return TRUE;
    target.ForEachClip(to, [&](const RECT& clip) {
        target.List()->Compose(*source.List(), from, to.left - fromX, to.top - fromY, clip);
    });
    return TRUE;
}

BOOL MoveToEx(HDC handle, int x, int y, LPPOINT previous)
{
    const Painter painter(handle);
    if (!painter.IsValid())
        return FALSE;
    if (previous != nullptr)
        *previous = painter.State().position;
    painter.State().position = {x, y};
    return TRUE;
}

BOOL LineTo(HDC handle, int x, int y)
{
    const Painter painter(handle);
    if (!painter.IsValid())
        return FALSE;
    const POINT from = painter.State().position;
    const POINT points[] = {{painter.ToX(from.x), painter.ToY(from.y)},
                            {painter.ToX(x), painter.ToY(y)}};
    painter.Stroke(points, 2);
    painter.State().position = {x, y};
    return TRUE;
}

BOOL Polyline(HDC handle, const POINT* points, int count)
{
    const Painter painter(handle);
    if (!painter.IsValid() || count < 2)
        return FALSE;
    painter.Stroke(ToSurface(painter, points, count).data(), count);
    return TRUE;
}

BOOL Polygon(HDC handle, const POINT* points, int count)
{
    const Painter painter(handle);
    if (!painter.IsValid() || count < 2)
        return FALSE;
    std::vector<POINT> outline = ToSurface(painter, points, count);
    bool empty = false;
    const COLORREF color = BrushColor(painter.State().brush, empty);
    if (!empty)
        painter.Record(DrawKind::Polygon, outline.data(), count, color, 1);
    outline.push_back(outline.front());
    painter.Stroke(outline.data(), count + 1);
    return TRUE;
}

BOOL Rectangle(HDC handle, int left, int top, int right, int bottom)
{
    const Painter painter(handle);
    if (!painter.IsValid())
        return FALSE;
    const RECT rect = {left, top, right, bottom};
    bool empty = false;
    const COLORREF color = BrushColor(painter.State().brush, empty);
    if (!empty)
        painter.Fill(painter.ToSurface(rect), color);
    const GdiObject* const pen = FindGdi(painter.State().pen, Kind::Pen);
    if (pen == nullptr || pen->empty)
        return TRUE;
    const RECT sides[] = {{left, top, right, top + 1},
                          {left, bottom - 1, right, bottom},
                          {left, top, left + 1, bottom},
                          {right - 1, top, right, bottom}};
    for (const RECT& side : sides)
        painter.Fill(painter.ToSurface(side), pen->color);
    return TRUE;
}

COLORREF SetPixel(HDC handle, int x, int y, COLORREF color)
{
    const Painter painter(handle);
    if (!painter.IsValid())
        return CLR_INVALID;
    painter.Fill(painter.ToSurface({x, y, x + 1, y + 1}), color);
    return color;
}

COLORREF GetPixel(HDC handle, int x, int y)
{
    const Painter painter(handle);
    if (!painter.IsValid() || painter.List() == nullptr)
        return CLR_INVALID;
    return painter.List()->ColorAt(painter.ToX(x), painter.ToY(y), CLR_INVALID);
}
