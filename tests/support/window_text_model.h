// What becomes of the text in an editor window, told beforehand: for each thing that is done to
// the window the model is told first, looks at the window's caret, selection and settings, and
// changes lines of its own by the plain rules. Expects multibyte text in code page 932.

#pragma once

#include "TlvnMisc.h"
#include "editor/columns.h"
#include "editor/text_clipboard.h"
#include "editor/text_units.h"
#include "tests/support/edit_model.h"

namespace editor_window {

using edit_model::CharTops;
using edit_model::Length;
using edit_model::Pos;
using edit_model::PosOf;
using edit_model::State;

class TextModel {
public:
    explicit TextModel(const CEditorWnd& editor) : m_editor(editor), m_wide(Doc().IsWide())
    {
        m_states.push_back({edit_model::LinesOf(Doc()), Doc().GetHeaderLineCount()});
    }

    // The difference between the window and what was told, or null.
    const char* FindFault()
    {
        const bool canChange = m_editor.IsReadOnly() == 0;
        if (edit_model::LinesOf(Doc()) != Now().lines)
            return "text";
        if (Doc().GetHeaderLineCount() != Now().headerLines)
            return "header block";
        if (m_editor.IsInsertMode() != m_insertMode)
            return "insert mode";
        if ((m_editor.CanUndo() != 0) != (canChange && m_now > 0) ||
            (m_editor.CanRedo() != 0) != (canChange && m_now + 1 < m_states.size()))
            return "number of steps";
        if (m_caretKnown && PosOf(m_editor.GetCaretTPos()) != m_caret)
            return "caret after a change";
        m_caretKnown = false;
        return nullptr;
    }

    void Undo() { m_now -= m_editor.IsReadOnly() == 0 && m_now > 0 ? 1 : 0; }
    void Redo() { m_now += m_editor.IsReadOnly() == 0 && m_now + 1 < m_states.size() ? 1 : 0; }
    void SetInsertMode(int on) { m_insertMode = on; }

    // --- typing ---

    // Keys held for GetKeyState.
    void HoldShift(bool down) { m_shift = down; }
    void LoseFocus() { m_half = 0; }
    // A unit of WM_CHAR or WM_IME_CHAR: a character, half of one, or a byte of one.
    void TypeUnit(unsigned unit)
    {
        const unsigned half = std::exchange(m_half, 0u);
        const auto isSurrogate = [](unsigned u, unsigned first) { return u >> 10 == first >> 10; };
        if (isSurrogate(unit, 0xD800)) {
            m_half = unit;
        } else if (isSurrogate(unit, 0xDC00)) {
            const WCHAR pair[] = {static_cast<WCHAR>(half), static_cast<WCHAR>(unit), 0};
            if (isSurrogate(half, 0xD800))
                TypeCharacter(pair);
        } else if (unit < 0x100 && (unit - 0x80 < 0x20 || (half != 0 && half < 0x100))) {
            const char bytes[] = {static_cast<char>(half < 0x100 ? half : 0),
                                  static_cast<char>(unit), 0};
            if (tlvn::IsDoubleByte(bytes))
                TypeCharacter(tlvn::WidenText(bytes));
            else if (tlvn::IsLeadByte(bytes[1]))
                m_half = unit;
            else
                TypeCharacter(tlvn::WidenText(std::string_view(bytes + 1, 1)));
        } else {
            TypeCharacter(tlvn::WString(1, static_cast<WCHAR>(unit)));
        }
    }
    void Insert(const std::string& text)
    {
        if (!text.empty())
            Replace(Start(), End(), text);
    }

    // --- clipboard ---

    void Paste(bool quoted)
    {
        CBuffer pasted;
        if (!tlvn::GetTextClipboard(Doc().GetCodeType(), nullptr, pasted))
            return;
        std::string text(pasted, static_cast<std::size_t>(pasted.GetLength()));
        if (quoted && !text.empty()) {
            edit_model::Lines lines = edit_model::Split(text, m_wide);
            for (std::string& line : lines) {
                if (!line.empty() || &line != &lines.back())
                    line.insert(0, Units(">"));
            }
            text = edit_model::Join(lines, m_wide);
        }
        Insert(text);
    }
    void Cut()
    {
        if (Start().line >= Now().headerLines)
            DeleteSelection();
    }
    bool DeleteSelection()
    {
        const bool selected = m_editor.IsTextSelected() != 0;
        if (selected)
            Replace(Start(), End(), "");
        return selected;
    }

    // --- commands ---

    void Run(int command)
    {
        const bool selectionFirst = command == EditorCmdDeleteChar ||
                                    command == EditorCmdBackSpaceChar ||
                                    command == EditorCmdDeleteWord;
        if (selectionFirst && DeleteSelection())
            return;
        const CTextPos& caret = m_editor.GetCaretTPos();
        const CTextPos lineEnd(caret.line, Doc().GetLineByteCountL(caret.line));
        // The row in which the caret is shown.
        int shownRow = 0, column = 0;
        m_editor.GetCaretPos(shownRow, column);
        const CTextPos row = Doc().FindSerialLineP(shownRow);
        CTextPos from = caret, to = caret;
        switch (command) {
        case EditorCmdDeleteChar:
            if (caret.logicalByte < lineEnd.logicalByte)
                Doc().ToNextChar(to);
            else
                Doc().ToNextLogicalLine(to);
            break;
        case EditorCmdBackSpaceChar:
            if (Doc().IsInText(caret))
                Doc().ToPrevChar(from);
            break;
        case EditorCmdDeleteWord:
            Doc().ToNextWordTop(to);
            break;
        case EditorCmdDeletePhysicalLine:
            from = to = row;
            Doc().ToNextPhysicalLine(to);
            break;
        case EditorCmdDeletePhysicalLineHome:
            from = row;
            break;
        case EditorCmdDeletePhysicalLineEnd:
            to = row;
            Doc().ToPhysicalLineEnd(to);
            break;
        case EditorCmdDeleteLogicalLine:
            from.logicalByte = 0;
            Doc().ToNextLogicalLine(to);
            break;
        case EditorCmdDeleteLogicalLineHome:
            from.logicalByte = 0;
            break;
        case EditorCmdDeleteLogicalLineEnd:
            to = lineEnd;
            break;
        case EditorCmdToggleInsert:
            if (m_editor.IsReadOnly() == 0)
                m_insertMode = m_insertMode == 0;
            return;
        default:
            return;
        }
        Replace(PosOf(from), PosOf(to), "");
    }

    // --- lines ---

    // The line behind those that a selection over a line end reaches into; 0 for none.
    int GetSelectedEnd()
    {
        const Pos start = Start(), end = End();
        const int behind = std::min(end.byte > 0 ? end.line + 1 : end.line, LineCount(Now()));
        return start.line < end.line && start.line < behind ? behind : 0;
    }
    // False when no lines are selected.
    bool Indent(bool right, int count)
    {
        const int behind = GetSelectedEnd();
        if (m_editor.IsReadOnly() != 0 || count <= 0 || behind == 0)
            return false;
        State state = Now();
        bool changed = false;
        for (int line = Start().line; line < behind; ++line)
            changed = IndentBy(LineAt(state, line), right ? count : -count) || changed;
        AddState(state, changed);
        return true;
    }
    void IndentLine(int line, int count)
    {
        if (line < 0 || line >= LineCount(Now()))
            return;
        State state = Now();
        const bool changed = IndentBy(LineAt(state, line), count);
        AddState(state, changed);
    }
    void SpaceTabs()
    {
        State state = Now();
        const tlvn::TextCode code(Doc().GetCodeType());
        bool changed = false;
        for (std::string& line : state.lines) {
            std::string spaced;
            int column = 0;
            const char* const end = line.data() + line.size();
            for (const char* p = line.data(); p < end;) {
                const char* const at = p;
                const bool isTab = code.Next(p, end) == '\t';
                const std::string character(at, p);
                const int next =
                    tlvn::CountColumns(code, at, Length(character), TabColumn(), column);
                spaced += isTab ? Units(std::string(static_cast<std::size_t>(next - column), ' '))
                                : character;
                changed = changed || isTab;
                column = next;
            }
            line = spaced;
        }
        AddState(state, changed);
    }
    // A mark is a step, too, though it leaves the text alone.
    void MarkSelection()
    {
        const Pos start = Start(), end = End();
        if (start.line >= Now().headerLines && Clip(start) < Clip(end)) {
            m_states.resize(++m_now);
            m_states.push_back(m_states.back());
        }
    }

private:
    const tlvn::Document& Doc() const { return m_editor.GetDoc(); }
    State& Now() { return m_states[m_now]; }
    int UnitSize() const { return m_wide ? 2 : 1; }
    int TabColumn() const { return m_editor.GetEditorMetrics().GetTabColumn(); }
    static int LineCount(const State& state) { return static_cast<int>(state.lines.size()); }
    static std::string& LineAt(State& state, int line)
    {
        return state.lines[static_cast<std::size_t>(line)];
    }
    // ASCII in the code of the text.
    std::string Units(const std::string& ascii) const
    {
        std::string text;
        for (const char c : ascii)
            text += m_wide ? std::string{c, '\0'} : std::string{c};
        return text;
    }

    Pos Start() const { return Selection().first; }
    Pos End() const { return Selection().second; }
    std::pair<Pos, Pos> Selection() const
    {
        CTextPos start, end;
        m_editor.GetSelectRange(start, end);
        return {PosOf(start), PosOf(end)};
    }

    // In the text, at the start of a character.
    static Pos ToTop(State& state, Pos pos, bool wide)
    {
        if (pos.line >= LineCount(state))
            pos = {LineCount(state) - 1, INT_MAX};
        const std::vector<int> tops = CharTops(LineAt(state, pos.line), wide);
        return {pos.line, *(std::upper_bound(tops.begin(), tops.end(), pos.byte) - 1)};
    }
    Pos Clip(const Pos& pos) { return ToTop(Now(), pos, m_wide); }

    void AddState(const State& state, bool changed)
    {
        if (!changed || m_editor.IsReadOnly() != 0)
            return;
        m_states.resize(++m_now);
        m_states.push_back(state);
    }
    // Behind the text there is nothing to delete; with nothing selected there, line ends and blanks
    // fill up to what is inserted.
    void Replace(const Pos& from, const Pos& to, std::string text)
    {
        State state = Now();
        const Pos start = Clip(std::min(from, to)), end = Clip(std::max(from, to));
        if (from == to && Doc().IsFreeCursor() && start < from && !text.empty()) {
            const int lines = from.line - start.line;
            const int blanks = (from.byte - (lines > 0 ? 0 : start.byte)) / UnitSize();
            text.insert(0, Units(std::string(static_cast<std::size_t>(lines), '\n') +
                                 std::string(static_cast<std::size_t>(blanks), ' ')));
        }
        m_caretKnown = m_editor.IsReadOnly() == 0 && (start < end || !text.empty());
        state.Delete(start, end);
        m_caret = ToTop(state, start, m_wide); // halves of a character may have come together
        if (!text.empty())
            m_caret = ToTop(state, state.Insert(m_caret, text, m_wide), m_wide);
        AddState(state, m_caretKnown);
    }

    void TypeCharacter(const tlvn::WString& units)
    {
        const unsigned c = units.size() == 1 ? units[0] : 0x10000;
        if (c == '\r' || c == '\n') {
            BreakLine();
        } else if (c == '\t') {
            if (!Indent(!m_shift, 1))
                TypeText(m_editor.GetEditorMetrics().GetTab2Space() != 0
                             ? Units(std::string(CountTabBlanks(), ' '))
                             : Units("\t"));
        } else if (c >= ' ' && (c < 0x7F || c >= 0xA0)) {
            std::string text;
            tlvn::UnitsToText(Doc().GetCodeType(), units, text);
            TypeText(text);
        }
    }
    void TypeText(const std::string& text)
    {
        Pos end = End();
        if (m_editor.IsTextSelected() == 0 && m_insertMode == 0 && Clip(end) == end) {
            const std::vector<int> tops = CharTops(LineAt(Now(), end.line), m_wide);
            const auto here = std::find(tops.begin(), tops.end(), end.byte) - tops.begin();
            const auto typed = static_cast<std::ptrdiff_t>(CharTops(text, m_wide).size()) - 1;
            const auto last = static_cast<std::ptrdiff_t>(tops.size()) - 1;
            end.byte = tops[static_cast<std::size_t>(std::min(here + typed, last))];
        }
        Replace(Start(), end, text);
    }
    void BreakLine()
    {
        Pos start = Start();
        std::string text = Units("\r\n");
        if (start.line < LineCount(Now())) {
            start = Clip(start);
            const std::string& line = LineAt(Now(), start.line);
            if (m_editor.GetEditorMetrics().GetAutoIndent() != 0)
                text.append(
                    line, 0,
                    static_cast<std::size_t>(m_editor.GetIndentLength(line.data(), start.byte)));
        } else {
            start.byte = 0;
        }
        Replace(start, m_editor.IsTextSelected() != 0 ? End() : start, text);
    }
    // The column is that of the caret: nothing is selected.
    std::size_t CountTabBlanks() const
    {
        const CEditorMetrics& metrics = m_editor.GetEditorMetrics();
        int line = 0, column = 0;
        m_editor.GetCaretPos(line, column);
        const bool turns = metrics.GetAutoTurn() == CEditorMetrics::kTurnAtColumn;
        const int width = turns ? metrics.GetTurnCols() : INT_MAX;
        column %= width;
        int stop = (column + TabColumn()) / TabColumn() * TabColumn();
        if (turns && stop % width < TabColumn())
            stop -= stop % width;
        return static_cast<std::size_t>(stop - column);
    }
    bool IndentBy(std::string& line, int count) const
    {
        const bool blanks = m_editor.GetEditorMetrics().GetTab2Space() != 0;
        if (count > 0) {
            if (line.empty())
                return false;
            const int characters = blanks ? count * TabColumn() : count;
            line.insert(
                0, Units(std::string(static_cast<std::size_t>(characters), blanks ? ' ' : '\t')));
            return true;
        }
        // Whole characters, until so many columns are gone.
        const int most = m_editor.GetIndentLength(line.data(), Length(line));
        const std::vector<int> tops =
            CharTops(line.substr(0, static_cast<std::size_t>(most)), m_wide);
        const tlvn::TextCode code(Doc().GetCodeType());
        std::size_t removed = 0;
        while (removed + 1 < tops.size() && tlvn::CountColumns(code, line.data(), tops[removed],
                                                               TabColumn()) < -count * TabColumn())
            ++removed;
        line.erase(0, static_cast<std::size_t>(tops[removed]));
        return removed > 0;
    }

    const CEditorWnd& m_editor;
    bool m_wide;
    std::vector<State> m_states; // after each step
    std::size_t m_now = 0;
    int m_insertMode = 1;
    unsigned m_half = 0; // of a character that came in two
    bool m_shift = false;
    bool m_caretKnown = false;
    Pos m_caret = {0, 0};
};

} // namespace editor_window
