// Classes of windows, in the Windows API's sense.
//
//   tlvn::RegisterWindowClass("TlvnEditor", CS_DBLCLKS, tlvn::LoadStandardCursor(IDC_IBEAM));
//
// The library's own, whichever framework it is built with.

#pragma once

#include "framework/winapi.h"

namespace tlvn {

// Registers a class for windows of the library, once; registering it again succeeds and changes
// nothing. `style` is a set of CS_ values.
TLVN_API bool RegisterWindowClass(LPCSTR name, UINT style, HCURSOR cursor = nullptr,
                                  HBRUSH background = nullptr, HICON icon = nullptr);

// A cursor of the system (IDC_ARROW and so on, which windows.h gives in narrow form).
template <class Name>
HCURSOR LoadStandardCursor(Name name)
{
    return ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(name));
}

} // namespace tlvn
