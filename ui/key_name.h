// The keys that a shortcut can have, with the names under which they are shown.
//
// A row is a virtual-key code and its name; all rows stand in the order in which a list of keys
// shows them. The keys of punctuation marks are named by the keyboard layout: call
// NamePunctuationKeys once the layout is known. Until then their names are four blanks.

#pragma once

namespace tlvn {

int GetKeyNameCount();

// `row` is not checked.
int GetKeyCode(int row);
const char* GetKeyName(int row);

// The name of a virtual key; empty for a key without a row.
const char* FindKeyName(int code);

// The virtual key of that name, letter by letter; 0 when there is none.
int FindKeyCode(const char* name);

// Takes the names of the punctuation keys from the keyboard layout, of each as many whole
// characters as fit in four bytes of the multibyte code page. A key that the layout does not
// name keeps the name it had. Not to be called while another thread uses the names.
void NamePunctuationKeys();

} // namespace tlvn
