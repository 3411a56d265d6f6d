#include "viewer/short_text_pool.h"

#include <functional>

namespace tlvn {

namespace {

constexpr std::size_t kFirstTable = 256;

std::size_t Hash(std::string_view text)
{
    return std::hash<std::string_view>()(text);
}

} // namespace

ShortTextPool::ShortTextPool() : m_starts{0}, m_table(kFirstTable) {}

ShortTextPool::Id ShortTextPool::Add(std::string_view text)
{
    if (text.size() > kMaxBytes - m_bytes.size())
        text = {};
    const Id id = GetCount();
    m_bytes += text;
    m_starts.push_back(static_cast<std::uint32_t>(m_bytes.size()));
    return id;
}

ShortTextPool::Id ShortTextPool::Pool(std::string_view text)
{
    if (m_pooled * 2 >= m_table.size())
        Grow();
    const std::size_t mask = m_table.size() - 1;
    std::size_t place = Hash(text) & mask;
    for (; m_table[place] != 0; place = (place + 1) & mask) {
        if (Get(m_table[place] - 1) == text)
            return m_table[place] - 1;
    }
    const Id id = Add(text);
    m_table[place] = id + 1;
    ++m_pooled;
    return id;
}

std::string_view ShortTextPool::Get(Id id) const
{
    return std::string_view(m_bytes).substr(m_starts[id], m_starts[id + 1] - m_starts[id]);
}

void ShortTextPool::Clear()
{
    *this = ShortTextPool();
}

std::size_t ShortTextPool::GetMemoryBytes() const
{
    return m_bytes.capacity() + m_starts.capacity() * sizeof(m_starts[0]) +
           m_table.capacity() * sizeof(m_table[0]);
}

void ShortTextPool::Grow()
{
    const std::vector<Id> old = std::move(m_table);
    m_table.assign(old.size() * 2, 0);
    const std::size_t mask = m_table.size() - 1;
    for (const Id entry : old) {
        if (entry == 0)
            continue;
        std::size_t place = Hash(Get(entry - 1)) & mask;
        while (m_table[place] != 0)
            place = (place + 1) & mask;
        m_table[place] = entry;
    }
}

} // namespace tlvn
