// What the input method asks of the editor.

#include "tests/support/editor_fixture.h"

namespace {

using namespace std::string_literals;

class EditorImeTest : public tlvn::EditorFixture {
protected:
    LRESULT Ask(WPARAM what, void* answer)
    {
        return ::SendMessageW(editor.m_hWnd, WM_IME_REQUEST, what,
                              reinterpret_cast<LPARAM>(answer));
    }
    // The text with [ and ] around what is to be converted, or why there is none.
    std::string AskForText(WPARAM what)
    {
        const LRESULT size = Ask(what, nullptr);
        if (size <= 0)
            return "refused";
        std::vector<char> block(static_cast<std::size_t>(size));
        auto* const given = reinterpret_cast<RECONVERTSTRING*>(block.data());
        given->dwSize = static_cast<DWORD>(size) - 1;
        if (Ask(what, given) != 0)
            return "wrote more than there is room for";
        given->dwSize = static_cast<DWORD>(size);
        if (Ask(what, given) != size || given->dwTargetStrLen != given->dwCompStrLen ||
            given->dwTargetStrOffset != given->dwCompStrOffset)
            return "inconsistent";
        tlvn::WString units(given->dwStrLen + 1, 0);
        std::memcpy(units.data(), block.data() + given->dwStrOffset, 2 * units.size());
        if (units.back() != 0)
            return "not terminated";
        units.pop_back();
        units.insert(given->dwCompStrOffset / 2 + given->dwCompStrLen, TW("]"));
        units.insert(given->dwCompStrOffset / 2, TW("["));
        return tlvn::NarrowText(units);
    }
    LRESULT Confirm(DWORD unit, DWORD length)
    {
        RECONVERTSTRING wanted{};
        wanted.dwSize = sizeof wanted;
        wanted.dwCompStrOffset = unit * 2;
        wanted.dwCompStrLen = length;
        return Ask(IMR_CONFIRMRECONVERTSTRING, &wanted);
    }
};

} // namespace

// Selection -> what can be converted again, and what the input method learns of the text.
TEST_F(EditorImeTest, GivesTheTextAroundTheSelection)
{
    const std::string distant(500, 'y');
    const std::string close(400, 'y');
    const struct {
        std::string text;
        CTextPos from, to;
        std::string reconverted, fed;
    } cases[] = {
        {"a\x82\xA0z", {0, 1}, {0, 3}, "a[\x82\xA0]z", "a[]\x82\xA0z"},
        {"ab\r\ncd", {1, 1}, {1, 1}, "c[]d", "c[]d"},
        {"ab\r\ncd", {0, 1}, {1, 1}, "refused", "refused"},
        {distant + "x" + distant, {0, 500}, {0, 501}, close + "[x]" + close, close + "[]x" + close},
        {distant + distant, {0, 0}, {0, 1000}, "refused", "refused"},
    };
    Create();
    for (const auto& c : cases) {
        SetText(c.text);
        editor.SelectText(c.from, c.to, 1, 0);
        EXPECT_EQ(AskForText(IMR_RECONVERTSTRING), c.reconverted);
        EXPECT_EQ(AskForText(IMR_DOCUMENTFEED), c.fed);
        EXPECT_EQ(Text(), c.text);
    }
    editor.SetReadOnly(1);
    EXPECT_EQ(AskForText(IMR_RECONVERTSTRING), "refused");
}

// The input method chooses what it converts: that is selected, in whole characters. Nothing that
// is not in the text it was given.
TEST_F(EditorImeTest, SelectsWhatIsToBeConverted)
{
    const struct {
        DWORD unit, length;
        LRESULT result;
        const char* selected;
    } cases[] = {
        {1, 1, 1, "\x82\xA0"}, {0, 3, 1, "a\x82\xA0z"}, {2, 1, 1, "z"},         {1, 0, 0, ""},
        {2, 2, 0, ""},         {3, 0xFFFFFFFF, 0, ""},  {0x7FFFFFFF, 1, 0, ""},
    };
    Create();
    for (const auto& c : cases) {
        SetText("a\x82\xA0z\r\nnext");
        EXPECT_EQ(Confirm(c.unit, c.length), c.result);
        EXPECT_EQ(Selected(), c.selected);
    }
    SetText("\x42\xD8\xB7\xDFz\0"s, CT_UNICODE);
    EXPECT_EQ(Confirm(1, 1), 1); // half of the pair
    EXPECT_EQ(Selected(), "");
    // A lead byte without its trail byte at the end: the conversion may see fewer characters.
    SetText("a\x82");
    EXPECT_EQ(Confirm(0, 2), 1);
    EXPECT_EQ(Selected(), "a\x82");
}

TEST_F(EditorImeTest, TellsWhereTheCaretIs)
{
    Create();
    SetText("abc\r\ndef");
    MoveTo(1, 2);
    CPoint caret = editor.GetCaretPoint();

    COMPOSITIONFORM form{};
    EXPECT_EQ(Ask(IMR_COMPOSITIONWINDOW, &form), 1);
    EXPECT_EQ(form.dwStyle, static_cast<DWORD>(CFS_RECT));
    EXPECT_EQ(CPoint(form.ptCurrentPos), caret);
    EXPECT_EQ(form.rcArea.top, editor.GetColRulerHeight());

    IMECHARPOSITION position{};
    EXPECT_EQ(Ask(IMR_QUERYCHARPOSITION, &position), 0); // of no size
    position.dwSize = sizeof position;
    position.dwCharPos = 0xFFFFFFFF;
    EXPECT_EQ(Ask(IMR_QUERYCHARPOSITION, &position), 1);
    editor.ClientToScreen(&caret);
    EXPECT_EQ(CPoint(position.pt), caret);

    for (WPARAM what = 0; what < 16; ++what)
        Ask(what, nullptr);
}

// On for the scope, and back; an input method that is on, or a window without one, stays.
TEST_F(EditorImeTest, TurnsTheInputMethodOnForAScope)
{
    Create();
    const auto isOpen = [this] {
        const tlvn::InputContext context(editor.m_hWnd);
        return ::ImmGetOpenStatus(context.Get()) != 0;
    };
    ASSERT_FALSE(isOpen());
    {
        const CImeOn on(&editor);
        EXPECT_EQ(on.IsChanged(), 1);
        EXPECT_TRUE(isOpen());
        const CImeOn again(&editor);
        EXPECT_EQ(again.IsChanged(), 0);
    }
    EXPECT_FALSE(isOpen());
    editor.SetReadOnly(1); // takes its input method away
    EXPECT_EQ(CImeOn(&editor).IsChanged(), 0);
    EXPECT_EQ(CImeOn(nullptr).IsChanged(), 0);
}
