#include "viewer/command_state.h"

namespace tlvn {

bool IsCommandEnabled(int command, const CommandContext& context)
{
    // While an archive is written the list has to stay as it is.
    if (context.exporting)
        return false;
    if (command >= ID_MARKER_FIRST && command <= ID_MARKER_LAST)
        return context.mailShown && context.bodySelected;
    switch (command) {
    case ID_FILE_EXPORT:
        return context.chosenMails > 0;
    case ID_FILE_SAVE:
        return context.composing;
    case ID_MAIL_REPLY:
    case ID_MAIL_REPLY_ALL:
    case ID_SEARCH_FIND:
        return context.mailShown;
    case ID_SEARCH_NEXT:
    case ID_SEARCH_PREVIOUS:
        return context.hits;
    case ID_SEARCH_CLOSE:
        return context.findBarOpen;
    case ID_EDIT_UNDO:
        return context.composing && context.canUndo;
    case ID_EDIT_REDO:
        return context.composing && context.canRedo;
    case ID_EDIT_CUT:
        return context.composing && context.bodySelected;
    case ID_EDIT_COPY:
        return context.textSelected;
    case ID_EDIT_PASTE:
    case ID_EDIT_PASTE_QUOTED:
        return context.composing && context.canPaste;
    case ID_EDIT_SELECT_ALL:
        return context.composing || context.mailShown;
    case ID_EDIT_NEXT_FLAW:
    case ID_EDIT_REPLACE_FLAWS:
        return context.composing && context.hasFlaws;
    case ID_MARKER_ERASE:
        return context.mailShown && context.bodySelected && context.markersDrawn;
    case ID_MARKER_ERASE_ALL:
        return context.mailShown && context.markersDrawn;
    default:
        return true;
    }
}

} // namespace tlvn
