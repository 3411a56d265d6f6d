// Windows: the system's own interface.

#pragma once

#include "platform/types.h"

// WIN32_LEAN_AND_MEAN leaves these out of windows.h.
#include <commctrl.h>
#include <imm.h>

// SDKs differ on this alias of TTN_GETDISPINFOW for Unicode windows.
#ifndef TTN_NEEDTEXTW
#define TTN_NEEDTEXTW TTN_GETDISPINFOW
#endif
