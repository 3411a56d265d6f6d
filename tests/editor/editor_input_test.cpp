// What is typed: characters by messages, tabs, line breaks, overwriting, indentation.

#include "tests/support/editor_fixture.h"

namespace {

using namespace std::string_literals;
using tlvn::HeldKey;

class EditorInputTest : public tlvn::EditorFixture {
protected:
    void Chars(std::initializer_list<int> units)
    {
        for (int unit : units)
            ::SendMessageW(editor.m_hWnd, WM_CHAR, static_cast<WPARAM>(unit), 1);
    }
    void SetUp() override { metrics.SetTabColumn(4); }
};

} // namespace

// Units of WM_CHAR -> text in Shift_JIS and in UTF-16. The fourth row is あ by its two bytes; the
// sixth loses half a character only, the one after it a lone surrogate.
TEST_F(EditorInputTest, PutsCharactersTogether)
{
    const struct {
        std::initializer_list<int> units;
        std::string narrow, wide;
    } cases[] = {
        {{0x3042}, "\x82\xA0", "\x42\x30"s},
        {{0xE9}, "?", "\xE9\0"s},
        {{0x82, 0xA0}, "\x82\xA0", "\x42\x30"s},
        {{0x83, 0x5C, 'x'}, "\x83\x5Cx", "\xBD\x30x\0"s}, // ソ: its trail byte is a letter
        {{0x82, 0x3042, 'x'}, "\x82\xA0x", "\x42\x30x\0"s},
        {{0xD842, 'a', 0xDFB7, 'b'}, "ab", "a\0b\0"s},
        {{0xD842, 0xDFB7}, "??", "\x42\xD8\xB7\xDF"s},
        {{0x82, '!', 0xFF71}, "!\xB1", "!\0\x71\xFF"s},
        {{1, 8, 27, 0x7F, 0x80}, "", ""},
        {{'a', '\r', 'b', '\n'}, "a\r\nb\r\n", "a\0\r\0\n\0b\0\r\0\n\0"s},
    };
    Create();
    for (const auto& c : cases) {
        for (const bool wide : {false, true}) {
            SetText("", wide ? CT_UTF8 : CT_SJIS);
            Chars(c.units);
            EXPECT_EQ(Text(), wide ? c.wide : c.narrow);
        }
    }
    // From an input method, likewise; nothing stays behind when the focus goes.
    SetText("");
    for (int unit : {0x3042, 0x82, 0xA0})
        ::SendMessageW(editor.m_hWnd, WM_IME_CHAR, static_cast<WPARAM>(unit), 1);
    Chars({0x82});
    ::SendMessageW(editor.m_hWnd, WM_KILLFOCUS, 0, 0);
    ::SendMessageW(editor.m_hWnd, WM_CHAR, 'A', 0); // by a program that leaves the count out
    EXPECT_EQ(Text(), "\x82\xA0\x82\xA0"
                      "A");
}

// The same bytes in an ANSI window -> text in Shift_JIS and in UTF-16. The system makes bytes of
// what it sends there. A unit that is no byte is taken as what it is.
TEST_F(EditorInputTest, TakesBytesInAnAnsiWindow)
{
    const struct {
        std::initializer_list<UINT> bytes;
        std::string narrow, wide;
    } cases[] = {
        {{0x82, 0xA0}, "\x82\xA0", "\x42\x30"s},
        {{0x83, 0x5C, 'x'}, "\x83\x5Cx", "\xBD\x30x\0"s},          // ソ
        {{0xB1, 0xFB, 0xFC}, "\xB1\xFB\xFC", "\x71\xFF\xD9\x9A"s}, // ｱ髙
        {{0x82, '!', 'a'}, "!a", "!\0a\0"s},
        {{0x82, 0x3042}, "\x82\xA0", "\x42\x30"s},
    };
    Create();
    ::SetWindowLongPtrA(editor.m_hWnd, GWLP_WNDPROC,
                        ::GetWindowLongPtrW(editor.m_hWnd, GWLP_WNDPROC));
    ASSERT_FALSE(::IsWindowUnicode(editor.m_hWnd));
    for (const auto& c : cases) {
        for (const bool wide : {false, true}) {
            SetText("", wide ? CT_UTF8 : CT_SJIS);
            for (const UINT byte : c.bytes)
                editor.OnChar(byte, 1, 0);
            EXPECT_EQ(Text(), wide ? c.wide : c.narrow);
        }
    }
    SetText("", CT_UTF8);
    for (const UINT message : {WM_CHAR, WM_IME_CHAR, WM_CHAR})
        ::SendMessageW(editor.m_hWnd, message, 0x30BD, 1);
    EXPECT_EQ(Text(), "\xBD\x30\xBD\x30\xBD\x30"s);
}

// A step to undo per message, with its repeats, however much it replaced.
TEST_F(EditorInputTest, IsOneStepToUndo)
{
    Create();
    SetText("abcd\r\nef");
    editor.InputChar('x', 3);
    EXPECT_EQ(Text(), "xxxabcd\r\nef");
    editor.Undo();
    editor.SelectText(CTextPos(0, 1), CTextPos(1, 1), 1, 0);
    editor.InputChar('\r', 2);
    EXPECT_EQ(Text(), "a\r\n\r\nf");
    EXPECT_EQ(Caret(), "2,0");
    editor.Undo();
    EXPECT_EQ(editor.CanUndo(), 0);

    editor.InputChar('x', 0);
    editor.InputChar(0x110000, 1);
    editor.SetReadOnly(1);
    for (UINT c : {UINT{'x'}, UINT{'\t'}, UINT{'\r'}})
        editor.InputChar(c, 1);
    editor.ExecEditorCmd(EditorCmdToggleInsert);
    EXPECT_EQ(Text(), "abcd\r\nef");
    EXPECT_EQ(editor.IsInsertMode(), 1);
}

// More than a text holds is refused at once, not when the machine's memory is full.
TEST_F(EditorInputTest, RefusesEndlessRepeats)
{
    Create();
    for (int blanks : {0, 1}) {
        metrics.SetTab2Space(blanks);
        editor.ChangeEditorMetrics(metrics);
        SetText("a\r\nb");
        for (UINT c : {UINT{'x'}, UINT{0x20BB7}, UINT{'\t'}, UINT{'\r'}})
            EXPECT_THROW(editor.InputChar(c, UINT_MAX), CMemoryException*);
        editor.SelectText(CTextPos(0, 1), CTextPos(1, 1), 1, 0);
        EXPECT_THROW(editor.Indent(1, INT_MAX), CMemoryException*);
        EXPECT_EQ(Text(), "a\r\nb");
        EXPECT_EQ(editor.CanUndo(), 0);
    }
}

// Mode and text typed at a caret -> text: a character for a character, whatever its width, but
// never the line's end; line breaks and pasted text push aside.
TEST_F(EditorInputTest, OverwritesCharacters)
{
    const struct {
        const char* text;
        int byte;
        UINT typed, repeat;
        const char* expected;
    } cases[] = {
        {"a\x82\xA0z", 1, 'x', 1, "axz"},
        {"abc", 1, 0x3042, 1,
         "a\x82\xA0"
         "c"},
        {"abc\r\nd", 1, 'x', 5, "axxxxx\r\nd"},
        {"abc\r\nd", 3, 'x', 1, "abcx\r\nd"},
        {"abc", 1, '\r', 1, "a\r\nbc"},
    };
    Create();
    editor.SetInsertMode(0);
    for (const auto& c : cases) {
        SetText(c.text);
        MoveTo(0, c.byte);
        editor.InputChar(c.typed, c.repeat);
        EXPECT_EQ(Text(), c.expected);
        editor.Undo();
        EXPECT_EQ(Text(), c.text);
    }
    SetText("abc");
    editor.SelectText(CTextPos(0, 1), CTextPos(0, 2), 1, 0);
    editor.InputChar('x', 1);
    EXPECT_EQ(Text(), "axc"); // the selection alone, not the "c" behind it
}

// Tab stop, wrap mode and columns, caret, repeats -> blanks. The last rows fail when a stop beyond
// the wrap column is not moved back to it.
TEST_F(EditorInputTest, TypesBlanksForTabs)
{
    const struct {
        int tab, mode, columns;
        int caret;
        UINT repeat;
        int blanks;
    } cases[] = {
        {4, 0, 72, 5, 3, 11}, {8, 0, 72, 8, 2, 16},  {4, 1, 10, 9, 1, 1},
        {15, 1, 10, 3, 1, 7}, {20, 1, 10, 0, 1, 20},
    };
    metrics.SetTab2Space(1);
    Create();
    for (const auto& c : cases) {
        metrics.SetTabColumn(c.tab);
        metrics.SetAutoTurn(c.mode);
        metrics.SetTurnCols(c.columns);
        editor.ChangeEditorMetrics(metrics);
        SetText(std::string(static_cast<std::size_t>(c.caret), 'a'));
        MoveTo(0, c.caret);
        editor.InputChar('\t', c.repeat);
        EXPECT_EQ(static_cast<int>(Text().size()), c.caret + c.blanks) << c.tab << " " << c.caret;
    }
}

// Line and caret -> what a line break makes of it: indentation before the caret, never more.
TEST_F(EditorInputTest, RepeatsTheIndentation)
{
    const struct {
        const char* text;
        int byte, autoIndent;
        const char *expected, *caret;
    } cases[] = {
        {"  ab", 4, 1, "  ab\r\n  ", "1,2"},
        {"\t\x81\x40x", 4, 1, "\t\x81\x40x\r\n\t\x81\x40", "1,3"},
        {"  ab", 1, 1, " \r\n  ab", "1,1"},
        {"  ab", 3, 0, "  a\r\nb", "1,0"},
    };
    Create();
    for (const auto& c : cases) {
        metrics.SetAutoIndent(c.autoIndent);
        editor.ChangeEditorMetrics(metrics);
        SetText(c.text);
        MoveTo(0, c.byte);
        editor.InsertCR();
        EXPECT_EQ(Text(), c.expected);
        EXPECT_EQ(Caret(), c.caret);
        editor.Undo();
        EXPECT_EQ(Text(), c.text);
    }
    // Behind the text: no blanks up to the caret, but the lines down to it.
    metrics.SetAutoIndent(1);
    metrics.SetFreeCursor(1);
    editor.ChangeEditorMetrics(metrics);
    SetText(" ab");
    editor.MoveCaret(CTextPos(0, 0, 9), 0, 0, CaretMoveText);
    editor.InsertCR();
    EXPECT_EQ(Text(), " ab\r\n ");
    editor.MoveCaret(CTextPos(3, 0, 2), 0, 0, CaretMoveText);
    editor.InputChar('x', 1);
    EXPECT_EQ(Text(), " ab\r\n \r\n\r\n  x");
    editor.MoveCaret(CTextPos(5, 0, 2), 0, 0, CaretMoveText);
    editor.InsertCR();
    EXPECT_EQ(Text(), " ab\r\n \r\n\r\n  x\r\n\r\n\r\n");
}

// A selection over a line end is indented, in one step, and stays selected; the last line only
// when the selection reaches into it. Without one a tab is a character.
TEST_F(EditorInputTest, IndentsSelectedLines)
{
    Create();
    SetText("a\r\n\r\n  b\r\nc");
    editor.SelectText(CTextPos(0, 1), CTextPos(3, 0), 1, 0);
    editor.InputChar('\t', 2);
    EXPECT_EQ(Text(), "\t\ta\r\n\r\n\t\t  b\r\nc");
    EXPECT_EQ(Selected(), "\t\ta\r\n\r\n\t\t  b\r\n");
    {
        const HeldKey shift(VK_SHIFT);
        editor.InputChar('\t', 1);
        EXPECT_EQ(Text(), "\ta\r\n\r\n\t  b\r\nc");
        editor.InputChar('\t', 9); // no further than the left edge; nothing is typed
        EXPECT_EQ(Text(), "a\r\n\r\nb\r\nc");
    }
    editor.Undo();
    editor.Undo();
    editor.Undo();
    EXPECT_EQ(Text(), "a\r\n\r\n  b\r\nc");
    EXPECT_EQ(editor.CanUndo(), 0);

    editor.SelectText(CTextPos(3, 1), CTextPos(2, 1), 1, 0);
    EXPECT_EQ(editor.Indent(1, 1), 1);
    EXPECT_EQ(Text(), "a\r\n\r\n\t  b\r\n\tc");
    editor.SelectText(CTextPos(3, 0), CTextPos(3, 2), 1, 0);
    EXPECT_EQ(editor.Indent(1, 1), 0);
}

// What one line loses to the left: as many columns as a tab stop has, by whole characters of the
// indent list.
TEST_F(EditorInputTest, UnindentsByColumns)
{
    const struct {
        std::string text;
        int count;
        std::string expected;
    } cases[] = {
        {"      x", -1, "  x"},
        {"  \tx", -1, "x"},
        {"\x81\x40\x81\x40\x81\x40x", -1, "\x81\x40x"},
        {"   \x81\x40x", -1, "x"},
        {"\t  \tx", -2, "x"},
        {"x", 2, "        x"},
    };
    metrics.SetTab2Space(1);
    Create();
    for (const auto& c : cases) {
        SetText(c.text);
        MoveTo(0, static_cast<int>(c.text.size()));
        EXPECT_EQ(editor.IndentLine(0, c.count), c.text != c.expected);
        EXPECT_EQ(Text(), c.expected);
        EXPECT_EQ(Caret(), "0," + std::to_string(c.expected.size()));
    }
    EXPECT_EQ(editor.IndentLine(-1, 1), 0);
}
