/* The numbers of TolvanView's commands, for its sources and its resource script, which knows no
   more of C++ than these lines. They stand in settings files and are not given anew. */

#pragma once

#define ID_FILE_OPEN_FOLDER 40001
#define ID_FILE_OPEN_FILE 40002
#define ID_FILE_EXPORT 40003
#define ID_FILE_EXIT 40004
#define ID_FILE_SAVE 40005

#define ID_EDIT_UNDO 40020
#define ID_EDIT_REDO 40021
#define ID_EDIT_CUT 40022
#define ID_EDIT_COPY 40023
#define ID_EDIT_PASTE 40024
#define ID_EDIT_PASTE_QUOTED 40025
#define ID_EDIT_SELECT_ALL 40026
#define ID_EDIT_NEXT_FLAW 40027
#define ID_EDIT_REPLACE_FLAWS 40028

#define ID_SEARCH_FIND 40040
#define ID_SEARCH_NEXT 40041
#define ID_SEARCH_PREVIOUS 40042
#define ID_SEARCH_CLOSE 40043

#define ID_MAIL_REPLY 40060
#define ID_MAIL_REPLY_ALL 40061
#define ID_MAIL_NEW 40062

/* One for each kind of line marker, in order. */
#define ID_MARKER_FIRST 40080
#define ID_MARKER_LAST 40085
#define ID_MARKER_ERASE 40086
#define ID_MARKER_ERASE_ALL 40087

/* One for each split type, in order. */
#define ID_VIEW_SPLIT_FIRST 40100
#define ID_VIEW_SPLIT_LAST 40105
#define ID_VIEW_MAXIMIZE 40106
#define ID_VIEW_NEXT_PANE 40107
#define ID_VIEW_PREVIOUS_PANE 40108

#define ID_SETTINGS_FONT 40120
#define ID_SETTINGS_TEXT_COLOR 40121
#define ID_SETTINGS_BACK_COLOR 40122
#define ID_SETTINGS_KEYS 40123
#define ID_SETTINGS_ADDRESS 40124
#define ID_SETTINGS_PASSWORD 40125

#define ID_COMMAND_FIRST 40001
#define ID_COMMAND_LAST 40125
