#include "editor/line_index.h"

#include "framework/guard_memory.h"

#include <algorithm>
#include <climits>
#include <iterator>

namespace tlvn {

namespace {

constexpr std::size_t kBlockSize = LineIndex::kBlockLines;

int WidestOf(const CLLineData& line)
{
    int widest = 0;
    for (const PhysicalLine& row : line.GetPhysicalLines())
        widest = std::max(widest, row.width);
    return widest;
}

} // namespace

const CLLineData& LineIndex::GetLine(int line) const
{
    const Block& block = m_blocks[FindBlock(line)];
    return block.lines[static_cast<std::size_t>(line - block.firstLine)];
}

void LineIndex::LineChanged(int line)
{
    const std::size_t b = FindBlock(line);
    Block& block = m_blocks[b];
    const int before = block.physicalCount;
    SumUpBlock(block, static_cast<std::size_t>(line - block.firstLine));
    if (block.physicalCount != before)
        SumUpFrom(b);
}

int LineIndex::GetSerial(int line) const
{
    if (line >= m_count)
        return m_physicalCount;
    const Block& block = m_blocks[FindBlock(line)];
    return block.firstPhysical + block.before[static_cast<std::size_t>(line - block.firstLine)];
}

int LineIndex::FindLine(int serial) const
{
    const auto behind =
        std::upper_bound(m_blocks.begin(), m_blocks.end(), serial,
                         [](int s, const Block& block) { return s < block.firstPhysical; });
    const Block& block = *std::prev(behind);
    const auto line =
        std::upper_bound(block.before.begin(), block.before.end(), serial - block.firstPhysical);
    return block.firstLine + static_cast<int>(line - block.before.begin()) - 1;
}

int LineIndex::GetWidest() const
{
    int widest = 0;
    for (const Block& block : m_blocks) {
        if (!block.widestKnown) {
            block.widest = 0;
            for (const CLLineData& line : block.lines)
                block.widest = std::max(block.widest, WidestOf(line));
            block.widestKnown = true;
        }
        widest = std::max(widest, block.widest);
    }
    return widest;
}

void LineIndex::Add(CLLineData&& line)
{
    GuardMemory([&] {
        if (m_count == INT_MAX)
            AfxThrowMemoryException();
        if (m_blocks.empty() || m_blocks.back().lines.size() == kBlockSize) {
            Block block;
            // A first block stays small in a short document, others will be filled.
            const std::size_t room = m_blocks.empty() ? 1 : kBlockSize;
            block.lines.reserve(room);
            block.before.reserve(room);
            block.firstLine = m_count;
            block.firstPhysical = m_physicalCount;
            m_blocks.push_back(std::move(block));
        }
        Block& block = m_blocks.back();
        block.before.reserve(block.lines.capacity());
        block.before.push_back(block.physicalCount);
        block.lines.push_back(std::move(line));
        const CLLineData& added = block.lines.back();
        block.physicalCount += added.GetPhysicalCount();
        m_physicalCount += added.GetPhysicalCount();
        block.widest = std::max(block.widest, WidestOf(added));
        ++m_count;
    });
}

void LineIndex::Insert(int at, std::vector<CLLineData>& lines)
{
    if (lines.empty())
        return;
    if (lines.size() > static_cast<std::size_t>(INT_MAX - m_count))
        AfxThrowMemoryException();
    GuardMemory([&] {
        if (m_blocks.empty())
            m_blocks.emplace_back();
        if (lines.size() <= kBlockSize / 2)
            InsertFew(at, lines);
        else
            InsertMany(at, lines);
    });
}

void LineIndex::Remove(int from, int to)
{
    if (from >= to)
        return;
    const std::size_t first = FindBlock(from);
    std::size_t b = first;
    int left = to - from;
    std::size_t i = static_cast<std::size_t>(from - m_blocks[b].firstLine);
    while (left > 0) {
        Block& block = m_blocks[b];
        const std::size_t count = std::min(block.lines.size() - i, static_cast<std::size_t>(left));
        const auto begin = block.lines.begin() + static_cast<std::ptrdiff_t>(i);
        block.lines.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
        SumUpBlock(block, i);
        left -= static_cast<int>(count);
        i = 0;
        ++b;
    }
    const auto begin = m_blocks.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = m_blocks.begin() + static_cast<std::ptrdiff_t>(b);
    m_blocks.erase(std::remove_if(begin, end, [](const Block& x) { return x.lines.empty(); }), end);
    // Lines may be removed one by one, everywhere: blocks must not stay small.
    for (std::size_t k = first > 0 ? first - 1 : 0; k <= first && k + 1 < m_blocks.size(); ++k)
        JoinIfSmall(k);
    SumUpFrom(first > 0 ? first - 1 : 0);
}

void LineIndex::Clear()
{
    std::vector<Block>().swap(m_blocks);
    m_count = 0;
    m_physicalCount = 0;
}

std::size_t LineIndex::FindBlock(int line) const
{
    const auto behind =
        std::upper_bound(m_blocks.begin(), m_blocks.end(), line,
                         [](int i, const Block& block) { return i < block.firstLine; });
    return static_cast<std::size_t>(behind - m_blocks.begin()) - 1;
}

// Lines fit into the block at hand, after cutting it in two if need be.
void LineIndex::InsertFew(int at, std::vector<CLLineData>& lines)
{
    std::size_t b = at < m_count ? FindBlock(at) : m_blocks.size() - 1;
    if (m_blocks[b].lines.size() + lines.size() > kBlockSize) {
        SplitBlock(b, m_blocks[b].lines.size() / 2);
        if (at > m_blocks[b + 1].firstLine)
            ++b;
    }
    Block& block = m_blocks[b];
    const int i = at - block.firstLine;
    block.before.reserve(block.lines.size() + lines.size());
    block.lines.insert(block.lines.begin() + i, std::make_move_iterator(lines.begin()),
                       std::make_move_iterator(lines.end()));
    SumUpBlock(block, static_cast<std::size_t>(i));
    SumUpFrom(b);
}

// Blocks of their own are put between those that stand.
void LineIndex::InsertMany(int at, std::vector<CLLineData>& lines)
{
    std::vector<Block> blocks((lines.size() + kBlockSize - 1) / kBlockSize);
    m_blocks.reserve(m_blocks.size() + blocks.size() + 1);
    for (Block& block : blocks) {
        block.lines.reserve(kBlockSize);
        block.before.reserve(kBlockSize);
    }
    for (std::size_t i = 0; i < lines.size(); ++i)
        blocks[i / kBlockSize].lines.push_back(std::move(lines[i]));
    for (Block& block : blocks)
        SumUpBlock(block, 0);

    std::size_t b = at < m_count ? FindBlock(at) : m_blocks.size() - 1;
    SplitBlock(b, static_cast<std::size_t>(at - m_blocks[b].firstLine));
    if (!m_blocks[b].lines.empty())
        ++b;
    m_blocks.insert(m_blocks.begin() + static_cast<std::ptrdiff_t>(b),
                    std::make_move_iterator(blocks.begin()), std::make_move_iterator(blocks.end()));
    std::erase_if(m_blocks, [](const Block& block) { return block.lines.empty(); });
    SumUpFrom(0);
}

// Cuts a block before its line i.
void LineIndex::SplitBlock(std::size_t b, std::size_t i)
{
    Block room;
    room.lines.reserve(kBlockSize);
    room.before.reserve(kBlockSize);
    m_blocks.insert(m_blocks.begin() + static_cast<std::ptrdiff_t>(b) + 1, std::move(room));
    Block& block = m_blocks[b];
    Block& behind = m_blocks[b + 1];
    const auto cut = block.lines.begin() + static_cast<std::ptrdiff_t>(i);
    behind.lines.assign(std::make_move_iterator(cut), std::make_move_iterator(block.lines.end()));
    block.lines.erase(cut, block.lines.end());
    SumUpBlock(block, i);
    SumUpBlock(behind, 0);
    behind.firstLine = block.firstLine + static_cast<int>(i);
    behind.firstPhysical = block.firstPhysical + block.physicalCount;
}

void LineIndex::JoinIfSmall(std::size_t b)
{
    Block& block = m_blocks[b];
    Block& next = m_blocks[b + 1];
    const std::size_t count = block.lines.size();
    if (count + next.lines.size() > kBlockSize / 2)
        return;
    block.before.reserve(count + next.lines.size());
    block.lines.insert(block.lines.end(), std::make_move_iterator(next.lines.begin()),
                       std::make_move_iterator(next.lines.end()));
    m_blocks.erase(m_blocks.begin() + static_cast<std::ptrdiff_t>(b) + 1);
    SumUpBlock(m_blocks[b], count);
}

// Brings the sums of a block up to date from its line `from` on.
void LineIndex::SumUpBlock(Block& block, std::size_t from)
{
    block.before.resize(block.lines.size());
    int sum = 0;
    if (from > 0)
        sum = block.before[from - 1] + block.lines[from - 1].GetPhysicalCount();
    for (std::size_t i = from; i < block.lines.size(); ++i) {
        block.before[i] = sum;
        sum += block.lines[i].GetPhysicalCount();
    }
    block.physicalCount = sum;
    block.widestKnown = false;
}

// Brings the sums over the blocks up to date from block b on, whose own sums are right.
void LineIndex::SumUpFrom(std::size_t b)
{
    if (b < m_blocks.size()) {
        m_count = b == 0 ? 0 : m_blocks[b].firstLine;
        m_physicalCount = b == 0 ? 0 : m_blocks[b].firstPhysical;
    } else if (m_blocks.empty()) {
        m_count = 0;
        m_physicalCount = 0;
        return;
    }
    for (; b < m_blocks.size(); ++b) {
        Block& block = m_blocks[b];
        block.firstLine = m_count;
        block.firstPhysical = m_physicalCount;
        m_count += static_cast<int>(block.lines.size());
        m_physicalCount += block.physicalCount;
    }
}

void LineIndex::SumUp()
{
    for (Block& block : m_blocks)
        SumUpBlock(block, 0);
    SumUpFrom(0);
}

} // namespace tlvn
