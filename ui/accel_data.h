// CAccelData: an editable table of keyboard shortcuts (a key with Ctrl, Shift and Alt -> the
// number of a command), in the form of the system's accelerator tables.
//
//   CAccelData keys;
//   keys.LoadResourceAccelData("MAINKEYS");
//   keys.SetCmdID(FCONTROL | FSHIFT, VK_F5, ID_RECEIVE_ALL);
//   keys.UpdateMenuString(&frame);                    // "&Receive\tCtrl+Shift+F5"
//   HACCEL live = ::CreateAcceleratorTable(keys.GetData(), keys.GetSize());
//
// An entry whose command is 0 is a free slot; SetCmdID reuses it. Modifiers are FSHIFT, FCONTROL
// and FALT, keys virtual-key codes. Texts are in the multibyte code page. Where the table is kept
// is the application's business.
//
// A text names the modifiers, always as "Ctrl+Shift+Alt+", and the key, by a fixed table of 87
// rows. Punctuation keys are named by the keyboard layout: call InitOemVkName once at the start.

#pragma once

#include "framework/framework.h"

class TLVN_API CAccelData {
public:
    // Bytes that hold any entry's text with its terminator.
    static constexpr int kTextSize = 32;

    CAccelData() = default;
    CAccelData(const CAccelData& other);
    CAccelData& operator=(const CAccelData& other);
    virtual ~CAccelData();

    // --- names of keys ---------------------------------------------------------------------
    // Names the eleven punctuation keys after the keyboard layout, by at most 4 bytes; until
    // then, and when the layout has no name for one, the name is four blanks.
    static void InitOemVkName();
    // Rows of the table: letters, digits, punctuation, number pad, function keys, the rest.
    static int GetVkCount();
    // `row` is not checked.
    static const char* GetVkName(int row);
    static int GetVkCode(int row);

    // --- the table -------------------------------------------------------------------------
    int GetSize() const { return m_count; }
    const ACCEL* GetData() const { return m_entries; } // null when the table is empty
    ACCEL* GetData() { return m_entries; }

    // Cuts the table, or adds free slots; a count below 0 is 0. Throws CMemoryException*, the
    // table is then as it was.
    void SetSize(int count);
    // Takes the entries of a live table; a null handle, or one that is none, empties this one.
    void GetAccelData(HACCEL table);
    // Takes the entries of an accelerator resource of the program, or else of a loaded module
    // that has one of that name (or number, by MAKEINTRESOURCE); empty when none has.
    void LoadResourceAccelData(const char* name);

    // --- bindings --------------------------------------------------------------------------
    // The first entry of the key with exactly these modifiers, free or not; -1 for none.
    int GetKeyIndex(BYTE modifiers, int key) const;
    // Its command; 0 for none.
    int GetCmdID(BYTE modifiers, int key) const;
    // Gives the key a command, or takes it away with 0. A key that is not in the table gets the
    // first free slot, or a new entry at the end; with a command below 1 it stays out. A key or
    // command that does not fit into 16 bits does nothing.
    void SetCmdID(BYTE modifiers, int key, int cmd);
    // The entry's flags but FVIRTKEY and FNOINVERT, and its key. An index out of range does
    // nothing.
    void GetKeyAt(int index, BYTE* modifiers, int* key) const;
    // The next entry behind `from` (-1: from the start) with the command. When there is none and
    // `wrap` is set and `from` is not negative, the first from 0 up to `from` itself. -1 when
    // there is none, and for a command below 1.
    int GetNextIndex(int from, int cmd, int wrap) const;

    // --- texts -----------------------------------------------------------------------------
    // Writes the entry's text, "Ctrl+Shift+F5", into `buffer` of kTextSize bytes and returns it.
    // A key without a name leaves the modifiers alone; an index out of range gives an empty text.
    const char* GetAccelTextAt(int index, char* buffer) const;
    // Gives the entry the key of that text and keeps its command. The modifiers may come in any
    // order, more than once and in any case; the key's name only as it is in the table. A name
    // that is not there makes the key 0. An index out of range does nothing.
    void SetAccelTextAt(int index, const char* text);
    // The texts of all entries of the command in their order, with `separator` between them.
    CStringA GetKeyString(int cmd, const char* separator) const;
    // Gives each item of the menu and of its submenus, in place of what follows a tab in its
    // text, its command's keys: "text", a tab and GetKeyString(command, ", "). A command without
    // a key loses tab and keys. Separators, bitmaps, items that their owner draws and those that
    // open a submenu stay as they are. A null menu does nothing.
    void UpdateMenuString(CMenu* menu) const;
    // The same for the menu bar of a window, which is drawn anew.
    void UpdateMenuString(CWnd* window) const;

private:
    bool IsEntry(int index) const { return index >= 0 && index < m_count; }
    void UpdateMenuTexts(HMENU menu) const;

    int m_count = 0;
    ACCEL* m_entries = nullptr; // m_count of them, by tv_realloc
};
