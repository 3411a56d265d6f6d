// One logical line of the editor: its text without terminator, the physical lines that wrapping
// made of it, its links, its place in the quote table.
//
// A million of them are in a long document, so a line is small (40 bytes): as long as it is as
// it was loaded, its text is a part of a block that many lines share; the first change moves it
// to a block of its own. One physical line is held inline, more are in an array.
//
//   const CLLineData& line = document.GetLine(i);
//   for (int p = 0; p < line.GetPhysicalCount(); ++p)
//       Draw(line.GetText() + line.GetStart(p), line.GetEnd(p) - line.GetStart(p));
//
// The text is not terminated. UTF-16 text has an even length and stands at an even address.

#pragma once

#include "editor/link_range.h"

#include <cstddef>
#include <span>
#include <vector>

namespace tlvn {

// A row on screen.
struct PhysicalLine {
    int start; // byte in the logical line
    int width; // drawn, in pixels
};

} // namespace tlvn

class TLVN_API CLLineData {
public:
    // An empty line.
    CLLineData() = default;
    // A line that shows `length` bytes at `text`, which stay where they are as long as the line
    // (or a line that it is moved to) has not been changed.
    CLLineData(const char* text, int length) : m_text(const_cast<char*>(text)), m_length(length) {}
    CLLineData(CLLineData&& other) noexcept { Swap(other); }
    CLLineData& operator=(CLLineData&& other) noexcept
    {
        CLLineData(std::move(other)).Swap(*this);
        return *this;
    }
    ~CLLineData();

    // Not null; see above.
    const char* GetText() const { return m_text != nullptr ? m_text : ""; }
    int GetLength() const { return m_length; }

    // At least 1.
    int GetPhysicalCount() const { return m_count; }
    std::span<const tlvn::PhysicalLine> GetPhysicalLines() const
    {
        return {m_count == 1 ? &m_rows.one : m_rows.many, static_cast<std::size_t>(m_count)};
    }
    // Start and end of a physical line in the text; its width in pixels.
    int GetStart(int physical) const { return GetPhysicalLines()[Index(physical)].start; }
    int GetEnd(int physical) const
    {
        return physical + 1 < m_count ? GetStart(physical + 1) : m_length;
    }
    int GetWidth(int physical) const { return GetPhysicalLines()[Index(physical)].width; }
    // The physical line that the byte belongs to; at a break the one behind it. O(log n).
    int FindPhysical(int byte) const;

    // The links of the text, which is of code type codeType: found when first asked for, kept
    // until the text changes.
    const std::vector<CEditorLineRange>& GetLinks(CodeType codeType) const;
    // Whether links are known from such a call, and there are some.
    bool HasKnownLinks() const { return m_links != nullptr && !m_links->empty(); }
    void ForgetLinks() const;

    // Index in the quote table, or -1.
    int GetQuoteEntry() const { return m_quoteEntry; }
    void SetQuoteEntry(int entry) { m_quoteEntry = entry; }

    // Replaces `removed` bytes at `at` by `length` bytes from `text`, which is not in this line.
    // Physical lines and quote entry are left to the caller. Throws CMemoryException*.
    void Replace(int at, int removed, const char* text, int length);

    // `rows`: at least one, the first starting at 0. Throws CMemoryException*.
    void SetPhysicalLines(std::span<const tlvn::PhysicalLine> rows);

    // Whether the text is in a shared block; puts the same text at another place in one.
    bool IsShared() const { return m_text != nullptr && m_capacity == 0; }
    void MoveText(const char* text) { m_text = const_cast<char*>(text); }

private:
    using Links = std::vector<CEditorLineRange>;

    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    void Swap(CLLineData& other) noexcept;
    void FreeRows();

    char* m_text = nullptr;
    int m_length = 0;
    int m_capacity = 0; // of the line's own block; 0: shared or none
    union Rows {
        tlvn::PhysicalLine one;
        tlvn::PhysicalLine* many; // room for m_count rounded up to a power of 2
    };
    Rows m_rows{{0, 0}};
    int m_count = 1;
    int m_quoteEntry = -1;
    mutable const Links* m_links = nullptr; // null: not looked for yet
};
