// What wnd.cpp and wnd_message.cpp share.

#pragma once

#include "framework/winapi.h"

class CWnd;

namespace tlvn {

// Makes the library's window procedure the window's and gives the one before, or null when it
// was the library's already.
WNDPROC TakeWindowProcedure(HWND window);

// While it lives, the next window that the thread creates belongs to `object` from its first
// message on.
class CreationHook {
public:
    explicit CreationHook(CWnd* object);
    ~CreationHook();
    CreationHook(const CreationHook&) = delete;
    CreationHook& operator=(const CreationHook&) = delete;
    bool WasTaken() const { return m_taken; }

private:
    static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam);

    CWnd* m_object;
    HHOOK m_hook;
    CreationHook* m_outer;
    bool m_taken = false;
};

BOOL ModifyWindowStyle(HWND window, int index, DWORD remove, DWORD add, UINT flags);

// A class background in a system colour.
inline HBRUSH SystemBrush(int color)
{
    return reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(color + 1));
}

} // namespace tlvn
