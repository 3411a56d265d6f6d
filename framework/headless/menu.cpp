// Menus and accelerator tables.

#include "framework/headless/desktop.h"

namespace tlvn::headless {
namespace {

struct ItemPlace {
    Menu* menu = nullptr;
    std::size_t index = 0;

    MenuItem* Item() const
    {
        return menu != nullptr && index < menu->items.size() ? &menu->items[index] : nullptr;
    }
};

// The item by position, or by command in the menu and its popups.
ItemPlace Find(HMENU handle, UINT item, bool byPosition)
{
    Menu* const menu = Desk().menus.Find(handle);
    if (menu == nullptr)
        return {};
    if (byPosition)
        return {menu, item};
    for (std::size_t i = 0; i < menu->items.size(); ++i) {
        const MenuItem& candidate = menu->items[i];
        if (candidate.popup == nullptr && candidate.id == item)
            return {menu, i};
        if (candidate.popup != nullptr) {
            if (const ItemPlace inner = Find(candidate.popup, item, false); inner.menu != nullptr)
                return inner;
        }
    }
    return {};
}

MenuItem MakeItem(UINT flags, UINT_PTR id, LPCWSTR text)
{
    MenuItem item;
    item.type = flags & (MF_SEPARATOR | MF_OWNERDRAW | MF_BITMAP | MF_MENUBREAK);
    item.state = flags & (MF_GRAYED | MF_DISABLED | MF_CHECKED | MF_DEFAULT);
    if ((flags & MF_POPUP) != 0)
        item.popup = reinterpret_cast<HMENU>(id);
    else
        item.id = static_cast<UINT>(id);
    if (text != nullptr && (flags & (MF_SEPARATOR | MF_OWNERDRAW | MF_BITMAP)) == 0)
        item.text = text;
    return item;
}

BOOL RemoveItem(HMENU handle, UINT position, UINT flags, bool destroyPopup)
{
    const ItemPlace place = Find(handle, position, (flags & MF_BYPOSITION) != 0);
    const MenuItem* const item = place.Item();
    if (item == nullptr)
        return FALSE;
    const HMENU popup = item->popup;
    place.menu->items.erase(place.menu->items.begin() + static_cast<std::ptrdiff_t>(place.index));
    if (destroyPopup && popup != nullptr)
        DestroyMenu(popup);
    return TRUE;
}

int CopyText(const WString& text, LPWSTR out, UINT capacity)
{
    if (out == nullptr || capacity == 0)
        return static_cast<int>(text.size());
    const std::size_t length = std::min<std::size_t>(text.size(), capacity - 1);
    text.copy(out, length);
    out[length] = 0;
    return static_cast<int>(length);
}

// An item that cannot be chosen, itself or through the popups above it, takes no accelerator.
bool IsCommandDisabled(HMENU menu, UINT command)
{
    const MenuItem* const item = Find(menu, command, false).Item();
    return item != nullptr && (item->state & (MF_GRAYED | MF_DISABLED)) != 0;
}

} // namespace
} // namespace tlvn::headless

using namespace tlvn::headless;

HMENU CreateMenu()
{
    return Desk().menus.Add(std::make_unique<Menu>());
}

HMENU CreatePopupMenu()
{
    return CreateMenu();
}

BOOL DestroyMenu(HMENU handle)
{
    const std::unique_ptr<Menu> menu = Desk().menus.Remove(handle);
    if (menu == nullptr)
        return FALSE;
    for (const MenuItem& item : menu->items) {
        if (item.popup != nullptr)
            DestroyMenu(item.popup);
    }
    return TRUE;
}

BOOL IsMenu(HMENU handle)
{
    return Desk().menus.Find(handle) != nullptr;
}

BOOL AppendMenuW(HMENU handle, UINT flags, UINT_PTR id, LPCWSTR text)
{
    Menu* const menu = Desk().menus.Find(handle);
    if (menu == nullptr)
        return FALSE;
    menu->items.push_back(MakeItem(flags, id, text));
    return TRUE;
}

BOOL InsertMenuW(HMENU handle, UINT position, UINT flags, UINT_PTR id, LPCWSTR text)
{
    ItemPlace place = Find(handle, position, (flags & MF_BYPOSITION) != 0);
    if (place.Item() == nullptr)
        return AppendMenuW(handle, flags & ~MF_BYPOSITION, id, text);
    place.menu->items.insert(place.menu->items.begin() + static_cast<std::ptrdiff_t>(place.index),
                             MakeItem(flags & ~MF_BYPOSITION, id, text));
    return TRUE;
}

BOOL ModifyMenuW(HMENU handle, UINT position, UINT flags, UINT_PTR id, LPCWSTR text)
{
    MenuItem* const item = Find(handle, position, (flags & MF_BYPOSITION) != 0).Item();
    if (item == nullptr)
        return FALSE;
    const HMENU popup = item->popup;
    *item = MakeItem(flags & ~MF_BYPOSITION, id, text);
    if (popup != nullptr && popup != item->popup)
        DestroyMenu(popup);
    return TRUE;
}

BOOL DeleteMenu(HMENU handle, UINT position, UINT flags)
{
    return RemoveItem(handle, position, flags, true);
}

BOOL RemoveMenu(HMENU handle, UINT position, UINT flags)
{
    return RemoveItem(handle, position, flags, false);
}

int GetMenuItemCount(HMENU handle)
{
    const Menu* const menu = Desk().menus.Find(handle);
    return menu != nullptr ? static_cast<int>(menu->items.size()) : -1;
}

UINT GetMenuItemID(HMENU handle, int position)
{
    const MenuItem* const item = Find(handle, static_cast<UINT>(position), true).Item();
    return item == nullptr || item->popup != nullptr ? ~0u : item->id;
}

HMENU GetSubMenu(HMENU handle, int position)
{
    const MenuItem* const item = Find(handle, static_cast<UINT>(position), true).Item();
    return item != nullptr ? item->popup : nullptr;
}

int GetMenuStringW(HMENU handle, UINT id, LPWSTR text, int capacity, UINT flags)
{
    if (text != nullptr && capacity > 0)
        text[0] = 0;
    const MenuItem* const item = Find(handle, id, (flags & MF_BYPOSITION) != 0).Item();
    return item != nullptr ? CopyText(item->text, text, static_cast<UINT>(std::max(capacity, 0)))
                           : 0;
}

UINT GetMenuState(HMENU handle, UINT id, UINT flags)
{
    const MenuItem* const item = Find(handle, id, (flags & MF_BYPOSITION) != 0).Item();
    if (item == nullptr)
        return ~0u;
    if (item->popup == nullptr)
        return item->type | item->state;
    const UINT count = static_cast<UINT>(std::max(GetMenuItemCount(item->popup), 0));
    return (count & 0xFF) << 8 | ((item->type | item->state | MF_POPUP) & 0xFF);
}

DWORD CheckMenuItem(HMENU handle, UINT id, UINT flags)
{
    MenuItem* const item = Find(handle, id, (flags & MF_BYPOSITION) != 0).Item();
    if (item == nullptr)
        return ~0u;
    const UINT previous = item->state & MF_CHECKED;
    item->state = (item->state & ~MF_CHECKED) | (flags & MF_CHECKED);
    return previous;
}

BOOL EnableMenuItem(HMENU handle, UINT id, UINT flags)
{
    MenuItem* const item = Find(handle, id, (flags & MF_BYPOSITION) != 0).Item();
    if (item == nullptr)
        return -1;
    constexpr UINT kMask = MF_GRAYED | MF_DISABLED;
    const UINT previous = item->state & kMask;
    item->state = (item->state & ~kMask) | (flags & kMask);
    return static_cast<BOOL>(previous);
}

BOOL GetMenuItemInfoW(HMENU handle, UINT id, BOOL byPosition, MENUITEMINFOW* info)
{
    const MenuItem* const item = Find(handle, id, byPosition != 0).Item();
    if (item == nullptr)
        return FALSE;
    if ((info->fMask & (MIIM_TYPE | MIIM_FTYPE)) != 0)
        info->fType = item->type;
    if ((info->fMask & MIIM_STATE) != 0)
        info->fState = item->state;
    if ((info->fMask & MIIM_ID) != 0)
        info->wID = item->id;
    if ((info->fMask & MIIM_SUBMENU) != 0)
        info->hSubMenu = item->popup;
    if ((info->fMask & MIIM_DATA) != 0)
        info->dwItemData = item->data;
    if ((info->fMask & (MIIM_TYPE | MIIM_STRING)) != 0)
        info->cch = static_cast<UINT>(CopyText(item->text, info->dwTypeData, info->cch));
    return TRUE;
}

BOOL SetMenuItemInfoW(HMENU handle, UINT id, BOOL byPosition, const MENUITEMINFOW* info)
{
    MenuItem* const item = Find(handle, id, byPosition != 0).Item();
    if (item == nullptr)
        return FALSE;
    if ((info->fMask & (MIIM_TYPE | MIIM_FTYPE)) != 0)
        item->type = info->fType;
    if ((info->fMask & MIIM_STATE) != 0)
        item->state = info->fState;
    if ((info->fMask & MIIM_ID) != 0)
        item->id = info->wID;
    if ((info->fMask & MIIM_SUBMENU) != 0)
        item->popup = info->hSubMenu;
    if ((info->fMask & MIIM_DATA) != 0)
        item->data = info->dwItemData;
    if ((info->fMask & (MIIM_TYPE | MIIM_STRING)) != 0 && info->dwTypeData != nullptr)
        item->text = info->dwTypeData;
    return TRUE;
}

BOOL TrackPopupMenu(HMENU handle, UINT flags, int, int, int, HWND owner, const RECT*)
{
    Desktop& desk = Desk();
    if (!IsMenu(handle) || !IsWindow(owner))
        return FALSE;
    desk.shownMenu = handle;
    if ((flags & TPM_NONOTIFY) == 0) {
        SendMessageW(owner, WM_INITMENU, reinterpret_cast<WPARAM>(handle), 0);
        SendMessageW(owner, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(handle), 0);
    }
    const UINT command = desk.menuAnswer;
    if ((flags & TPM_RETURNCMD) != 0)
        return static_cast<BOOL>(command);
    if (command != 0 && IsWindow(owner))
        PostMessageW(owner, WM_COMMAND, command, 0);
    return TRUE;
}

HMENU GetMenu(HWND handle)
{
    const Window* const window = FindWindowOf(handle);
    return window != nullptr ? window->menu : nullptr;
}

BOOL SetMenu(HWND handle, HMENU menu)
{
    Window* const window = FindWindowOf(handle);
    if (window == nullptr || window->IsChildWindow() || (menu != nullptr && !IsMenu(menu)))
        return FALSE;
    window->menu = menu;
    FrameChanged(handle);
    return TRUE;
}

BOOL DrawMenuBar(HWND handle)
{
    return IsWindow(handle);
}

HACCEL CreateAcceleratorTableW(LPACCEL entries, int count)
{
    if (entries == nullptr || count < 1)
        return nullptr;
    auto table = std::make_unique<AcceleratorTable>();
    table->entries.assign(entries, entries + count);
    return Desk().accelerators.Add(std::move(table));
}

int CopyAcceleratorTableW(HACCEL handle, LPACCEL entries, int capacity)
{
    const AcceleratorTable* const table = Desk().accelerators.Find(handle);
    if (table == nullptr)
        return 0;
    const int count = static_cast<int>(table->entries.size());
    if (entries == nullptr)
        return count;
    const int copied = std::clamp(capacity, 0, count);
    std::copy_n(table->entries.begin(), copied, entries);
    return copied;
}

BOOL DestroyAcceleratorTable(HACCEL handle)
{
    return Desk().accelerators.Remove(handle) != nullptr;
}

HACCEL LoadAcceleratorsW(HINSTANCE, LPCWSTR name)
{
    if (IS_INTRESOURCE(name))
        return nullptr;
    auto& resources = Desk().acceleratorResources;
    const auto found = resources.find(name);
    if (found == resources.end())
        return nullptr;
    return CreateAcceleratorTableW(found->second.data(), static_cast<int>(found->second.size()));
}

int TranslateAcceleratorW(HWND handle, HACCEL accelerators, LPMSG message)
{
    const AcceleratorTable* const table = Desk().accelerators.Find(accelerators);
    const bool isKey = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
    const bool isChar = message->message == WM_CHAR || message->message == WM_SYSCHAR;
    if (table == nullptr || (!isKey && !isChar))
        return 0;
    const bool alt = message->message == WM_SYSCHAR || GetKeyState(VK_MENU) < 0;
    const unsigned modifiers = (GetKeyState(VK_SHIFT) < 0 ? FSHIFT : 0u) |
                               (GetKeyState(VK_CONTROL) < 0 ? FCONTROL : 0u) | (alt ? FALT : 0u);
    for (const ACCEL& entry : table->entries) {
        if (entry.key != message->wParam)
            continue;
        const bool virtualKey = (entry.fVirt & FVIRTKEY) != 0;
        const unsigned wanted = entry.fVirt & (FSHIFT | FCONTROL | FALT);
        const bool hit = virtualKey ? isKey && wanted == modifiers
                                    : isChar && (wanted & FALT) == (modifiers & FALT);
        if (!hit)
            continue;
        if (IsWindowEnabled(handle) && !IsCommandDisabled(GetMenu(handle), entry.cmd))
            SendMessageW(handle, WM_COMMAND, MAKEWPARAM(entry.cmd, 1), 0);
        return 1;
    }
    return 0;
}
