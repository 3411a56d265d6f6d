// The questions of TolvanView. Each shows a dialog of the system, or of the program's resources,
// until it is answered; false means that the user gave up, and the answer is then untouched.
// Texts and paths are UTF-8.

#pragma once

#include "framework/framework.h"

#include <string>

class CAccelData;
class CFontInfo;

namespace tlvn {

// A line of text. With `secret` it shows as dots.
bool AskText(CWnd* owner, UINT title, UINT label, bool secret, std::string& text);

bool AskFolder(CWnd* owner, std::string& path);
bool AskFileToOpen(CWnd* owner, UINT filter, std::string& path);
// `path` comes with the folder and the name proposed. An existing file is asked about.
bool AskFileToSave(CWnd* owner, UINT filter, const WCHAR* extension, std::string& path);

bool AskFont(CWnd* owner, CFontInfo& font);
bool AskColor(CWnd* owner, COLORREF& color);

// Lets the user change the keys of the menu's commands; `defaults` is what the button brings back.
bool AskKeys(CWnd* owner, const CMenu& menu, const CAccelData& defaults, CAccelData& keys);

} // namespace tlvn
