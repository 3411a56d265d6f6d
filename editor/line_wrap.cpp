#include "editor/line_wrap.h"

#include "editor/columns.h"
#include "framework/guard_memory.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <type_traits>

namespace tlvn {

namespace {

// In bytes.
constexpr int kLongestCharacter = 4;

int ClampToInt(INT64 n)
{
    return static_cast<int>(std::min<INT64>(n, INT_MAX));
}

CodeSet SetOf(const CharWidths& widths, const CBuffer& list)
{
    return CodeSet(widths.GetCode(), list, list.GetLength());
}

CodeType CodeTypeOf(const WrapRules& rules)
{
    return rules.widths.GetCode().GetCodeType();
}

bool IsKeptWhole(const WrapRules& rules, const CLLineData& line)
{
    if (rules.mode == CEditorMetrics::kNoTurn)
        return true;
    return rules.wholeQuotes && rules.quotes.GetPrefixLength(line.GetText(), line.GetLength()) > 0;
}

// Cuts one line; Reader is that of its text.
template <class Reader>
class Cutter {
public:
    Cutter(const WrapRules& rules, Reader reader, const CLLineData& line)
        : m_rules(rules), m_widths(rules.widths), m_reader(reader), m_line(line),
          m_begin(line.GetText()), m_end(m_begin + line.GetLength()),
          m_whole(IsKeptWhole(rules, line))
    {}

    // Appends rows from byte `from` on, up to the end of the text, or up to an old break when
    // `old` is not null. A line that is kept whole has no row but this one.
    void Run(int from, std::vector<PhysicalLine>& rows, OldBreaks* old)
    {
        if (m_whole) {
            rows.clear();
            from = 0;
        }
        const char* start = m_begin + from;
        for (;;) {
            const Row row = Cut(start);
            rows.push_back({Offset(start), ClampToInt(row.width)});
            if (row.end == m_end || (old != nullptr && old->BeganAt(Offset(row.end))))
                return;
            start = row.end;
        }
    }

    INT64 GetWidth(const char* from, const char* to) const
    {
        INT64 x = 0;
        for (const char* p = from; p < to;)
            x = Advance(x, m_reader.Next(p, to));
        return x;
    }

    // The byte of the character under pixel x of a row that is the whole text, or its end; the
    // nearest boundary of a character.
    int FindByte(INT64 pixel, bool nearest) const
    {
        INT64 x = 0;
        for (const char* p = m_begin; p < m_end;) {
            const char* const at = p;
            const INT64 end = Advance(x, m_reader.Next(p, m_end));
            if (pixel < (nearest ? x + (end - x + 1) / 2 : end))
                return Offset(at);
            x = end;
        }
        return Offset(m_end);
    }

private:
    struct Row {
        const char* end;
        INT64 width;
    };
    // Where a row may end, and the code of the character before that.
    struct Break {
        const char* at;
        unsigned before;
    };

    static constexpr bool kWide = std::is_same_v<Reader, WideReader>;

    int Offset(const char* p) const { return static_cast<int>(p - m_begin); }

    // The pixel at which the character ends that begins at x.
    INT64 Advance(INT64 x, unsigned code) const
    {
        if (code == '\t')
            return x + m_rules.tabWidth - x % m_rules.tabWidth;
        return x + m_widths.GetWidth(code);
    }
    // The same in columns, for a character of so many bytes.
    INT64 AdvanceColumns(INT64 column, unsigned code, std::ptrdiff_t bytes) const
    {
        if (code == '\t')
            return column + m_rules.tabColumns - column % m_rules.tabColumns;
        if constexpr (kWide)
            return column + GetWideColumns(code);
        else
            return column + bytes;
    }

    Row Cut(const char* start) const
    {
        INT64 width = kNotMeasured;
        const Break fit = FindFit(start, width);
        const char* const end = fit.at != m_end ? MoveBreak(start, fit) : m_end;
        if (width == kNotMeasured || end != fit.at)
            width = GetWidth(start, end);
        return {end, width};
    }

    // What fits; `width` becomes its width when that is measured on the way.
    Break FindFit(const char* start, INT64& width) const
    {
        if (m_whole)
            return {m_end, 0};
        if (m_rules.mode == CEditorMetrics::kTurnAtWindow)
            return FindFit(start, width, [this](INT64 x, unsigned code, std::ptrdiff_t) {
                return Advance(x, code);
            });
        if (FitsByLength(start))
            return {m_end, 0};
        INT64 columns = 0;
        return FindFit(start, columns, [this](INT64 column, unsigned code, std::ptrdiff_t bytes) {
            return AdvanceColumns(column, code, bytes);
        });
    }

    template <class Step>
    Break FindFit(const char* start, INT64& extent, const Step& step) const
    {
        unsigned before = 0;
        INT64 x = 0;
        const char* p = start;
        while (p < m_end) {
            const char* next = p;
            const unsigned code = m_reader.Next(next, m_end);
            const INT64 end = step(x, code, next - p);
            if (end > m_rules.limit && p != start)
                break;
            x = end;
            before = code;
            p = next;
        }
        extent = x;
        return {p, before};
    }

    // Whether the rest has no more columns than there are, for certain.
    bool FitsByLength(const char* start) const
    {
        const std::ptrdiff_t length = m_end - start;
        return length <= m_rules.limit && // two bytes of UTF-16 take two columns at most
               std::memchr(start, '\t', static_cast<std::size_t>(length)) == nullptr;
    }

    const char* MoveBreak(const char* start, Break fit) const
    {
        const char* const moved = m_rules.wholeLinks ? MoveOutOfLink(start, fit.at) : fit.at;
        const bool outOfLink = moved != fit.at;
        if (moved == m_end)
            return m_end;
        if (outOfLink)
            fit = {moved, FindBefore(start, moved)};
        if (m_rules.wholeWords && IsInWord(fit.before, At(fit.at)))
            fit = MoveBack(start, fit, [this](unsigned before, unsigned code) {
                return IsInWord(before, code);
            });
        return outOfLink ? fit.at : ObeyHeadsAndTails(start, fit);
    }

    const char* MoveOutOfLink(const char* start, const char* at) const
    {
        const auto& links = m_line.GetLinks(CodeTypeOf(m_rules));
        const std::size_t i = FindLinkFrom(links, Offset(at));
        if (i == links.size() || links[i].start >= Offset(at))
            return at;
        return m_begin + (links[i].start > Offset(start) ? links[i].start : links[i].GetEnd());
    }

    const char* ObeyHeadsAndTails(const char* start, Break fit) const
    {
        const char* next = fit.at;
        const unsigned code = m_reader.Next(next, m_end);
        const bool head = m_rules.heads.Has(code);
        if (head && (next == m_end || !m_rules.heads.Has(At(next))))
            return next;
        if (!head && !m_rules.tails.Has(fit.before))
            return fit.at;
        return MoveBack(start, fit,
                        [this](unsigned before, unsigned c) {
                            return m_rules.heads.Has(c) || m_rules.tails.Has(before);
                        })
            .at;
    }

    // The last break behind `start` and before fit.at that is not bad(before, behind); `fit` when
    // there is none.
    template <class Bad>
    Break MoveBack(const char* start, Break fit, const Bad& bad) const
    {
        Break found = fit;
        const char* p = start;
        unsigned before = m_reader.Next(p, m_end);
        while (p < fit.at) {
            const char* const at = p;
            const unsigned code = m_reader.Next(p, m_end);
            if (!bad(before, code))
                found = {at, before};
            before = code;
        }
        return found;
    }

    unsigned FindBefore(const char* start, const char* at) const
    {
        unsigned code = 0;
        while (start < at)
            code = m_reader.Next(start, at);
        return code;
    }

    unsigned At(const char* p) const { return m_reader.Next(p, m_end); }

    bool IsInWord(unsigned before, unsigned code) const
    {
        return IsSingle(before) && IsSingle(code);
    }
    bool IsSingle(unsigned code) const
    {
        // Of two bytes is no character of single width.
        if (!kWide && code >= 0x100)
            return false;
        return IsSingleAlnum(m_widths.GetUnit(code));
    }

    static constexpr INT64 kNotMeasured = -1;

    const WrapRules& m_rules;
    CharWidths& m_widths;
    const Reader m_reader;
    const CLLineData& m_line;
    const char* const m_begin;
    const char* const m_end;
    const bool m_whole;
};

void AppendRows(const WrapRules& rules, const CLLineData& line, int from,
                std::vector<PhysicalLine>& rows, OldBreaks* old)
{
    GuardMemory([&] {
        rules.widths.GetCode().Visit(
            [&](auto reader) { Cutter(rules, reader, line).Run(from, rows, old); });
    });
}

} // namespace

WrapRules::WrapRules(const CEditorMetrics& metrics, CharWidths& charWidths, int clientWidth)
    : widths(charWidths), mode(metrics.GetAutoTurn()),
      limit(mode == CEditorMetrics::kTurnAtColumn ? metrics.GetTurnCols() : clientWidth),
      tabColumns(metrics.GetTabColumn()), tabWidth(INT64{tabColumns} * widths.GetColumnWidth()),
      wholeQuotes(metrics.GetNoTurnQuoted() != 0), wholeLinks(metrics.GetNoTurnURL() != 0),
      wholeWords(metrics.GetWordWrap() != 0), quotes(metrics),
      heads(SetOf(widths, metrics.GetHead2PrevEdit())),
      tails(SetOf(widths, metrics.GetTail2NextEdit()))
{}

LineWrap::LineWrap(const CEditorMetrics& metrics, CharWidths& widths, int clientWidth)
    : m_rules(metrics, widths, clientWidth)
{}

void LineWrap::Wrap(const CLLineData& line, std::vector<PhysicalLine>& rows) const
{
    rows.clear();
    AppendRows(m_rules, line, 0, rows, nullptr);
}

void LineWrap::WrapFrom(const CLLineData& line, int start, std::vector<PhysicalLine>& rows,
                        OldBreaks& old) const
{
    const bool linksMoveBreaks = m_rules.wholeLinks && !line.GetLinks(CodeTypeOf(m_rules)).empty();
    AppendRows(m_rules, line, start, rows, linksMoveBreaks ? nullptr : &old);
}

int LineWrap::GetReach(const CLLineData& line) const
{
    if (IsKeptWhole(m_rules, line))
        return -1;
    if (m_rules.wholeLinks && !line.GetLinks(CodeTypeOf(m_rules)).empty())
        return -1;
    INT64 characters = m_rules.limit;
    if (m_rules.mode == CEditorMetrics::kTurnAtWindow) {
        // A tab may be 1 wide, but the second of two is as wide as tabs get.
        const INT64 narrowest = std::min<INT64>(m_rules.widths.GetNarrowest(), m_rules.tabWidth);
        if (narrowest == 0)
            return -1;
        characters = 2 * (m_rules.limit / narrowest + 1);
    }
    // At least one, and the two behind the break.
    const INT64 bytes = (std::max<INT64>(characters, 1) + 2) * kLongestCharacter;
    return bytes <= INT_MAX ? static_cast<int>(bytes) : -1;
}

void LineWrap::GetQuoteMarks(const CLLineData& line, std::string& marks) const
{
    marks.clear();
    m_rules.quotes.GetPrefixLength(line.GetText(), line.GetLength(), &marks);
}

int LineWrap::GetX(const char* text, int start, int at) const
{
    const CLLineData line(text + start, at - start);
    const INT64 width = m_rules.widths.GetCode().Visit([&](auto reader) {
        return Cutter(m_rules, reader, line).GetWidth(text + start, text + at);
    });
    return ClampToInt(width);
}

int LineWrap::FindByte(const char* text, int start, int end, int x, bool nearest) const
{
    const CLLineData line(text + start, end - start);
    return m_rules.widths.GetCode().Visit(
        [&](auto reader) { return start + Cutter(m_rules, reader, line).FindByte(x, nearest); });
}

int LineWrap::GetTabStop(int x) const
{
    return ClampToInt(x + m_rules.tabWidth - x % m_rules.tabWidth);
}

} // namespace tlvn
