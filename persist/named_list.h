// An ordered list of objects that are found by name.
//
// The list owns its items and keeps them in the order in which they were appended. Beside the
// array stands a hash table of the names, with open addressing and linear probing: a slot holds
// the hash of a name and its item, the table is at most half full. No two items have the same
// name without regard to case.
//
// Item has GetName(), the name as a CString. What counts as the same name depends on the
// multibyte code page; the table remembers the page it was made for and is made anew when that
// has changed.

#pragma once

#include "persist/text_view.h"
#include "platform/multibyte.h"

#include <cstring>
#include <memory>
#include <vector>

namespace tlvn {

// The hash of a name in ASCII, eight bytes at a time; bit 5, which tells capitals from small
// letters, counts in no byte. False when there is another character in it.
inline bool HashAsciiName(std::string_view name, unsigned& hash) noexcept
{
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
    constexpr std::uint64_t kCaseBits = 0x2020202020202020;
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    std::uint64_t sum = name.size();
    const char* p = name.data();
    for (std::size_t left = name.size(); left > 0;) {
        const std::size_t count = left < 8 ? left : 8;
        std::uint64_t bytes = 0;
        if (count == 8)
            std::memcpy(&bytes, p, 8);
        else
            for (std::size_t i = 0; i < count; ++i)
                bytes = bytes << 8 | static_cast<BYTE>(p[i]);
        if ((bytes & kHighBits) != 0)
            return false;
        sum = (sum ^ (bytes | kCaseBits)) * kFactor;
        sum ^= sum >> 32;
        p += count;
        left -= count;
    }
    hash = static_cast<unsigned>(sum);
    return true;
}

// The same for names that differ only in case, in the code page in force.
inline unsigned HashName(std::string_view name) noexcept
{
    unsigned ascii;
    if (HashAsciiName(name, ascii))
        return ascii;
    constexpr unsigned kFactor = 0x01000193;
    unsigned hash = 0x811C9DC5;
    const char* const end = name.data() + name.size();
    for (const char* p = name.data(); p < end; ++p) {
        if (IsDoubleByte(p, end)) {
            const unsigned c = static_cast<BYTE>(p[0]) * 256u + static_cast<BYTE>(p[1]);
            hash = (hash ^ ToLowerMbc(c)) * kFactor;
            ++p;
        } else {
            hash = (hash ^ static_cast<BYTE>(ToLowerAscii(*p))) * kFactor;
        }
    }
    return hash ^ hash >> 15;
}

inline bool IsSameName(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && (a == b || CompareViewsNoCase(a, b) == 0);
}

// True when `name` begins with the characters of `prefix`, without regard to case.
inline bool NameBeginsWith(std::string_view name, std::string_view prefix)
{
    if (name.size() < prefix.size())
        return false;
    const char* const begin = name.data();
    const char* const cut = begin + prefix.size();
    const char* const end = begin + name.size();
    if (cut > begin && cut < end && IsInsideCharacter(begin, cut, end))
        return false;
    return IsSameName(name.substr(0, prefix.size()), prefix);
}

template <class Item>
class NamedList {
public:
    using Array = CTypedPtrArray<CPtrArray, Item*>;

    NamedList() = default;
    ~NamedList() { RemoveAll(); }
    NamedList(const NamedList&) = delete;
    NamedList& operator=(const NamedList&) = delete;

    const Array& GetItems() const { return m_items; }
    Array& GetItems() { return m_items; } // to be looked at only
    int GetSize() const { return m_items.GetSize(); }
    Item* GetAt(int index) const { return m_items[index]; }

    // The item of that name, or null.
    Item* Find(std::string_view name) const { return Find(name, HashName(name)); }
    Item* Find(std::string_view name, unsigned hash) const
    {
        if (m_items.IsEmpty())
            return nullptr;
        if (m_page != GetMultibytePage())
            Rehash(m_slots.size());
        for (std::size_t i = hash; m_slots[i & Mask()].item != nullptr; ++i) {
            const Slot& slot = m_slots[i & Mask()];
            if (slot.hash == hash && IsSameName(ViewOf(slot.item->GetName()), name))
                return slot.item;
        }
        return nullptr;
    }

    // Takes the item, whose name is not in the list yet, and puts it at the end. `hash` is that
    // of its name.
    Item* Append(std::unique_ptr<Item> item, unsigned hash)
    {
        const std::size_t size = static_cast<std::size_t>(GetSize()) + 1;
        if (m_page != GetMultibytePage() || m_slots.size() < size * 2)
            Rehash(m_slots.size() < size * 2 ? size * 4 : m_slots.size());
        m_items.Add(item.get());
        Enter({hash, item.get()});
        return item.release();
    }

    // The position of an item of the list.
    int IndexOf(const Item* item) const
    {
        int index = 0;
        while (m_items[index] != item)
            ++index;
        return index;
    }

    void RemoveAt(int index)
    {
        const std::unique_ptr<Item> item(m_items[index]);
        m_items.RemoveAt(index);
        Forget(item.get());
    }
    // Removes the items for which `matches` is true; returns how many.
    template <class Predicate>
    int RemoveIf(const Predicate& matches)
    {
        int kept = 0;
        const int size = GetSize();
        for (int i = 0; i < size; ++i) {
            Item* const item = m_items[i];
            if (!matches(*item)) {
                m_items[kept++] = item;
                continue;
            }
            Forget(item);
            delete item;
        }
        if (kept < size)
            m_items.SetSize(kept);
        return size - kept;
    }
    void RemoveAll()
    {
        for (int i = 0; i < GetSize(); ++i)
            delete m_items[i];
        m_items.RemoveAll();
        m_slots.clear();
    }

    // Moves an item to another position; those between move up or down.
    void Move(int from, int to)
    {
        Item* const item = m_items[from];
        for (; from < to; ++from)
            m_items[from] = m_items[from + 1];
        for (; from > to; --from)
            m_items[from] = m_items[from - 1];
        m_items[to] = item;
    }

    // Gives the items away, in order.
    std::vector<std::unique_ptr<Item>> TakeAll()
    {
        std::vector<std::unique_ptr<Item>> items = GuardMemory([&] {
            return std::vector<std::unique_ptr<Item>>(static_cast<std::size_t>(m_items.GetSize()));
        });
        for (std::size_t i = 0; i < items.size(); ++i)
            items[i].reset(m_items[static_cast<int>(i)]);
        m_items.RemoveAll();
        m_slots.clear();
        return items;
    }

private:
    struct Slot {
        unsigned hash = 0;
        Item* item = nullptr;
    };

    std::size_t Mask() const { return m_slots.size() - 1; }

    // Makes the table anew, with at least so many slots.
    void Rehash(std::size_t least) const
    {
        std::size_t size = 16;
        while (size < least)
            size *= 2;
        const bool samePage = m_page == GetMultibytePage();
        std::vector<Slot> old = GuardMemory([&] { return std::vector<Slot>(size); });
        old.swap(m_slots);
        m_page = GetMultibytePage();
        for (const Slot& slot : old)
            if (slot.item != nullptr)
                Enter({samePage ? slot.hash : HashName(ViewOf(slot.item->GetName())), slot.item});
    }

    void Enter(Slot slot) const
    {
        std::size_t i = slot.hash;
        while (m_slots[i & Mask()].item != nullptr)
            ++i;
        m_slots[i & Mask()] = slot;
    }

    // Takes an item out of the table and closes the gap, so that every item can still be reached
    // from the slot of its hash.
    void Forget(const Item* item)
    {
        if (m_page != GetMultibytePage())
            Rehash(m_slots.size());
        std::size_t gap = HashName(ViewOf(item->GetName())) & Mask();
        while (m_slots[gap].item != item)
            gap = (gap + 1) & Mask();
        for (std::size_t i = (gap + 1) & Mask(); m_slots[i].item != nullptr; i = (i + 1) & Mask()) {
            const std::size_t fromHome = (i - m_slots[i].hash) & Mask();
            if (fromHome >= ((i - gap) & Mask())) {
                m_slots[gap] = m_slots[i];
                gap = i;
            }
        }
        m_slots[gap] = {};
    }

    Array m_items;
    mutable std::vector<Slot> m_slots; // a power of two of them, or none
    mutable UINT m_page = 0;           // the code page m_slots was made for
};

} // namespace tlvn
