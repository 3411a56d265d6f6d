// The commands of an editor's keys, by their numbers, as key tables hold them. See
// CEditorWnd::ExecEditorCmd for what they do.

#pragma once

// A name says what its command does; those of carets and deleting are methods of CEditorWnd.
enum EditorCommand : int {
    EditorCmdLineUp = 33600,
    EditorCmdLineDown = 33601,
    EditorCmdLineLeft = 33602,
    EditorCmdLineRight = 33603,
    EditorCmdWordLeft = 33604,
    EditorCmdWordRight = 33605,
    EditorCmdPageUp = 33606,
    EditorCmdPageDown = 33607,
    EditorCmdHome = 33608,
    EditorCmdEnd = 33609,
    EditorCmdDocHome = 33610,
    EditorCmdDocEnd = 33611,

    EditorCmdDeleteChar = 33620,
    EditorCmdDeleteWord = 33621,
    EditorCmdDeletePhysicalLine = 33622,
    EditorCmdBackSpaceChar = 33623,
    EditorCmdDeletePhysicalLineHome = 33624,
    EditorCmdDeletePhysicalLineEnd = 33625,
    EditorCmdDeleteLogicalLine = 33626,
    EditorCmdDeleteLogicalLineHome = 33627,
    EditorCmdDeleteLogicalLineEnd = 33628,

    EditorCmdToggleInsert = 33630,
};

// The commands that move the caret, and with the Shift key down extend the selection.
constexpr bool IsCaretCommand(int id)
{
    return id >= EditorCmdLineUp && id <= EditorCmdDocEnd;
}
