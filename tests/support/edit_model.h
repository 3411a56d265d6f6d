// The text of the editor against a slow, simple model: random edits, undo and redo, markers and
// new wrapping, made from arbitrary bytes. Shared by the random test and the fuzz target.

#pragma once

#include "editor/text_model.h"
#include "platform/multibyte.h"
#include "tests/support/byte_source.h"
#include "tests/support/text.h"

#include <algorithm>
#include <compare>
#include <iterator>
#include <string>
#include <vector>

namespace edit_model {

using Lines = std::vector<std::string>;

struct Pos {
    int line, byte;
    auto operator<=>(const Pos&) const = default;
};

inline Pos PosOf(const CTextPos& pos)
{
    return {pos.line, pos.logicalByte};
}
inline int Length(const std::string& text)
{
    return static_cast<int>(text.size());
}

// Starts of the characters of a line, and its end.
inline std::vector<int> CharTops(const std::string& text, bool wide)
{
    const auto unit = [&](int i) {
        const auto at = static_cast<std::size_t>(i);
        return (text[at] & 0xFF) | (text[at + 1] & 0xFF) << 8;
    };
    std::vector<int> tops;
    for (int i = 0; i < Length(text);) {
        tops.push_back(i);
        const char* const p = text.data() + i;
        const bool pair = wide && Length(text) - i >= 4 && unit(i) >> 10 == 0xD800 >> 10 &&
                          unit(i + 2) >> 10 == 0xDC00 >> 10;
        i += wide ? (pair ? 4 : 2) : tlvn::CharLength(p, text.data() + text.size());
    }
    tops.push_back(Length(text));
    return tops;
}

// Blanks, quotes, line ends, characters of one and two bytes or units, and halves of them.
inline std::string MakeText(ByteSource& source, bool wide, int most)
{
    using namespace std::string_literals;
    static const std::string kNarrow[] = {"a",        "b",    ".",    ">",        " ",
                                          "\r",       "\n",   "\r\n", "\x82\xA0", "\x88\x9F",
                                          "\x95\x5C", "\xB1", "\x82", "\0"s};
    static const std::string kWide[] = {"a\0"s,     ".\0"s,      ">\0"s,      "\r\0"s,
                                        "\n\0"s,    "\r\0\n\0"s, "\x42\x30"s, "\x42\xD8\xB7\xDF",
                                        "\x42\xD8", "\xB7\xDF",  "\x0D\x0A"s, "\x0A\x0D"s,
                                        "\0\0"s};
    std::string text;
    for (int i = source.Number(0, most); i > 0; --i)
        text += wide ? kWide[source.Number(0, std::size(kWide) - 1)]
                     : kNarrow[source.Number(0, std::size(kNarrow) - 1)];
    return text;
}

inline Lines Split(const std::string& text, bool wide)
{
    const std::size_t size = wide ? 2 : 1;
    const auto is = [&](std::size_t i, char c) {
        return i + size <= text.size() && text[i] == c && (!wide || text[i + 1] == '\0');
    };
    Lines lines(1);
    for (std::size_t i = 0; i + size <= text.size(); i += size) {
        if (is(i, '\n') || is(i, '\r')) {
            i += is(i, '\r') && is(i + size, '\n') ? size : 0;
            lines.emplace_back();
        } else {
            lines.back().append(text, i, size);
        }
    }
    return lines;
}

inline std::string Join(const Lines& lines, bool wide)
{
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0)
            text += wide ? std::string("\r\0\n\0", 4) : std::string("\r\n");
        text += lines[i];
    }
    return text;
}

inline Lines LinesOf(const tlvn::Document& document)
{
    Lines lines;
    for (int i = 0; i < document.GetLineCount(); ++i) {
        const CLLineData& line = document.GetLine(i);
        lines.emplace_back(line.GetText(), static_cast<std::size_t>(line.GetLength()));
    }
    return lines;
}

// So many bytes to a physical line, but no character cut and none starting with "."; ">" quotes.
// The width of a byte tells where it stands, so that rows kept by mistake are seen.
class ByteLayout : public tlvn::LineLayout {
public:
    explicit ByteLayout(bool wide = false) : m_wide(wide) {}

    void Wrap(const CLLineData& line, std::vector<tlvn::PhysicalLine>& rows) const override
    {
        tlvn::OldBreaks none;
        rows.clear();
        WrapFrom(line, 0, rows, none);
    }
    void WrapFrom(const CLLineData& line, int start, std::vector<tlvn::PhysicalLine>& rows,
                  tlvn::OldBreaks& old) const override
    {
        const std::string text(line.GetText(), static_cast<std::size_t>(line.GetLength()));
        const std::vector<int> tops = CharTops(text, m_wide);
        do {
            const int next = Cut(text, tops, start);
            int width = 0;
            for (int i = start; i < next; ++i)
                width += text[static_cast<std::size_t>(i)] & 0xFF;
            rows.push_back({start, width});
            start = next;
        } while (start < Length(text) && !old.BeganAt(start));
    }
    int GetReach(const CLLineData&) const override { return columns + 4; }
    void GetQuoteMarks(const CLLineData& line, std::string& marks) const override
    {
        const int size = m_wide ? 2 : 1;
        int length = 0;
        while (length < line.GetLength() && line.GetText()[length] == '>')
            length += size;
        marks.assign(line.GetText(), static_cast<std::size_t>(length));
    }

    int columns = 4;

private:
    int Cut(const std::string& text, const std::vector<int>& tops, int start) const
    {
        if (Length(text) - start <= columns)
            return Length(text);
        auto cut = std::upper_bound(tops.begin(), tops.end(), start + columns) - 1;
        if (*cut <= start)
            ++cut;
        const auto fit = cut;
        while (*cut > start && text[static_cast<std::size_t>(*cut)] == '.')
            --cut;
        return *cut > start ? *cut : *fit;
    }

    bool m_wide;
};

struct Mark {
    Pos start, end;
    int kind;
};

// Where a position is after a change, by the rules as they are told.
inline Pos Moved(Pos pos, const tlvn::TextChange& change)
{
    const Pos from = {change.line1, change.byte1}, to = {change.line2, change.byte2};
    if (change.inserted) {
        if (pos.line > from.line)
            return {pos.line + to.line - from.line, pos.byte};
        if (pos.line == from.line && pos.byte > from.byte)
            return {to.line, pos.byte - from.byte + to.byte};
        return pos;
    }
    if (pos.line > to.line)
        return {pos.line - (to.line - from.line), pos.byte};
    if (pos.line == to.line && pos.byte > to.byte)
        return {from.line, pos.byte - to.byte + from.byte};
    return std::min(pos, from);
}

// The text and its header, line by line; how many of the marks drawn count.
struct State {
    Lines lines;
    int headerLines = 0;
    int marks = 0;

    bool operator==(const State&) const = default;

    // Bytewise; returns the end.
    Pos Insert(Pos at, const std::string& text, bool wide)
    {
        const Lines parts = Split(text, wide);
        std::string& line = lines[static_cast<std::size_t>(at.line)];
        const std::string rest = line.substr(static_cast<std::size_t>(at.byte));
        line.resize(static_cast<std::size_t>(at.byte));
        line += parts[0];
        const int added = static_cast<int>(parts.size()) - 1;
        const Pos end = {at.line + added, added > 0 ? Length(parts.back()) : Length(line)};
        lines.insert(lines.begin() + at.line + 1, parts.begin() + 1, parts.end());
        lines[static_cast<std::size_t>(end.line)] += rest;
        headerLines += at.line < headerLines ? added : 0;
        return end;
    }
    void Delete(Pos from, Pos to)
    {
        std::string& line = lines[static_cast<std::size_t>(from.line)];
        line = line.substr(0, static_cast<std::size_t>(from.byte)) +
               lines[static_cast<std::size_t>(to.line)].substr(static_cast<std::size_t>(to.byte));
        lines.erase(lines.begin() + from.line + 1, lines.begin() + to.line + 1);
        for (int i = to.line; i > from.line; --i)
            headerLines -= i < headerLines ? 1 : 0;
    }
};

// Runs the same operations on the text model and on the simple one, which keeps what the text was
// after each step. The text is of `wide` form.
class Editing {
public:
    Editing(ByteSource& source, bool wide) : m_source(source), m_wide(wide), m_layout(wide)
    {
        m_text.SetChangeListener([this](const tlvn::TextChange& change) {
            for (Mark& mark : m_marks) {
                mark.start = Moved(mark.start, change);
                mark.end = Moved(mark.end, change);
            }
            const int lines = change.line2 - change.line1;
            ++m_changes;
            m_linesHeard += change.inserted ? lines : -lines;
        });
        const std::string text = MakeText(60);
        m_text.SetDocument(wide ? CT_UNICODE : CT_SJIS, text.data(), Length(text));
        m_text.SetLayout(&m_layout);
        m_states.push_back({Split(text, wide)});
    }

    // The fault found, or null.
    const char* Run()
    {
        while (!m_source.IsEmpty()) {
            if (const char* fault = Step())
                return fault;
        }
        for (const bool undo : {true, false}) {
            while (undo ? m_text.CanUndo() : m_text.CanRedo()) {
                if (const char* fault = UndoOrRedo(undo))
                    return fault;
            }
            if (const char* fault = Check())
                return fault;
        }
        return nullptr;
    }

private:
    std::string MakeText(int most) { return edit_model::MakeText(m_source, m_wide, most); }
    // At the start of a character.
    Pos MakePos(const State& state)
    {
        const int line = m_source.Number(0, static_cast<int>(state.lines.size()) - 1);
        const std::vector<int> tops = CharTops(state.lines[static_cast<std::size_t>(line)], m_wide);
        const int top = m_source.Number(0, static_cast<int>(tops.size()) - 1);
        return {line, tops[static_cast<std::size_t>(top)]};
    }

    State& Now() { return m_states[m_now]; }

    const char* InsertOrDelete(State& state)
    {
        const Pos a = MakePos(state);
        Pos expected = a;
        CTextPos caret;
        if (m_source.Byte() % 2 == 0) {
            const std::string text = MakeText(10);
            caret = m_text.InsertText(CTextPos(a.line, a.byte), text.data(), Length(text));
            if (!text.empty())
                expected = state.Insert(a, text, m_wide);
        } else {
            const Pos b = MakePos(state);
            caret = m_text.DeleteText(CTextPos(a.line, a.byte), CTextPos(b.line, b.byte));
            expected = std::min(a, b);
            state.Delete(expected, std::max(a, b));
        }
        CTextPos top(expected.line, expected.byte); // half characters may have become one
        m_text.GetDocument().ToCharTop(top);
        return PosOf(caret) != PosOf(top) ? "caret after an edit" : nullptr;
    }

    const char* Edit()
    {
        State state = Now();
        m_changes = 0;
        const int count = m_source.Number(1, 3);
        m_text.BeginGroup();
        const char* fault = nullptr;
        for (int i = 0; i < count && fault == nullptr; ++i)
            fault = InsertOrDelete(state);
        m_text.EndGroup();
        if (m_changes > 0)
            AddState(state);
        return fault;
    }
    void AddState(const State& state)
    {
        m_states.resize(m_now + 1);
        m_states.push_back(state);
        ++m_now;
    }

    void DrawMarker()
    {
        const Pos a = MakePos(Now()), b = MakePos(Now());
        const int kind = m_source.Number(-1, 5);
        m_text.DrawMarker(kind, CTextPos(a.line, a.byte), CTextPos(b.line, b.byte));
        if (a == b)
            return;
        State state = Now();
        m_marks.resize(static_cast<std::size_t>(state.marks++));
        m_marks.push_back({std::min(a, b), std::max(a, b), kind});
        AddState(state);
    }

    const char* UndoOrRedo(bool undo)
    {
        CTextPos caret;
        const bool can = undo ? m_now > 0 : m_now + 1 < m_states.size();
        if ((undo ? m_text.CanUndo() : m_text.CanRedo()) != can)
            return "CanUndo, CanRedo";
        if ((undo ? m_text.Undo(caret) : m_text.Redo(caret)) != (can ? 1 : 0))
            return "Undo, Redo";
        if (can)
            m_now = undo ? m_now - 1 : m_now + 1;
        return IsPlace(caret) ? nullptr : "caret after undo";
    }

    // Lines come at the end or as a header: no edit, but part of what any undo leads to.
    void AddLines(bool header)
    {
        const std::string text = MakeText(10);
        if (header)
            m_text.InsertHeader(text.data(), Length(text));
        else
            m_text.Append(text.data(), Length(text));
        const Lines added = Split(text, m_wide);
        for (State& state : m_states) {
            state.lines.insert(header ? state.lines.begin() : state.lines.end(), added.begin(),
                               added.end());
            state.headerLines += header ? static_cast<int>(added.size()) : 0;
        }
        for (Mark& mark : m_marks) {
            mark.start.line += header ? static_cast<int>(added.size()) : 0;
            mark.end.line += header ? static_cast<int>(added.size()) : 0;
        }
    }

    const char* Step()
    {
        const int lines = static_cast<int>(Now().lines.size());
        const char* fault = nullptr;
        const int kind = m_source.Number(0, 15);
        m_linesHeard = 0;
        if (kind < 5)
            fault = UndoOrRedo(kind < 3);
        else if (kind < 8)
            DrawMarker();
        else if (kind == 8) {
            m_layout.columns = m_source.Number(1, 8) * 2;
            m_text.RewrapAll();
        } else if (kind < 11)
            AddLines(kind == 10);
        else
            fault = Edit();
        if (fault == nullptr && kind != 9 && kind != 10 &&
            lines + m_linesHeard != static_cast<int>(Now().lines.size()))
            fault = "changes told";
        return fault != nullptr ? fault : Check();
    }

    // Both forms agree, in the text and at the start of a character.
    bool IsPlace(const CTextPos& pos) const
    {
        CTextPos both(pos.line, pos.logicalByte);
        m_text.GetDocument().ToCharTop(both);
        return both == pos && PosOf(both) == PosOf(pos);
    }

    const char* Check()
    {
        const tlvn::Document& document = m_text.GetDocument();
        if (State{LinesOf(document), document.GetHeaderLineCount(), Now().marks} != Now())
            return "text";
        CBuffer copy;
        document.CopyLines(0, tlvn::TextForm(), copy);
        if (Text(copy) != Join(Now().lines, m_wide))
            return "copy";
        if (const char* fault = CheckRows(document))
            return fault;
        return CheckMarkers();
    }

    // Physical lines are those of a line wrapped afresh; sums and positions follow.
    const char* CheckRows(const tlvn::Document& document)
    {
        int serial = 0;
        int widest = 0;
        std::vector<tlvn::PhysicalLine> rows;
        std::string marks;
        for (int i = 0; i < document.GetLineCount(); ++i) {
            const CLLineData& line = document.GetLine(i);
            m_layout.Wrap(line, rows);
            const auto known = line.GetPhysicalLines();
            if (!std::equal(
                    rows.begin(), rows.end(), known.begin(), known.end(),
                    [](auto a, auto b) { return a.start == b.start && a.width == b.width; }))
                return "physical lines";
            m_layout.GetQuoteMarks(line, marks);
            if ((line.GetQuoteEntry() >= 0) != !marks.empty())
                return "quote entry";
            for (int p = 0; p < line.GetPhysicalCount(); ++p, ++serial) {
                widest = std::max(widest, line.GetWidth(p));
                const CTextPos pos = document.FindSerialLineP(serial);
                CTextPos logical(i, line.GetStart(p));
                document.L2PByteIndex(logical);
                if (document.GetSerialLineP(i, p) != serial || pos != CTextPos(i, p, 0) ||
                    pos.logicalByte != line.GetStart(p) || logical != pos)
                    return "serial numbers";
            }
            CheckTops(document, i);
        }
        if (document.GetPhysicalCount() != serial || document.GetWidest() != widest)
            return "sums";
        return m_fault;
    }

    // Every byte of the line belongs to the character that starts at the last top.
    void CheckTops(const tlvn::Document& document, int i)
    {
        const std::string& text = Now().lines[static_cast<std::size_t>(i)];
        const std::vector<int> tops = CharTops(text, m_wide);
        for (int byte = 0; byte <= Length(text); ++byte) {
            CTextPos pos(i, byte);
            document.ToCharTop(pos);
            if (pos.logicalByte != *(std::upper_bound(tops.begin(), tops.end(), byte) - 1))
                m_fault = "ToCharTop";
        }
        CTextPos pos(i, 0);
        for (std::size_t k = 1; k < tops.size(); ++k) {
            document.ToNextChar(pos);
            CTextPos back = pos;
            document.ToPrevChar(back);
            if (PosOf(pos) != Pos{i, tops[k]} || PosOf(back) != Pos{i, tops[k - 1]})
                m_fault = "ToNextChar, ToPrevChar";
        }
    }

    // What shows of the marks, asked at each character and each line end.
    std::vector<Mark> ArrangeMarks()
    {
        std::vector<Mark> shown;
        int last = -1;
        for (int line = 0; line < static_cast<int>(Now().lines.size()); ++line) {
            for (int byte = 0; byte <= Length(Now().lines[static_cast<std::size_t>(line)]);
                 ++byte) {
                const Pos at = {line, byte};
                int top = Now().marks;
                const Mark* mark = nullptr;
                do
                    mark = --top >= 0 ? &m_marks[static_cast<std::size_t>(top)] : nullptr;
                while (mark != nullptr && (at < mark->start || at >= mark->end));
                if (last >= 0 && top != last)
                    shown.back().end = at;
                const bool shows = mark != nullptr && mark->kind >= 0; // below 0 they erase
                if (shows && top != last)
                    shown.push_back({at, at, mark->kind});
                last = shows ? top : -1;
            }
        }
        return shown;
    }
    const char* CheckMarkers()
    {
        const std::vector<Mark> expected = ArrangeMarks();
        const CEditorLineMarkerArray& markers = m_text.GetMarkers();
        if (markers.GetSize() != static_cast<int>(expected.size()))
            return "number of markers";
        for (int i = 0; i < markers.GetSize(); ++i) {
            const Mark& mark = expected[static_cast<std::size_t>(i)];
            CTextPos start = markers[i]->start;
            m_text.GetDocument().L2PByteIndex(start);
            if (PosOf(start) != mark.start || PosOf(markers[i]->end) != mark.end ||
                markers[i]->kind != mark.kind || start != markers[i]->start)
                return "markers";
        }
        return nullptr;
    }

    ByteSource& m_source;
    bool m_wide;
    std::vector<State> m_states; // after each step
    std::size_t m_now = 0;
    std::vector<Mark> m_marks; // drawn; those that an undone step drew stay behind
    ByteLayout m_layout;
    tlvn::TextModel m_text;
    int m_changes = 0; // told
    int m_linesHeard = 0;
    const char* m_fault = nullptr;
};

} // namespace edit_model

// The property that does not hold, or null.
inline const char* CheckEditing(const std::uint8_t* data, std::size_t size)
{
    ByteSource source(data, size);
    const bool wide = source.Byte() % 2 != 0;
    return edit_model::Editing(source, wide).Run();
}
