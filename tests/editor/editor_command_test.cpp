// The commands of the editor's keys: which key runs which, and what they delete.

#include "tests/support/editor_fixture.h"

namespace {

using tlvn::HeldKey;

class EditorCommandTest : public tlvn::EditorFixture {
protected:
    EditorCommandTest()
    {
        metrics.SetAutoTurn(CEditorMetrics::kTurnAtColumn);
        metrics.SetTurnCols(10);
        metrics.SetWordWrap(0);
    }
    ~EditorCommandTest() override { CEditorWnd::GetAccelData() = CAccelData(); }

    int Press(int key, int repeat)
    {
        MSG message{};
        message.hwnd = editor.m_hWnd;
        message.message = WM_KEYDOWN;
        message.wParam = static_cast<WPARAM>(key);
        message.lParam = repeat;
        return editor.PreTranslateMessage(&message);
    }
};

} // namespace

// Text, caret and command -> text and caret. Wrapped after ten columns; あ is 82 A0.
TEST_F(EditorCommandTest, Deletes)
{
    const struct {
        const char* text;
        int line, byte;
        int command;
        const char *expected, *caret;
    } cases[] = {
        {"a\x82\xA0z", 0, 1, EditorCmdDeleteChar, "az", "0,1"},
        {"a\r\nb", 0, 1, EditorCmdDeleteChar, "ab", "0,1"},
        {"a", 0, 1, EditorCmdDeleteChar, "a", "0,1"}, // nothing behind
        {"a\x82\xA0z", 0, 3, EditorCmdBackSpaceChar, "az", "0,1"},
        // From the caret on, not the word's start; the blanks behind go with it.
        {"one two  three", 0, 5, EditorCmdDeleteWord, "one tthree", "0,5"},
        {"one two\x82\xA0", 0, 4, EditorCmdDeleteWord, "one \x82\xA0", "0,4"},
        {"0123456789abcdefghij\r\nn", 0, 13, EditorCmdDeletePhysicalLine, "0123456789n", "0,10"},
        {"a\r\nlast", 1, 2, EditorCmdDeletePhysicalLine, "a\r\n", "1,0"},
        {"0123456789abcdef", 0, 13, EditorCmdDeletePhysicalLineHome, "0123456789def", "0,10"},
        {"0123456789abc\r\nn", 0, 1, EditorCmdDeletePhysicalLineEnd, "0abc\r\nn", "0,1"},
        {"a\r\n0123456789abc\r\nn", 1, 11, EditorCmdDeleteLogicalLine, "a\r\nn", "1,0"},
        {"0123456789abc\r\nn", 0, 11, EditorCmdDeleteLogicalLineHome, "bc\r\nn", "0,0"},
        {"0123456789abc\r\nn", 0, 4, EditorCmdDeleteLogicalLineEnd, "0123\r\nn", "0,4"},
    };
    Create();
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.text) + " " + std::to_string(c.command));
        SetText(c.text);
        MoveTo(c.line, c.byte);
        editor.ExecEditorCmd(c.command);
        EXPECT_EQ(Text(), c.expected);
        EXPECT_EQ(Caret(), c.caret);
        EXPECT_EQ(editor.CanUndo(), std::string(c.text) != c.expected);
        editor.Undo();
        EXPECT_EQ(Text(), c.text);
        editor.SetReadOnly(1);
        editor.ExecEditorCmd(c.command);
        EXPECT_EQ(Text(), c.text);
        editor.SetReadOnly(0);
    }
}

// Behind the text there is nothing to delete: the caret alone goes back, and the line end goes.
TEST_F(EditorCommandTest, DeletesWithTheFreeCursor)
{
    metrics.SetFreeCursor(1);
    Create();
    SetText("ab\r\ncd");
    editor.MoveCaret(CTextPos(0, 0, 5), 0, 0, CaretMoveText);
    editor.BackSpaceChar();
    EXPECT_EQ(Caret(), "0,4");
    EXPECT_EQ(editor.CanUndo(), 0);
    editor.DeleteChar();
    EXPECT_EQ(Text(), "abcd");
    EXPECT_EQ(Caret(), "0,2");
}

// Which command a key runs with which modifiers held. Shift serves keys that move the caret
// without a binding of its own, others not; an unlisted number counts as a command that does
// nothing.
TEST_F(EditorCommandTest, FindsTheCommandOfAKey)
{
    Create();
    CAccelData& keys = CEditorWnd::GetAccelData();
    keys.SetCmdID(0, VK_DOWN, EditorCmdLineDown);
    keys.SetCmdID(FCONTROL, VK_DOWN, EditorCmdDocEnd);
    keys.SetCmdID(FSHIFT, VK_DOWN, EditorCmdDeleteLogicalLine); // never runs
    keys.SetCmdID(0, VK_DELETE, EditorCmdDeleteChar);
    keys.SetCmdID(FCONTROL | FSHIFT, VK_F5, EditorCmdDocEnd);
    keys.SetCmdID(0, VK_F6, EditorCmdToggleInsert - 1);
    keys.SetCmdID(0, VK_F7, 0);

    const struct {
        std::vector<int> held;
        int key, result;
        const char *caret, *selected;
    } cases[] = {
        {{}, VK_DOWN, 1, "1,0", ""},
        {{VK_SHIFT}, VK_DOWN, 1, "1,0", "one\r\n"},
        {{VK_CONTROL}, VK_DOWN, 1, "2,5", ""},
        {{VK_CONTROL, VK_SHIFT}, VK_DOWN, 1, "2,5", "one\r\ntwo\r\nthree"},
        {{VK_SHIFT}, VK_DELETE, 0, "0,0", ""},
        {{VK_CONTROL, VK_SHIFT}, VK_F5, 1, "2,5", "one\r\ntwo\r\nthree"},
        {{}, VK_F6, 1, "0,0", ""},
        {{}, VK_F7, 0, "0,0", ""},
        {{}, VK_DOWN + 0x10000, 0, "0,0", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.key);
        SetText("one\r\ntwo\r\nthree");
        std::vector<std::unique_ptr<HeldKey>> held;
        for (int key : c.held)
            held.push_back(std::make_unique<HeldKey>(key));
        EXPECT_EQ(editor.CheckEditorCmd(static_cast<UINT>(c.key)), c.result);
        EXPECT_EQ(Caret(), c.caret);
        EXPECT_EQ(Selected(), c.selected);
    }
}

// A key that was held runs as often as it repeated; others are left to the window.
TEST_F(EditorCommandTest, TakesKeyMessages)
{
    SetDefaultEditorKeys(CEditorWnd::GetAccelData());
    Create();
    SetLines(10);
    EXPECT_EQ(Press(VK_DOWN, 5), TRUE);
    EXPECT_EQ(Caret(), "5,0");
    EXPECT_EQ(Press('Q', 1), FALSE);
}

// Every command has a key, no key has two, and what the owner has bound elsewhere stays.
TEST(DefaultEditorKeys, CoverEveryCommand)
{
    CAccelData keys;
    keys.SetCmdID(FCONTROL, 'C', 57634);
    keys.SetCmdID(0, VK_UP, 57634);
    SetDefaultEditorKeys(keys);
    const int size = keys.GetSize();
    SetDefaultEditorKeys(keys);
    EXPECT_EQ(keys.GetSize(), size);
    EXPECT_EQ(keys.GetCmdID(FCONTROL, 'C'), 57634);
    EXPECT_EQ(keys.GetCmdID(0, VK_UP), EditorCmdLineUp);
    for (int id = EditorCmdLineUp; id <= EditorCmdToggleInsert; ++id) {
        const bool listed = IsCaretCommand(id) ||
                            (id >= EditorCmdDeleteChar && id <= EditorCmdDeleteLogicalLineEnd) ||
                            id == EditorCmdToggleInsert;
        EXPECT_EQ(keys.GetNextIndex(-1, id, 0) >= 0, listed) << id;
    }
}
