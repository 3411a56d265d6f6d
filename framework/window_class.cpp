#include "framework/window_class.h"

#include "framework/text_ops.h"

namespace tlvn {

bool RegisterWindowClass(LPCSTR name, UINT style, HCURSOR cursor, HBRUSH background, HICON icon)
{
    const WString wide = ConvertText(name);
    const HINSTANCE instance = ::GetModuleHandleW(nullptr);
    WNDCLASSW existing;
    if (::GetClassInfoW(instance, wide.c_str(), &existing))
        return true;
    WNDCLASSW windowClass = {};
    windowClass.style = style;
    windowClass.lpfnWndProc = &::DefWindowProcW;
    windowClass.hInstance = instance;
    windowClass.hCursor = cursor;
    windowClass.hbrBackground = background;
    windowClass.hIcon = icon;
    windowClass.lpszClassName = wide.c_str();
    return ::RegisterClassW(&windowClass) != 0;
}

} // namespace tlvn
