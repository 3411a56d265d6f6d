#include "framework/display_settings.h"

#include "framework/headless/desktop.h"

namespace tlvn {

int GetWindowDpi(HWND)
{
    return headless::Desk().windowDpi;
}

bool IsHighContrast()
{
    return headless::Desk().highContrast;
}

} // namespace tlvn
