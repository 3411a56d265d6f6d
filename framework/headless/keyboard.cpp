// The keyboard: a Japanese layout of 106 keys, its scan codes, characters and key names.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

struct Key {
    int virtualKey;
    UINT scanCode;
    WCHAR plain; // character typed, 0 for none
    WCHAR shifted;
    const WCHAR* name;
};

constexpr Key kKeys[] = {
    {'A', 0x1E, u'a', u'A', u"A"},
    {'B', 0x30, u'b', u'B', u"B"},
    {'C', 0x2E, u'c', u'C', u"C"},
    {'D', 0x20, u'd', u'D', u"D"},
    {'E', 0x12, u'e', u'E', u"E"},
    {'F', 0x21, u'f', u'F', u"F"},
    {'G', 0x22, u'g', u'G', u"G"},
    {'H', 0x23, u'h', u'H', u"H"},
    {'I', 0x17, u'i', u'I', u"I"},
    {'J', 0x24, u'j', u'J', u"J"},
    {'K', 0x25, u'k', u'K', u"K"},
    {'L', 0x26, u'l', u'L', u"L"},
    {'M', 0x32, u'm', u'M', u"M"},
    {'N', 0x31, u'n', u'N', u"N"},
    {'O', 0x18, u'o', u'O', u"O"},
    {'P', 0x19, u'p', u'P', u"P"},
    {'Q', 0x10, u'q', u'Q', u"Q"},
    {'R', 0x13, u'r', u'R', u"R"},
    {'S', 0x1F, u's', u'S', u"S"},
    {'T', 0x14, u't', u'T', u"T"},
    {'U', 0x16, u'u', u'U', u"U"},
    {'V', 0x2F, u'v', u'V', u"V"},
    {'W', 0x11, u'w', u'W', u"W"},
    {'X', 0x2D, u'x', u'X', u"X"},
    {'Y', 0x15, u'y', u'Y', u"Y"},
    {'Z', 0x2C, u'z', u'Z', u"Z"},
    {'0', 0x0B, u'0', 0, u"0"},
    {'1', 0x02, u'1', u'!', u"1"},
    {'2', 0x03, u'2', u'"', u"2"},
    {'3', 0x04, u'3', u'#', u"3"},
    {'4', 0x05, u'4', u'$', u"4"},
    {'5', 0x06, u'5', u'%', u"5"},
    {'6', 0x07, u'6', u'&', u"6"},
    {'7', 0x08, u'7', u'\'', u"7"},
    {'8', 0x09, u'8', u'(', u"8"},
    {'9', 0x0A, u'9', u')', u"9"},
    {VK_OEM_PLUS, 0x27, u';', u'+', u";"},
    {VK_OEM_COMMA, 0x33, u',', u'<', u","},
    {VK_OEM_MINUS, 0x0C, u'-', u'=', u"-"},
    {VK_OEM_PERIOD, 0x34, u'.', u'>', u"."},
    {VK_OEM_1, 0x28, u':', u'*', u":"},
    {VK_OEM_2, 0x35, u'/', u'?', u"/"},
    {VK_OEM_3, 0x1A, u'@', u'`', u"@"},
    {VK_OEM_4, 0x1B, u'[', u'{', u"["},
    {VK_OEM_5, 0x7D, u'\\', u'|', u"\\"},
    {VK_OEM_6, 0x2B, u']', u'}', u"]"},
    {VK_OEM_7, 0x0D, u'^', u'~', u"^"},
    {VK_OEM_102, 0x73, u'\\', u'_', u"\\"},
    {VK_SPACE, 0x39, u' ', u' ', u"Space"},
    {VK_BACK, 0x0E, 8, 8, u"Backspace"},
    {VK_TAB, 0x0F, 9, 9, u"Tab"},
    {VK_RETURN, 0x1C, 13, 13, u"Enter"},
    {VK_ESCAPE, 0x01, 27, 27, u"Esc"},
    {VK_SHIFT, 0x2A, 0, 0, u"Shift"},
    {VK_CONTROL, 0x1D, 0, 0, u"Ctrl"},
    {VK_MENU, 0x38, 0, 0, u"Alt"},
    {VK_PRIOR, 0x49, 0, 0, u"Page Up"},
    {VK_NEXT, 0x51, 0, 0, u"Page Down"},
    {VK_END, 0x4F, 0, 0, u"End"},
    {VK_HOME, 0x47, 0, 0, u"Home"},
    {VK_LEFT, 0x4B, 0, 0, u"Left"},
    {VK_UP, 0x48, 0, 0, u"Up"},
    {VK_RIGHT, 0x4D, 0, 0, u"Right"},
    {VK_DOWN, 0x50, 0, 0, u"Down"},
    {VK_INSERT, 0x52, 0, 0, u"Insert"},
    {VK_DELETE, 0x53, 0, 0, u"Delete"},
    {VK_NUMPAD0, 0x52, u'0', u'0', u"Num 0"},
    {VK_NUMPAD0 + 1, 0x4F, u'1', u'1', u"Num 1"},
    {VK_NUMPAD0 + 2, 0x50, u'2', u'2', u"Num 2"},
    {VK_NUMPAD0 + 3, 0x51, u'3', u'3', u"Num 3"},
    {VK_NUMPAD0 + 4, 0x4B, u'4', u'4', u"Num 4"},
    {VK_NUMPAD0 + 5, 0x4C, u'5', u'5', u"Num 5"},
    {VK_NUMPAD0 + 6, 0x4D, u'6', u'6', u"Num 6"},
    {VK_NUMPAD0 + 7, 0x47, u'7', u'7', u"Num 7"},
    {VK_NUMPAD0 + 8, 0x48, u'8', u'8', u"Num 8"},
    {VK_NUMPAD9, 0x49, u'9', u'9', u"Num 9"},
    {VK_MULTIPLY, 0x37, u'*', u'*', u"Num *"},
    {VK_ADD, 0x4E, u'+', u'+', u"Num +"},
    {VK_SUBTRACT, 0x4A, u'-', u'-', u"Num -"},
    {VK_DECIMAL, 0x53, u'.', u'.', u"Num Del"},
    {VK_DIVIDE, 0x35, u'/', u'/', u"Num /"},
    {VK_F1, 0x3B, 0, 0, u"F1"},
    {VK_F2, 0x3C, 0, 0, u"F2"},
    {VK_F3, 0x3D, 0, 0, u"F3"},
    {VK_F4, 0x3E, 0, 0, u"F4"},
    {VK_F5, 0x3F, 0, 0, u"F5"},
    {VK_F6, 0x40, 0, 0, u"F6"},
    {VK_F7, 0x41, 0, 0, u"F7"},
    {VK_F8, 0x42, 0, 0, u"F8"},
    {VK_F9, 0x43, 0, 0, u"F9"},
    {VK_F10, 0x44, 0, 0, u"F10"},
    {VK_F11, 0x57, 0, 0, u"F11"},
    {VK_F12, 0x58, 0, 0, u"F12"},
};

const Key* FindKey(int virtualKey)
{
    for (const Key& key : kKeys) {
        if (key.virtualKey == virtualKey)
            return &key;
    }
    return nullptr;
}

bool IsDown(int key)
{
    return (Desk().keyState[key & 0xFF] & 0x80) != 0;
}

} // namespace

WCHAR CharOfKey(int virtualKey, bool shift)
{
    const Key* const key = FindKey(virtualKey);
    if (key == nullptr)
        return 0;
    return shift ? key->shifted : key->plain;
}

} // namespace tlvn::headless

using namespace tlvn::headless;

SHORT GetKeyState(int key)
{
    const BYTE state = Desk().keyState[key & 0xFF];
    return static_cast<SHORT>((state & 0x80 ? -128 : 0) | (state & 1));
}

SHORT GetAsyncKeyState(int key)
{
    return static_cast<SHORT>(Desk().asyncKeyState[key & 0xFF] & 0x80 ? -32768 : 0);
}

BOOL GetKeyboardState(BYTE* state)
{
    std::copy(std::begin(Desk().keyState), std::end(Desk().keyState), state);
    return TRUE;
}

BOOL SetKeyboardState(BYTE* state)
{
    std::copy(state, state + 256, Desk().keyState);
    return TRUE;
}

UINT MapVirtualKeyW(UINT code, UINT kind)
{
    if (kind == MAPVK_VSC_TO_VK) {
        for (const Key& key : kKeys) {
            if (key.scanCode == code)
                return static_cast<UINT>(key.virtualKey);
        }
        return 0;
    }
    const Key* const key = FindKey(static_cast<int>(code & 0xFF));
    if (key == nullptr)
        return 0;
    if (kind == MAPVK_VK_TO_VSC)
        return key->scanCode;
    const bool letter = code >= 'A' && code <= 'Z';
    return letter ? key->shifted : key->plain;
}

int GetKeyNameTextW(LONG lParam, LPWSTR name, int capacity)
{
    const UINT scanCode = static_cast<UINT>(lParam >> 16 & 0xFF);
    const bool extended = (lParam >> 24 & 1) != 0;
    if (capacity <= 0)
        return 0;
    // Keys of the cursor block and of the number pad share codes; the extended bit tells them
    // apart.
    const Key* found = nullptr;
    for (const Key& key : kKeys) {
        const bool cursor = key.virtualKey >= VK_PRIOR && key.virtualKey <= VK_DELETE;
        if (key.scanCode == scanCode && cursor == extended) {
            found = &key;
            break;
        }
    }
    name[0] = 0;
    if (found == nullptr)
        return 0;
    int length = 0;
    for (; found->name[length] != 0 && length < capacity - 1; ++length)
        name[length] = found->name[length];
    name[length] = 0;
    return length;
}

BOOL TranslateMessage(const MSG* message)
{
    if (message->message != WM_KEYDOWN && message->message != WM_SYSKEYDOWN)
        return FALSE;
    const int key = static_cast<int>(message->wParam);
    const bool control = IsDown(VK_CONTROL);
    bool shift = IsDown(VK_SHIFT);
    WCHAR c = 0;
    if (control && key >= 'A' && key <= 'Z') {
        c = static_cast<WCHAR>(key - 'A' + 1);
    } else if (control) {
        c = key == VK_RETURN ? u'\n' : key == VK_BACK ? u'\x7F' : u'\0';
        if (key == VK_SPACE || key == VK_ESCAPE)
            c = CharOfKey(key, false);
    } else {
        if (key >= 'A' && key <= 'Z' && (Desk().keyState[VK_CAPITAL] & 1) != 0)
            shift = !shift;
        c = CharOfKey(key, shift);
    }
    if (c != 0) {
        const UINT kind = message->message == WM_SYSKEYDOWN ? WM_SYSCHAR : WM_CHAR;
        PostMessageW(message->hwnd, kind, c, message->lParam);
    }
    return TRUE;
}
