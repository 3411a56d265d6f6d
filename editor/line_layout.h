// How the document lays lines out: where physical lines begin, what quotes a line.
//
// The document knows neither fonts nor settings; who does gives it a LineLayout. Without one
// every line is one physical line.

#pragma once

#include "editor/line_data.h"

#include <span>
#include <string>
#include <vector>

namespace tlvn {

// Where the physical lines behind a change began before it, moved along with their text. The
// wrapping of what follows such a start has not changed: it depends on nothing but the text from
// there on (and on links; see LineLayout::WrapFrom).
class TLVN_API OldBreaks {
public:
    OldBreaks() = default;
    // The rows as they were; those that start at `from` or behind it have moved by `moved` bytes.
    OldBreaks(std::span<const PhysicalLine> rows, int from, int moved);

    // Whether a physical line began at `start`; who is told so cuts no further. Asked in
    // ascending order: in all O(length).
    bool BeganAt(int start)
    {
        while (!m_rows.empty() && m_rows.front().start + m_moved < start)
            m_rows = m_rows.subspan(1);
        m_met = !m_rows.empty() && m_rows.front().start + m_moved == start;
        return m_met;
    }
    // Once BeganAt was true: that row and those behind it, where they were.
    std::span<const PhysicalLine> GetRest() const
    {
        return m_met ? m_rows : std::span<const PhysicalLine>();
    }
    int GetMoved() const { return m_moved; }

private:
    std::span<const PhysicalLine> m_rows;
    int m_moved = 0;
    bool m_met = false;
};

class LineLayout {
public:
    virtual ~LineLayout() = default;

    // Sets `rows` to the physical lines of the line, at least one: the first starts at 0, each
    // other behind the one before it and before the end of the text. The line's text and quote
    // entry are up to date, its physical lines are not.
    virtual void Wrap(const CLLineData& line, std::vector<PhysicalLine>& rows) const = 0;

    // For a change in a long line: `rows` holds the physical lines before byte `start`, where
    // the next one starts; the others are appended. May ask at the end of each whether an old
    // row began there (old.BeganAt(end)), and if so has to return: the document takes over the
    // old rows from there. A layout in which links move breaks must not ask when the line has
    // links.
    virtual void WrapFrom(const CLLineData& line, int start, std::vector<PhysicalLine>& rows,
                          OldBreaks& old) const
    {
        static_cast<void>(start);
        old = OldBreaks();
        rows.clear();
        Wrap(line, rows);
    }

    // The most bytes from the start of a physical line on that decide where it ends; -1 when
    // there is no such limit. Spares the document wrapping long lines from their start.
    virtual int GetReach(const CLLineData& line) const
    {
        static_cast<void>(line);
        return -1;
    }

    // Sets `marks` to what tells the quotes of the line's depth from others, its quote characters;
    // empty for a line that is not quoted.
    virtual void GetQuoteMarks(const CLLineData& line, std::string& marks) const = 0;
};

} // namespace tlvn
