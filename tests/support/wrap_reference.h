// The rules by which a line is wrapped, taken literally: character by character, each step as it
// is told in editor/line_wrap.h, with no regard to speed. Used by the tests and by the fuzz target,
// which make their cases with the same generator.

#pragma once

#include "editor/line_wrap.h"

#include "charcode/charset.h"
#include "foundation/char_type.h"
#include "tests/support/byte_source.h"

#include <climits>
#include <string>
#include <vector>

namespace wrap_reference {

using tlvn::PhysicalLine;

struct Character {
    int start;
    int end;
    std::string bytes;
    int columns;
    int width;
    bool tab = false;
    bool alnum = false;
    bool head = false;
    bool tail = false;
};

class Wrapper {
public:
    Wrapper(const CEditorMetrics& metrics, tlvn::CharWidths& widths, int clientWidth)
        : m_metrics(metrics), m_widths(widths), m_clientWidth(clientWidth)
    {}

    std::vector<PhysicalLine> Wrap(const std::string& text) const
    {
        const std::vector<Character> line = Split(text);
        std::vector<CEditorLineRange> links;
        {
            const CApplyLocale locale(CodeTypeOfText());
            tlvn::FindLinks(text.data(), static_cast<int>(text.size()), CodeTypeOfText(), links);
        }
        const std::size_t n = line.size();
        const bool whole = m_metrics.GetAutoTurn() == 0 ||
                           (m_metrics.GetNoTurnQuoted() != 0 && !GetQuoteMarks(line).empty());
        std::vector<PhysicalLine> rows;
        std::size_t i = 0;
        do {
            const std::size_t j = whole ? n : Break(line, links, i);
            rows.push_back({i < n ? line[i].start : 0, Width(line, i, j)});
            i = j;
        } while (i < n);
        return rows;
    }

    // The quote characters at the start, single characters of indentation between them left out.
    std::string GetQuoteMarks(const std::vector<Character>& line) const
    {
        const std::vector<Character> quotes = Split(TextOf(m_metrics.GetQuoteListEdit()));
        const std::vector<Character> indents = Split(TextOf(m_metrics.GetIndentListEdit()));
        const auto isQuote = [&](std::size_t i) {
            return i < line.size() && Contains(quotes, line[i].bytes);
        };
        std::string marks;
        int count = 0;
        for (std::size_t i = 0; count < m_metrics.GetQuoteLen(); ++i, ++count) {
            if (count > 0 && !isQuote(i) && isQuote(i + 1) && Contains(indents, line[i].bytes))
                ++i;
            if (!isQuote(i))
                break;
            marks += line[i].bytes;
        }
        return marks;
    }

    std::vector<Character> Split(const std::string& text) const
    {
        const CodeType type = CodeTypeOfText();
        const CApplyLocale locale(type);
        const int length = static_cast<int>(text.size());
        std::vector<Character> line;
        for (int i = 0; i < length;) {
            Character c;
            c.start = i;
            c.end = std::min(length, i + SizeAt(text, i));
            c.bytes = text.substr(static_cast<std::size_t>(i), static_cast<std::size_t>(c.end - i));
            c.width = m_widths.Measure(c.bytes.data(), c.end - i);
            Classify(c);
            line.push_back(c);
            i = c.end;
        }
        return line;
    }

private:
    CodeType CodeTypeOfText() const { return m_metrics.GetCodeType(); }
    bool IsWide() const { return IsCodeTypeUnicode(CodeTypeOfText()) != 0; }

    static std::string TextOf(const CBuffer& list)
    {
        return std::string(list, static_cast<std::size_t>(list.GetLength()));
    }

    static bool Contains(const std::vector<Character>& list, const std::string& bytes)
    {
        for (const Character& c : list)
            if (c.bytes == bytes)
                return true;
        return false;
    }

    static unsigned UnitAt(const std::string& text, int i)
    {
        const auto byte = [&](int k) {
            return k < static_cast<int>(text.size())
                       ? static_cast<unsigned char>(text[static_cast<std::size_t>(k)])
                       : 0u;
        };
        return byte(i) | byte(i + 1) << 8;
    }

    int SizeAt(const std::string& text, int i) const
    {
        if (!IsWide())
            return IsTLead(text.data(), i, static_cast<int>(text.size())) ? 2 : 1;
        const bool high = (UnitAt(text, i) & 0xFC00) == 0xD800;
        return high && (UnitAt(text, i + 2) & 0xFC00) == 0xDC00 ? 4 : 2;
    }

    void Classify(Character& c) const
    {
        tlvn::WString units;
        if (IsWide())
            for (int i = 0; i < c.end - c.start; i += 2)
                units += static_cast<WCHAR>(UnitAt(c.bytes, i));
        else
            tlvn::ConvertToUtf16(CharSetCode2CodePage(CodeTypeOfText()), c.bytes, units);
        const auto* const bytes = reinterpret_cast<const char*>(units.data());
        const int type = GetCharType(bytes, static_cast<int>(units.size()) * 2, bytes, CT_UNICODE);
        const bool single = (type & CHARTYPE_DOUBLE) == 0;
        c.tab = c.bytes[0] == '\t' && units.size() == 1 && units[0] == '\t';
        c.columns = IsWide() ? (single ? 1 : 2) : c.end - c.start;
        c.alnum = single && (type & CHARTYPE_WORD) != 0 && units[0] != '_' &&
                  (IsWide() || c.end - c.start == 1);
        c.head = Has(m_metrics.GetHead2PrevEdit(), c.bytes);
        c.tail = Has(m_metrics.GetTail2NextEdit(), c.bytes);
    }

    bool Has(const CBuffer& list, const std::string& bytes) const
    {
        const std::string text = TextOf(list);
        for (int i = 0; i < list.GetLength(); i += SizeAt(text, i))
            if (text.compare(static_cast<std::size_t>(i), static_cast<std::size_t>(SizeAt(text, i)),
                             bytes) == 0)
                return true;
        return false;
    }

    static int Advance(int x, const Character& c, int size, int tab)
    {
        return c.tab ? (x / tab + 1) * tab : x + size;
    }

    int Width(const std::vector<Character>& line, std::size_t i, std::size_t j) const
    {
        int x = 0;
        for (; i < j; ++i)
            x = Advance(x, line[i], line[i].width,
                        m_metrics.GetTabColumn() * m_widths.GetColumnWidth());
        return x;
    }

    int Columns(const std::vector<Character>& line, std::size_t i, std::size_t j) const
    {
        int x = 0;
        for (; i < j; ++i)
            x = Advance(x, line[i], line[i].columns, m_metrics.GetTabColumn());
        return x;
    }

    bool Fits(const std::vector<Character>& line, std::size_t i, std::size_t j) const
    {
        return m_metrics.GetAutoTurn() == 1 ? Columns(line, i, j) <= m_metrics.GetTurnCols()
                                            : Width(line, i, j) <= m_clientWidth;
    }

    // The character behind the break of the physical line that begins with character i.
    std::size_t Break(const std::vector<Character>& line,
                      const std::vector<CEditorLineRange>& links, std::size_t i) const
    {
        const std::size_t n = line.size();
        if (i == n)
            return n;
        std::size_t j = i + 1; // 1
        while (j < n && Fits(line, i, j + 1))
            ++j;
        if (j == n) // 2
            return n;
        bool moved = false;
        for (const CEditorLineRange& link : links) { // 3
            if (m_metrics.GetNoTurnURL() == 0 || line[j].start <= link.start ||
                line[j].start >= link.GetEnd())
                continue;
            const int to = link.start > line[i].start ? link.start : link.GetEnd();
            for (j = 0; j < n && line[j].start < to; ++j) {
            }
            moved = true;
            break;
        }
        if (j == n)
            return n;
        if (m_metrics.GetWordWrap() != 0) { // 4
            std::size_t k = j;
            while (k > i && line[k - 1].alnum && line[k].alnum)
                --k;
            if (k > i)
                j = k;
        }
        if (moved)
            return j;
        if (line[j].head && (j + 1 == n || !line[j + 1].head)) // 5
            return j + 1;
        std::size_t k = j;
        while (k > i && (line[k].head || line[k - 1].tail))
            --k;
        return k > i ? k : j;
    }

    const CEditorMetrics& m_metrics;
    tlvn::CharWidths& m_widths;
    int m_clientWidth;
};

// Settings and a text made of what the rules are about.
struct Case {
    CEditorMetrics metrics;
    int clientWidth = 0;
    std::string text;
};

inline std::vector<tlvn::WString> CutAtLineEnds(tlvn::WStringView text)
{
    std::vector<tlvn::WString> parts(1);
    for (const WCHAR c : text) {
        if (c == '\n')
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

inline Case MakeCase(ByteSource& source)
{
    static const std::vector<tlvn::WString> pieces = CutAtLineEnds(
        TW("a\nB2\nword\n \n  \n\t\n(\n)\n!?\n>\n> \n|\n_\n-\n9\nx@y.jp\n")
            TW("http://a.b/c \n\x3042\n\x6F22\x5B57\n\x3002\n\x3001\n\x300C\n\x300D\n")
                TW("\xFF71\xFF9E\n\xFF1E\n\x3000\n\xFF0E\n\x0416\n\x00E9\n\xFF08"));
    static const std::vector<tlvn::WString> wideOnly =
        CutAtLineEnds(TW("\xD83D\xDE00\n\xD83D\n\xDE00\n\x0301\n\xD842\xDFB7"));
    constexpr CodeType types[] = {CT_SJIS, CT_UNICODE, CT_SJIS, CT_UNICODE, CT_GB2312, CT_WIN1251};

    Case c;
    const CodeType type = types[source.Byte() % std::size(types)];
    c.metrics.ChangeCodePage(type);
    c.metrics.SetAutoTurn(source.Number(0, 11) == 0 ? 0 : source.Number(1, 2));
    c.metrics.SetTurnCols(source.Number(0, 3) == 0 ? source.Number(10, 60) : 10);
    c.clientWidth = source.Number(0, 3) == 0 ? source.Number(-5, 400) : source.Number(20, 100);
    c.metrics.SetTabColumn(source.Number(0, 12));
    const int flags = source.Number(0, 255);
    c.metrics.SetNoTurnQuoted((flags & 1) != 0);
    c.metrics.SetNoTurnURL((flags & 2) != 0);
    c.metrics.SetWordWrap((flags & 4) != 0);
    c.metrics.SetQuoteLen((flags & 8) != 0 ? 8 : source.Number(-1, 2));
    // Sets that hold each other's characters, and letters.
    if ((flags & 16) != 0 && (flags & 32) != 0) {
        c.metrics.SetHead2Prev(CBuffer("a)\x81\x42 "));
        c.metrics.SetTail2Next(CBuffer("(\x81\x42 b"));
    }

    for (int left = source.Number(0, 40); left > 0; --left) {
        const unsigned choice = source.Byte();
        tlvn::WString piece = pieces[choice % pieces.size()];
        if (IsCodeTypeUnicode(type) && choice >= 220)
            piece = wideOnly[choice % wideOnly.size()];
        if (IsCodeTypeUnicode(type)) {
            c.text.append(reinterpret_cast<const char*>(piece.data()), piece.size() * 2);
        } else if (choice >= 235) {
            c.text += static_cast<char>(source.Byte()); // half characters, NULs
        } else {
            std::string bytes;
            tlvn::ConvertFromUtf16(CharSetCode2CodePage(type), piece, bytes);
            c.text += bytes;
        }
    }
    return c;
}

// The first thing that differs, or null.
inline const char* Compare(const Case& c, tlvn::CharWidths& widths)
{
    const tlvn::LineWrap wrap(c.metrics, widths, c.clientWidth);
    const Wrapper reference(c.metrics, widths, c.clientWidth);
    const std::vector<PhysicalLine> expected = reference.Wrap(c.text);
    const auto same = [](const PhysicalLine& a, const PhysicalLine& b) {
        return a.start == b.start && a.width == b.width;
    };
    const auto equal = [&](const std::vector<PhysicalLine>& rows) {
        return std::equal(rows.begin(), rows.end(), expected.begin(), expected.end(), same);
    };

    const CLLineData line(c.text.data(), static_cast<int>(c.text.size()));
    std::vector<PhysicalLine> rows;
    wrap.Wrap(line, rows);
    if (!equal(rows))
        return "rows";
    std::string marks;
    wrap.GetQuoteMarks(line, marks);
    if (marks != reference.GetQuoteMarks(reference.Split(c.text)))
        return "quote marks";

    // From each row on, and stopping at the first old break: always the same rows.
    for (std::size_t i = 0; i < expected.size(); ++i) {
        rows.assign(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(i));
        tlvn::OldBreaks old(expected, 0, 0);
        wrap.WrapFrom(line, expected[i].start, rows, old);
        for (const PhysicalLine& rest : old.GetRest())
            rows.push_back(rest);
        if (!equal(rows))
            return "rows from a row on";
    }
    return nullptr;
}

// What lies further away than the reach does not decide about a row.
inline const char* CompareReach(const Case& c, tlvn::CharWidths& widths, const std::string& other)
{
    const tlvn::LineWrap wrap(c.metrics, widths, c.clientWidth);
    const CLLineData line(c.text.data(), static_cast<int>(c.text.size()));
    std::vector<PhysicalLine> before;
    wrap.Wrap(line, before);
    const int reach = wrap.GetReach(line);
    if (reach < 0 || reach >= line.GetLength())
        return nullptr;

    const std::string changed = c.text.substr(0, static_cast<std::size_t>(reach)) + other;
    const CLLineData changedLine(changed.data(), static_cast<int>(changed.size()));
    std::vector<PhysicalLine> after;
    wrap.Wrap(changedLine, after);
    if (wrap.GetReach(changedLine) < 0) // it has links now
        return nullptr;
    return after.size() > 1 && before[1].start == after[1].start
               ? nullptr
               : "the first row, by what lies out of reach";
}

} // namespace wrap_reference
