#include "editor/line_data.h"

#include "foundation/allocation.h"
#include "foundation/multibyte.h"
#include "framework/guard_memory.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cstring>

namespace {

// Stands for the links of all lines that have none.
const std::vector<CEditorLineRange> g_noLinks;

// Capacity of an array of rows.
std::size_t RowCapacity(std::size_t count)
{
    return std::bit_ceil(count);
}

} // namespace

CLLineData::~CLLineData()
{
    ForgetLinks();
    FreeRows();
    if (m_capacity > 0)
        tv_free(m_text);
}

int CLLineData::FindPhysical(int byte) const
{
    const auto rows = GetPhysicalLines();
    const auto behind =
        std::upper_bound(rows.begin() + 1, rows.end(), byte,
                         [](int b, const tlvn::PhysicalLine& row) { return b < row.start; });
    return static_cast<int>(behind - rows.begin()) - 1;
}

const std::vector<CEditorLineRange>& CLLineData::GetLinks(CodeType codeType) const
{
    if (m_links == nullptr) {
        tlvn::GuardMemory([&] {
            const CApplyLocale locale(codeType);
            Links links;
            tlvn::FindLinks(GetText(), m_length, codeType, links);
            m_links = links.empty() ? &g_noLinks : new Links(links);
        });
    }
    return *m_links;
}

void CLLineData::ForgetLinks() const
{
    if (m_links != &g_noLinks)
        delete m_links;
    m_links = nullptr;
}

void CLLineData::Replace(int at, int removed, const char* text, int length)
{
    const INT64 newLength = INT64{m_length} - removed + length;
    if (newLength > INT_MAX)
        AfxThrowMemoryException();
    const char* const oldTail = m_text + at + removed;
    const auto tail = static_cast<std::size_t>(m_length - at - removed);
    if (newLength > m_capacity) {
        // Room for some typing; for long lines an eighth, so that typing on is linear.
        const INT64 capacity = std::min<INT64>((newLength + newLength / 8 + 15) / 16 * 16, INT_MAX);
        auto* const block = static_cast<char*>(tv_malloc(static_cast<std::size_t>(capacity)));
        if (at > 0)
            std::memcpy(block, m_text, static_cast<std::size_t>(at));
        if (tail > 0)
            std::memcpy(block + at + length, oldTail, tail);
        if (m_capacity > 0)
            tv_free(m_text);
        m_text = block;
        m_capacity = static_cast<int>(capacity);
    } else if (tail > 0) {
        std::memmove(m_text + at + length, oldTail, tail);
    }
    if (length > 0)
        std::memcpy(m_text + at, text, static_cast<std::size_t>(length));
    m_length = static_cast<int>(newLength);
    ForgetLinks();
}

void CLLineData::SetPhysicalLines(std::span<const tlvn::PhysicalLine> rows)
{
    if (rows.size() == 1) {
        FreeRows();
        m_rows.one = rows[0];
        m_count = 1;
        return;
    }
    const std::size_t room = RowCapacity(rows.size());
    if (m_count == 1 || RowCapacity(Index(m_count)) != room) {
        auto* const many = tlvn::GuardMemory([&] { return new tlvn::PhysicalLine[room]; });
        FreeRows();
        m_rows.many = many;
    }
    std::copy(rows.begin(), rows.end(), m_rows.many);
    m_count = static_cast<int>(rows.size());
}

void CLLineData::Swap(CLLineData& other) noexcept
{
    std::swap(m_text, other.m_text);
    std::swap(m_length, other.m_length);
    std::swap(m_capacity, other.m_capacity);
    std::swap(m_rows, other.m_rows);
    std::swap(m_count, other.m_count);
    std::swap(m_quoteEntry, other.m_quoteEntry);
    std::swap(m_links, other.m_links);
}

void CLLineData::FreeRows()
{
    if (m_count > 1)
        delete[] m_rows.many;
}
