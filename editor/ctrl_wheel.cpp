#include "editor/ctrl_wheel.h"

#include <utility>

namespace {

CtrlMouseWheelProc g_procedure = nullptr;

} // namespace

CtrlMouseWheelProc SetCtrlMouseWheelProc(CtrlMouseWheelProc procedure)
{
    return std::exchange(g_procedure, procedure);
}

int DispatchCtrlMouseWheel(CWnd* window, UINT flags, short delta, CPoint point)
{
    if ((flags & MK_CONTROL) == 0 || g_procedure == nullptr)
        return 0;
    return g_procedure(window, flags, delta, point);
}
