// An editor as its user has it: keys, mouse, wheel, clipboard, input method, and what the screen
// shows of caret, selection and rulers. Played on real windows (tests/window/) and on those in
// memory (tests/headless/), each with hands of its own.

#include "tests/support/editor_fixture.h"
#include "tests/support/editor_hands.h"

#include "editor/input_method.h"

namespace tlvn {

bool AnswerOnClipboard()
{
    CBuffer text;
    if (!GetTextClipboard(CT_SJIS, nullptr, text))
        return false;
    text += "!";
    return SetTextClipboard(text, text.GetLength(), CT_SJIS, nullptr) == 1;
}

} // namespace tlvn

namespace {

using tlvn::Picture;

constexpr COLORREF kText = RGB(0, 0, 0);
constexpr COLORREF kBack = RGB(255, 255, 255);
constexpr COLORREF kSelBack = RGB(0, 0, 128);
constexpr COLORREF kSymbol = RGB(0, 128, 128);
// In the column ruler: its line, and the strokes of most columns and of every fifth.
constexpr int kBase = 14;
constexpr int kStroke = 3;
constexpr int kFifthStroke = 5;
constexpr int kNumberHeight = kBase - kFifthStroke;

class EditorScript : public tlvn::EditorFixture {
protected:
    EditorScript() : hands(tlvn::MakeEditorHands())
    {
        SetDefaultEditorKeys(CEditorWnd::GetAccelData());
        colors.SetTextColor(kText);
        colors.SetBackColor(kBack);
        // So far from the others that no smoothed edge of a letter is the same in both.
        colors.SetSelTextColor(RGB(255, 255, 0));
        colors.SetSelBackColor(kSelBack);
        colors.SetSymbolColor(kSymbol);
    }
    ~EditorScript() override { CEditorWnd::GetAccelData() = CAccelData(); }

    // Away from the corner, so that there is something outside on every side.
    void Show(const std::string& text)
    {
        ASSERT_EQ(editor.CreateEditorWnd(WS_EX_TOPMOST, kStyle, CRect(100, 100, 500, 400), nullptr,
                                         0, metrics, colors),
                  1);
        ::SetForegroundWindow(editor.m_hWnd);
        editor.SetFocus();
        ASSERT_EQ(::GetFocus(), editor.m_hWnd);
        SetText(text);
    }

    void Press(const std::vector<int>& keys)
    {
        for (int key : keys)
            hands->Key(key, true);
        for (auto key = keys.rbegin(); key != keys.rend(); ++key)
            hands->Key(*key, false);
    }
    void MoveMouse(CPoint point)
    {
        editor.ClientToScreen(&point);
        hands->MoveMouse(point);
    }
    // Byte -1 is the line ruler.
    void MoveMouse(int line, int byte)
    {
        CPoint point = PointOf(line, std::max(byte, 0));
        if (byte < 0)
            point.x = 2;
        MoveMouse(point);
    }

    // The text with | at the caret and [ ] around the selection.
    std::string Marked() const
    {
        std::string text = Text();
        const auto mark = [&text](const CTextPos& pos, char c) {
            std::size_t at = 0;
            for (int line = 0; line < pos.line; ++line)
                at = text.find("\r\n", at) + 2;
            text.insert(at + static_cast<std::size_t>(pos.logicalByte), 1, c);
        };
        CTextPos start, end;
        editor.GetSelectRange(start, end);
        const bool selected = editor.IsTextSelected() != 0;
        if (selected)
            mark(end, ']');
        mark(editor.GetCaretTPos(), '|');
        if (selected)
            mark(start, '[');
        return text;
    }
    bool Becomes(const std::string& marked)
    {
        return hands->Wait([&] { return Marked() == marked; });
    }

    Picture Look() { return hands->Look(editor); }
    Picture LookWithoutCaret()
    {
        editor.HideCaret();
        Picture picture = Look();
        editor.ShowCaret();
        return picture;
    }
    // Columns of the text in a row, with the space below it.
    CRect Cells(int row, int from, int to)
    {
        const int x = editor.GetLineRulerWidth();
        const int y = editor.GetColRulerHeight() + row * editor.GetLineHeight();
        return CRect(x + from * editor.GetCharWidth(), y, x + to * editor.GetCharWidth(),
                     y + editor.GetLineHeight());
    }
    CRect CaretAt(int row, int column, int width)
    {
        const CPoint corner = Cells(row, column, column).TopLeft();
        return CRect(corner, CSize(width, editor.GetCharHeight()));
    }

    std::unique_ptr<tlvn::EditorHands> hands;
};

// The pictures differ in each pixel of the rectangles and in no other: empty, or the first pixel
// of which that is not true.
std::string FindUnexpected(const Picture& a, const Picture& b, const std::vector<CRect>& changed)
{
    for (int y = 0; y < a.height; ++y) {
        for (int x = 0; x < a.width; ++x) {
            const bool expected = std::any_of(changed.begin(), changed.end(), [&](const CRect& r) {
                return r.PtInRect(CPoint(x, y)) != 0;
            });
            if ((a.At(x, y) != b.At(x, y)) != expected)
                return (expected ? "not changed " : "changed ") + std::to_string(x) + "," +
                       std::to_string(y);
        }
    }
    return "";
}

bool IsAll(const Picture& picture, const CRect& rect, COLORREF color)
{
    for (int y = rect.top; y < rect.bottom; ++y) {
        for (int x = rect.left; x < std::min<int>(rect.right, picture.width); ++x) {
            if (picture.At(x, y) != color)
                return false;
        }
    }
    return true;
}

// Whether both pictures show the same in the rectangle, of b moved by dy.
bool IsSame(const Picture& a, const Picture& b, const CRect& rect, int dy)
{
    for (int y = rect.top; y < rect.bottom; ++y) {
        for (int x = rect.left; x < rect.right; ++x) {
            if (a.At(x, y) != b.At(x, y + dy))
                return false;
        }
    }
    return true;
}

} // namespace

TEST_F(EditorScript, TakesKeysOfTheKeyboard)
{
    const struct {
        std::vector<std::vector<int>> chords;
        const char* expected;
    } steps[] = {
        {{{'A'}, {'B'}, {'C'}, {VK_RETURN}, {'D'}}, "abc\r\nd|"},
        {{{VK_UP}, {VK_SHIFT, VK_RIGHT}}, "a[b|]c\r\nd"},
        {{{VK_SHIFT, 'X'}}, "aX|c\r\nd"},
        {{{VK_CONTROL, VK_HOME}, {VK_DELETE}, {VK_END}, {VK_BACK}}, "X|\r\nd"},
        {{{VK_INSERT}, {VK_HOME}, {'Y'}, {'Z'}, {VK_INSERT}, {'Q'}}, "yzq|\r\nd"},
        {{{VK_SHIFT, VK_CONTROL, VK_END}, {VK_TAB}}, "[\tyzq\r\n\td|]"},
        {{{VK_UP}, {VK_CONTROL, 'Y'}}, "|\td"},
    };
    Show("");
    for (const auto& step : steps) {
        for (const auto& chord : step.chords)
            Press(chord);
        ASSERT_TRUE(Becomes(step.expected)) << step.expected << " is " << Marked();
    }
}

TEST_F(EditorScript, SelectsWithTheMouse)
{
    enum What { Press, Move, Release, Click, DoubleClick };
    const struct {
        What what;
        int line, byte, key;
        const char* expected;
    } steps[] = {
        {Press, 0, 4, 0, "one |two three\r\nfour five\r\nsix"},
        {Move, 0, 1, 0, "o[|ne ]two three\r\nfour five\r\nsix"},
        {Move, 1, 2, 0, "one [two three\r\nfo|]ur five\r\nsix"},
        {Release, 1, 2, 0, "one [two three\r\nfo|]ur five\r\nsix"},
        {Move, 2, 1, 0, "one [two three\r\nfo|]ur five\r\nsix"},
        {Click, 1, 6, VK_SHIFT, "one [two three\r\nfour f|]ive\r\nsix"},
        {Click, 0, 5, VK_CONTROL, "one [two|] three\r\nfour five\r\nsix"},
        {DoubleClick, 1, 2, 0, "one two three\r\n[four|] five\r\nsix"},
        {Click, 2, 1, 0, "one two three\r\nfour five\r\ns|ix"},
        {Click, 9, 30, 0, "one two three\r\nfour five\r\nsix|"}, // below the text
        {Press, 1, -1, 0, "one two three\r\n[four five\r\n|]six"},
        {Move, 0, -1, 0, "[|one two three\r\nfour five\r\n]six"},
        {Release, 0, -1, 0, "[|one two three\r\nfour five\r\n]six"},
    };
    metrics.SetShowLineRuler(1);
    Show("one two three\r\nfour five\r\nsix");
    for (const auto& step : steps) {
        if (step.key != 0)
            hands->Key(step.key, true);
        MoveMouse(step.line, step.byte);
        for (int i = step.what == DoubleClick ? 2 : step.what == Move ? 0 : 1; i > 0; --i) {
            if (step.what != Release)
                hands->Button(true);
            if (step.what != Press)
                hands->Button(false);
        }
        if (step.key != 0)
            hands->Key(step.key, false);
        ASSERT_TRUE(Becomes(step.expected)) << step.expected << " is " << Marked();
    }
}

// Below the window, then above it, then beside it; until another window takes the mouse.
TEST_F(EditorScript, ScrollsWhileTheMouseIsDraggedOutside)
{
    Show("");
    SetLines(200);
    editor.InsertText(CTextPos(0, 6), std::string(200, 'w').c_str(), 200);
    MoveTo(0, 0);
    const auto top = [this] { return editor.GetVertScrollPos(); };
    MoveMouse(2, 1);
    hands->Button(true);
    ASSERT_TRUE(hands->Wait([this] { return ::GetCapture() == editor.m_hWnd; }));
    MoveMouse(CPoint(60, 330));
    EXPECT_TRUE(hands->Wait([&] { return top() >= 8; }));
    EXPECT_GT(editor.GetCaretTPos().line, top());
    EXPECT_EQ(Selected().substr(0, 13), "ine 2\r\nline 3");
    MoveMouse(CPoint(60, -40));
    EXPECT_TRUE(hands->Wait([&] { return top() == 0 && editor.GetCaretTPos().line == 0; }));
    MoveMouse(CPoint(420, 20));
    EXPECT_TRUE(hands->Wait([&] { return editor.GetHorzScrollPos() >= 4; }));
    EXPECT_EQ(Selected().substr(Selected().size() - 9), "line 1\r\nl");
    MoveMouse(CPoint(60, 330));
    EXPECT_TRUE(hands->Wait([&] { return top() > 0; }));
    ::ReleaseCapture();
    const int rest = top();
    EXPECT_FALSE(hands->Wait([&] { return top() != rest; }, 300));
    hands->Button(false);
}

// Lines of a notch and what the wheel turned -> where the view begins. The caret keeps its row.
TEST_F(EditorScript, TurnsTheWheel)
{
    const struct {
        UINT perNotch;
        int delta, top;
    } steps[] = {
        {3, -120, 3}, {3, -60, 5}, {1, -30, 6}, {1, 120, 5}, {0, -240, 11}, {3, 20, 10},
    };
    UINT before = 3;
    ::SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &before, 0);
    Show("");
    SetLines(100);
    MoveTo(4, 2);
    MoveMouse(5, 2);
    for (const auto& step : steps) {
        ::SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, step.perNotch, nullptr, 0);
        hands->Wheel(step.delta);
        EXPECT_TRUE(hands->Wait([&] { return editor.GetVertScrollPos() == step.top; }))
            << step.delta << ": " << editor.GetVertScrollPos();
        EXPECT_EQ(Caret(), std::to_string(step.top + 4) + ",2");
    }
    ::SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, before, nullptr, 0);
}

TEST_F(EditorScript, SharesTheClipboardWithAnotherProgram)
{
    Show("\x93\xFA\x96\x7B\r\nabc"); // 日本
    editor.SelectAll();
    editor.SendMessage(WM_COPY);
    ASSERT_TRUE(hands->AskOtherProgram());
    SetText("");
    editor.SendMessage(WM_PASTE);
    EXPECT_EQ(Text(), "\x93\xFA\x96\x7B\r\nabc!");
}

// The result of a composition is typed in one step, and only once: no WM_IME_CHAR of it follows.
TEST_F(EditorScript, TypesTheResultOfTheInputMethod)
{
    const WCHAR* const composed = TW("\x65E5\x672C"); // 日本
    Show("ab");
    editor.SelectText(CTextPos(0, 0), CTextPos(0, 1), 1, 0);
    if (!hands->Compose(editor, composed))
        GTEST_SKIP() << "no input method that takes a composition";
    {
        const tlvn::InputContext context(editor.m_hWnd);
        COMPOSITIONFORM form{};
        ::ImmGetCompositionWindow(context.Get(), &form);
        EXPECT_EQ(CPoint(form.ptCurrentPos), editor.GetCaretPoint());
        LOGFONTW font{}, own{};
        ::ImmGetCompositionFontW(context.Get(), &font);
        editor.GetCurrentFont()->GetLogFont(&own);
        EXPECT_EQ(font.lfHeight, own.lfHeight);
    }
    EXPECT_EQ(Text(), "ab");
    hands->EndComposing(editor, composed);
    EXPECT_TRUE(hands->Wait([this] { return Text() != "ab"; }));
    hands->Wait([] { return false; }, 50);
    EXPECT_EQ(Marked(), "\x93\xFA\x96\x7B|b");
    editor.Undo();
    EXPECT_EQ(Text(), "ab");
    // A program without an input method of its own may send characters as if from one.
    editor.SendMessage(WM_IME_CHAR, 0x3042, 1);
    EXPECT_EQ(Marked(), "a\x82\xA0|b");
    editor.SetReadOnly(1);
    EXPECT_EQ(tlvn::InputContext(editor.m_hWnd).Get(), nullptr);
}

// The header block in its colour, text where there is some, and none behind it.
TEST_F(EditorScript, ShowsHeaderAndText)
{
    constexpr COLORREF kHeaderBack = 0xD0FFD0;
    Show("\x93\xFA\x96\x7B\x8C\xEA");               // 日本語
    editor.InsertHeaderText("\x8C\x8F\x96\xBC", 4); // 件名
    const Picture picture = LookWithoutCaret();
    for (const auto& [row, columns, back] : {std::tuple{0, 4, kHeaderBack}, {1, 6, kBack}}) {
        for (int column = 0; column < columns; column += 2)
            EXPECT_FALSE(IsAll(picture, Cells(row, column, column + 2), back)) << row << column;
        EXPECT_TRUE(IsAll(picture, Cells(row, columns, 20), back)) << row;
    }
}

// Shown or not, here or there, narrow or wide: the screen differs in the caret, and in its mark
// in the column ruler, where the strokes stay.
TEST_F(EditorScript, ShowsTheCaret)
{
    metrics.SetShowColRuler(1);
    metrics.SetShowLineRuler(1);
    Show("abcd\r\nefg");
    const int width = editor.GetCharWidth();
    const auto inRuler = [&](int column, std::vector<CRect> changed) {
        const int x = Cells(0, column, column).left;
        changed.push_back(CRect(x, 0, x + 1, kBase - kStroke));
        changed.push_back(CRect(x + 1, 0, x + width, kBase));
        return changed;
    };
    Press({VK_RIGHT});
    ASSERT_TRUE(Becomes("a|bcd\r\nefg"));
    const Picture first = Look();
    EXPECT_EQ(FindUnexpected(LookWithoutCaret(), first, {CaretAt(0, 1, 2)}), "");
    Press({VK_CONTROL, VK_END});
    ASSERT_TRUE(Becomes("abcd\r\nefg|"));
    EXPECT_EQ(
        FindUnexpected(first, Look(), inRuler(1, inRuler(3, {CaretAt(0, 1, 2), CaretAt(1, 3, 2)}))),
        "");
    Press({VK_INSERT});
    ASSERT_TRUE(hands->Wait([this] { return editor.IsInsertMode() == 0; }));
    EXPECT_EQ(FindUnexpected(LookWithoutCaret(), Look(), {CaretAt(1, 3, width)}), "");
}

// The columns of the selection change and nothing else, line ends included; it stays when the
// focus goes.
TEST_F(EditorScript, ShowsTheSelection)
{
    metrics.SetShowLineRuler(1);
    Show("abcdefgh\r\n\x93\xFA\x96\x7B\x8C\xEA\r\nij"); // 日本語
    const Picture before = LookWithoutCaret();
    const auto find = [&](const std::vector<CRect>& changed) {
        return FindUnexpected(before, LookWithoutCaret(), changed);
    };
    Press({VK_RIGHT});
    Press({VK_RIGHT});
    for (int i = 0; i < 3; ++i)
        Press({VK_SHIFT, VK_RIGHT});
    ASSERT_TRUE(hands->Wait([this] { return Selected() == "cde"; }));
    EXPECT_EQ(find({Cells(0, 2, 5)}), "");
    Press({VK_SHIFT, VK_DOWN});
    ASSERT_TRUE(hands->Wait([this] { return editor.GetCaretTPos().line == 1; }));
    const int column = editor.GetCaretTPos().logicalByte; // within a character there is no place
    EXPECT_EQ(column % 2, 0);
    EXPECT_EQ(find({Cells(0, 2, 9), Cells(1, 0, column)}), "");
    ::SetFocus(nullptr);
    EXPECT_EQ(FindUnexpected(before, Look(), {Cells(0, 2, 9), Cells(1, 0, column)}), "");
    editor.SetFocus();
    Press({VK_LEFT});
    ASSERT_TRUE(hands->Wait([this] { return editor.IsTextSelected() == 0; }));
    EXPECT_EQ(find({}), "");
}

// A stroke for each column, longer for every fifth, with a number for every tenth; a number for
// each line, which moves along with the text.
TEST_F(EditorScript, ShowsTheRulers)
{
    metrics.SetShowColRuler(1);
    metrics.SetShowLineRuler(1);
    Show("");
    SetLines(12);
    Picture picture = LookWithoutCaret();
    const int width = editor.GetCharWidth();
    const int right = editor.GetLineRulerWidth();
    const int digit = (right - 12) / 2;
    EXPECT_TRUE(IsAll(picture, CRect(0, kBase, picture.width, kBase + 1), kSymbol));
    // The caret is in column 0.
    for (int column = 1; right + (column + 1) * width < picture.width; ++column) {
        const int x = right + column * width;
        const int stroke = column % 10 == 0 ? kBase : column % 5 == 0 ? kFifthStroke : kStroke;
        EXPECT_TRUE(IsAll(picture, CRect(x, kBase - stroke, x + 1, kBase), kSymbol)) << column;
        EXPECT_TRUE(IsAll(picture, CRect(x + 1, kBase - 1, x + width, kBase), kBack)) << column;
        if (column % 10 == 0) {
            const CRect number(x + 2, 0, x + 2 + 2 * digit, kNumberHeight);
            EXPECT_FALSE(IsAll(picture, number, kBack)) << column;
        } else if (column % 10 > 2) {
            EXPECT_TRUE(IsAll(picture, CRect(x, 0, x + width, kNumberHeight), kBack)) << column;
        }
    }
    for (int row = 0; row < 14; ++row) {
        const CRect space = Cells(row, 0, 0);
        const auto isBlank = [&](int from, int to) {
            return IsAll(picture, CRect(from, space.top, to, space.bottom), kBack);
        };
        EXPECT_EQ(isBlank(right - 6 - digit, right - 6), row >= 12) << row;
        EXPECT_EQ(isBlank(right - 6 - 2 * digit, right - 6 - digit), row < 9 || row >= 12) << row;
        EXPECT_TRUE(isBlank(0, 6) && isBlank(right - 6, right - 4) && isBlank(right - 3, right));
        EXPECT_TRUE(IsAll(picture, CRect(right - 4, space.top, right - 3, space.bottom), kSymbol));
    }

    SetLines(60);
    picture = LookWithoutCaret();
    editor.SendMessage(WM_VSCROLL, SB_LINEDOWN);
    const CRect moved(0, Cells(1, 0, 0).top, picture.width, Cells(13, 0, 0).bottom);
    EXPECT_TRUE(IsSame(picture, LookWithoutCaret(), moved, -editor.GetLineHeight()));
}
