// CMenu: a menu bar or a popup menu.
//
// A menu that was created or attached is destroyed with its object, with its popups, unless a
// window or another menu took it over (Detach it then). Narrow texts are in the multibyte code
// page. Items are named by command, or by position with MF_BYPOSITION.

#pragma once

#include "framework/object.h"
#include "framework/string.h"
#include "framework/winapi.h"

class CWnd;

class TLVN_API CMenu : public CObject {
    DECLARE_DYNAMIC(CMenu)
public:
    CMenu() = default;
    ~CMenu() override;

    // The system's menu; null for none.
    HMENU m_hMenu = nullptr;

    // The handle; taking one over, and giving it back to the caller's care.
    HMENU GetSafeHmenu() const { return m_hMenu; }
    operator HMENU() const { return m_hMenu; }
    BOOL Attach(HMENU menu);
    HMENU Detach();
    // The object attached to the menu, or a temporary one (see handle_map.h).
    static CMenu* FromHandle(HMENU menu);

    // A menu bar, a popup menu, and the end of either; FALSE when the system refuses.
    BOOL CreateMenu();
    BOOL CreatePopupMenu();
    BOOL DestroyMenu();

    // With MF_POPUP, `id` is the handle of the popup menu.
    BOOL AppendMenu(UINT flags, UINT_PTR id = 0, LPCSTR text = nullptr);
    BOOL AppendMenu(UINT flags, UINT_PTR id, LPCWSTR text);
    BOOL InsertMenu(UINT position, UINT flags, UINT_PTR id = 0, LPCSTR text = nullptr);
    BOOL InsertMenu(UINT position, UINT flags, UINT_PTR id, LPCWSTR text);
    BOOL ModifyMenu(UINT position, UINT flags, UINT_PTR id = 0, LPCSTR text = nullptr);
    BOOL ModifyMenu(UINT position, UINT flags, UINT_PTR id, LPCWSTR text);
    BOOL DeleteMenu(UINT position, UINT flags) { return ::DeleteMenu(m_hMenu, position, flags); }
    BOOL RemoveMenu(UINT position, UINT flags) { return ::RemoveMenu(m_hMenu, position, flags); }

    // ~0u (as an int: -1) when the menu is none.
    UINT GetMenuItemCount() const { return static_cast<UINT>(::GetMenuItemCount(m_hMenu)); }
    // The command at a position; ~0u for a popup.
    UINT GetMenuItemID(int position) const { return ::GetMenuItemID(m_hMenu, position); }
    CMenu* GetSubMenu(int position) const;
    // Length of the text, 0 for no such item.
    int GetMenuString(UINT item, CStringA& text, UINT flags) const;
    int GetMenuString(UINT item, CStringW& text, UINT flags) const;
    // Replaces the text of an item and leaves its state and command as they are.
    BOOL SetMenuString(UINT item, LPCWSTR text, UINT flags);
    UINT GetMenuState(UINT item, UINT flags) const { return ::GetMenuState(m_hMenu, item, flags); }
    UINT CheckMenuItem(UINT item, UINT flags) { return ::CheckMenuItem(m_hMenu, item, flags); }
    UINT EnableMenuItem(UINT item, UINT flags)
    {
        return static_cast<UINT>(::EnableMenuItem(m_hMenu, item, flags));
    }

    // Shows the popup at a point of the screen; the chosen command goes to `owner` as
    // WM_COMMAND, or is the result with TPM_RETURNCMD (0 for none).
    BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, const RECT* rect = nullptr);
};
