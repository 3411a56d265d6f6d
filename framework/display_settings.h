// How the user has set up the display, as far as a window that draws itself has to follow it.

#pragma once

#include "framework/winapi.h"

namespace tlvn {

// Dots per inch of the screen that the window is on, or the system's where windows are not told
// apart. 96 is 100 %.
TLVN_API int GetWindowDpi(HWND window);

// True while the user wants high contrast: everything is to be drawn in system colours.
TLVN_API bool IsHighContrast();

} // namespace tlvn
