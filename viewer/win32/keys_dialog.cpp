#include "viewer/win32/dialogs.h"

#include "ui/accel_data.h"
#include "viewer/win32/resource.h"
#include "viewer/win32/window_text.h"

#include <vector>

namespace tlvn {

namespace {

struct Command {
    int id;
    WString name; // as in the menu, without its mark and keys
};

struct KeysQuestion {
    std::vector<Command> commands;
    const CAccelData* defaults;
    CAccelData keys;
};

WString GetPlainText(HMENU menu, int position)
{
    CMenu* const items = CMenu::FromHandle(menu);
    CStringW text;
    items->GetMenuString(static_cast<UINT>(position), text, MF_BYPOSITION);
    WString plain(text.GetString());
    plain.resize(std::min(plain.find(TW('\t')), plain.size()));
    if (const std::size_t mark = plain.find(TW("(&")); mark != plain.npos)
        plain.erase(mark, plain.find(TW(')'), mark) + 1 - mark);
    return plain;
}

void CollectCommands(HMENU menu, std::vector<Command>& commands)
{
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        if (const HMENU popup = ::GetSubMenu(menu, i); popup != nullptr)
            CollectCommands(popup, commands);
        else if (const int id = static_cast<int>(::GetMenuItemID(menu, i)); id > 0)
            commands.push_back({id, GetPlainText(menu, i)});
    }
}

void ShowCommands(HWND dialog, const KeysQuestion& question)
{
    const HWND list = ::GetDlgItem(dialog, IDC_COMMANDS);
    const LRESULT chosen = ::SendMessageW(list, LB_GETCURSEL, 0, 0);
    ::SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const Command& command : question.commands) {
        const CStringW keys(question.keys.GetKeyString(command.id, ", "));
        const WString row = command.name + TW('\t') + keys.GetString();
        ::SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row.c_str()));
    }
    ::SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
}

// Gives the chosen command the key in the field, in place of the ones it has; an empty field takes
// them away. The command that loses the key is told.
void Assign(HWND dialog, KeysQuestion& question)
{
    const LRESULT chosen = ::SendDlgItemMessageW(dialog, IDC_COMMANDS, LB_GETCURSEL, 0, 0);
    if (chosen < 0)
        return;
    const int id = question.commands[static_cast<std::size_t>(chosen)].id;
    const auto hotkey =
        static_cast<WORD>(::SendDlgItemMessageW(dialog, IDC_HOTKEY, HKM_GETHOTKEY, 0, 0));
    const int key = LOBYTE(hotkey);
    BYTE modifiers = 0;
    if ((HIBYTE(hotkey) & HOTKEYF_CONTROL) != 0)
        modifiers |= FCONTROL;
    if ((HIBYTE(hotkey) & HOTKEYF_SHIFT) != 0)
        modifiers |= FSHIFT;
    if ((HIBYTE(hotkey) & HOTKEYF_ALT) != 0)
        modifiers |= FALT;

    WString warning;
    const int taken = key == 0 ? 0 : question.keys.GetCmdID(modifiers, key);
    for (const Command& command : question.commands)
        if (command.id == taken && taken != id)
            warning = LoadText(IDS_KEY_TAKEN, command.name);
    ::SetDlgItemTextW(dialog, IDC_WARNING, warning.c_str());
    for (int i; (i = question.keys.GetNextIndex(-1, id, 0)) >= 0;)
        question.keys.GetData()[i].cmd = 0;
    if (key != 0)
        question.keys.SetCmdID(modifiers, key, id);
    ShowCommands(dialog, question);
}

INT_PTR CALLBACK KeysProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        ::SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
        constexpr int kTabStop = 150; // quarters of a character
        ::SendDlgItemMessageW(dialog, IDC_COMMANDS, LB_SETTABSTOPS, 1,
                              reinterpret_cast<LPARAM>(&kTabStop));
        ShowCommands(dialog, *reinterpret_cast<const KeysQuestion*>(lParam));
        ::SendDlgItemMessageW(dialog, IDC_COMMANDS, LB_SETCURSEL, 0, 0);
        return TRUE;
    }
    if (message != WM_COMMAND)
        return FALSE;
    auto& question = *reinterpret_cast<KeysQuestion*>(::GetWindowLongPtrW(dialog, GWLP_USERDATA));
    switch (LOWORD(wParam)) {
    case IDC_ASSIGN:
        Assign(dialog, question);
        return TRUE;
    case IDC_DEFAULTS:
        question.keys = *question.defaults;
        ShowCommands(dialog, question);
        return TRUE;
    case IDOK:
    case IDCANCEL:
        ::EndDialog(dialog, LOWORD(wParam));
        return TRUE;
    default:
        return FALSE;
    }
}

} // namespace

bool AskKeys(CWnd* owner, const CMenu& menu, const CAccelData& defaults, CAccelData& keys)
{
    KeysQuestion question = {{}, &defaults, keys};
    CollectCommands(menu.m_hMenu, question.commands);
    if (::DialogBoxParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_KEYS), owner->m_hWnd,
                          KeysProcedure, reinterpret_cast<LPARAM>(&question)) != IDOK)
        return false;
    keys = question.keys;
    return true;
}

} // namespace tlvn
