#include "framework/headless/desktop.h"

#include <chrono>

namespace tlvn::headless {

namespace {

COLORREF SystemColor(int index)
{
    static constexpr COLORREF kColors[] = {
        0xC8C8C8, 0x000000, 0xD1B499, 0xDBCDBF, 0xF0F0F0, 0xFFFFFF, 0x646464, 0x000000, 0x000000,
        0x000000, 0xB4B4B4, 0xFCF7F4, 0xABABAB, 0xD77800, 0xFFFFFF, 0xF0F0F0, 0xA0A0A0, 0x6D6D6D,
        0x000000, 0x000000, 0xFFFFFF, 0x696969, 0xE3E3E3, 0x000000, 0xE1FFFF, 0x000000, 0xCC6600};
    return index >= 0 && index < static_cast<int>(std::size(kColors)) ? kColors[index] : 0;
}

HGDIOBJ AddStock(Desktop& desk, GdiObject::Kind kind, COLORREF color, bool empty, LONG fontHeight)
{
    auto object = std::make_unique<GdiObject>();
    object->kind = kind;
    object->stock = true;
    object->color = color;
    object->empty = empty;
    object->logFont.lfHeight = fontHeight;
    object->logFont.lfWeight = FW_NORMAL;
    object->logFont.lfPitchAndFamily = FIXED_PITCH;
    object->font = MakeCellFont(fontHeight, 0);
    return desk.gdi.Add(std::move(object));
}

} // namespace

Desktop::Desktop()
{
    using Kind = GdiObject::Kind;
    const struct {
        int index;
        Kind kind;
        COLORREF color;
        bool empty;
        LONG height;
    } objects[] = {
        {WHITE_BRUSH, Kind::Brush, 0xFFFFFF, false, 0},
        {LTGRAY_BRUSH, Kind::Brush, 0xC0C0C0, false, 0},
        {GRAY_BRUSH, Kind::Brush, 0x808080, false, 0},
        {DKGRAY_BRUSH, Kind::Brush, 0x404040, false, 0},
        {BLACK_BRUSH, Kind::Brush, 0x000000, false, 0},
        {NULL_BRUSH, Kind::Brush, 0, true, 0},
        {WHITE_PEN, Kind::Pen, 0xFFFFFF, false, 0},
        {BLACK_PEN, Kind::Pen, 0x000000, false, 0},
        {NULL_PEN, Kind::Pen, 0, true, 0},
        {OEM_FIXED_FONT, Kind::Font, 0, false, 16},
        {ANSI_FIXED_FONT, Kind::Font, 0, false, 12},
        {ANSI_VAR_FONT, Kind::Font, 0, false, 12},
        {SYSTEM_FONT, Kind::Font, 0, false, 16},
        {DEVICE_DEFAULT_FONT, Kind::Font, 0, false, 16},
        {SYSTEM_FIXED_FONT, Kind::Font, 0, false, 16},
        {DEFAULT_GUI_FONT, Kind::Font, 0, false, 12},
    };
    for (const auto& o : objects)
        stock[o.index] = AddStock(*this, o.kind, o.color, o.empty, o.height);
    for (int i = 0; i < static_cast<int>(std::size(sysColorBrushes)); ++i) {
        sysColorBrushes[i] =
            static_cast<HBRUSH>(AddStock(*this, Kind::Brush, SystemColor(i), false, 0));
    }
    auto bitmap = std::make_unique<GdiObject>();
    bitmap->kind = Kind::Bitmap;
    bitmap->stock = true;
    bitmap->size = {1, 1};
    noBitmap = static_cast<HBITMAP>(gdi.Add(std::move(bitmap)));
    defaultContext = inputContexts.Add(std::make_unique<InputContext>());

    auto toolTip = std::make_unique<WindowClass>();
    toolTip->name = TOOLTIPS_CLASSW;
    toolTip->procedure = &ToolTipProcedure;
    toolTip->atom = 0xC000;
    classes.push_back(std::move(toolTip));
}

// Never destroyed: windows of the program may outlive static objects.
Desktop& Desk()
{
    static Desktop* const desk = new Desktop;
    return *desk;
}

GdiObject* FindGdi(HGDIOBJ handle, GdiObject::Kind kind)
{
    GdiObject* object = Desk().gdi.Find(handle);
    return object != nullptr && object->kind == kind ? object : nullptr;
}

INT64 Now()
{
    const Desktop& desk = Desk();
    if (desk.testClock)
        return desk.testTime;
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace tlvn::headless

using namespace tlvn::headless;

DWORD GetSysColor(int index)
{
    return SystemColor(index);
}

HBRUSH GetSysColorBrush(int index)
{
    const Desktop& desk = Desk();
    return index >= 0 && index < static_cast<int>(std::size(desk.sysColorBrushes))
               ? desk.sysColorBrushes[index]
               : nullptr;
}

int GetSystemMetrics(int index)
{
    switch (index) {
    case SM_CXSCREEN:
        return Desk().screen.cx;
    case SM_CYSCREEN:
        return Desk().screen.cy;
    case SM_CXVSCROLL:
    case SM_CYVSCROLL:
    case SM_CYHSCROLL:
    case SM_CXHSCROLL:
        return 17;
    case SM_CYCAPTION:
        return 23;
    case SM_CYMENU:
        return 20;
    case SM_CXBORDER:
    case SM_CYBORDER:
        return 1;
    case SM_CXEDGE:
    case SM_CYEDGE:
        return 2;
    case SM_CXFRAME:
    case SM_CYFRAME:
    case SM_CXDOUBLECLK:
    case SM_CYDOUBLECLK:
    case SM_CXDRAG:
    case SM_CYDRAG:
        return 4;
    case SM_CXMIN:
        return 120;
    case SM_CYMIN:
        return 31;
    default:
        return 0;
    }
}

BOOL SystemParametersInfoW(UINT action, UINT value, LPVOID data, UINT)
{
    switch (action) {
    case SPI_GETWHEELSCROLLLINES:
        *static_cast<UINT*>(data) = Desk().wheelLines;
        return TRUE;
    case SPI_SETWHEELSCROLLLINES:
        Desk().wheelLines = value;
        return TRUE;
    case SPI_GETWHEELSCROLLCHARS:
        *static_cast<UINT*>(data) = 3;
        return TRUE;
    default:
        return FALSE;
    }
}

DWORD GetTickCount()
{
    return static_cast<DWORD>(Now());
}

DWORD GetCurrentThreadId()
{
    return 1;
}

DWORD GetCurrentProcessId()
{
    return 1;
}

HMODULE GetModuleHandleW(LPCWSTR)
{
    return reinterpret_cast<HMODULE>(0x400000);
}
