#include "editor/quote_table.h"

#include "framework/guard_memory.h"
#include "platform/multibyte.h"
#include "platform/types.h"

#include <cstring>

namespace tlvn {

namespace {

std::string_view WithoutLastUnit(std::string_view text)
{
    text.remove_suffix(text.size() % 2 != 0 ? 1 : 2);
    return text;
}

bool EndsInSurrogatePair(std::string_view text)
{
    if (text.size() < 4 || text.size() % 2 != 0)
        return false;
    WCHAR units[2];
    std::memcpy(units, text.data() + text.size() - sizeof units, sizeof units);
    return (units[0] & 0xFC00) == 0xD800 && (units[1] & 0xFC00) == 0xDC00;
}

std::string_view WithoutLastCharacter(std::string_view text, CodeType codeType)
{
    if (IsCodeTypeUnicode(codeType) != 0) {
        const std::string_view rest = WithoutLastUnit(text);
        return EndsInSurrogatePair(text) ? WithoutLastUnit(rest) : rest;
    }
    const char* const end = text.data() + text.size();
    const char* last = text.data();
    for (const char* p = last; p < end; p += CharLength(p, end))
        last = p;
    return text.substr(0, static_cast<std::size_t>(last - text.data()));
}

} // namespace

int QuoteTable::Enter(const char* prefix, int length, CodeType codeType)
{
    if (prefix == nullptr || length <= 0)
        return kNone;
    const std::string_view text(prefix, static_cast<std::size_t>(length));
    if (m_lastEntry != kNone && text == m_lastPrefix)
        return m_lastEntry;
    return GuardMemory([&] {
        const auto found = m_nodes.find(text);
        const int known = found != m_nodes.end() ? found->second.entry : int{kNone};
        const int entry = known != kNone ? known : Add(text, codeType);
        m_lastEntry = kNone;
        m_lastPrefix = text;
        return m_lastEntry = entry;
    });
}

int QuoteTable::Add(std::string_view prefix, CodeType codeType)
{
    const int entry = GetCount();

    // Nodes stay where they are when others are made.
    Node& node = MakeNode(prefix);
    unsigned taken = node.childLevels;
    const std::string_view parentPrefix = WithoutLastCharacter(prefix, codeType);
    Node* const parent = parentPrefix.empty() ? nullptr : &MakeNode(parentPrefix);
    if (parent != nullptr && parent->entry != kNone)
        taken |= 1U << GetLevel(parent->entry);

    int level = entry % kLevels;
    for (int i = 0; i < kLevels; ++i) {
        const int candidate = (entry + i) % kLevels;
        if ((taken >> candidate & 1U) == 0) {
            level = candidate;
            break;
        }
    }
    m_levels.push_back(static_cast<signed char>(level));
    node.entry = entry;
    if (parent != nullptr)
        parent->childLevels |= 1U << level;
    return entry;
}

QuoteTable::Node& QuoteTable::MakeNode(std::string_view prefix)
{
    const auto found = m_nodes.find(prefix);
    return found != m_nodes.end() ? found->second : m_nodes[std::string(prefix)];
}

int QuoteTable::GetLevel(int entry) const
{
    if (entry < 0 || entry >= GetCount())
        return kNone;
    return m_levels[static_cast<std::size_t>(entry)];
}

void QuoteTable::Clear()
{
    m_nodes.clear();
    m_levels.clear();
    m_lastPrefix.clear();
    m_lastEntry = kNone;
}

} // namespace tlvn
