// Fonts, brushes, pens, bitmaps and regions.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

using Kind = GdiObject::Kind;

template <class Handle>
Handle Add(std::unique_ptr<GdiObject> object)
{
    return static_cast<Handle>(static_cast<void*>(Desk().gdi.Add(std::move(object))));
}

std::unique_ptr<GdiObject> Make(Kind kind)
{
    auto object = std::make_unique<GdiObject>();
    object->kind = kind;
    return object;
}

int Complexity(const Region& region)
{
    const std::size_t count = region.Rects().size();
    return count == 0 ? NULLREGION : count == 1 ? SIMPLEREGION : COMPLEXREGION;
}

template <class T>
int CopyOut(const T& value, int size, LPVOID data)
{
    if (data == nullptr)
        return static_cast<int>(sizeof(T));
    if (size < static_cast<int>(sizeof(T)))
        return 0;
    *static_cast<T*>(data) = value;
    return static_cast<int>(sizeof(T));
}

} // namespace

COLORREF BrushColor(HBRUSH brush, bool& empty)
{
    empty = false;
    const UINT_PTR value = reinterpret_cast<UINT_PTR>(brush);
    if (value <= std::size(Desk().sysColorBrushes))
        return GetSysColor(static_cast<int>(value) - 1);
    const GdiObject* const object = FindGdi(brush, Kind::Brush);
    empty = object == nullptr || object->empty;
    return empty ? 0 : object->color;
}

} // namespace tlvn::headless

using namespace tlvn::headless;

HGDIOBJ GetStockObject(int index)
{
    const Desktop& desk = Desk();
    return index >= 0 && index < static_cast<int>(std::size(desk.stock)) ? desk.stock[index]
                                                                         : nullptr;
}

BOOL DeleteObject(HGDIOBJ handle)
{
    const GdiObject* const object = Desk().gdi.Find(handle);
    if (object == nullptr)
        return FALSE;
    if (!object->stock)
        Desk().gdi.Remove(handle);
    return TRUE;
}

int GetObjectW(HGDIOBJ handle, int size, LPVOID data)
{
    const GdiObject* const object = Desk().gdi.Find(handle);
    if (object == nullptr)
        return 0;
    switch (object->kind) {
    case Kind::Font:
        return CopyOut(object->logFont, size, data);
    case Kind::Brush: {
        const LOGBRUSH brush = {object->empty ? static_cast<UINT>(BS_NULL)
                                              : static_cast<UINT>(BS_SOLID),
                                object->color, 0};
        return CopyOut(brush, size, data);
    }
    case Kind::Pen: {
        const LOGPEN pen = {
            static_cast<UINT>(object->penStyle), {object->penWidth, 0}, object->color};
        return CopyOut(pen, size, data);
    }
    case Kind::Bitmap: {
        BITMAP bitmap = {};
        bitmap.bmWidth = object->size.cx;
        bitmap.bmHeight = object->size.cy;
        bitmap.bmWidthBytes = object->size.cx * 4;
        bitmap.bmPlanes = 1;
        bitmap.bmBitsPixel = 32;
        return CopyOut(bitmap, size, data);
    }
    case Kind::Region:
        break;
    }
    return 0;
}

HFONT CreateFontIndirectW(const LOGFONTW* font)
{
    auto object = Make(Kind::Font);
    object->logFont = *font;
    object->font = MakeCellFont(font->lfHeight, font->lfWidth);
    return Add<HFONT>(std::move(object));
}

HBRUSH CreateSolidBrush(COLORREF color)
{
    auto object = Make(Kind::Brush);
    object->color = color;
    return Add<HBRUSH>(std::move(object));
}

HPEN CreatePen(int style, int width, COLORREF color)
{
    auto object = Make(Kind::Pen);
    object->penStyle = style;
    object->penWidth = std::clamp(width, 1, 1024);
    object->color = color;
    object->empty = style == PS_NULL;
    return Add<HPEN>(std::move(object));
}

HBITMAP CreateCompatibleBitmap(HDC, int width, int height)
{
    return CreateBitmap(width, height, 1, 32, nullptr);
}

HBITMAP CreateBitmap(int width, int height, UINT, UINT, const void*)
{
    if (width <= 0 || height <= 0)
        return nullptr;
    auto object = Make(Kind::Bitmap);
    object->size = {ClampCoordinate(width), ClampCoordinate(height)};
    const RECT all = {0, 0, object->size.cx, object->size.cy};
    object->drawing.Fill(all, all, 0x000000);
    return Add<HBITMAP>(std::move(object));
}

HRGN CreateRectRgn(int left, int top, int right, int bottom)
{
    auto object = Make(Kind::Region);
    object->region.Set(ClampRect({std::min(left, right), std::min(top, bottom),
                                  std::max(left, right), std::max(top, bottom)}));
    return Add<HRGN>(std::move(object));
}

HRGN CreateRectRgnIndirect(const RECT* rect)
{
    return CreateRectRgn(rect->left, rect->top, rect->right, rect->bottom);
}

int CombineRgn(HRGN result, HRGN first, HRGN second, int mode)
{
    GdiObject* const out = FindGdi(result, Kind::Region);
    const GdiObject* const a = FindGdi(first, Kind::Region);
    const GdiObject* const b = FindGdi(second, Kind::Region);
    if (out == nullptr || a == nullptr || (b == nullptr && mode != RGN_COPY))
        return ERROR;
    Region combined = a->region;
    switch (mode) {
    case RGN_AND:
        combined.IntersectWith(b->region);
        break;
    case RGN_OR:
        combined.Add(b->region);
        break;
    case RGN_XOR: {
        Region common = a->region;
        common.IntersectWith(b->region);
        combined.Add(b->region);
        combined.Subtract(common);
        break;
    }
    case RGN_DIFF:
        combined.Subtract(b->region);
        break;
    default:
        break;
    }
    out->region = std::move(combined);
    return Complexity(out->region);
}

BOOL SetRectRgn(HRGN handle, int left, int top, int right, int bottom)
{
    GdiObject* const object = FindGdi(handle, Kind::Region);
    if (object == nullptr)
        return FALSE;
    object->region.Set(ClampRect({left, top, right, bottom}));
    return TRUE;
}

int GetRgnBox(HRGN handle, LPRECT rect)
{
    const GdiObject* const object = FindGdi(handle, Kind::Region);
    if (object == nullptr)
        return ERROR;
    *rect = object->region.Bounds();
    return Complexity(object->region);
}

int OffsetRgn(HRGN handle, int dx, int dy)
{
    GdiObject* const object = FindGdi(handle, Kind::Region);
    if (object == nullptr)
        return ERROR;
    object->region.Offset(ClampCoordinate(dx), ClampCoordinate(dy));
    return Complexity(object->region);
}

BOOL PtInRegion(HRGN handle, int x, int y)
{
    const GdiObject* const object = FindGdi(handle, Kind::Region);
    return object != nullptr && object->region.Contains(x, y);
}

BOOL EqualRgn(HRGN a, HRGN b)
{
    const GdiObject* const first = FindGdi(a, Kind::Region);
    const GdiObject* const second = FindGdi(b, Kind::Region);
    return first != nullptr && second != nullptr && Equal(first->region, second->region);
}
