#include "ui/accel_data.h"
#include "viewer/command_state.h"
#include "viewer/key_settings.h"

#include <gtest/gtest.h>

namespace tlvn {
namespace {

// Each row is what has just become possible; a command that looks at another condition fails.
TEST(CommandState, FollowsWhatIsChosenAndShown)
{
    const CommandContext none;
    const CommandContext chosen = {.chosenMails = 1};
    const CommandContext shown = {.mailShown = true};
    const CommandContext selected = {.mailShown = true, .textSelected = true, .bodySelected = true};
    const CommandContext marked = {.mailShown = true, .markersDrawn = true};
    const CommandContext both = {.mailShown = true, .bodySelected = true, .markersDrawn = true};
    const CommandContext composing = {.composing = true};
    const CommandContext flawed = {.composing = true, .hasFlaws = true};
    const CommandContext exporting = {
        .chosenMails = 2, .mailShown = true, .bodySelected = true, .exporting = true};
    const struct {
        int command;
        const CommandContext& context;
        bool enabled;
    } cases[] = {
        {ID_FILE_OPEN_FOLDER, none, true},
        {ID_FILE_EXPORT, none, false},
        {ID_FILE_EXPORT, chosen, true},
        {ID_MAIL_REPLY, chosen, false}, // chosen, but it could not be read
        {ID_MAIL_REPLY, shown, true},
        {ID_MAIL_NEW, none, true},
        {ID_MARKER_FIRST, shown, false},
        {ID_MARKER_LAST, selected, true},
        {ID_MARKER_ERASE, selected, false},
        {ID_MARKER_ERASE, marked, false},
        {ID_MARKER_ERASE, both, true},
        {ID_MARKER_ERASE_ALL, marked, true},
        {ID_EDIT_COPY, selected, true},
        {ID_EDIT_CUT, selected, false}, // a mail that is read is not changed
        {ID_SEARCH_NEXT, shown, false},
        {ID_EDIT_NEXT_FLAW, composing, false},
        {ID_EDIT_REPLACE_FLAWS, flawed, true},
        {ID_FILE_SAVE, composing, true},
        {ID_FILE_SAVE, shown, false},
        {ID_MARKER_FIRST, exporting, false},
        {ID_FILE_EXIT, exporting, false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(IsCommandEnabled(c.command, c.context), c.enabled) << c.command;
}

TEST(KeySettings, ComeBackAndLeaveOutWhatIsNone)
{
    CSettingData settings;
    settings.LoadNone();
    CAccelData keys;
    keys.SetCmdID(FCONTROL, 'R', ID_MAIL_REPLY);
    EXPECT_FALSE(LoadKeys(settings, "Keys", "Main", ID_COMMAND_FIRST, ID_COMMAND_LAST, keys));
    EXPECT_EQ(keys.GetCmdID(FCONTROL, 'R'), ID_MAIL_REPLY);

    keys.SetCmdID(FCONTROL | FSHIFT | FALT, VK_F12, ID_MAIL_NEW);
    keys.SetCmdID(0, VK_F3, ID_SEARCH_NEXT);
    keys.SetCmdID(0, VK_F3, 0); // a free slot is no key
    SaveKeys(settings, "Keys", "Main", keys);
    SaveKeys(settings, "Keys", "Other", CAccelData());
    CAccelData read;
    EXPECT_TRUE(LoadKeys(settings, "Keys", "Main", ID_COMMAND_FIRST, ID_COMMAND_LAST, read));
    EXPECT_EQ(read.GetSize(), 2);
    EXPECT_EQ(read.GetCmdID(FCONTROL, 'R'), ID_MAIL_REPLY);
    EXPECT_EQ(read.GetCmdID(FCONTROL | FSHIFT | FALT, VK_F12), ID_MAIL_NEW);
    // All keys taken away is not the same as never stored.
    EXPECT_TRUE(LoadKeys(settings, "Keys", "Other", ID_COMMAND_FIRST, ID_COMMAND_LAST, read));
    EXPECT_EQ(read.GetSize(), 0);

    CStringArray values;
    for (const char* value : {"", "40060", "40060 ", "x Ctrl+R", "1 Ctrl+R", "99999999999 F1",
                              "40060 Ctrl+Nokey", "40060Ctrl+R", "-1 F2", "40062 Ctrl+N"})
        values.Add(value);
    settings.SetValueBegin("Keys", "Main", values);
    EXPECT_TRUE(LoadKeys(settings, "Keys", "Main", ID_COMMAND_FIRST, ID_COMMAND_LAST, read));
    EXPECT_EQ(read.GetSize(), 1);
    EXPECT_EQ(read.GetCmdID(FCONTROL, 'N'), ID_MAIL_NEW);
}

} // namespace
} // namespace tlvn
