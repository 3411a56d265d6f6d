// The state of device contexts: selected objects, attributes, clipping, text measurement.

#include "framework/headless/desktop.h"

#include <utility>

namespace tlvn::headless {
namespace {

using Kind = GdiObject::Kind;

DeviceContext* FindDc(HDC handle)
{
    return Desk().dcs.Find(handle);
}

const CellFont& FontOf(const DeviceContext& dc)
{
    const GdiObject* font = FindGdi(dc.state.font, Kind::Font);
    if (font == nullptr)
        font = Desk().gdi.Find(Desk().stock[SYSTEM_FONT]);
    return font->font;
}

// Sets one attribute of a context and returns what it was, or `failed`.
template <class T>
T Exchange(HDC handle, T DcState::*attribute, T value, T failed)
{
    DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return failed;
    return std::exchange(dc->state.*attribute, value);
}

template <class T>
T Read(HDC handle, T DcState::*attribute, T failed)
{
    const DeviceContext* const dc = FindDc(handle);
    return dc != nullptr ? dc->state.*attribute : failed;
}

// The clip region in device coordinates, made explicit so that it can be changed.
Region& ExplicitClip(DeviceContext& dc)
{
    if (!dc.state.clipped) {
        dc.state.clipped = true;
        dc.state.clip = dc.visible;
        dc.state.clip.Offset(-dc.origin.x, -dc.origin.y);
    }
    return dc.state.clip;
}

RECT ToDevice(const DeviceContext& dc, int left, int top, int right, int bottom)
{
    return Offset(ClampRect({left, top, right, bottom}), dc.state.viewport.x, dc.state.viewport.y);
}

int ClipComplexity(const Region& region)
{
    const std::size_t count = region.Rects().size();
    return count == 0 ? NULLREGION : count == 1 ? SIMPLEREGION : COMPLEXREGION;
}

} // namespace
} // namespace tlvn::headless

using namespace tlvn::headless;

HDC CreateCompatibleDC(HDC)
{
    const HDC handle = MakeDc(nullptr, {}, {});
    DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return nullptr;
    dc->memory = true;
    dc->bitmap = Desk().noBitmap;
    dc->visible.Set({0, 0, 1, 1});
    return handle;
}

BOOL DeleteDC(HDC handle)
{
    if (FindDc(handle) == nullptr)
        return FALSE;
    FreeDc(handle);
    return TRUE;
}

int SaveDC(HDC handle)
{
    DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return 0;
    dc->saved.push_back(dc->state);
    return static_cast<int>(dc->saved.size());
}

BOOL RestoreDC(HDC handle, int level)
{
    DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return FALSE;
    const int count = static_cast<int>(dc->saved.size());
    const int wanted = level < 0 ? count + level + 1 : level;
    if (wanted < 1 || wanted > count)
        return FALSE;
    dc->state = dc->saved[static_cast<std::size_t>(wanted) - 1];
    dc->saved.resize(static_cast<std::size_t>(wanted) - 1);
    return TRUE;
}

HGDIOBJ SelectObject(HDC handle, HGDIOBJ objectHandle)
{
    DeviceContext* const dc = FindDc(handle);
    const GdiObject* const object = Desk().gdi.Find(objectHandle);
    if (dc == nullptr || object == nullptr)
        return nullptr;
    switch (object->kind) {
    case Kind::Font:
        return std::exchange(dc->state.font, static_cast<HFONT>(objectHandle));
    case Kind::Brush:
        return std::exchange(dc->state.brush, static_cast<HBRUSH>(objectHandle));
    case Kind::Pen:
        return std::exchange(dc->state.pen, static_cast<HPEN>(objectHandle));
    case Kind::Bitmap:
        if (!dc->memory)
            return nullptr;
        dc->visible.Set({0, 0, object->size.cx, object->size.cy});
        return std::exchange(dc->bitmap, static_cast<HBITMAP>(objectHandle));
    case Kind::Region:
        return reinterpret_cast<HGDIOBJ>(
            static_cast<INT_PTR>(SelectClipRgn(handle, static_cast<HRGN>(objectHandle))));
    }
    return nullptr;
}

HGDIOBJ GetCurrentObject(HDC handle, UINT kind)
{
    const DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return nullptr;
    switch (kind) {
    case OBJ_FONT:
        return dc->state.font;
    case OBJ_BRUSH:
        return dc->state.brush;
    case OBJ_PEN:
        return dc->state.pen;
    case OBJ_BITMAP:
        return dc->bitmap;
    default:
        return nullptr;
    }
}

int GetDeviceCaps(HDC, int index)
{
    switch (index) {
    case LOGPIXELSX:
    case LOGPIXELSY:
        return 96;
    case BITSPIXEL:
        return 32;
    case HORZRES:
        return Desk().screen.cx;
    case VERTRES:
        return Desk().screen.cy;
    case TECHNOLOGY:
        return 1; // a raster display
    default:
        return 0;
    }
}

COLORREF SetTextColor(HDC dc, COLORREF color)
{
    return Exchange(dc, &DcState::textColor, color, CLR_INVALID);
}

COLORREF GetTextColor(HDC dc)
{
    return Read(dc, &DcState::textColor, CLR_INVALID);
}

COLORREF SetBkColor(HDC dc, COLORREF color)
{
    return Exchange(dc, &DcState::backColor, color, CLR_INVALID);
}

COLORREF GetBkColor(HDC dc)
{
    return Read(dc, &DcState::backColor, CLR_INVALID);
}

int SetBkMode(HDC dc, int mode)
{
    return Exchange(dc, &DcState::backMode, mode, 0);
}

int GetBkMode(HDC dc)
{
    return Read(dc, &DcState::backMode, 0);
}

UINT SetTextAlign(HDC dc, UINT align)
{
    return Exchange(dc, &DcState::align, align, ~0u);
}

UINT GetTextAlign(HDC dc)
{
    return Read(dc, &DcState::align, ~0u);
}

int SetROP2(HDC dc, int mode)
{
    return Exchange(dc, &DcState::rop2, mode, 0);
}

BOOL SetViewportOrgEx(HDC handle, int x, int y, LPPOINT previous)
{
    DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return FALSE;
    if (previous != nullptr)
        *previous = dc->state.viewport;
    dc->state.viewport = {ClampCoordinate(x), ClampCoordinate(y)};
    return TRUE;
}

BOOL GetViewportOrgEx(HDC handle, LPPOINT origin)
{
    const DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return FALSE;
    *origin = dc->state.viewport;
    return TRUE;
}

int SelectClipRgn(HDC handle, HRGN regionHandle)
{
    DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return ERROR;
    if (regionHandle == nullptr) {
        dc->state.clipped = false;
        dc->state.clip.Clear();
        return SIMPLEREGION;
    }
    const GdiObject* const object = FindGdi(regionHandle, Kind::Region);
    if (object == nullptr)
        return ERROR;
    // A clip region is in device coordinates, whatever the viewport.
    dc->state.clipped = true;
    dc->state.clip = object->region;
    return ClipComplexity(dc->state.clip);
}

int IntersectClipRect(HDC handle, int left, int top, int right, int bottom)
{
    DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return ERROR;
    Region& clip = ExplicitClip(*dc);
    clip.IntersectWith(ToDevice(*dc, left, top, right, bottom));
    return ClipComplexity(clip);
}

int ExcludeClipRect(HDC handle, int left, int top, int right, int bottom)
{
    DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return ERROR;
    Region& clip = ExplicitClip(*dc);
    clip.Subtract(ToDevice(*dc, left, top, right, bottom));
    return ClipComplexity(clip);
}

int GetClipBox(HDC handle, LPRECT rect)
{
    const DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return ERROR;
    Region clip = dc->visible;
    clip.Offset(-dc->origin.x, -dc->origin.y);
    if (dc->state.clipped)
        clip.IntersectWith(dc->state.clip);
    *rect = Offset(clip.Bounds(), -dc->state.viewport.x, -dc->state.viewport.y);
    return ClipComplexity(clip);
}

BOOL RectVisible(HDC handle, const RECT* rect)
{
    RECT box = {};
    return GetClipBox(handle, &box) != ERROR && !IsEmpty(Intersect(box, *rect));
}

BOOL GetTextMetricsW(HDC handle, TEXTMETRICW* metrics)
{
    const DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return FALSE;
    const CellFont& font = FontOf(*dc);
    const GdiObject* const object = FindGdi(dc->state.font, Kind::Font);
    *metrics = {};
    metrics->tmHeight = font.height;
    metrics->tmAscent = font.ascent;
    metrics->tmDescent = font.height - font.ascent;
    metrics->tmAveCharWidth = font.half;
    metrics->tmMaxCharWidth = font.full;
    metrics->tmWeight = FW_NORMAL;
    metrics->tmDigitizedAspectX = metrics->tmDigitizedAspectY = 96;
    metrics->tmFirstChar = u' ';
    metrics->tmLastChar = u'\uFFFC';
    metrics->tmDefaultChar = u'?';
    metrics->tmBreakChar = u' ';
    metrics->tmPitchAndFamily = FF_MODERN; // the bit that is clear says fixed pitch
    metrics->tmCharSet = SHIFTJIS_CHARSET;
    if (object != nullptr) {
        const LOGFONTW& logFont = object->logFont;
        if (logFont.lfWeight != FW_DONTCARE)
            metrics->tmWeight = logFont.lfWeight;
        metrics->tmItalic = logFont.lfItalic;
        metrics->tmUnderlined = logFont.lfUnderline;
        metrics->tmStruckOut = logFont.lfStrikeOut;
        metrics->tmCharSet = logFont.lfCharSet;
    }
    return TRUE;
}

BOOL GetTextExtentPoint32W(HDC handle, LPCWSTR text, int length, LPSIZE size)
{
    const DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr || length < 0)
        return FALSE;
    const CellFont& font = FontOf(*dc);
    *size = {font.WidthOf(text, length), font.height};
    return TRUE;
}

BOOL GetTextExtentExPointW(HDC handle, LPCWSTR text, int length, int limit, int* fit, int* advances,
                           LPSIZE size)
{
    const DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr || length < 0)
        return FALSE;
    const CellFont& font = FontOf(*dc);
    int fitting = length;
    if (fit != nullptr) {
        int width = 0;
        fitting = font.FitIn(text, length, limit, width);
        *fit = fitting;
    }
    if (advances != nullptr) {
        int sum = 0;
        for (int i = 0; i < fitting; ++i) {
            sum += font.WidthOf(text[i]);
            advances[i] = sum;
        }
    }
    if (size != nullptr)
        *size = {font.WidthOf(text, length), font.height};
    return TRUE;
}

BOOL GetCharWidth32W(HDC handle, UINT first, UINT last, int* widths)
{
    const DeviceContext* const dc = FindDc(handle);
    if (dc == nullptr)
        return FALSE;
    const CellFont& font = FontOf(*dc);
    for (UINT c = first; c <= last && c <= 0xFFFF; ++c)
        widths[c - first] = font.WidthOf(static_cast<WCHAR>(c));
    return TRUE;
}
