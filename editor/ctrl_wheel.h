// What turning the mouse wheel does while the Ctrl key is down: the application decides, for all
// its windows alike (a larger font, say).
//
//   SetCtrlMouseWheelProc(ChangeFontSize);
//   ...
//   if (DispatchCtrlMouseWheel(this, flags, delta, point))
//       return TRUE;                                    // taken

#pragma once

#include "framework/framework.h"

// `flags`, `delta` and `point` (of the screen) are those of WM_MOUSEWHEEL. Returns 1 when it has
// dealt with it, else 0.
using CtrlMouseWheelProc = int (*)(CWnd* window, UINT flags, short delta, CPoint point);

// One procedure for the process, null for none. Returns the one before.
TLVN_API CtrlMouseWheelProc SetCtrlMouseWheelProc(CtrlMouseWheelProc procedure);

// Offers the wheel to the procedure; 0 when the Ctrl key is not down or there is no procedure.
TLVN_API int DispatchCtrlMouseWheel(CWnd* window, UINT flags, short delta, CPoint point);
