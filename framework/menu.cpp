#include "framework/menu.h"

#include "framework/handle_map.h"
#include "framework/temporary_objects.h"
#include "framework/wnd.h"
#include "platform/nls.h"

IMPLEMENT_DYNAMIC(CMenu, CObject)

namespace {

using MenuMap = tlvn::HandleMap<CMenu, HMENU>;

MenuMap& Menus()
{
    static MenuMap* const map = new MenuMap;
    return *map;
}

class ReferenceMenu : public CMenu {
public:
    explicit ReferenceMenu(HMENU menu) { m_hMenu = menu; }
    ~ReferenceMenu() override { m_hMenu = nullptr; }
    ReferenceMenu(const ReferenceMenu&) = delete;
    ReferenceMenu& operator=(const ReferenceMenu&) = delete;
};

// The narrow text widened; `text` may be null.
class WideItem {
public:
    explicit WideItem(LPCSTR text) : m_isNull(text == nullptr)
    {
        if (!m_isNull)
            m_text = tlvn::WidenText(text);
    }
    LPCWSTR Get() const { return m_isNull ? nullptr : m_text.c_str(); }

private:
    bool m_isNull;
    tlvn::WString m_text;
};

} // namespace

namespace tlvn {

void ForgetTemporaryMenus()
{
    Menus().ForgetAll();
}

} // namespace tlvn

CMenu::~CMenu()
{
    DestroyMenu();
}

BOOL CMenu::Attach(HMENU menu)
{
    if (m_hMenu != nullptr || menu == nullptr)
        return FALSE;
    m_hMenu = menu;
    Menus().Add(menu, this);
    return TRUE;
}

HMENU CMenu::Detach()
{
    const HMENU menu = m_hMenu;
    if (menu != nullptr)
        Menus().Remove(menu, this);
    m_hMenu = nullptr;
    return menu;
}

CMenu* CMenu::FromHandle(HMENU menu)
{
    if (menu == nullptr)
        return nullptr;
    return Menus().FindOrMake(menu, [&] { return new ReferenceMenu(menu); });
}

BOOL CMenu::CreateMenu()
{
    return Attach(::CreateMenu());
}

BOOL CMenu::CreatePopupMenu()
{
    return Attach(::CreatePopupMenu());
}

BOOL CMenu::DestroyMenu()
{
    const HMENU menu = Detach();
    return menu != nullptr && ::DestroyMenu(menu);
}

BOOL CMenu::AppendMenu(UINT flags, UINT_PTR id, LPCSTR text)
{
    return ::AppendMenuW(m_hMenu, flags, id, WideItem(text).Get());
}

BOOL CMenu::AppendMenu(UINT flags, UINT_PTR id, LPCWSTR text)
{
    return ::AppendMenuW(m_hMenu, flags, id, text);
}

BOOL CMenu::InsertMenu(UINT position, UINT flags, UINT_PTR id, LPCSTR text)
{
    return ::InsertMenuW(m_hMenu, position, flags, id, WideItem(text).Get());
}

BOOL CMenu::InsertMenu(UINT position, UINT flags, UINT_PTR id, LPCWSTR text)
{
    return ::InsertMenuW(m_hMenu, position, flags, id, text);
}

BOOL CMenu::ModifyMenu(UINT position, UINT flags, UINT_PTR id, LPCSTR text)
{
    return ::ModifyMenuW(m_hMenu, position, flags, id, WideItem(text).Get());
}

BOOL CMenu::ModifyMenu(UINT position, UINT flags, UINT_PTR id, LPCWSTR text)
{
    return ::ModifyMenuW(m_hMenu, position, flags, id, text);
}

CMenu* CMenu::GetSubMenu(int position) const
{
    return FromHandle(::GetSubMenu(m_hMenu, position));
}

int CMenu::GetMenuString(UINT item, CStringW& text, UINT flags) const
{
    const int length = ::GetMenuStringW(m_hMenu, item, nullptr, 0, flags);
    text.Empty();
    if (length <= 0)
        return 0;
    const int copied =
        ::GetMenuStringW(m_hMenu, item, text.GetBuffer(length + 1), length + 1, flags);
    text.ReleaseBuffer(copied);
    return copied;
}

int CMenu::GetMenuString(UINT item, CStringA& text, UINT flags) const
{
    CStringW wide;
    GetMenuString(item, wide, flags);
    text = CStringA(wide);
    return text.GetLength();
}

BOOL CMenu::SetMenuString(UINT item, LPCWSTR text, UINT flags)
{
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING;
    info.dwTypeData = const_cast<LPWSTR>(text);
    return ::SetMenuItemInfoW(m_hMenu, item, (flags & MF_BYPOSITION) != 0, &info);
}

BOOL CMenu::TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, const RECT* rect)
{
    return ::TrackPopupMenu(m_hMenu, flags, x, y, 0, owner->GetSafeHwnd(), rect);
}
