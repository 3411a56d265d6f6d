#include "editor/default_keys.h"

#include "editor/editor_command.h"
#include "ui/accel_data.h"

namespace {

const struct {
    BYTE modifiers;
    int key;
    EditorCommand command;
} kKeys[] = {
    {0, VK_UP, EditorCmdLineUp},
    {0, VK_DOWN, EditorCmdLineDown},
    {0, VK_LEFT, EditorCmdLineLeft},
    {0, VK_RIGHT, EditorCmdLineRight},
    {FCONTROL, VK_LEFT, EditorCmdWordLeft},
    {FCONTROL, VK_RIGHT, EditorCmdWordRight},
    {0, VK_PRIOR, EditorCmdPageUp},
    {0, VK_NEXT, EditorCmdPageDown},
    {0, VK_HOME, EditorCmdHome},
    {0, VK_END, EditorCmdEnd},
    {FCONTROL, VK_HOME, EditorCmdDocHome},
    {FCONTROL, VK_END, EditorCmdDocEnd},
    {0, VK_DELETE, EditorCmdDeleteChar},
    {FCONTROL, VK_DELETE, EditorCmdDeleteWord},
    {FCONTROL | FSHIFT, VK_DELETE, EditorCmdDeleteLogicalLineEnd},
    {0, VK_BACK, EditorCmdBackSpaceChar},
    {FSHIFT, VK_BACK, EditorCmdBackSpaceChar},
    {FCONTROL | FSHIFT, VK_BACK, EditorCmdDeleteLogicalLineHome},
    {FCONTROL, 'U', EditorCmdDeletePhysicalLineHome},
    {FCONTROL, 'K', EditorCmdDeletePhysicalLineEnd},
    {FCONTROL, 'Y', EditorCmdDeleteLogicalLine},
    {FCONTROL | FSHIFT, 'Y', EditorCmdDeletePhysicalLine},
    {0, VK_INSERT, EditorCmdToggleInsert},
};

} // namespace

void SetDefaultEditorKeys(CAccelData& keys)
{
    for (const auto& key : kKeys)
        keys.SetCmdID(key.modifiers, key.key, key.command);
}
