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

// The composition follows the caret until it ends; its result takes the place of as many
// characters in overwrite mode, and is not taken into text that is only read.
TEST_F(EditorComposing, FollowsTheCaret)
{
    Create();
    SetText("abcd\r\nef");
    editor.SetFocus();
    headless::SetCompositionText(editor.m_hWnd, TW("\x306B\x307B"));
    IMECHARPOSITION position{};
    position.dwSize = sizeof position;
    position.dwCharPos = 1;
    ::SendMessageW(editor.m_hWnd, WM_IME_REQUEST, IMR_QUERYCHARPOSITION,
                   reinterpret_cast<LPARAM>(&position));
    CPoint second = position.pt;
    editor.ScreenToClient(&second);
    // A full-width character on.
    EXPECT_EQ(second, editor.GetCaretPoint() + CSize(editor.GetCharHeight(), 0));

    editor.SetInsertMode(0);
    MoveTo(0, 1);
    EXPECT_EQ(CompositionPoint(), editor.GetCaretPoint());
    headless::CommitCompositionText(editor.m_hWnd, TW("\x65E5\x672C"));
    EXPECT_EQ(Text(), "a\x93\xFA\x96\x7B"
                      "d\r\nef");
    const CPoint behind = editor.GetCaretPoint();
    MoveTo(1, 0);
    EXPECT_EQ(CompositionPoint(), behind); // nothing is composed any more
    editor.SetReadOnly(1);
    headless::CommitCompositionText(editor.m_hWnd, TW("x"));
    ::SendMessageW(editor.m_hWnd, WM_IME_COMPOSITION, 0, static_cast<LPARAM>(GCS_RESULTSTR));
    EXPECT_EQ(Text(), "a\x93\xFA\x96\x7B"
                      "d\r\nef");
}
