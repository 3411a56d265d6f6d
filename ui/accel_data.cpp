#include "ui/accel_data.h"

#include "foundation/allocation.h"
#include "framework/resource.h"
#include "platform/multibyte.h"
#include "ui/key_name.h"

#include <algorithm>
#include <cstring>
#include <limits>

static_assert(sizeof(ACCEL) == 6);

namespace {

constexpr int kModifierFlags = FSHIFT | FCONTROL | FALT;
constexpr int kHiddenFlags = FVIRTKEY | FNOINVERT; // that a key has without saying so

struct Modifier {
    BYTE flag;
    const char* text;
    int length;
};
// In the order in which they are shown.
constexpr Modifier kModifiers[] = {
    {FCONTROL, "Ctrl+", 5}, {FSHIFT, "Shift+", 6}, {FALT, "Alt+", 4}};

bool IsWord(int value)
{
    return value >= 0 && value <= std::numeric_limits<WORD>::max();
}

tlvn::WString ItemText(HMENU menu, UINT position)
{
    const int length = ::GetMenuStringW(menu, position, nullptr, 0, MF_BYPOSITION);
    if (length <= 0)
        return {};
    tlvn::WString text(static_cast<std::size_t>(length) + 1, WCHAR(0));
    const int copied = ::GetMenuStringW(menu, position, text.data(), length + 1, MF_BYPOSITION);
    text.resize(static_cast<std::size_t>(std::max(copied, 0)));
    return text;
}

} // namespace

CAccelData::CAccelData(const CAccelData& other)
{
    *this = other;
}

CAccelData& CAccelData::operator=(const CAccelData& other)
{
    if (this == &other)
        return *this;
    SetSize(other.m_count);
    std::copy_n(other.m_entries, m_count, m_entries);
    return *this;
}

CAccelData::~CAccelData()
{
    tv_free(m_entries);
}

void CAccelData::InitOemVkName()
{
    tlvn::NamePunctuationKeys();
}

int CAccelData::GetVkCount()
{
    return tlvn::GetKeyNameCount();
}

const char* CAccelData::GetVkName(int row)
{
    return tlvn::GetKeyName(row);
}

int CAccelData::GetVkCode(int row)
{
    return tlvn::GetKeyCode(row);
}

void CAccelData::SetSize(int count)
{
    count = std::max(count, 0);
    if (count == m_count)
        return;
    if (count == 0) {
        tv_free(m_entries);
        m_entries = nullptr;
    } else {
        const auto size = static_cast<std::size_t>(count);
        if (size > std::numeric_limits<std::size_t>::max() / sizeof(ACCEL))
            AfxThrowMemoryException();
        m_entries = static_cast<ACCEL*>(tv_realloc(m_entries, size * sizeof(ACCEL)));
        if (count > m_count)
            std::fill(m_entries + m_count, m_entries + count, ACCEL{});
    }
    m_count = count;
}

void CAccelData::GetAccelData(HACCEL table)
{
    SetSize(table != nullptr ? ::CopyAcceleratorTableW(table, nullptr, 0) : 0);
    if (m_count > 0)
        SetSize(::CopyAcceleratorTableW(table, m_entries, m_count));
}

void CAccelData::LoadResourceAccelData(const char* name)
{
    HACCEL table = nullptr;
    if (IS_INTRESOURCE(name))
        table = tlvn::LoadAcceleratorResource(reinterpret_cast<LPCWSTR>(name));
    else
        table = tlvn::LoadAcceleratorResource(tlvn::ConvertText(std::string_view(name)).c_str());
    GetAccelData(table);
    if (table != nullptr)
        ::DestroyAcceleratorTable(table);
}

int CAccelData::GetKeyIndex(BYTE modifiers, int key) const
{
    for (int i = 0; i < m_count; ++i) {
        if ((m_entries[i].fVirt & kModifierFlags) == modifiers && m_entries[i].key == key)
            return i;
    }
    return -1;
}

int CAccelData::GetCmdID(BYTE modifiers, int key) const
{
    const int index = GetKeyIndex(modifiers, key);
    return index >= 0 ? m_entries[index].cmd : 0;
}

void CAccelData::SetCmdID(BYTE modifiers, int key, int cmd)
{
    if (!IsWord(key) || !IsWord(cmd))
        return;
    int index = GetKeyIndex(modifiers, key);
    if (index >= 0) {
        m_entries[index].cmd = static_cast<WORD>(cmd);
        return;
    }
    if (cmd < 1)
        return;
    index = 0;
    while (index < m_count && m_entries[index].cmd != 0)
        ++index;
    if (index == m_count)
        SetSize(m_count + 1);
    m_entries[index].fVirt = static_cast<BYTE>(modifiers | kHiddenFlags);
    m_entries[index].key = static_cast<WORD>(key);
    m_entries[index].cmd = static_cast<WORD>(cmd);
}

void CAccelData::GetKeyAt(int index, BYTE* modifiers, int* key) const
{
    if (!IsEntry(index))
        return;
    *modifiers = static_cast<BYTE>(m_entries[index].fVirt & ~kHiddenFlags);
    *key = m_entries[index].key;
}

int CAccelData::GetNextIndex(int from, int cmd, int wrap) const
{
    if (cmd < 1)
        return -1;
    const auto find = [&](int begin, int end) {
        for (int i = begin; i < end; ++i) {
            if (m_entries[i].cmd == cmd)
                return i;
        }
        return -1;
    };
    const int start = from < 0 ? 0 : from < m_count ? from + 1 : m_count;
    const int next = find(start, m_count);
    return next < 0 && wrap != 0 && from >= 0 ? find(0, start) : next;
}

const char* CAccelData::GetAccelTextAt(int index, char* buffer) const
{
    char* end = buffer;
    if (IsEntry(index)) {
        for (const Modifier& modifier : kModifiers) {
            if ((m_entries[index].fVirt & modifier.flag) != 0)
                end = std::copy_n(modifier.text, modifier.length, end);
        }
        const char* const name = tlvn::FindKeyName(m_entries[index].key);
        end = std::copy_n(name, std::strlen(name), end);
    }
    *end = '\0';
    return buffer;
}

void CAccelData::SetAccelTextAt(int index, const char* text)
{
    if (!IsEntry(index))
        return;
    if (text == nullptr)
        text = "";
    BYTE flags = kHiddenFlags;
    const auto starts = [&](const Modifier& modifier) {
        return tlvn::CompareAsciiNNoCase(text, modifier.text, modifier.length) == 0;
    };
    const Modifier* found = nullptr;
    while ((found = std::find_if(std::begin(kModifiers), std::end(kModifiers), starts)) !=
           std::end(kModifiers)) {
        flags = static_cast<BYTE>(flags | found->flag);
        text += found->length;
    }
    m_entries[index].fVirt = flags;
    m_entries[index].key = static_cast<WORD>(tlvn::FindKeyCode(text));
}

CStringA CAccelData::GetKeyString(int cmd, const char* separator) const
{
    CStringA text;
    if (cmd < 1)
        return text;
    for (int i = GetNextIndex(-1, cmd, 0), n = 0; i >= 0; i = GetNextIndex(i, cmd, 0), ++n) {
        char buffer[kTextSize];
        if (n > 0)
            text += separator;
        text += GetAccelTextAt(i, buffer);
    }
    return text;
}

void CAccelData::UpdateMenuTexts(HMENU menu) const
{
    const int count = ::GetMenuItemCount(menu);
    for (int i = 0; i < count; ++i) {
        const auto position = static_cast<UINT>(i);
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_FTYPE | MIIM_ID | MIIM_SUBMENU;
        if (!::GetMenuItemInfoW(menu, position, TRUE, &info))
            continue;
        if (info.hSubMenu != nullptr) {
            UpdateMenuTexts(info.hSubMenu);
            continue;
        }
        if ((info.fType & (MF_SEPARATOR | MF_BITMAP | MF_OWNERDRAW)) != 0)
            continue;
        const tlvn::WString old = ItemText(menu, position);
        tlvn::WString text = old.substr(0, old.find(WCHAR('\t')));
        const CStringA keys = IsWord(static_cast<int>(info.wID))
                                  ? GetKeyString(static_cast<int>(info.wID), ", ")
                                  : CStringA();
        if (!keys.IsEmpty())
            text += WCHAR('\t') + tlvn::ConvertText(std::string_view(keys.GetString()));
        if (text == old)
            continue;
        // Only the text: what is checked, grayed or the default stays so.
        info.fMask = MIIM_STRING;
        info.dwTypeData = text.data();
        ::SetMenuItemInfoW(menu, position, TRUE, &info);
    }
}

void CAccelData::UpdateMenuString(CMenu* menu) const
{
    if (menu != nullptr && ::IsMenu(menu->m_hMenu))
        tlvn::GuardMemory([&] { UpdateMenuTexts(menu->m_hMenu); });
}

void CAccelData::UpdateMenuString(CWnd* window) const
{
    // What stands for the menu of a child window is its control number.
    if (window == nullptr || window->m_hWnd == nullptr || (window->GetStyle() & WS_CHILD) != 0)
        return;
    if (CMenu* const bar = window->GetMenu(); bar != nullptr) {
        UpdateMenuString(bar);
        window->DrawMenuBar();
    }
}
