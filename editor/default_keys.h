// The keys that users of editors on Windows expect.
//
//   SetDefaultEditorKeys(CEditorWnd::GetAccelData());
//
// | key                              | command                                   |
// |----------------------------------|-------------------------------------------|
// | arrows, Ctrl+Left, Ctrl+Right    | by lines, characters, words               |
// | PageUp, PageDown, Home, End      | by pages, to the ends of the display line |
// | Ctrl+Home, Ctrl+End              | to the ends of the document               |
// | Delete, Back, Shift+Back         | a character, behind or before the caret   |
// | Ctrl+Delete                      | the rest of the word                      |
// | Ctrl+Shift+Back, ...+Delete      | to the start, to the end of the line      |
// | Ctrl+U, Ctrl+K                   | the same of the display line              |
// | Ctrl+Y, Ctrl+Shift+Y             | the line, the display line                |
// | Insert                           | insert or overwrite mode                  |
//
// Undo and the clipboard are commands of the application's menu, which has keys of its own; where
// one of them is the same, as Ctrl+Y for Redo is often, the application takes it out here.

#pragma once

#include "framework/framework.h"

class CAccelData;

// Gives the table these keys. Other keys of the table stay; one of these gets its command anew.
TLVN_API void SetDefaultEditorKeys(CAccelData& keys);
