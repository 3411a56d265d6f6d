// The window system's interface: windows, messages, device contexts, menus, clipboard, carets,
// timers and input methods, in the W form of the Windows API.
//
// On Windows these are the system's own functions. Elsewhere framework/headless implements the
// same functions over windows kept in memory, so that everything above is written once.

#pragma once

#include "platform/types.h"

#ifdef _WIN32
#include "framework/win32/winapi.h"
#else
#include "framework/headless/winapi.h"
#endif
