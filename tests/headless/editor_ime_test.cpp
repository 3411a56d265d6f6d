// Composing with the input method in memory.

#include "framework/headless/headless.h"
#include "tests/support/editor_fixture.h"

using namespace tlvn;

namespace {

class EditorComposing : public EditorFixture {
protected:
    EditorComposing() { headless::Reset(); }

    CPoint CompositionPoint()
    {
        COMPOSITIONFORM form{};
        ::ImmGetCompositionWindow(InputContext(editor.m_hWnd).Get(), &form);
        return form.ptCurrentPos;
    }
};

} // namespace

// The composition stands at the caret and follows it; the text changes with the result alone, in
// one step that takes the place of the selection, or of as many characters in overwrite mode.
TEST_F(EditorComposing, TypesResultsAtTheCaret)
{
    Create();
    SetText("abcd\r\nef");
    editor.SetFocus();
    editor.SelectText(CTextPos(0, 0), CTextPos(0, 2), 1, 0);
    const CPoint caret = editor.GetCaretPoint();
    headless::SetCompositionText(editor.m_hWnd, TW("\x306B\x307B"));
    EXPECT_EQ(Text(), "abcd\r\nef");
    EXPECT_EQ(CompositionPoint(), caret);

    IMECHARPOSITION position{};
    position.dwSize = sizeof position;
    position.dwCharPos = 1;
    ::SendMessageW(editor.m_hWnd, WM_IME_REQUEST, IMR_QUERYCHARPOSITION,
                   reinterpret_cast<LPARAM>(&position));
    CPoint second = position.pt;
    editor.ScreenToClient(&second);
    EXPECT_EQ(second, caret + CSize(editor.GetCharHeight(), 0)); // a full-width character on

    MoveTo(1, 1);
    EXPECT_EQ(CompositionPoint(), editor.GetCaretPoint());
    editor.SelectText(CTextPos(0, 0), CTextPos(0, 2), 1, 0);
    headless::CommitCompositionText(editor.m_hWnd, TW("\x65E5\x672C"));
    EXPECT_EQ(Text(), "\x93\xFA\x96\x7B"
                      "cd\r\nef");
    const CPoint behind = editor.GetCaretPoint();
    MoveTo(1, 0);
    EXPECT_EQ(CompositionPoint(), behind); // nothing is composed any more
    editor.Undo();
    EXPECT_EQ(Text(), "abcd\r\nef");
    EXPECT_EQ(editor.CanUndo(), 0);

    editor.SetInsertMode(0);
    MoveTo(0, 1);
    headless::CommitCompositionText(editor.m_hWnd, TW("\x65E5\x672C"));
    EXPECT_EQ(Text(), "a\x93\xFA\x96\x7B"
                      "d\r\nef");
    editor.SetReadOnly(1);
    headless::CommitCompositionText(editor.m_hWnd, TW("x"));
    ::SendMessageW(editor.m_hWnd, WM_IME_COMPOSITION, 0, static_cast<LPARAM>(GCS_RESULTSTR));
    EXPECT_EQ(Text(), "a\x93\xFA\x96\x7B"
                      "d\r\nef");
}
