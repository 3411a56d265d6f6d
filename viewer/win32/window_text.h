// Texts of TolvanView's windows: from its resources, into and out of UTF-8.

#pragma once

#include "framework/framework.h"
#include "platform/nls.h"

#include <string>
#include <string_view>

namespace tlvn {

// A text of the program's resources, "%1" and "%2" in it replaced.
WString LoadText(UINT id);
WString LoadText(UINT id, WStringView first, WStringView second = {});

// The whole text of a window.
WString GetTextOf(HWND window);
inline WString GetTextOf(const CWnd& window)
{
    return GetTextOf(window.m_hWnd);
}

// The font of lists, trees and fields: one that has Japanese letters on a system of any language.
CFont* GetDialogFont();
int GetDialogFontHeight();

// A message box with the text of the resources and, below it, what the library has to say (UTF-8).
void Complain(CWnd* owner, UINT id, const std::string& details);
void Tell(CWnd* owner, const std::string& utf8);

} // namespace tlvn
