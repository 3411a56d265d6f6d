// Which of TolvanView's commands can be run now.
//
// Menus gray what cannot, and keys for it do nothing.

#pragma once

#include "viewer/command_id.h"

namespace tlvn {

// What the answer depends on, of the window that is asked.
struct CommandContext {
    int chosenMails = 0;       // in the list
    bool mailShown = false;    // in the editor of the main window
    bool composing = false;    // the window is one in which a mail is written
    bool textSelected = false; // in the editor
    bool bodySelected = false; // the same without the header block
    bool markersDrawn = false; // in the text
    bool hits = false;         // of a search
    bool findBarOpen = false;
    bool canUndo = false;
    bool canRedo = false;
    bool canPaste = false;
    bool hasFlaws = false; // the draft, see draft_check.h
    bool exporting = false;
};

bool IsCommandEnabled(int command, const CommandContext& context);

} // namespace tlvn
