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

// A step to undo per message, with its repeats, however much it replaced; in overwrite mode a line
// end is not replaced.
TEST_F(EditorInputTest, IsOneStepToUndo)
{
    Create();
    SetText("abcd\r\nef");
    editor.SelectText(CTextPos(0, 1), CTextPos(1, 1), 1, 0);
    editor.InputChar('\r', 2);
    EXPECT_EQ(Text(), "a\r\n\r\nf");
    EXPECT_EQ(Caret(), "2,0");
    editor.Undo();
    editor.SetInsertMode(0);
    MoveTo(0, 1);
    editor.InputChar('x', 5);
    EXPECT_EQ(Text(), "axxxxx\r\nef");
    editor.Undo();
    editor.InputChar('x', 0);
    editor.InputChar(0x110000, 1);
    EXPECT_EQ(Text(), "abcd\r\nef");
    EXPECT_EQ(editor.CanUndo(), 0);
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

// No blanks up to a caret behind the text, but the lines down to it.
TEST_F(EditorInputTest, BreaksLinesBehindTheText)
{
    metrics.SetFreeCursor(1);
    Create();
    SetText(" ab");
    editor.MoveCaret(CTextPos(0, 0, 9), 0, 0, CaretMoveText);
    editor.InsertCR();
    EXPECT_EQ(Text(), " ab\r\n ");
    editor.MoveCaret(CTextPos(3, 0, 2), 0, 0, CaretMoveText);
    editor.InsertCR();
    EXPECT_EQ(Text(), " ab\r\n \r\n\r\n\r\n");
}

// What is indented stays selected, through several steps and no further than the left edge.
TEST_F(EditorInputTest, IndentsSelectedLines)
{
    Create();
    SetText("a\r\n\r\n  b\r\nc");
    editor.SelectText(CTextPos(0, 1), CTextPos(3, 0), 1, 0);
    editor.InputChar('\t', 2);
    EXPECT_EQ(Selected(), "\t\ta\r\n\r\n\t\t  b\r\n");
    const HeldKey shift(VK_SHIFT);
    editor.InputChar('\t', 9);
    EXPECT_EQ(Selected(), "a\r\n\r\nb\r\n");
    editor.Undo();
    editor.Undo();
    EXPECT_EQ(Text(), "a\r\n\r\n  b\r\nc");
    EXPECT_EQ(editor.CanUndo(), 0);
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
        {"\x81\x40\x81\x40\x81\x40x", -1, "\x81\x40x"},
        {"   \x81\x40x", -1, "x"},
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
}
