// The lines of a document in order, with the sums that turn a line into its serial number.
//
// Lines stand in blocks of at most kBlockLines; for each block the lines and physical lines
// before it are kept, and in each block the physical lines before each line. So a line, the
// serial number of its first physical line and the line of a serial number are found by binary
// search; a change costs a pass over its block and one over the sums of the blocks behind it.

#pragma once

#include "editor/line_data.h"

#include <utility>
#include <vector>

namespace tlvn {

class TLVN_API LineIndex {
public:
    static constexpr int kBlockLines = 512;

    LineIndex() = default;
    LineIndex(const LineIndex&) = delete;
    LineIndex& operator=(const LineIndex&) = delete;

    int GetCount() const { return m_count; }
    int GetPhysicalCount() const { return m_physicalCount; }

    // 0 <= line < GetCount(), unchecked. After changing the physical lines of a line,
    // LineChanged has to be called.
    const CLLineData& GetLine(int line) const;
    CLLineData& GetLine(int line)
    {
        return const_cast<CLLineData&>(std::as_const(*this).GetLine(line));
    }
    void LineChanged(int line);

    // Physical lines before `line`, 0 <= line <= GetCount().
    int GetSerial(int line) const;
    // The line that physical line `serial` belongs to, 0 <= serial < GetPhysicalCount().
    int FindLine(int serial) const;
    // Width of the widest physical line, in pixels; 0 without lines.
    int GetWidest() const;

    // Appends a line: amortised O(1).
    void Add(CLLineData&& line);
    // Inserts lines before `at`, which are moved from.
    void Insert(int at, std::vector<CLLineData>& lines);
    // Removes the lines [from, to).
    void Remove(int from, int to);
    void Clear();

    // Calls visit(line) for every line; it may change the physical lines.
    template <class Visit>
    void ChangeAll(Visit visit)
    {
        for (Block& block : m_blocks) {
            for (CLLineData& line : block.lines)
                visit(line);
        }
        SumUp();
    }
    // Calls visit(line) for the lines [from, to).
    template <class Visit>
    void ForEach(int from, int to, Visit visit) const
    {
        if (from >= to)
            return;
        std::size_t b = FindBlock(from);
        std::size_t i = static_cast<std::size_t>(from - m_blocks[b].firstLine);
        for (int left = to - from; left > 0; --left, ++i) {
            if (i == m_blocks[b].lines.size()) {
                ++b;
                i = 0;
            }
            visit(m_blocks[b].lines[i]);
        }
    }

private:
    struct Block {
        std::vector<CLLineData> lines; // 1 to kBlockLines
        std::vector<int> before;       // physical lines in the block before each of them
        int firstLine = 0;
        int firstPhysical = 0;
        int physicalCount = 0;
        mutable int widest = 0; // when known: width of the widest physical line
        mutable bool widestKnown = true;
    };

    std::size_t FindBlock(int line) const;
    void InsertFew(int at, std::vector<CLLineData>& lines);
    void InsertMany(int at, std::vector<CLLineData>& lines);
    void SplitBlock(std::size_t b, std::size_t i);
    void JoinIfSmall(std::size_t b);
    void SumUpBlock(Block& block, std::size_t from);
    void SumUpFrom(std::size_t b);
    void SumUp();

    std::vector<Block> m_blocks; // none is empty
    int m_count = 0;
    int m_physicalCount = 0;
};

} // namespace tlvn
