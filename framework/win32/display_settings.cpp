#include "framework/display_settings.h"

namespace tlvn {

int GetWindowDpi(HWND window)
{
    // Windows 10 has it, older ones have one resolution for all windows.
    using GetDpi = UINT(WINAPI*)(HWND);
    static const auto getDpi = reinterpret_cast<GetDpi>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(TW("user32")), "GetDpiForWindow")));
    const UINT dpi = getDpi != nullptr ? getDpi(window) : 0;
    if (dpi != 0)
        return static_cast<int>(dpi);
    const HDC dc = ::GetDC(window);
    const int systemDpi = ::GetDeviceCaps(dc, LOGPIXELSY);
    ::ReleaseDC(window, dc);
    return systemDpi > 0 ? systemDpi : 96;
}

bool IsHighContrast()
{
    HIGHCONTRASTW setting{};
    setting.cbSize = sizeof setting;
    return ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0) != 0 &&
           (setting.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

} // namespace tlvn
